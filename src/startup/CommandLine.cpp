#include "CommandLine.h"

#include "imaging/ImageTypes.h"
#include "packaging/SaverSetup.h"
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

QStringList SeveralPictures(const QStringList& arguments)
{
    if (arguments.size() < 2 || QFileInfo(JoinArguments(arguments)).isFile())
        return {};
    QStringList paths;
    for (const QString& argument : arguments) {
        const QFileInfo file(argument);
        if (!file.isFile() || !IsImageFile(argument))
            return {};
        paths << file.absoluteFilePath();
    }
    return paths;
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

namespace {
// "0x1a00003" or "27262979", as XScreenSaver writes window ids.
quintptr windowNumber(const QString& text)
{
    bool ok = false;
    const quintptr id = text.trimmed().toULongLong(&ok, 0);
    return ok ? id : 0;
}
} // namespace

SaverModuleRun ParseSaverModuleRun(const QString& commandLine, const QString& saverWindowVariable)
{
    SaverModuleRun run;
    QStringList words = commandLine.split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty() || words[0].compare(QLatin1String("/S"), Qt::CaseInsensitive) != 0)
        return run;
    run.isRun = true;
    for (int i = 1; i < words.size(); ++i) {
        const QString word = words[i];
        if ((word == QLatin1String("-window-id") || word == QLatin1String("--window-id")) &&
            i + 1 < words.size())
            run.windowId = windowNumber(words[++i]);
        else if (word == QLatin1String("-root") || word == QLatin1String("--root"))
            run.windowId = 0;
    }
    // XScreenSaver names the window it made for us in the environment.
    if (run.windowId == 0)
        run.windowId = windowNumber(saverWindowVariable);
    return run;
}

QString ScreenSaverWindowTitle()
{
    return QStringLiteral("Screen Saver Main Form");
}

QString ScreenSaverSettingsWindowTitle()
{
    return SaverSetup::WindowTitle();
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
