// kav-export: exports a slide show to a video file from the command line, without a window.
//   kav-export SHOW OUTPUT [--size 1920x1080] [--fps 30] [--seed N]
// The program's own command line stays as it is; this is a program of its own beside it.
#include "export/ShowExport.h"
#include "runtime/MsgBox.h"
#include "runtime/UnattendedPrompts.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShowFile.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <cstdio>
#include <optional>

namespace {

using namespace kavori;

} // namespace

int main(int argc, char* argv[])
{
    // Frames are drawn into pictures, never onto a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QStringList arguments = app.arguments();
    arguments.removeFirst();
    const ExportCommand command = ParseExportCommand(arguments);
    if (!command.error.isEmpty()) {
        std::fprintf(stderr, "%s\n%s\n", qPrintable(command.error), qPrintable(ExportUsage()));
        return 2;
    }
    // Messages go to the standard error and are answered with their default button; there is
    // no one to pick files.
    InstallPrompts(MakeUnattendedPrompts([](const QString& text) {
        QString line = text;
        line.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        std::fprintf(stderr, "%s\n", qPrintable(line));
    }));
    LoadSettings();
    if (!ReadSlideShow(command.show))
        return 1;

    QElapsedTimer clock;
    clock.start();
    qint64 shown = -1;
    const ExportResult result = ExportShowToVideo(command.options, [&](qint64 done, qint64 total) {
        const qint64 second = clock.elapsed() / 1000;
        if (second != shown || done == total) {
            shown = second;
            std::fprintf(stderr, "\rframe %lld of %lld, %s    ", static_cast<long long>(done),
                         static_cast<long long>(total),
                         qPrintable(ExportTimeLeftText(done, total, clock.elapsed() / 1000.0)));
        }
        return true;
    });
    std::fprintf(stderr, "\n");
    if (!result.message.isEmpty())
        MsgBox(result.message, result.written ? vbInformation : vbExclamation);
    if (!result.written)
        return 1;
    std::printf("%s: %lld frames, %.2f s\n", qPrintable(command.options.output),
                static_cast<long long>(result.frames), result.duration / 1e6);
    return 0;
}
