#include "CommandLine.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/WindowLock.h"
#include "runtime/MsgBox.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

QString JoinArguments(const QStringList& arguments)
{
    return arguments.join(u' ');
}

NormalizedCommandLine NormalizeCommandLine(const QString& raw)
{
    NormalizedCommandLine out;
    QString line = raw.trimmed();
    if (line.startsWith(u'"'))
        line.remove(0, 1);
    if (line.endsWith(u'"'))
        line.chop(1);
    if (line.left(8).toUpper() == QLatin1String("LOADTIME")) {
        out.loadTime = true;
        line = line.mid(8).trimmed();
    }
    out.commandLine = line;
    return out;
}

// A leading "/" marks a switch ("/C", "/ABOUT", "/SCRNSAVE ..."), but on this system it also
// starts every full path: it is a switch only when its first word holds no other "/" and
// names nothing that exists.
bool IsSwitchSlash(const QString& commandLine)
{
    if (!commandLine.startsWith(u'/'))
        return false;
    const QString firstWord = commandLine.section(u' ', 0, 0);
    return !firstWord.mid(1).contains(u'/') && !QFileInfo::exists(commandLine);
}

EditRequest TakeEditRequest(const QString& commandLine)
{
    EditRequest out;
    if (commandLine.left(6).toUpper() == QLatin1String("/EDIT ")) {
        const QString file = commandLine.mid(6);
        const bool usable = IsFullPath(file) && HasExtension(file, QStringLiteral(".KAV")) &&
                            file.size() >= 5 && QFileInfo(file).isFile();
        out.editFile = usable ? file : QString();
        return out;
    }
    out.commandLine = IsSwitchSlash(commandLine) ? commandLine.mid(1) : commandLine;
    return out;
}

QString ScreenSaverWindowTitle()
{
    return QStringLiteral("Screen Saver Main Form");
}

QString ScreenSaverSettingsWindowTitle()
{
    return QStringLiteral("Kavori - [Screen Saver Settings]");
}

StartDecision DecideStartMode(const QString& commandLine, const StartOptions& options)
{
    StartDecision d;
    QString line = commandLine;
    if (line.isEmpty())
        return d;

    if (IsImageFile(line)) {
        const bool fullScreenWord = line.left(10).toUpper() == QLatin1String("FULLSCREEN");
        if (fullScreenWord || options.startFullScreen) {
            if (fullScreenWord)
                line = line.mid(10);
            d.mode = StartMode::FullScreenImage;
            d.fullFile = line.trimmed();
            d.exitAfterFullScreen = options.cmdLineExit;
            // Back in the main window afterwards, the image stays open there.
            d.commandLine = d.fullFile;
            return d;
        }
    }

    // "SCRNSAVE" is recognised only in capitals.
    if (line.startsWith(QLatin1String("SCRNSAVE"))) {
        line = line.mid(8).trimmed();
        d.screenSaverMode = true;
    }

    if (line.trimmed().toUpper() == QLatin1String("C")) {
        d.screenSaverMode = true;
        const bool running = WindowLock::Exists(ScreenSaverWindowTitle()) ||
                             WindowLock::Exists(ScreenSaverSettingsWindowTitle());
        d.mode = running ? StartMode::End : StartMode::ScreenSaverSettings;
        return d;
    }

    if (!HasExtension(line, QStringLiteral(".KAV"))) {
        if (d.screenSaverMode) {
            d.mode = StartMode::End; // a screen saver without a show does nothing
            return d;
        }
        d.commandLine = line;
        return d;
    }

    d.mode = d.screenSaverMode ? StartMode::ScreenSaver : StartMode::SlideShow;
    d.showPath = line;
    const QString drive = line.left(3).toUpper();
    if (drive == QLatin1String("A:\\") || drive == QLatin1String("B:\\")) {
        if (line.size() <= 7)
            d.floppy = FloppyCheck::InvalidFileName;
        else if (QDir(line.left(3)).entryList(QDir::Files).isEmpty())
            d.floppy = FloppyCheck::AskForDisk;
    }
    return d;
}

QString FloppyDiskQuestion(const QString& path)
{
    return QStringLiteral("Please be sure the disk that contains the file:") + NewLine2() +
           path.mid(2) + NewLine2() + QStringLiteral("...is in Floppy Drive ") +
           path.left(2).toUpper() + NewLine2() +
           QStringLiteral("Press the \"OK\" button to continue.");
}

QString InvalidFileNameMessage(const QString& path)
{
    return path + QStringLiteral(" is not a valid filename...");
}

} // namespace kavori
