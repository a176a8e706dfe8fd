#include "SystemSaver.h"
#include "XScreenSaverSaver.h"

#include <QCoreApplication>

namespace kavori {

// Our saver module here is this very program, run with "/S".
std::unique_ptr<SystemSaver> MakeHostSystemSaver()
{
    return std::make_unique<XScreenSaverSaver>(XScreenSaverConfigPath(),
                                               QCoreApplication::applicationFilePath());
}

} // namespace kavori
