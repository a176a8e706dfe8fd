#pragma once

#include <QByteArray>
#include <QString>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

namespace kavori {

// A GStreamer pipeline that decodes one file for the export: a description that starts with
// "filesrc name=src" and ends in "appsink name=sink", given the file and set playing. What it
// decodes is pulled from sink().
class DecodePipeline {
public:
    DecodePipeline() = default;
    ~DecodePipeline() { close(); }
    DecodePipeline(const DecodePipeline&) = delete;
    DecodePipeline& operator=(const DecodePipeline&) = delete;

    // False, with nothing held, when the file is missing, GStreamer cannot start, the
    // description is refused or the pipeline will not play.
    bool open(const QByteArray& description, const QString& file);
    // Stops the pipeline and lets it go; open() may be called again.
    void close();

    GstElement* pipeline() const { return m_pipeline; }
    GstAppSink* sink() const { return GST_APP_SINK(m_sink); }

private:
    GstElement* m_pipeline = nullptr;
    GstElement* m_sink = nullptr;
};

} // namespace kavori
