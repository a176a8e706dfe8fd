#include "Screenshot.h"
#include "platform/AppPaths.h"
#include "runtime/Random.h"
#include "viewer/MainViewFrm.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kavorix"));
    QApplication::setApplicationName(QStringLiteral("Kavori"));
    kavori::EnsureAppHome();
    kavori::Randomize();

    kavori::MainViewFrm window;
    window.show();

    kavori::ScreenshotFirstWindowIfAsked();
    return QApplication::exec();
}
