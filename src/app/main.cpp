#include "AppStyle.h"
#include "Screenshot.h"
#include "runtime/Random.h"
#include "startup/EntryRoutine.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kavorix"));
    QApplication::setApplicationName(QStringLiteral("Kavori"));
    QApplication::setStyle(new kavori::AppStyle);
    kavori::Randomize();

    kavori::ScreenshotFirstWindowIfAsked();
    kavori::ScreenshotShowIfAsked();
    const std::optional<int> exitCode = kavori::RunEntryRoutine(app.arguments().mid(1));
    if (exitCode)
        return *exitCode;
    return QApplication::exec();
}
