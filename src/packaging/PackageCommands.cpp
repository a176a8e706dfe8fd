#include "PackageCommands.h"

#include "DelPackageFrm.h"
#include "PackageFrm.h"
#include "runtime/Commands.h"

namespace kavori {

void ConnectPackageCommands(QWidget* window)
{
    EnableCommand(window, "mnuPackage", [window] {
        PackageFrm dialog(window);
        dialog.exec();
    });
    EnableCommand(window, "mnuDeletePackage", [window] {
        DelPackageFrm dialog(window);
        dialog.exec();
    });
}

} // namespace kavori
