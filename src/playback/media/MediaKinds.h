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

// Whether a slide is a movie is IsMovieFile of imaging/ImageTypes.h.

// The device type a movie opens as: "AVIVideo" for ".AVI", "MPEGVideo" for the others.
QString MovieDeviceType(const QString& file);

} // namespace kavori
