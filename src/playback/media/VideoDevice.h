#pragma once

#include "MciDevice.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QObject>
#include <QPointer>

namespace kavori {

class MovieSurface;

// The MPEGVideo and AVIVideo devices: movies, and MP3/AU/AIFF audio, through Qt Multimedia.
// The picture goes into a movie surface made inside the window named by "window ... handle".
class VideoDevice final : public QObject, public MciDevice {
public:
    VideoDevice();
    ~VideoDevice() override;

    quint32 open(const QString& element) override;
    quint32 play(std::optional<qint64> from, std::optional<qint64> to) override;
    quint32 stop() override;
    quint32 pause() override;
    MciMode mode() override;
    quint32 setTimeFormat(MciTimeFormat format) override;
    quint32 setWindow(QWidget* window) override;
    quint32 putSource() override { return MCIERR_NONE; }
    std::optional<QSize> sourceSize() override;
    quint32 putDestination() override;
    quint32 realize() override { return MCIERR_NONE; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    qint64 toMilliseconds(qint64 position) const;

    QAudioOutput m_audio; // before the player, which uses it to the end
    QMediaPlayer m_player;
    QPointer<QWidget> m_window;
    QPointer<MovieSurface> m_video;
    MciTimeFormat m_format = MciTimeFormat::Milliseconds;
    std::optional<qint64> m_endMs; // "play ... to": where playing stops
    bool m_heldAtEnd = false;
    bool m_fillWindow = false;
};

} // namespace kavori
