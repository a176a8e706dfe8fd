#include "CdAudioDevice.h"

#include <QFileInfo>
#include <QUrl>

namespace kavori {

namespace {

// The highest track number an audio CD can have.
constexpr int kMaxTrack = 99;

QStringList& candidates()
{
    static QStringList list;
    return list;
}

} // namespace

QString FindCdDrive()
{
    const QStringList system = {QStringLiteral("/dev/cdrom"), QStringLiteral("/dev/sr0")};
    for (const QString& path : candidates().isEmpty() ? system : candidates()) {
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

void SetCdDriveCandidates(const QStringList& paths)
{
    candidates() = paths;
}

CdAudioDevice::~CdAudioDevice()
{
    if (m_player)
        m_player->stop();
}

quint32 CdAudioDevice::open(const QString& element)
{
    const bool isDrive = element.startsWith(u'/') && QFileInfo::exists(element);
    const QString drive = isDrive ? element : FindCdDrive();
    if (drive.isEmpty())
        return MCIERR_DEVICE_NOT_INSTALLED;
    m_audio = std::make_unique<QAudioOutput>();
    m_player = std::make_unique<QMediaPlayer>();
    m_player->setAudioOutput(m_audio.get());
    connect(m_player.get(), &QMediaPlayer::mediaStatusChanged, this,
            [this](QMediaPlayer::MediaStatus status) {
                if (status != QMediaPlayer::EndOfMedia || !m_active)
                    return;
                if (m_track < m_lastTrack)
                    startTrack(m_track + 1);
                else
                    m_active = false;
            });
    // Past the last track of the disc, or no disc at all: the play is over.
    connect(m_player.get(), &QMediaPlayer::errorOccurred, this, [this] { m_active = false; });
    return MCIERR_NONE;
}

void CdAudioDevice::startTrack(int track)
{
    m_track = track;
    m_player->setSource(QUrl(QStringLiteral("cdda://%1").arg(track)));
    m_player->play();
}

quint32 CdAudioDevice::play(std::optional<qint64> from, std::optional<qint64> to)
{
    if (m_format != MciTimeFormat::Tmsf)
        return MCIERR_UNSUPPORTED_FUNCTION;
    // In tmsf the track is the lowest byte of a position.
    const int first = from ? int(*from & 0xFF) : m_track;
    const int last = to ? int(*to & 0xFF) - 1 : kMaxTrack;
    if (first < 1 || last < first)
        return MCIERR_OUTOFRANGE;
    m_lastTrack = last;
    m_active = true;
    if (!from && m_player->playbackState() == QMediaPlayer::PausedState)
        m_player->play();
    else
        startTrack(first);
    return MCIERR_NONE;
}

quint32 CdAudioDevice::stop()
{
    m_active = false;
    m_player->stop();
    return MCIERR_NONE;
}

quint32 CdAudioDevice::pause()
{
    m_player->pause();
    return MCIERR_NONE;
}

MciMode CdAudioDevice::mode()
{
    if (!m_active)
        return MciMode::Stopped;
    return m_player->playbackState() == QMediaPlayer::PausedState ? MciMode::Paused
                                                                  : MciMode::Playing;
}

quint32 CdAudioDevice::setTimeFormat(MciTimeFormat format)
{
    if (format == MciTimeFormat::Frames)
        return MCIERR_BAD_TIME_FORMAT;
    m_format = format;
    return MCIERR_NONE;
}

} // namespace kavori
