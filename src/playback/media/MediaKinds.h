#pragma once

#include <QString>

namespace kavori {

// What a sound or slide file is, by its extension compared in upper case.
enum class SoundKind {
    None,     // not a sound the program plays
    Wave,     // through the wave channel
    MciAudio, // MP3, AU, SND, AIFF ... through the video/audio device
    Midi,     // through the sequencer
};

SoundKind SoundKindOf(const QString& file);

// A movie slide: played by the movie sequence instead of being loaded as a picture.
bool IsMovieFile(const QString& file);

// The device type a movie opens as: "AVIVideo" for ".AVI", "MPEGVideo" for the others.
QString MovieDeviceType(const QString& file);

} // namespace kavori
