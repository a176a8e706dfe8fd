#pragma once

#include "MciDevice.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QObject>
#include <QStringList>

#include <memory>

namespace kavori {

// The first CD drive of the system (/dev/cdrom, /dev/sr0); empty when there is none.
QString FindCdDrive();
// Tests say which device files count as drives; an empty list goes back to the system's.
void SetCdDriveCandidates(const QStringList& paths);

// The cdaudio device: tracks of an audio CD through GStreamer's cdda source, one track after
// the other up to the "to" track. Positions are track numbers (the time format tmsf).
class CdAudioDevice final : public QObject, public MciDevice {
public:
    CdAudioDevice() = default;
    ~CdAudioDevice() override;

    // The element is a drive path; anything else (empty, a drive letter) means the first drive.
    quint32 open(const QString& element) override;
    quint32 play(std::optional<qint64> from, std::optional<qint64> to) override;
    quint32 stop() override;
    quint32 pause() override;
    MciMode mode() override;
    quint32 setTimeFormat(MciTimeFormat format) override;
    std::optional<int> currentTrack() override { return m_track; }

private:
    void startTrack(int track);

    // Made once a drive is found, so a system without one never starts the audio output.
    std::unique_ptr<QAudioOutput> m_audio;
    std::unique_ptr<QMediaPlayer> m_player;
    MciTimeFormat m_format = MciTimeFormat::Milliseconds;
    int m_track = 1;
    int m_lastTrack = 99;
    bool m_active = false; // between play and the end of the last track (or stop)
};

} // namespace kavori
