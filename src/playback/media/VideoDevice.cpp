#include "VideoDevice.h"

#include "MovieSurface.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QMediaMetaData>
#include <QTimer>
#include <QUrl>
#include <QVideoSink>

namespace kavori {

namespace {
// Longest an "open" waits for the media to be understood, like the blocking open it stands for.
constexpr int kOpenWaitMs = 10000;
// Frames of a movie that does not say its rate.
constexpr double kDefaultFrameRate = 25.0;
} // namespace

VideoDevice::VideoDevice()
{
    m_player.setAudioOutput(&m_audio);
    connect(&m_player, &QMediaPlayer::positionChanged, this, [this](qint64 position) {
        if (m_endMs && position >= *m_endMs && !m_heldAtEnd) {
            m_heldAtEnd = true;
            m_player.pause();
        }
    });
}

VideoDevice::~VideoDevice()
{
    m_player.stop();
    m_player.setVideoSink(nullptr);
    if (m_window)
        m_window->removeEventFilter(this);
    delete m_video.data();
}

quint32 VideoDevice::open(const QString& element)
{
    m_player.setSource(QUrl::fromLocalFile(element));
    const auto settled = [this] {
        const QMediaPlayer::MediaStatus s = m_player.mediaStatus();
        return m_player.error() != QMediaPlayer::NoError || s == QMediaPlayer::LoadedMedia ||
               s == QMediaPlayer::InvalidMedia || s == QMediaPlayer::BufferedMedia ||
               s == QMediaPlayer::EndOfMedia;
    };
    if (!settled()) {
        QEventLoop loop;
        QTimer poll;
        QElapsedTimer clock;
        clock.start();
        connect(&poll, &QTimer::timeout, &loop, [&] {
            if (settled() || clock.elapsed() > kOpenWaitMs)
                loop.quit();
        });
        poll.start(10);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    switch (m_player.error()) {
    case QMediaPlayer::NoError:
        break;
    case QMediaPlayer::ResourceError:
    case QMediaPlayer::FormatError:
        return MCIERR_INVALID_FILE;
    default:
        return MCIERR_HARDWARE;
    }
    if (m_player.mediaStatus() == QMediaPlayer::InvalidMedia)
        return MCIERR_INVALID_FILE;
    return MCIERR_NONE;
}

qint64 VideoDevice::toMilliseconds(qint64 position) const
{
    if (m_format != MciTimeFormat::Frames)
        return position;
    double rate = m_player.metaData().value(QMediaMetaData::VideoFrameRate).toDouble();
    if (rate <= 0)
        rate = kDefaultFrameRate;
    return qRound64(position * 1000.0 / rate);
}

quint32 VideoDevice::play(std::optional<qint64> from, std::optional<qint64> to)
{
    const qint64 duration = m_player.duration();
    if (from && duration > 0 && toMilliseconds(*from) > duration)
        return MCIERR_OUTOFRANGE;
    m_heldAtEnd = false;
    m_endMs = to ? std::optional<qint64>(toMilliseconds(*to)) : std::nullopt;
    if (from)
        m_player.setPosition(toMilliseconds(*from));
    m_player.play();
    return MCIERR_NONE;
}

quint32 VideoDevice::stop()
{
    m_player.pause();
    m_heldAtEnd = true;
    return MCIERR_NONE;
}

quint32 VideoDevice::pause()
{
    m_player.pause();
    return MCIERR_NONE;
}

MciMode VideoDevice::mode()
{
    if (m_heldAtEnd)
        return MciMode::Stopped;
    switch (m_player.playbackState()) {
    case QMediaPlayer::PlayingState:
        return MciMode::Playing;
    case QMediaPlayer::PausedState:
        return MciMode::Paused;
    case QMediaPlayer::StoppedState:
        break;
    }
    return MciMode::Stopped;
}

quint32 VideoDevice::setTimeFormat(MciTimeFormat format)
{
    if (format == MciTimeFormat::Tmsf)
        return MCIERR_BAD_TIME_FORMAT;
    m_format = format;
    return MCIERR_NONE;
}

quint32 VideoDevice::setWindow(QWidget* window)
{
    if (m_window)
        m_window->removeEventFilter(this);
    m_player.setVideoSink(nullptr); // the player lets go of the old surface before it goes
    delete m_video.data();
    m_window = window;
    m_video = new MovieSurface(window);
    m_video->setGeometry(window->rect());
    m_video->show();
    m_player.setVideoSink(m_video->videoSink());
    window->installEventFilter(this);
    return MCIERR_NONE;
}

std::optional<QSize> VideoDevice::sourceSize()
{
    QSize size = m_player.metaData().value(QMediaMetaData::Resolution).toSize();
    const QList<QMediaMetaData> tracks = m_player.videoTracks();
    if (size.isEmpty() && !tracks.isEmpty())
        size = tracks.first().value(QMediaMetaData::Resolution).toSize();
    if (size.isEmpty() && m_video)
        size = m_video->videoSink()->videoSize();
    return size.isEmpty() ? QSize(0, 0) : size;
}

quint32 VideoDevice::putDestination()
{
    if (!m_window || !m_video)
        return MCIERR_NO_WINDOW;
    m_fillWindow = true;
    m_video->setGeometry(m_window->rect());
    return MCIERR_NONE;
}

bool VideoDevice::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window && event->type() == QEvent::Resize && m_video && m_fillWindow)
        m_video->setGeometry(m_window->rect());
    return QObject::eventFilter(watched, event);
}

} // namespace kavori
