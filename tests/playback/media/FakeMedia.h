#pragma once

#include "playback/media/MciDevice.h"
#include "playback/media/WaveChannel.h"
#include "support/TestSounds.h"

#include <QMap>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace kavori::test {

// What one fake device was asked, and what it answers.
struct FakeDeviceState {
    MciDeviceType type = MciDeviceType::MPEGVideo;
    QString element;
    MciMode mode = MciMode::Stopped;
    QSize size{320, 240};
    QPointer<QWidget> window;
    std::optional<qint64> from;
    std::optional<qint64> to;
    int plays = 0;
    bool closed = false;
};

// Stands in for the sound hardware: the command interpreter makes fake devices and the wave
// channel plays into a recorder. Everything goes back on destruction.
class FakeMedia {
public:
    FakeMedia();
    ~FakeMedia();
    FakeMedia(const FakeMedia&) = delete;
    FakeMedia& operator=(const FakeMedia&) = delete;

    // Results the devices give.
    QMap<MciDeviceType, quint32> openResult;
    QMap<MciDeviceType, quint32> playResult;
    QSize movieSize{320, 240};

    // Every device made, oldest first, and the newest of a type.
    std::vector<std::shared_ptr<FakeDeviceState>> devices;
    std::shared_ptr<FakeDeviceState> last(MciDeviceType type) const;

    // The wave channel: what plays now. Sounds that do not loop end at once unless held.
    QString waveFile;
    bool waveLoops = false;
    bool wavePlaying = false;
    bool holdWaves = false;
};

// A MIDI file of one track: a note of half a second on the piano.
QByteArray MakeMidi();

} // namespace kavori::test
