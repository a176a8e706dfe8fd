#include "SystemSaver.h"

#include "runtime/MsgBox.h"

namespace kavori {

namespace {
std::unique_ptr<SystemSaver>& installed()
{
    static std::unique_ptr<SystemSaver> saver;
    return saver;
}
} // namespace

QString SaverModuleName()
{
    return QStringLiteral("Kavori Screen Saver");
}

QString MissingModuleMessage(const QString& modulePath)
{
    return QStringLiteral("An error occurred while trying to make this screen saver the current "
                          "one.") +
           NewLine() + QStringLiteral("ERROR: \"") + modulePath +
           QStringLiteral("\" could not be found...");
}

SystemSaver& CurrentSystemSaver()
{
    auto& saver = installed();
    if (!saver)
        saver = MakeHostSystemSaver();
    return *saver;
}

std::unique_ptr<SystemSaver> InstallSystemSaver(std::unique_ptr<SystemSaver> saver)
{
    return std::exchange(installed(), std::move(saver));
}

} // namespace kavori
