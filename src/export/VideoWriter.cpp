#include "VideoWriter.h"

#include <QFile>
#include <QFileInfo>

#include <QThread>

#include <gst/app/gstappsrc.h>
#include <gst/gst.h>
#include <gst/video/video.h>

#include <cstring>

namespace kavori {

namespace {

// Raw frames waiting in a source: a few frames at most, so memory stays small and the
// encoder never runs dry.
constexpr guint64 kVideoQueueBytes = 64ull << 20;
constexpr guint64 kAudioQueueBytes = 4ull << 20;

bool HasElement(const char* name)
{
    GstElementFactory* factory = gst_element_factory_find(name);
    if (!factory)
        return false;
    gst_object_unref(factory);
    return true;
}

// The encoding half of the pipeline behind the two sources, by format; empty when an element
// it needs is not installed (missing names the element).
QString EncoderChain(VideoFormat format, const QSize& size, int fps, QString* missing)
{
    const QString keyframes = QString::number(std::max(1, fps * 2));
    const qint64 bitrate =
        std::max<qint64>(1000000, qint64(size.width()) * size.height() * fps / 6);
    const int threads = std::max(1, QThread::idealThreadCount());
    if (format == VideoFormat::WebM) {
        for (const char* name : {"vp9enc", "opusenc", "webmmux"}) {
            if (!HasElement(name)) {
                *missing = QString::fromLatin1(name);
                return {};
            }
        }
        // Real-time speed at a constant quality, capped at a rate that keeps detailed photos
        // sharp: a slide stands still most of the time, so the size follows what moves. No
        // frames held back for look-ahead: the encoder's threads keep busy instead of waiting.
        return QStringLiteral("video. ! queue ! vp9enc deadline=1 cpu-used=8 end-usage=cq "
                              "cq-level=20 target-bitrate=%2 row-mt=true threads=%3 "
                              "lag-in-frames=0 keyframe-max-dist=%1 ! queue ! "
                              "webmmux name=mux ! filesink name=sink "
                              "audio. ! queue ! audioconvert ! opusenc bitrate=128000 ! queue ! "
                              "mux.")
            .arg(keyframes)
            .arg(bitrate)
            .arg(threads);
    }
    for (const char* name : {"x264enc", "mp4mux", "h264parse"}) {
        if (!HasElement(name)) {
            *missing = QString::fromLatin1(name);
            return {};
        }
    }
    QString aac;
    if (HasElement("avenc_aac"))
        aac = QStringLiteral("avenc_aac bitrate=160000");
    else if (HasElement("voaacenc"))
        aac = QStringLiteral("voaacenc bitrate=160000");
    else {
        *missing = QStringLiteral("avenc_aac");
        return {};
    }
    // High profile 4:2:0 plays on every phone and browser; the index goes to the front so a
    // web page can start playing before the whole file has come. The fastest preset at constant
    // quality 20 keeps photos as sharp as slower ones do (bench/README.md); its larger stream is
    // capped at the same rate as VP9's, where the element's default of 2 Mbit/s would starve 1080p.
    return QStringLiteral("video. ! queue ! x264enc speed-preset=ultrafast pass=qual quantizer=20 "
                          "bitrate=%3 key-int-max=%1 ! "
                          "video/x-h264,profile=high ! h264parse ! queue ! "
                          "mp4mux name=mux faststart=true ! filesink name=sink "
                          "audio. ! queue ! audioconvert ! %2 ! queue ! mux.")
        .arg(keyframes, aac)
        .arg(bitrate / 1000);
}

QString PartName(const QString& path)
{
    const QFileInfo info(path);
    return info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".part");
}

} // namespace

bool StartGStreamer()
{
    static const bool started = [] {
        GError* error = nullptr;
        const bool ok = gst_init_check(nullptr, nullptr, &error);
        if (error)
            g_error_free(error);
        return ok;
    }();
    return started;
}

QString VideoExtension(VideoFormat format)
{
    return format == VideoFormat::WebM ? QStringLiteral(".webm") : QStringLiteral(".mp4");
}

struct VideoWriter::Pipeline {
    GstElement* pipeline = nullptr;
    GstElement* video = nullptr;
    GstElement* audio = nullptr;
    GstBus* bus = nullptr;
    // Frames come as 32-bit RGB and go to the encoders as 4:2:0 YUV, converted here on every
    // core, once per picture that changed.
    GstVideoInfo rgb;
    GstVideoInfo yuv;
    GstVideoConverter* converter = nullptr;
    // The frame pushed last and the key of the picture it was made from: a picture that did
    // not change (a slide standing still) goes again as the same pixels, not drawn, converted
    // or copied again.
    GstBuffer* last = nullptr;
    qint64 lastKey = 0;
};

VideoWriter::VideoWriter() = default;

VideoWriter::~VideoWriter()
{
    abort();
}

bool VideoWriter::open(const QString& path, VideoFormat format, const QSize& size, int fps)
{
    abort();
    m_error.clear();
    m_path = path;
    m_size = size;
    m_fps = std::max(1, fps);
    m_frames = 0;
    m_samples = 0;
    if (!StartGStreamer()) {
        m_error = QStringLiteral("GStreamer could not be started.");
        return false;
    }
    QString missing;
    const QString chain = EncoderChain(format, size, m_fps, &missing);
    if (chain.isEmpty()) {
        m_error = QStringLiteral("The GStreamer element \"%1\" is not installed.").arg(missing);
        return false;
    }
    // "video." and "audio." in the chain link the two sources by name.
    const QString launch = QStringLiteral("appsrc name=video format=time is-live=false "
                                          "appsrc name=audio format=time is-live=false ") +
                           chain;
    GError* error = nullptr;
    GstElement* pipeline = gst_parse_launch(launch.toUtf8().constData(), &error);
    if (error) {
        m_error = QString::fromUtf8(error->message);
        g_error_free(error);
        if (pipeline)
            gst_object_unref(pipeline);
        return false;
    }
    m_p = new Pipeline;
    m_p->pipeline = pipeline;
    m_p->video = gst_bin_get_by_name(GST_BIN(pipeline), "video");
    m_p->audio = gst_bin_get_by_name(GST_BIN(pipeline), "audio");
    m_p->bus = gst_element_get_bus(pipeline);

#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    gst_video_info_set_format(&m_p->rgb, GST_VIDEO_FORMAT_BGRx, guint(size.width()),
                              guint(size.height()));
#else
    gst_video_info_set_format(&m_p->rgb, GST_VIDEO_FORMAT_xRGB, guint(size.width()),
                              guint(size.height()));
#endif
    gst_video_info_set_format(&m_p->yuv, GST_VIDEO_FORMAT_I420, guint(size.width()),
                              guint(size.height()));
    // The colours a player assumes for a video of this size (and the ones the stream says).
    gst_video_colorimetry_from_string(&m_p->yuv.colorimetry,
                                      size.height() > 576 ? "bt709" : "bt601");
    for (GstVideoInfo* info : {&m_p->rgb, &m_p->yuv}) {
        info->fps_n = m_fps;
        info->fps_d = 1;
    }
    m_p->converter = gst_video_converter_new(
        &m_p->rgb, &m_p->yuv,
        gst_structure_new("options", GST_VIDEO_CONVERTER_OPT_THREADS, G_TYPE_UINT,
                          guint(std::max(1, QThread::idealThreadCount())), nullptr));
    if (!m_p->converter) {
        m_error = QStringLiteral("The frames cannot be converted for the encoder.");
        abort();
        return false;
    }
    GstCaps* videoCaps = gst_video_info_to_caps(&m_p->yuv);
    gst_app_src_set_caps(GST_APP_SRC(m_p->video), videoCaps);
    gst_caps_unref(videoCaps);
    GstCaps* audioCaps =
        gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "S16LE", "rate", G_TYPE_INT,
                            kExportAudioRate, "channels", G_TYPE_INT, kExportAudioChannels,
                            "layout", G_TYPE_STRING, "interleaved", nullptr);
    gst_app_src_set_caps(GST_APP_SRC(m_p->audio), audioCaps);
    gst_caps_unref(audioCaps);
    gst_app_src_set_max_bytes(GST_APP_SRC(m_p->video), kVideoQueueBytes);
    gst_app_src_set_max_bytes(GST_APP_SRC(m_p->audio), kAudioQueueBytes);

    m_part = PartName(path);
    QFile::remove(m_part);
    GstElement* sink = gst_bin_get_by_name(GST_BIN(pipeline), "sink");
    g_object_set(sink, "location", QFile::encodeName(m_part).constData(), nullptr);
    gst_object_unref(sink);
    // The MP4 muxer writes the samples aside while the index is made; beside the video, not in
    // the temporary folder it would pick once per process (and on another disk, perhaps).
    if (format == VideoFormat::Mp4) {
        GstElement* mux = gst_bin_get_by_name(GST_BIN(pipeline), "mux");
        QFile::remove(m_part + QStringLiteral(".moov"));
        g_object_set(mux, "faststart-file",
                     QFile::encodeName(m_part + QStringLiteral(".moov")).constData(), nullptr);
        gst_object_unref(mux);
    }

    if (gst_element_set_state(pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        checkBus();
        if (m_error.isEmpty())
            m_error = QStringLiteral("The video file could not be made.");
        abort();
        return false;
    }
    return checkBus();
}

bool VideoWriter::checkBus()
{
    if (!m_p)
        return false;
    while (GstMessage* message = gst_bus_pop_filtered(m_p->bus, GST_MESSAGE_ERROR)) {
        GError* error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        if (m_error.isEmpty() && error)
            m_error = QString::fromUtf8(error->message);
        if (error)
            g_error_free(error);
        gst_message_unref(message);
    }
    return m_error.isEmpty();
}

bool VideoWriter::push(void* source, void* buffer)
{
    GstAppSrc* src = GST_APP_SRC(source);
    auto* gstBuffer = static_cast<GstBuffer*>(buffer);
    // Waits while the source is full, watching for a failure so that a stopped pipeline never
    // leaves us waiting for ever.
    while (gst_app_src_get_current_level_bytes(src) >= gst_app_src_get_max_bytes(src)) {
        if (GstMessage* message =
                gst_bus_timed_pop_filtered(m_p->bus, 2 * GST_MSECOND, GST_MESSAGE_ERROR)) {
            gst_bus_set_flushing(m_p->bus, FALSE);
            GError* error = nullptr;
            gst_message_parse_error(message, &error, nullptr);
            m_error = error ? QString::fromUtf8(error->message)
                            : QStringLiteral("The video file could not be written.");
            if (error)
                g_error_free(error);
            gst_message_unref(message);
            gst_buffer_unref(gstBuffer);
            return false;
        }
    }
    if (gst_app_src_push_buffer(src, gstBuffer) != GST_FLOW_OK) {
        checkBus();
        if (m_error.isEmpty())
            m_error = QStringLiteral("The video file could not be written.");
        return false;
    }
    return checkBus();
}

bool VideoWriter::addFrame(const QImage& frame)
{
    if (!m_p || !m_error.isEmpty())
        return false;
    // A picture's key changes whenever its pixels do: the same key is the same frame.
    if (m_p->last && frame.cacheKey() == m_p->lastKey) {
        // A new buffer for the new time, sharing the pixels of the one before.
        GstBuffer* again = gst_buffer_copy(m_p->last);
        stamp(again);
        return push(m_p->video, again);
    }
    QImage picture = frame;
    if (picture.format() != QImage::Format_RGB32 && picture.format() != QImage::Format_ARGB32)
        picture = picture.convertToFormat(QImage::Format_RGB32);
    if (picture.size() != m_size)
        picture = picture.scaled(m_size);
    if (picture.bytesPerLine() != GST_VIDEO_INFO_PLANE_STRIDE(&m_p->rgb, 0))
        picture = picture.copy();
    // The picture's own pixels are read in place.
    GstBuffer* source = gst_buffer_new_wrapped_full(
        GST_MEMORY_FLAG_READONLY, const_cast<uchar*>(picture.constBits()),
        gsize(picture.sizeInBytes()), 0, gsize(picture.sizeInBytes()), nullptr, nullptr);
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&m_p->yuv), nullptr);
    GstVideoFrame in;
    GstVideoFrame out;
    const bool mappedIn = gst_video_frame_map(&in, &m_p->rgb, source, GST_MAP_READ);
    const bool mappedOut = mappedIn && gst_video_frame_map(&out, &m_p->yuv, buffer, GST_MAP_WRITE);
    if (mappedOut) {
        gst_video_converter_frame(m_p->converter, &in, &out);
        gst_video_frame_unmap(&out);
    }
    if (mappedIn)
        gst_video_frame_unmap(&in);
    gst_buffer_unref(source);
    if (!mappedOut) {
        gst_buffer_unref(buffer);
        m_error = QStringLiteral("The video file could not be written.");
        return false;
    }
    stamp(buffer);
    if (m_p->last)
        gst_buffer_unref(m_p->last);
    m_p->last = gst_buffer_ref(buffer);
    m_p->lastKey = frame.cacheKey();
    return push(m_p->video, buffer);
}

void VideoWriter::stamp(void* buffer)
{
    auto* b = static_cast<GstBuffer*>(buffer);
    GST_BUFFER_PTS(b) = gst_util_uint64_scale(guint64(m_frames), GST_SECOND, guint64(m_fps));
    GST_BUFFER_DURATION(b) =
        gst_util_uint64_scale(guint64(m_frames + 1), GST_SECOND, guint64(m_fps)) -
        GST_BUFFER_PTS(b);
    ++m_frames;
}

bool VideoWriter::addAudio(const qint16* samples, qint64 frames)
{
    if (!m_p || !m_error.isEmpty())
        return false;
    if (frames <= 0)
        return true;
    const gsize bytes = gsize(frames) * kExportAudioChannels * sizeof(qint16);
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, bytes, nullptr);
    gst_buffer_fill(buffer, 0, samples, bytes);
    GST_BUFFER_PTS(buffer) =
        gst_util_uint64_scale(guint64(m_samples), GST_SECOND, guint64(kExportAudioRate));
    GST_BUFFER_DURATION(buffer) =
        gst_util_uint64_scale(guint64(m_samples + frames), GST_SECOND, guint64(kExportAudioRate)) -
        GST_BUFFER_PTS(buffer);
    m_samples += frames;
    return push(m_p->audio, buffer);
}

bool VideoWriter::finish()
{
    if (!m_p)
        return false;
    if (m_error.isEmpty()) {
        gst_app_src_end_of_stream(GST_APP_SRC(m_p->video));
        gst_app_src_end_of_stream(GST_APP_SRC(m_p->audio));
        GstMessage* message = gst_bus_timed_pop_filtered(
            m_p->bus, GST_CLOCK_TIME_NONE, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
        if (message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
            GError* error = nullptr;
            gst_message_parse_error(message, &error, nullptr);
            m_error = error ? QString::fromUtf8(error->message)
                            : QStringLiteral("The video file could not be written.");
            if (error)
                g_error_free(error);
        }
        if (message)
            gst_message_unref(message);
    }
    close();
    if (!m_error.isEmpty()) {
        discardPart();
        return false;
    }
    // The finished file takes its name; an older file of that name goes only now.
    if (QFile::exists(m_path) && !QFile::remove(m_path)) {
        m_error = QStringLiteral("The file could not be replaced.");
        discardPart();
        return false;
    }
    if (!QFile::rename(m_part, m_path)) {
        m_error = QStringLiteral("The file could not be renamed.");
        discardPart();
        return false;
    }
    m_part.clear();
    return true;
}

void VideoWriter::close()
{
    if (!m_p)
        return;
    gst_element_set_state(m_p->pipeline, GST_STATE_NULL);
    if (m_p->last)
        gst_buffer_unref(m_p->last);
    if (m_p->converter)
        gst_video_converter_free(m_p->converter);
    gst_object_unref(m_p->video);
    gst_object_unref(m_p->audio);
    gst_object_unref(m_p->bus);
    gst_object_unref(m_p->pipeline);
    delete m_p;
    m_p = nullptr;
}

void VideoWriter::discardPart()
{
    if (m_part.isEmpty())
        return;
    QFile::remove(m_part + QStringLiteral(".moov"));
    QFile::remove(m_part);
    m_part.clear();
}

void VideoWriter::abort()
{
    close();
    discardPart();
}

} // namespace kavori
