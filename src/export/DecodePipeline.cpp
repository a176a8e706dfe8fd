#include "DecodePipeline.h"

#include "VideoWriter.h"

#include <QFile>
#include <QFileInfo>

namespace kavori {

bool DecodePipeline::open(const QByteArray& description, const QString& file)
{
    close();
    if (!QFileInfo(file).isFile() || !StartGStreamer())
        return false;
    GError* error = nullptr;
    m_pipeline = gst_parse_launch(description.constData(), &error);
    if (error) {
        g_error_free(error);
        close();
        return false;
    }
    GstElement* src = gst_bin_get_by_name(GST_BIN(m_pipeline), "src");
    m_sink = gst_bin_get_by_name(GST_BIN(m_pipeline), "sink");
    if (!src || !m_sink) {
        if (src)
            gst_object_unref(src);
        close();
        return false;
    }
    g_object_set(src, "location", QFile::encodeName(file).constData(), nullptr);
    gst_object_unref(src);
    if (gst_element_set_state(m_pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        close();
        return false;
    }
    return true;
}

void DecodePipeline::close()
{
    if (m_pipeline)
        gst_element_set_state(m_pipeline, GST_STATE_NULL);
    if (m_sink)
        gst_object_unref(m_sink);
    if (m_pipeline)
        gst_object_unref(m_pipeline);
    m_sink = nullptr;
    m_pipeline = nullptr;
}

} // namespace kavori
