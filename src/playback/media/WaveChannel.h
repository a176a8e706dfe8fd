#pragma once

#include <QString>
#include <QVector>

#include <memory>
#include <optional>

namespace kavori {

// The one wave channel, after the platform's PlaySoundA: a new sound stops the one playing,
// so playing the silent BLANK.WAV is how the program cuts off a looping sound.

enum WaveFlag : unsigned {
    SndSync = 0x00,      // returns when the sound has ended
    SndAsync = 0x01,     // returns at once
    SndNoDefault = 0x02, // a missing or damaged file stays silent instead of beeping
    SndLoop = 0x08,      // repeats until the next sound; needs SndAsync
};

// Plays a wave file. An empty file only stops the sound playing. False when the file cannot be
// played (missing, not a wave file) or the flags do not go together.
bool PlayWaveSound(const QString& file, unsigned flags);

// A sound is playing on the channel.
bool IsWavePlaying();

// Every call, oldest first.
struct WaveCall {
    QString file;
    unsigned flags = 0;
};
QVector<WaveCall> WaveSoundLog();
void ClearWaveSoundLog();

// Where the channel's sound goes. The system output plays through Qt Multimedia; tests put in
// their own.
class WaveOutput {
public:
    virtual ~WaveOutput() = default;
    virtual bool start(const QString& file, bool loop) = 0;
    virtual void stop() = 0;
    virtual bool isPlaying() = 0;
};

// Installs an output and returns the one it replaces; null goes back to the system output.
std::unique_ptr<WaveOutput> SetWaveOutput(std::unique_ptr<WaveOutput> output);

// The playing time of a wave file in milliseconds; no value when it is not a wave file.
std::optional<qint64> WaveDuration(const QString& file);

} // namespace kavori
