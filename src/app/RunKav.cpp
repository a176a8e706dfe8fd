#include "AppStyle.h"
#include "packaging/RuntimePlayer.h"
#include "runtime/Random.h"

#include <QApplication>

// The run-time player of a package folder: plays the package's show and nothing else.
int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kavorix"));
    QApplication::setApplicationName(QStringLiteral("Kavori"));
    QApplication::setStyle(new kavori::AppStyle);
    kavori::Randomize();

    // The package folder is the player's program folder: BLANK.WAV and RUN-KAV.INI are there,
    // and an installed Kavori's own folder is never touched.
    const QString folder = QCoreApplication::applicationDirPath();
    qputenv("KAVORI_HOME", folder.toLocal8Bit());
    return kavori::RunPackagedShow(folder, app.arguments().mid(1));
}
