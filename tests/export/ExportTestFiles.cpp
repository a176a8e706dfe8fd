#include "ExportTestFiles.h"

#include "export/VideoWriter.h"

#include <QFile>
#include <QUrl>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <gst/pbutils/pbutils.h>

#include <algorithm>
#include <cmath>

namespace kavori::test {

QVector<QImage> DecodeVideoFrames(const QString& path, int step)
{
    QVector<QImage> frames;
    if (!StartGStreamer())
        return frames;
    GError* error = nullptr;
    GstElement* pipeline =
        gst_parse_launch("filesrc name=src ! decodebin ! videoconvert ! video/x-raw,format=BGRx ! "
                         "appsink name=sink sync=false",
                         &error);
    if (error) {
        g_error_free(error);
        return frames;
    }
    GstElement* src = gst_bin_get_by_name(GST_BIN(pipeline), "src");
    g_object_set(src, "location", QFile::encodeName(path).constData(), nullptr);
    gst_object_unref(src);
    GstElement* sink = gst_bin_get_by_name(GST_BIN(pipeline), "sink");
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    // A decoder that stalls or fails ends the list rather than the test run.
    int number = 0;
    while (GstSample* sample = gst_app_sink_try_pull_sample(GST_APP_SINK(sink), 10 * GST_SECOND)) {
        if (number++ % std::max(1, step) != 0) {
            gst_sample_unref(sample);
            continue;
        }
        GstCaps* caps = gst_sample_get_caps(sample);
        const GstStructure* s = gst_caps_get_structure(caps, 0);
        int width = 0, height = 0;
        gst_structure_get_int(s, "width", &width);
        gst_structure_get_int(s, "height", &height);
        GstBuffer* buffer = gst_sample_get_buffer(sample);
        GstMapInfo map;
        if (gst_buffer_map(buffer, &map, GST_MAP_READ)) {
            const QImage view(map.data, width, height, width * 4, QImage::Format_RGB32);
            frames.append(view.copy());
            gst_buffer_unmap(buffer, &map);
        }
        gst_sample_unref(sample);
    }
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(sink);
    gst_object_unref(pipeline);
    return frames;
}

Discovered Discover(const QString& path)
{
    Discovered out;
    if (!StartGStreamer())
        return out;
    GstDiscoverer* discoverer = gst_discoverer_new(10 * GST_SECOND, nullptr);
    if (!discoverer)
        return out;
    const QByteArray uri = QUrl::fromLocalFile(path).toEncoded();
    GstDiscovererInfo* info = gst_discoverer_discover_uri(discoverer, uri.constData(), nullptr);
    if (info && gst_discoverer_info_get_result(info) == GST_DISCOVERER_OK) {
        out.ok = true;
        out.duration = qint64(gst_discoverer_info_get_duration(info) / 1000);
        GList* videos = gst_discoverer_info_get_video_streams(info);
        if (videos) {
            auto* video = GST_DISCOVERER_VIDEO_INFO(videos->data);
            GstCaps* caps = gst_discoverer_stream_info_get_caps(GST_DISCOVERER_STREAM_INFO(video));
            gchar* text = gst_caps_to_string(caps);
            out.videoCaps = QString::fromUtf8(text);
            g_free(text);
            gst_caps_unref(caps);
            out.width = int(gst_discoverer_video_info_get_width(video));
            out.height = int(gst_discoverer_video_info_get_height(video));
            const guint den = gst_discoverer_video_info_get_framerate_denom(video);
            out.frameRate =
                den ? double(gst_discoverer_video_info_get_framerate_num(video)) / den : 0;
        }
        gst_discoverer_stream_info_list_free(videos);
        GList* audios = gst_discoverer_info_get_audio_streams(info);
        if (audios) {
            GstCaps* caps =
                gst_discoverer_stream_info_get_caps(GST_DISCOVERER_STREAM_INFO(audios->data));
            gchar* text = gst_caps_to_string(caps);
            out.audioCaps = QString::fromUtf8(text);
            g_free(text);
            gst_caps_unref(caps);
        }
        gst_discoverer_stream_info_list_free(audios);
    }
    if (info)
        gst_discoverer_info_unref(info);
    g_object_unref(discoverer);
    return out;
}

double Psnr(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 0;
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col) {
            const int dr = qRed(p[col]) - qRed(q[col]);
            const int dg = qGreen(p[col]) - qGreen(q[col]);
            const int db = qBlue(p[col]) - qBlue(q[col]);
            sum += dr * dr + dg * dg + db * db;
        }
    }
    const double mse = sum / (3.0 * x.width() * x.height());
    return mse == 0 ? 1000 : 10 * std::log10(255.0 * 255.0 / mse);
}

} // namespace kavori::test
