#include "SoundDevices.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>

namespace kavori {

namespace {
struct Override {
    std::optional<bool> wave;
    std::optional<bool> midi;
};
Override& override_()
{
    static Override o;
    return o;
}
} // namespace

bool DetectWaveDevices()
{
    if (override_().wave)
        return *override_().wave;
    return !QMediaDevices::audioOutputs().isEmpty();
}

QString SoundFontPath()
{
    const QString fromEnv = qEnvironmentVariable("KAVORI_SOUNDFONT");
    if (!fromEnv.isEmpty())
        return QFileInfo(fromEnv).isFile() ? fromEnv : QString();
    for (const char* candidate :
         {"/usr/share/sounds/sf2/default-GM.sf2", "/usr/share/sounds/sf2/TimGM6mb.sf2",
          "/usr/share/sounds/sf2/FluidR3_GM.sf2", "/usr/share/soundfonts/default.sf2"}) {
        const QString path = QString::fromLatin1(candidate);
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

bool DetectMidiDevices()
{
    if (override_().midi)
        return *override_().midi;
    // The synthesiser needs a SoundFont and somewhere to play to.
    return !SoundFontPath().isEmpty() && DetectWaveDevices();
}

void SetSoundDevicesOverride(std::optional<bool> wave, std::optional<bool> midi)
{
    override_() = {wave, midi};
}

} // namespace kavori
