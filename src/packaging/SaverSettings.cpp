#include "SaverSettings.h"

#include "platform/AppPaths.h"
#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "runtime/VbColor.h"
#include "settings/IniStore.h"
#include "settings/RecentShows.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "systemsaver/SystemSaver.h"

#include <QCoreApplication>
#include <QSet>

namespace kavori {

namespace {

const QString kSettings = QStringLiteral("Settings");
const QString kCurrentSaver = QStringLiteral("CurrentSaver");
constexpr int kIntervals = 60;

QString flag(bool on)
{
    return on ? QStringLiteral("True") : QStringLiteral("False");
}

// A slide's background as the user sees it: the custom colour counts only with mode 6.
qint64 backgroundOf(const Slide& slide)
{
    const qint64 mode = slide.SlideBackMode;
    return mode == kSaverCustom ? (mode << 32) | quint32(slide.SlideBackColor) : mode << 32;
}

bool differingBackgrounds(const SlideShow& show)
{
    QSet<qint64> seen;
    for (const Slide& slide : show.slides)
        seen.insert(backgroundOf(slide));
    return seen.size() > 1;
}

bool differingIntervals(const SlideShow& show)
{
    QSet<int> seen;
    for (const Slide& slide : show.slides)
        seen.insert(slide.SlideDelay);
    return seen.size() > 1;
}

// The choices that come from the show in memory.
void takeShowValues(SaverChoices& c)
{
    const Settings& s = CurrentSettings();
    const SlideShow& show = CurrentShow();
    c.intervalIndex = qBound(0, int(s.SlideInterval) - 1, kIntervals - 1);
    c.keepIntervals = show.UseSlideIntervals;
    c.randomOrder = s.RandomSlides;
    c.soundNote = ScreenSaverSoundNote();
    c.color = kSaverKeepColors;
    if (!show.slides.isEmpty() && !differingBackgrounds(show)) {
        const Slide& first = show.slides.first();
        if (first.SlideBackMode >= kSaverBlack && first.SlideBackMode <= kSaverCustom)
            c.color = first.SlideBackMode;
        if (first.SlideBackMode == kSaverCustom)
            c.customColor = FromVbColor(first.SlideBackColor);
    }
}

void noShowMessage(const QString& text)
{
    MsgBox(text, vbInformation);
}

} // namespace

QStringList SaverIntervalItems()
{
    QStringList items{QStringLiteral("1 second")};
    for (int n = 2; n <= kIntervals; ++n)
        items.append(QString::number(n) + QStringLiteral(" seconds"));
    return items;
}

QStringList SaverPasswordDelayItems()
{
    return {QStringLiteral("None"), QStringLiteral("5 Sec."), QStringLiteral("10 Sec."),
            QStringLiteral("30 Sec."), QStringLiteral("1 Min.")};
}

QString SaverNameOnly(const QString& showPath)
{
    if (showPath.isEmpty())
        return QStringLiteral("[No Slide Show Specified]");
    const QString name = FileNameOf(showPath);
    return name.left(qMax(0, int(name.size()) - 4));
}

SaverChoices LoadSaverChoices()
{
    const Settings& s = CurrentSettings();
    SaverChoices c;
    c.showPath = GetSetting(kSettings, kCurrentSaver);
    c.startAtLast = s.ResumeLastDisplayed;
    c.sound = s.ScreenSaverSound;
    c.passwordDelay = qBound(0, int(s.PasswordDelay), 4);
    if (!c.showPath.isEmpty() && ReadScreenSaverShow(c.showPath))
        takeShowValues(c);
    return c;
}

bool SelectSaverShow(const QString& path, SaverChoices& choices)
{
    if (path.isEmpty() || !ReadScreenSaverShow(path))
        return false;
    choices.showPath = path;
    takeShowValues(choices);
    return true;
}

bool SaveSaverChoices(const SaverChoices& c, SystemSaver& system)
{
    if (c.showPath.isEmpty()) {
        noShowMessage(QStringLiteral(
            "A screen saver file has not been selected yet, unable to save changes..."));
        return false;
    }
    Settings& s = CurrentSettings();
    SaveSetting(kSettings, kCurrentSaver, c.showPath);

    s.ResumeLastDisplayed = c.startAtLast;
    s.PasswordDelay = qint16(c.passwordDelay);
    s.LastSlideShow = c.showPath;
    s.ScreenSaverSound = c.sound;
    // A show already in the list keeps its place, on purpose.
    if (s.KeepRecent)
        AddRecentShow(c.showPath);

    SlideShow& show = CurrentShow();
    if (c.color != kSaverKeepColors) {
        const bool setAll =
            !differingBackgrounds(show) ||
            MsgBox(QStringLiteral("This screen saver currently has different background colors "
                                  "specified for each slide in the show.") +
                       NewLine() + QStringLiteral("Set all slides to the selected color anyway?"),
                   vbYesNo + vbQuestion) == vbYes;
        if (setAll) {
            for (Slide& slide : show.slides) {
                slide.SlideBackMode = qint16(c.color);
                if (c.color == kSaverCustom)
                    slide.SlideBackColor = ToVbColor(c.customColor);
            }
        }
    }
    if (c.keepIntervals) {
        show.UseSlideIntervals = true;
    } else {
        const bool setAll =
            !differingIntervals(show) ||
            MsgBox(QStringLiteral("This screen saver file has more than one slide interval "
                                  "specified for the slides in the show.") +
                       NewLine() +
                       QStringLiteral("Set all slides to the selected interval anyway?"),
                   vbYesNo + vbQuestion) == vbYes;
        if (setAll) {
            show.UseSlideIntervals = false;
            s.SlideInterval = qint16(c.intervalIndex + 1);
        }
    }
    s.RandomSlides = c.randomOrder;

    // Only this dialog's keys: the show's own values in memory stay out of KAVORI.INI.
    const QString ini = SettingsFilePath();
    LoadIniFile(ini);
    SetIniValue(ViewerSection(), QStringLiteral("ResumeLastDisplayed"), flag(c.startAtLast));
    SetIniValue(ViewerSection(), QStringLiteral("PasswordDelay"), QString::number(c.passwordDelay));
    SetIniValue(ViewerSection(), QStringLiteral("LastSlideShow"), c.showPath);
    if (s.KeepRecent) {
        for (std::size_t i = 0; i < s.RecentShow.size(); ++i)
            SetIniValue(ViewerSection(), QStringLiteral("RecentShow") + QString::number(i + 1),
                        s.RecentShow[i]);
    }
    SetIniValue(ViewerSection(), QStringLiteral("ScreenSaverSound"), flag(c.sound));
    SaveIniFile(ini);
    WriteSlideShow(c.showPath);

    if (system.CurrentSaverName() != SaverModuleName()) {
        const QString error = system.MakeCurrent();
        if (!error.isEmpty())
            MsgBox(error, vbCritical, AppTitle());
    }
    return true;
}

bool EditSaverShow(const SaverChoices& c, SystemSaver& system, const ProgramStarter& start)
{
    if (c.showPath.isEmpty()) {
        noShowMessage(QStringLiteral("A screen saver file has not been selected yet.") + NewLine() +
                      QStringLiteral("Unable to edit slide show..."));
        return false;
    }
    MsgBox(AppTitle() + QStringLiteral(" will now start so that you can edit this screen saver.") +
               NewLine() + QStringLiteral("NOTE:") + NewLine() +
               QStringLiteral("Changes to the current settings will be saved and the Screen "
                              "Saver Settings dialog will be closed first..."),
           vbInformation);
    SaveSaverChoices(c, system);
    if (!start(QCoreApplication::applicationFilePath(), {QStringLiteral("/EDIT"), c.showPath})) {
        MsgBox(QStringLiteral("An error occurred while attempting to start program."),
               vbExclamation);
    }
    return true;
}

void ShowSaverFileInfo(const SaverChoices& c)
{
    if (c.showPath.isEmpty()) {
        noShowMessage(QStringLiteral("A screen saver file has not been selected yet, unable to "
                                     "view name of file..."));
        return;
    }
    const QString info = CurrentShow().ShowInfo;
    MsgBox(QStringLiteral("Current screen saver file:") + NewLine() + c.showPath + NewLine2() +
               QStringLiteral("Description:") + NewLine() +
               (info.isEmpty() ? QStringLiteral("(None)") : info),
           vbInformation);
}

void ShowSaverSoundInfo(const SaverChoices& c)
{
    if (c.showPath.isEmpty()) {
        noShowMessage(QStringLiteral("A screen saver file has not been selected yet, unable to "
                                     "view name of sound file..."));
        return;
    }
    const QString sound = CurrentSettings().SoundFile;
    MsgBox(sound.isEmpty()
               ? QStringLiteral("The selected screen saver did not come with a sound file...")
               : QStringLiteral("Current sound file:") + NewLine() + sound,
           vbInformation);
}

bool MakeShowTheSaver(const QString& showPath, SystemSaver& system)
{
    if (showPath.isEmpty())
        return false;
    SaveSetting(kSettings, kCurrentSaver, showPath);
    if (CurrentSettings().KeepRecent)
        AddRecentShow(showPath);
    if (system.CurrentSaverName() != SaverModuleName()) {
        const QString error = system.MakeCurrent();
        if (!error.isEmpty()) {
            MsgBox(error, vbCritical, AppTitle());
            return false;
        }
    }
    return true;
}

} // namespace kavori
