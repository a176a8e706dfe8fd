#include "MovieFrames.h"

#include "DecodePipeline.h"
#include "VideoWriter.h"

#include <QFileInfo>
#include <QUrl>

#include <cstring>

#include <gst/pbutils/pbutils.h>

namespace kavori {

namespace {

// A stalled decoder is given up on after this long without a picture.
constexpr GstClockTime kStall = 10 * GST_SECOND;

} // namespace

MovieInfo ReadMovieInfo(const QString& file)
{
    MovieInfo info;
    if (!QFileInfo(file).isFile() || !StartGStreamer())
        return info;
    GstDiscoverer* discoverer = gst_discoverer_new(10 * GST_SECOND, nullptr);
    if (!discoverer)
        return info;
    const QByteArray uri = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toEncoded();
    GstDiscovererInfo* found = gst_discoverer_discover_uri(discoverer, uri.constData(), nullptr);
    if (found && gst_discoverer_info_get_result(found) == GST_DISCOVERER_OK) {
        GList* videos = gst_discoverer_info_get_video_streams(found);
        if (videos) {
            auto* video = GST_DISCOVERER_VIDEO_INFO(videos->data);
            info.size = QSize(int(gst_discoverer_video_info_get_width(video)),
                              int(gst_discoverer_video_info_get_height(video)));
            info.duration = qint64(gst_discoverer_info_get_duration(found) / 1000);
        }
        gst_discoverer_stream_info_list_free(videos);
    }
    if (found)
        gst_discoverer_info_unref(found);
    g_object_unref(discoverer);
    return info;
}

MovieFrames::MovieFrames() : m_p(std::make_unique<DecodePipeline>()) {}

MovieFrames::~MovieFrames() = default;

bool MovieFrames::open(const QString& file, const QSize& size)
{
    m_current = QImage();
    m_next = QImage();
    m_nextTime = -1;
    m_offset = 0;
    m_length = 0;
    m_size = size.expandedTo(QSize(1, 1));
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    const char* rgb = "BGRx";
#else
    const char* rgb = "xRGB";
#endif
    // Only the picture is wanted here; the sound is read with the other sounds.
    const QString description =
        QStringLiteral("filesrc name=src ! decodebin ! videoconvert ! videoscale ! "
                       "video/x-raw,format=%1,width=%2,height=%3,pixel-aspect-ratio=1/1 ! "
                       "appsink name=sink sync=false max-buffers=4")
            .arg(QString::fromLatin1(rgb))
            .arg(m_size.width())
            .arg(m_size.height());
    if (!m_p->open(description.toUtf8(), file) || !pull()) {
        m_p->close();
        return false;
    }
    m_current = m_next;
    return true;
}

bool MovieFrames::pull()
{
    m_nextTime = -1;
    if (!m_p->pipeline())
        return false;
    GstSample* sample = gst_app_sink_try_pull_sample(m_p->sink(), kStall);
    if (!sample)
        return false; // the end, a failure or a stall: the movie has no more pictures
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    GstMapInfo map;
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        if (m_next.size() != m_size)
            m_next = QImage(m_size, QImage::Format_RGB32);
        const int row = m_size.width() * 4;
        for (int y = 0; y < m_size.height(); ++y)
            std::memcpy(m_next.scanLine(y), map.data + qsizetype(y) * row, size_t(row));
        gst_buffer_unmap(buffer, &map);
        const GstClockTime pts = GST_BUFFER_PTS(buffer);
        m_nextTime = GST_CLOCK_TIME_IS_VALID(pts) ? qint64(pts / 1000) : 0;
        const GstClockTime duration = GST_BUFFER_DURATION(buffer);
        const qint64 end =
            m_nextTime + (GST_CLOCK_TIME_IS_VALID(duration) ? qint64(duration / 1000) : 40000);
        m_length = std::max(m_length, end);
    }
    gst_sample_unref(sample);
    return m_nextTime >= 0;
}

bool MovieFrames::restart()
{
    if (!m_p->pipeline() || m_length <= 0)
        return false;
    if (!gst_element_seek_simple(m_p->pipeline(), GST_FORMAT_TIME,
                                 GstSeekFlags(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_KEY_UNIT), 0))
        return false;
    m_offset += m_length;
    return pull();
}

const QImage& MovieFrames::frameAt(qint64 time)
{
    for (;;) {
        if (m_nextTime < 0) {
            // The round has ended: the last picture stands until the next round is due.
            if (m_length <= 0 || time - m_offset < m_length || !restart())
                return m_current;
        }
        if (m_nextTime + m_offset > time)
            return m_current;
        std::swap(m_current, m_next);
        pull();
    }
}

} // namespace kavori
