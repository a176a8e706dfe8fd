#pragma once

#include "MciDevice.h"

#include <fluidsynth.h>

namespace kavori {

// The sequencer device: MIDI files played by FluidSynth with the General MIDI SoundFont found
// on the system, out through FluidSynth's own audio driver.
class SequencerDevice final : public MciDevice {
public:
    SequencerDevice() = default;
    ~SequencerDevice() override;
    SequencerDevice(const SequencerDevice&) = delete;
    SequencerDevice& operator=(const SequencerDevice&) = delete;

    quint32 open(const QString& element) override;
    quint32 play(std::optional<qint64> from, std::optional<qint64> to) override;
    quint32 stop() override;
    quint32 pause() override;
    MciMode mode() override;
    quint32 setTimeFormat(MciTimeFormat format) override;

private:
    void dropPlayer();

    QByteArray m_file;
    fluid_settings_t* m_settings = nullptr;
    fluid_synth_t* m_synth = nullptr;
    fluid_audio_driver_t* m_driver = nullptr;
    fluid_player_t* m_player = nullptr;
    bool m_paused = false;
};

} // namespace kavori
