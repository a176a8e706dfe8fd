#include "Settings.h"

namespace kavori {

Settings& CurrentSettings()
{
    static Settings settings;
    return settings;
}

void ResetSettings()
{
    CurrentSettings() = Settings();
}

} // namespace kavori
