#pragma once

#include "ShowFrames.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// Reads a sound file into interleaved stereo 16-bit samples at the export's rate: MIDI is
// played through FluidSynth with the system's SoundFont, faster than real time; every other
// kind (WAV, MP3, ...) goes through GStreamer's decoders. At most maxFrames sample frames are
// kept (no limit when negative). False when the file cannot be read as sound.
bool ReadSoundSamples(const QString& file, QVector<qint16>& samples, qint64 maxFrames = -1);

// The sound track of an exported show: the cues of the walk, each sound placed where the
// player would start it and cut off by the next, the play list going round, silence where
// nothing plays.
class ShowSoundtrack {
public:
    // duration in microseconds; the play list's random order draws from the random source
    // seeded with seed.
    ShowSoundtrack(const QVector<SoundCue>& cues, qint64 duration, quint32 seed);

    // Reads every sound the cues name and lays them out. Sounds that cannot be read are
    // silent and listed in failures().
    void prepare();
    // Sample frames [from, from + count) of the track, interleaved stereo.
    void render(qint64 from, qint64 count, qint16* out) const;
    // Adds a sound (a movie's) over the track from a sample frame on.
    void mixIn(qint64 at, const QVector<qint16>& samples);

    qint64 frames() const { return m_frames; }
    const QStringList& failures() const { return m_failures; }

    // One sound laid on the track: frames [start, end) play the sound from its beginning,
    // repeating when it loops.
    struct Piece {
        qint64 start = 0;
        qint64 end = 0;
        const QVector<qint16>* sound = nullptr;
        QString file;
    };
    const QVector<Piece>& pieces() const { return m_pieces; }

private:
    const QVector<qint16>* sound(const QString& file);
    void layFile(const QString& file, qint64 start, qint64 stop, bool loop);
    void layPlayList(qint64 start, qint64 stop);

    QVector<SoundCue> m_cues;
    qint64 m_frames = 0;
    quint32 m_seed = 0;
    QHash<QString, QVector<qint16>> m_sounds; // by file; empty when unreadable
    QVector<Piece> m_pieces;
    struct Overlay {
        qint64 at = 0;
        QVector<qint16> samples;
    };
    QVector<Overlay> m_overlays;
    QStringList m_failures;
};

// The sample frame at a time in microseconds.
inline qint64 SampleFrameAt(qint64 microseconds)
{
    return microseconds * 48000 / 1000000;
}

} // namespace kavori
