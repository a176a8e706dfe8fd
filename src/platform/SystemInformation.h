#pragma once

#include <QString>
#include <QVector>

namespace kavori {

// What the System Information dialog shows, gathered without a window: one labelled line for
// the system, processor, memory, display, Qt, GStreamer, sound and the program folder's disk.
struct SystemInfoLine {
    QString label;
    QString value;
};
QVector<SystemInfoLine> GatherSystemInformation();

// The readers of the system's own texts, kept apart so tests feed them recorded ones.
struct MemoryInfo {
    qint64 totalKb = 0;
    qint64 availableKb = 0; // what programs can still have, caches given back
};
MemoryInfo ParseMemInfo(const QString& procMeminfo);
// The processor's model name of /proc/cpuinfo (x86 "model name", ARM "Model"/"Hardware");
// empty when it names none.
QString ParseProcessorName(const QString& procCpuinfo);
// "1.22.0" from "gst-inspect-1.0 version 1.22.0\nGStreamer 1.22.0\n..."; empty when absent.
QString ParseGStreamerVersion(const QString& gstInspectOutput);

// Megabytes with thousands separators, "12,345 MB".
QString MegabytesText(qint64 bytes);

} // namespace kavori
