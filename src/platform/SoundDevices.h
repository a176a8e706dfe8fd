#pragma once

#include <QString>

#include <optional>

namespace kavori {

// At least one audio output exists (the wave devices of the original design).
bool DetectWaveDevices();
// MIDI plays through FluidSynth, so MIDI output exists when a General MIDI SoundFont is found
// and there is an audio output to play it to.
bool DetectMidiDevices();
// The SoundFont MIDI plays with: $KAVORI_SOUNDFONT, else the first one Debian's packages put
// in the usual places. Empty when there is none.
QString SoundFontPath();

// Tests decide what the machine has; no value goes back to asking the system.
void SetSoundDevicesOverride(std::optional<bool> wave, std::optional<bool> midi);

} // namespace kavori
