#include "StartupState.h"

namespace kavori {

StartupState& CurrentStartup()
{
    static StartupState state;
    return state;
}

void ResetStartup()
{
    CurrentStartup() = StartupState();
}

} // namespace kavori
