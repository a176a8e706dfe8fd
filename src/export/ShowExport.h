#pragma once

#include "VideoWriter.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>

namespace kavori {

// What an export makes: the format, the picture's size and rate, the seed of every random
// choice (the same seed gives the same video) and the file.
struct ExportOptions {
    VideoFormat format = VideoFormat::Mp4;
    QSize size{1920, 1080};
    int fps = 30;
    quint32 seed = 1;
    QString output;
};

// The sizes and rates the export dialog offers.
QStringList ExportSizeNames(); // "1280 x 720 (720p)", ...
QSize ExportSizeAt(int choice);
QVector<int> ExportFrameRates(); // 25, 30, 60

// The refusal of options that cannot make a video (no file, a size or rate out of range, an
// odd size), or empty.
QString CheckExportOptions(const ExportOptions& options);

// Reads "1920x1080" (or "1920 x 1080"); an invalid size when it is not one.
QSize ParseExportSize(const QString& text);

struct ExportResult {
    bool written = false;
    bool cancelled = false;
    QString message; // the refusal or failure, or the notes of a finished export
    qint64 frames = 0;
    qint64 duration = 0; // microseconds
};

// Called after each frame with the frames done and the total; false cancels the export.
using ExportProgress = std::function<bool(qint64 done, qint64 total)>;

// Exports the show in memory, with the current settings, to a video file: plans the walk,
// lays out the sound, then draws and encodes frame by frame with the sound beside. A cancelled
// or failed export leaves no file behind (and an older file of the name as it was).
ExportResult ExportShowToVideo(const ExportOptions& options, const ExportProgress& progress = {});

// "about 1:05 left" from the frames done, the total and the seconds taken so far.
QString ExportTimeLeftText(qint64 done, qint64 total, double seconds);

} // namespace kavori

namespace kavori {

// The command line of kav-export: SHOW OUTPUT [--size WxH] [--fps N] [--seed N]. The format
// follows the output's extension (".webm" for WebM, ".mp4" or ".m4v" for MP4).
struct ExportCommand {
    QString show;
    ExportOptions options;
    QString error; // what is wrong with the command line, or empty
};
ExportCommand ParseExportCommand(const QStringList& arguments);
QString ExportUsage();

} // namespace kavori

namespace kavori {

// The file name the export dialog offers: the last video made, else the show's name beside
// it, else "Slide Show" in the home folder; with the format's extension.
QString SuggestedVideoFile(const QString& lastFile, const QString& showPath, VideoFormat format);
// A file name with its extension changed to the format's (a name without one gets it added).
QString WithVideoExtension(const QString& file, VideoFormat format);

} // namespace kavori
