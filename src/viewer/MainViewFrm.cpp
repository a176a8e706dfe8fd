#include "MainViewFrm.h"

#include "runtime/MsgBox.h"

namespace kavori {

MainViewFrm::MainViewFrm(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MainViewFrm"));
    setWindowTitle(AppTitle());
    resize(634, 474); // the default 9510 x 7110 twips at 15 twips per pixel
}

} // namespace kavori
