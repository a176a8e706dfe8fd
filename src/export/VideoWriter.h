#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace kavori {

// The containers a show is exported to.
enum class VideoFormat {
    Mp4,  // H.264 and AAC
    WebM, // VP9 and Opus
};

// The audio every video carries: 48 kHz, two channels, 16-bit, interleaved.
constexpr int kExportAudioRate = 48000;
constexpr int kExportAudioChannels = 2;

// Makes GStreamer ready (once per process). False when it cannot start.
bool StartGStreamer();

// Writes a video file through GStreamer: frames and sound go in through two application
// sources, are encoded and multiplexed into the file. The file is written under a temporary
// name beside it and takes its own name only when finish() succeeds; abort() and a failure
// delete it, so no half-written file is ever left under the name asked for.
class VideoWriter {
public:
    VideoWriter();
    ~VideoWriter();
    VideoWriter(const VideoWriter&) = delete;
    VideoWriter& operator=(const VideoWriter&) = delete;

    // False (with error()) when an encoder is missing or the file cannot be made.
    bool open(const QString& path, VideoFormat format, const QSize& size, int fps);
    // One frame (32-bit RGB, the size given to open()), shown 1 / fps seconds. A picture
    // unchanged since the frame before (the same QImage::cacheKey()) costs next to nothing.
    bool addFrame(const QImage& frame);
    // Interleaved stereo samples following the ones before.
    bool addAudio(const qint16* samples, qint64 frames);
    // Ends the streams, waits for the file to be complete and gives it its name.
    bool finish();
    // Stops and deletes what was written.
    void abort();

    QString error() const { return m_error; }
    // The temporary file being written (empty when none).
    QString partPath() const { return m_part; }

private:
    struct Pipeline;
    bool push(void* source, void* buffer);
    // Gives a video buffer the time of the next frame.
    void stamp(void* buffer);
    bool checkBus();
    void close();
    void discardPart();

    Pipeline* m_p = nullptr;
    QString m_path;
    QString m_part;
    QString m_error;
    int m_fps = 30;
    QSize m_size;
    qint64 m_frames = 0;
    qint64 m_samples = 0;
};

// The file name extension of a format, with its dot (".mp4", ".webm").
QString VideoExtension(VideoFormat format);

} // namespace kavori
