#include "SequencerDevice.h"

#include "platform/SoundDevices.h"

#include <QFile>

namespace kavori {

SequencerDevice::~SequencerDevice()
{
    // The driver's thread renders from the synth and the player: it goes first.
    if (m_driver)
        delete_fluid_audio_driver(m_driver);
    dropPlayer();
    if (m_synth)
        delete_fluid_synth(m_synth);
    if (m_settings)
        delete_fluid_settings(m_settings);
}

quint32 SequencerDevice::open(const QString& element)
{
    const QString soundFont = SoundFontPath();
    if (soundFont.isEmpty())
        return MCIERR_DEVICE_NOT_INSTALLED;
    m_file = QFile::encodeName(element);
    if (!fluid_is_midifile(m_file.constData()))
        return MCIERR_INVALID_FILE;
    m_settings = new_fluid_settings();
    m_synth = m_settings ? new_fluid_synth(m_settings) : nullptr;
    if (!m_synth)
        return MCIERR_CANNOT_LOAD_DRIVER;
    if (fluid_synth_sfload(m_synth, QFile::encodeName(soundFont).constData(), 1) == FLUID_FAILED)
        return MCIERR_CANNOT_LOAD_DRIVER;
    // FluidSynth's own choice first, then the sound servers a desktop may run.
    m_driver = new_fluid_audio_driver(m_settings, m_synth);
    for (const char* name : {"pulseaudio", "pipewire", "alsa", "sdl2"}) {
        if (m_driver)
            break;
        if (fluid_settings_setstr(m_settings, "audio.driver", name) == FLUID_OK)
            m_driver = new_fluid_audio_driver(m_settings, m_synth);
    }
    return m_driver ? MCIERR_NONE : MCIERR_HARDWARE;
}

void SequencerDevice::dropPlayer()
{
    if (m_player) {
        fluid_player_stop(m_player);
        delete_fluid_player(m_player);
        m_player = nullptr;
    }
    if (m_synth)
        fluid_synth_all_notes_off(m_synth, -1);
}

quint32 SequencerDevice::play(std::optional<qint64> from, std::optional<qint64> to)
{
    // FluidSynth seeks in ticks and does not tell a file's tick length; only the start is
    // reachable, which is all the program asks for.
    if (to || (from && *from != 0))
        return MCIERR_UNSUPPORTED_FUNCTION;
    if (!from && m_paused && m_player) {
        m_paused = false;
        return fluid_player_play(m_player) == FLUID_OK ? MCIERR_NONE : MCIERR_HARDWARE;
    }
    // A finished player does not start again: every play from a position takes a fresh one.
    dropPlayer();
    m_paused = false;
    m_player = new_fluid_player(m_synth);
    if (!m_player)
        return MCIERR_HARDWARE;
    if (fluid_player_add(m_player, m_file.constData()) != FLUID_OK) {
        dropPlayer();
        return MCIERR_INVALID_FILE;
    }
    return fluid_player_play(m_player) == FLUID_OK ? MCIERR_NONE : MCIERR_HARDWARE;
}

quint32 SequencerDevice::stop()
{
    dropPlayer();
    m_paused = false;
    return MCIERR_NONE;
}

quint32 SequencerDevice::pause()
{
    if (m_player && fluid_player_get_status(m_player) == FLUID_PLAYER_PLAYING) {
        fluid_player_stop(m_player);
        fluid_synth_all_notes_off(m_synth, -1);
        m_paused = true;
    }
    return MCIERR_NONE;
}

MciMode SequencerDevice::mode()
{
    if (!m_player)
        return MciMode::Stopped;
    if (m_paused)
        return MciMode::Paused;
    return fluid_player_get_status(m_player) == FLUID_PLAYER_PLAYING ? MciMode::Playing
                                                                     : MciMode::Stopped;
}

quint32 SequencerDevice::setTimeFormat(MciTimeFormat format)
{
    return format == MciTimeFormat::Milliseconds ? MCIERR_NONE : MCIERR_BAD_TIME_FORMAT;
}

} // namespace kavori
