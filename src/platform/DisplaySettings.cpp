#include "DisplaySettings.h"

#include "DesktopPrograms.h"

namespace kavori {

bool OpenDisplaySettings()
{
    return StartDesktopProgram(DisplaySettingsPrograms());
}

} // namespace kavori
