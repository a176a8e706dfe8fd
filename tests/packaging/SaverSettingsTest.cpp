#include "packaging/SaverSettings.h"
#include "editor/SlideLoadFrm.h"
#include "packaging/SaverCommands.h"
#include "packaging/SaverSetup.h"
#include "platform/UserSettings.h"
#include "platform/WindowLock.h"
#include "runtime/MsgBox.h"
#include "runtime/VbColor.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "startup/CommandLine.h"
#include "support/ShowTest.h"
#include "systemsaver/ProfileSaver.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>

using namespace kavori;

namespace {

// Stands for the system's screen saver configuration: says which saver is current and
// counts the requests to make ours current.
class FakeSystemSaver final : public SystemSaver {
public:
    QString name;
    QString error;
    int madeCurrent = 0;
    QString MakeCurrent() override
    {
        ++madeCurrent;
        if (error.isEmpty())
            name = SaverModuleName();
        return error;
    }
    QString CurrentSaverName() override { return name; }
    QString CurrentSaverValue() override { return name; }
    void DisableSaver() override {}
    void RestoreSaver(const QString&) override {}
    bool SaverActive() override { return true; }
    bool PasswordInUse() override { return false; }
};

QString registrySaver()
{
    return GetSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"));
}

QString iniValue(const QString& key)
{
    LoadIniFile(SettingsFilePath());
    const QString value = GetIniValue(ViewerSection(), key);
    ClearIni();
    return value;
}

class SaverSettingsTest : public kavori::test::ShowTest {
protected:
    // A show file of slides with these intervals and background modes (custom ones red).
    QString makeShow(const QString& name, const QList<int>& delays, const QList<int>& modes,
                     bool useIntervals = true)
    {
        ResetShow();
        for (int i = 0; i < delays.size(); ++i) {
            Slide slide = NewSlide(root() + QStringLiteral("/pics/") + QString::number(i) +
                                   QStringLiteral(".jpg"));
            slide.SlideDelay = qint16(delays[i]);
            slide.SlideBackMode = qint16(modes[i]);
            slide.SlideBackColor = ToVbColor(Qt::red);
            CurrentShow().slides.append(slide);
        }
        CurrentShow().UseSlideIntervals = useIntervals;
        CurrentShow().ShowInfo = QStringLiteral("Beaches at dawn");
        const QString path = QDir::cleanPath(root() + u'/' + name);
        EXPECT_TRUE(WriteSlideShow(path));
        ResetShow();
        return path;
    }
    SaverChoices chosen(const QString& path)
    {
        SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), path);
        return LoadSaverChoices();
    }

    FakeSystemSaver system;
};

} // namespace

TEST_F(SaverSettingsTest, OkKeepsAKnownShowInItsPlaceAndPushesOutTheTwentiethForANewOne)
{
    // No show chosen: the message, the dialog stays, nothing is written.
    SaverChoices none;
    EXPECT_FALSE(SaveSaverChoices(none, system));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "A screen saver file has not been selected yet, unable to save changes...");
    EXPECT_TRUE(registrySaver().isEmpty());
    EXPECT_EQ(system.madeCurrent, 0);

    const QString show = makeShow(QStringLiteral("Beach.KAV"), {5, 5}, {0, 0});
    auto& list = CurrentSettings().RecentShow;
    for (int i = 0; i < 20; ++i)
        list[i] =
            root() + QStringLiteral("/show") + QString::number(i + 1) + QStringLiteral(".kav");
    list[4] = show.toUpper(); // the same file, written otherwise
    const auto before = list;

    SaverChoices c = chosen(show);
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_EQ(list, before);
    EXPECT_EQ(iniValue(QStringLiteral("RecentShow5")), show.toUpper());
    EXPECT_EQ(iniValue(QStringLiteral("RecentShow1")), before[0]);
    EXPECT_EQ(registrySaver(), show);
    EXPECT_EQ(iniValue(QStringLiteral("LastSlideShow")), show);

    // A 21st show: on top, the twentieth gone.
    const QString other = makeShow(QStringLiteral("Other.KAV"), {5}, {0});
    EXPECT_TRUE(SaveSaverChoices(chosen(other), system));
    EXPECT_EQ(list[0], other);
    EXPECT_EQ(list[1], before[0]);
    EXPECT_EQ(list[19], before[18]);
    EXPECT_EQ(iniValue(QStringLiteral("RecentShow20")), before[18]);
    EXPECT_EQ(iniValue(QStringLiteral("RecentShow1")), other);
}

TEST_F(SaverSettingsTest, ColourChoiceAsksOnlyWhenSlidesDiffer)
{
    const QString show = makeShow(QStringLiteral("Mixed.KAV"), {5, 5, 5}, {0, 4, 6});
    auto modes = [&] {
        ReadSlideShow(show);
        QList<int> m;
        for (const Slide& s : CurrentShow().slides)
            m.append(s.SlideBackMode);
        return m;
    };

    // Opening: differing colours show as "keep".
    SaverChoices c = chosen(show);
    EXPECT_EQ(c.color, kSaverKeepColors);
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_EQ(modes(), (QList<int>{0, 4, 6}));

    // Another colour: asked; No leaves the slides.
    c = chosen(show);
    c.color = kSaverDarkBlue;
    prompts().answers = {vbNo};
    EXPECT_TRUE(SaveSaverChoices(c, system));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "This screen saver currently has different background colors specified for each "
              "slide in the show.\r\nSet all slides to the selected color anyway?");
    EXPECT_EQ(prompts().calls[0].style & 7, vbYesNo);
    EXPECT_EQ(modes(), (QList<int>{0, 4, 6}));

    // Yes: every slide takes the custom colour.
    prompts().clear();
    c = chosen(show);
    c.color = kSaverCustom;
    c.customColor = QColor(0, 128, 255);
    prompts().answers = {vbYes};
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(modes(), (QList<int>{6, 6, 6}));
    EXPECT_EQ(FromVbColor(CurrentShow().slides[2].SlideBackColor), QColor(0, 128, 255));

    // Now all alike: the dialog opens on that colour and no question is needed.
    prompts().clear();
    c = chosen(show);
    EXPECT_EQ(c.color, kSaverCustom);
    EXPECT_EQ(c.customColor, QColor(0, 128, 255));
    c.color = kSaverWhite;
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_EQ(modes(), (QList<int>{1, 1, 1}));
}

TEST_F(SaverSettingsTest, IntervalQuestionAndTheShowWrittenBack)
{
    const QString show = makeShow(QStringLiteral("Timed.KAV"), {3, 8}, {0, 0}, true);
    SaverChoices c = chosen(show);
    EXPECT_TRUE(c.keepIntervals);

    // Kept: no question, per-slide intervals stay on.
    c.intervalIndex = 9;
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_TRUE(prompts().calls.isEmpty());
    ReadSlideShow(show);
    EXPECT_TRUE(CurrentShow().UseSlideIntervals);

    // Not kept, intervals differ: asked; No keeps them.
    c = chosen(show);
    c.keepIntervals = false;
    c.intervalIndex = 9;
    prompts().answers = {vbNo};
    EXPECT_TRUE(SaveSaverChoices(c, system));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "This screen saver file has more than one slide interval specified for the slides "
              "in the show.\r\nSet all slides to the selected interval anyway?");
    ReadSlideShow(show);
    EXPECT_TRUE(CurrentShow().UseSlideIntervals);

    // Yes: one show-wide interval, the combo's seconds, stored in the show's file; random
    // order goes with it.
    prompts().clear();
    c = chosen(show);
    c.keepIntervals = false;
    c.intervalIndex = 9;
    c.randomOrder = true;
    prompts().answers = {vbYes};
    EXPECT_TRUE(SaveSaverChoices(c, system));
    ResetSettings();
    ReadSlideShow(show);
    EXPECT_FALSE(CurrentShow().UseSlideIntervals);
    EXPECT_EQ(CurrentSettings().SlideInterval, 10);
    EXPECT_TRUE(CurrentSettings().RandomSlides);

    // One interval only: no question at all.
    prompts().clear();
    const QString even = makeShow(QStringLiteral("Even.KAV"), {4, 4}, {0, 0}, true);
    c = chosen(even);
    c.keepIntervals = false;
    c.intervalIndex = 0;
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_TRUE(prompts().calls.isEmpty());
    ReadSlideShow(even);
    EXPECT_FALSE(CurrentShow().UseSlideIntervals);
    EXPECT_EQ(CurrentSettings().SlideInterval, 1);
}

TEST_F(SaverSettingsTest, OkWritesOnlyItsKeysAndMakesOurSaverCurrentOnlyWhenNeeded)
{
    writeFile(QDir(root()).relativeFilePath(SettingsFilePath()),
              "[Viewer]\r\nSlideInterval=30\r\nSoundMode=0\r\n");
    const QString show = makeShow(QStringLiteral("Sea.KAV"), {5}, {0});
    SaverChoices c = chosen(show);
    c.startAtLast = true;
    c.passwordDelay = 3;
    c.sound = false;
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_EQ(iniValue(QStringLiteral("ResumeLastDisplayed")), "True");
    EXPECT_EQ(iniValue(QStringLiteral("PasswordDelay")), "3");
    EXPECT_EQ(iniValue(QStringLiteral("ScreenSaverSound")), "False");
    EXPECT_EQ(iniValue(QStringLiteral("SlideInterval")), "30"); // the show's 5 stays in the show
    EXPECT_EQ(system.madeCurrent, 1);
    EXPECT_TRUE(SaveSaverChoices(c, system));
    EXPECT_EQ(system.madeCurrent, 1); // already ours

    // The Windows configuration: SYSTEM.INI is not written again once it names our module.
    ProfilePlaces places;
    places.windowsFolder = root() + QStringLiteral("/win");
    places.systemFolder = root() + QStringLiteral("/win/system");
    int switched = 0;
    places.setActive = [&](bool) { ++switched; };
    writeFile(QStringLiteral("win/system/Kavori Screen Saver.SCR"), "m");
    ProfileSaver profile(places);
    EXPECT_TRUE(SaveSaverChoices(c, profile));
    EXPECT_EQ(switched, 1);
    const QString ini = places.windowsFolder + QStringLiteral("/SYSTEM.INI");
    const QDateTime written = QFileInfo(ini).lastModified();
    QFile::remove(ini + QStringLiteral(".old"));
    writeFile(QStringLiteral("win/SYSTEM.INI"), readFile(ini) + "; the user's line\r\n");
    EXPECT_TRUE(SaveSaverChoices(c, profile));
    EXPECT_EQ(switched, 1);
    EXPECT_TRUE(readFile(ini).endsWith("; the user's line\r\n"));
    Q_UNUSED(written);

    // A missing module: the critical box titled "Kavori", settings saved all the same.
    FakeSystemSaver broken;
    broken.error = MissingModuleMessage(QStringLiteral("/nowhere/Kavori"));
    prompts().clear();
    EXPECT_TRUE(SaveSaverChoices(c, broken));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, broken.error);
    EXPECT_EQ(prompts().calls[0].style & 112, vbCritical);
    EXPECT_EQ(prompts().calls[0].title, "Kavori");
}

TEST_F(SaverSettingsTest, OpeningEditingAndTheInformationBoxes)
{
    SaverChoices none = LoadSaverChoices();
    EXPECT_EQ(SaverNameOnly(none.showPath), "[No Slide Show Specified]");
    ShowSaverFileInfo(none);
    ShowSaverSoundInfo(none);
    int started = 0;
    const auto starter = [&](const QString& program, const QStringList& arguments) {
        ++started;
        EXPECT_FALSE(program.isEmpty());
        EXPECT_EQ(arguments.value(0), "/EDIT");
        return arguments.size() == 2 && arguments[1].endsWith(QLatin1String("Dunes.KAV"));
    };
    EXPECT_FALSE(EditSaverShow(none, system, starter));
    EXPECT_EQ(prompts().texts(),
              (QStringList{"A screen saver file has not been selected yet, unable to view name "
                           "of file...",
                           "A screen saver file has not been selected yet, unable to view name "
                           "of sound file...",
                           "A screen saver file has not been selected yet.\r\nUnable to edit "
                           "slide show..."}));
    EXPECT_EQ(started, 0);

    CurrentSettings().SlideInterval = 7;
    const QString show = makeShow(QStringLiteral("Dunes.KAV"), {7, 7}, {3, 3}, false);
    SaverChoices c = chosen(show);
    EXPECT_EQ(c.intervalIndex, 6);
    EXPECT_EQ(SaverNameOnly(c.showPath), "Dunes");
    EXPECT_EQ(c.color, kSaverDarkBlue);
    EXPECT_FALSE(c.keepIntervals);
    prompts().clear();
    ShowSaverFileInfo(c);
    ShowSaverSoundInfo(c);
    EXPECT_EQ(prompts().texts(),
              (QStringList{"Current screen saver file:\r\n" + show +
                               "\r\n\r\nDescription:\r\nBeaches at dawn",
                           "The selected screen saver did not come with a sound file..."}));

    prompts().clear();
    EXPECT_TRUE(EditSaverShow(c, system, starter));
    EXPECT_EQ(started, 1);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "Kavori will now start so that you can edit this screen saver.\r\nNOTE:\r\nChanges "
              "to the current settings will be saved and the Screen Saver Settings dialog will be "
              "closed first...");
    EXPECT_EQ(registrySaver(), show); // saved before the start

    prompts().clear();
    const auto failing = [](const QString&, const QStringList&) { return false; };
    EXPECT_TRUE(EditSaverShow(c, system, failing));
    EXPECT_EQ(prompts().texts().value(1), "An error occurred while attempting to start program.");
}

TEST_F(SaverSettingsTest, MakingAShowTheSaverInOneStep)
{
    const QString show = makeShow(QStringLiteral("Quick.KAV"), {5}, {0});
    EXPECT_TRUE(MakeShowTheSaver(show, system));
    EXPECT_EQ(registrySaver(), show);
    EXPECT_EQ(CurrentSettings().RecentShow[0], show);
    EXPECT_EQ(system.madeCurrent, 1);
    EXPECT_EQ(system.CurrentSaverName(), "Kavori Screen Saver");
}

TEST_F(SaverSettingsTest, DialogShowsEveryControlAndSavesOnOk)
{
    CurrentSettings().SlideInterval = 6;
    const QString show = makeShow(QStringLiteral("Harbour.KAV"), {6, 6}, {1, 1}, false);
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), show);
    auto previous = InstallSystemSaver(std::make_unique<FakeSystemSaver>());
    {
        SaverSetup dialog;
        EXPECT_EQ(dialog.windowTitle(), "Kavori - [Screen Saver Settings]");
        EXPECT_TRUE(WindowLock::Exists(ScreenSaverSettingsWindowTitle()));
        // A second "C" while this one is open ends at once.
        EXPECT_EQ(DecideStartMode(QStringLiteral("C"), {}).mode, StartMode::End);

        const std::pair<const char*, const char*> captions[] = {
            {"CmdSelectFile", "Select Screen Saver &File"},
            {"CmdEditShow", "&Edit Screen Saver"},
            {"CheckKeepInt", "Keep interv&al settings stored in screen saver file."},
            {"CheckRandom", "Choose &random image order."},
            {"CheckStartLast", "Start at last i&mage displayed."},
            {"OptionYesSound", "Enable &Sound."},
            {"OptionNoSound", "&No sound."},
            {"OptionKeepBC", "Keep the colors stored in screen sa&ver file."},
            {"Option1", "&Black"},
            {"Option2", "&White"},
            {"Option3", "S&ystem"},
            {"Option4", "Dark B&lue"},
            {"Option5", "Dark R&ed"},
            {"Option6", "Dark Bro&wn"},
            {"OptionCustomColor", "&Use a custom background color."},
            {"CmdPassChange", "C&hange"}};
        for (const auto& [name, caption] : captions) {
            auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
            ASSERT_NE(button, nullptr) << name;
            EXPECT_EQ(button->text(), QString::fromLatin1(caption)) << name;
        }
        for (const char* name : {"CmdOK", "CmdCancel", "CmdHelp", "CmdBackground"})
            EXPECT_NE(dialog.findChild<QPushButton*>(QString::fromLatin1(name)), nullptr) << name;
        for (const char* name :
             {"lblCurrentFile", "lblNameOnly", "lblSoundFile", "lblColor", "lblPassMsg"})
            EXPECT_NE(dialog.findChild<QLabel*>(QString::fromLatin1(name)), nullptr) << name;
        auto* interval = dialog.findChild<QComboBox*>(QStringLiteral("ComboInterval"));
        ASSERT_EQ(interval->count(), 60);
        EXPECT_EQ(interval->itemText(0), "1 second");
        EXPECT_EQ(interval->itemText(1), "2 seconds");
        EXPECT_EQ(interval->itemText(59), "60 seconds");
        EXPECT_EQ(interval->currentIndex(), 5);
        auto* delay = dialog.findChild<QComboBox*>(QStringLiteral("ComboPassDelay"));
        EXPECT_EQ(delay->count(), 5);
        EXPECT_EQ(delay->itemText(4), "1 Min.");
        EXPECT_FALSE(delay->isEnabled()); // the system's locker owns the password
        auto* tabs = dialog.findChild<QTabWidget*>(QStringLiteral("SSTab1"));
        EXPECT_EQ(tabs->tabText(2), "Password (Use Windows NT to change your password)");
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblNameOnly"))->text(), "Harbour");
        EXPECT_TRUE(dialog.findChild<QRadioButton*>(QStringLiteral("Option2"))->isChecked());

        // A custom colour picked with the button selects its option.
        prompts().colors = {QColor(10, 20, 30)};
        dialog.findChild<QPushButton*>(QStringLiteral("CmdBackground"))->click();
        EXPECT_TRUE(
            dialog.findChild<QRadioButton*>(QStringLiteral("OptionCustomColor"))->isChecked());

        dialog.resize(dialog.sizeHint());
        const QString shot = QDir::tempPath() + QStringLiteral("/SaverSetup.png");
        dialog.grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath()) +
                           QStringLiteral("/SaverSetup.png"));
        Q_UNUSED(shot);
        tabs->setCurrentIndex(1);
        dialog.grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath()) +
                           QStringLiteral("/SaverSetup-colors.png"));
        tabs->setCurrentIndex(2);
        dialog.grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath()) +
                           QStringLiteral("/SaverSetup-password.png"));

        dialog.findChild<QPushButton*>(QStringLiteral("CmdOK"))->click();
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
    EXPECT_FALSE(WindowLock::Exists(ScreenSaverSettingsWindowTitle()));
    ReadSlideShow(show);
    EXPECT_EQ(CurrentShow().slides[0].SlideBackMode, kSaverCustom);
    EXPECT_EQ(FromVbColor(CurrentShow().slides[1].SlideBackColor), QColor(10, 20, 30));
    InstallSystemSaver(std::move(previous));
}

namespace {
// Clicks a button of the next modal dialog once it is up.
void clickInNextDialog(const char* button, QString* title = nullptr)
{
    QTimer::singleShot(0, qApp, [button, title] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        if (title)
            *title = dialog->windowTitle();
        if (auto* b = dialog->findChild<QPushButton*>(QString::fromLatin1(button)))
            b->click();
    });
}
} // namespace

TEST_F(SaverSettingsTest, MainWindowAndEditorMakeAShowTheSaverInOneStep)
{
    auto owned = std::make_unique<FakeSystemSaver>();
    FakeSystemSaver* fake = owned.get();
    auto previous = InstallSystemSaver(std::move(owned));
    const QString show = makeShow(QStringLiteral("Garden.KAV"), {5, 5}, {0, 0});

    QWidget window;
    for (const char* name : {"mnuSetScreenSaver", "mnuSSaverSettings"}) {
        auto* action = new QAction(&window);
        action->setObjectName(QString::fromLatin1(name));
        action->setEnabled(false);
    }
    ConnectSaverCommands(&window);
    auto* set = window.findChild<QAction*>(QStringLiteral("mnuSetScreenSaver"));
    auto* settings = window.findChild<QAction*>(QStringLiteral("mnuSSaverSettings"));
    EXPECT_TRUE(set->isEnabled());
    EXPECT_TRUE(settings->isEnabled());

    // Cancelled picker: nothing changes.
    set->trigger();
    EXPECT_TRUE(registrySaver().isEmpty());

    // A picked show is the saver at once; the dialog then shows it (Cancel keeps that).
    prompts().files = {show};
    QString title;
    clickInNextDialog("CmdCancel", &title);
    set->trigger();
    EXPECT_EQ(title, "Kavori - [Screen Saver Settings]");
    EXPECT_EQ(registrySaver(), show);
    EXPECT_EQ(fake->madeCurrent, 1);

    clickInNextDialog("CmdCancel", &title);
    title.clear();
    settings->trigger();
    EXPECT_EQ(title, "Kavori - [Screen Saver Settings]");

    // The editor's command takes the show open in it.
    const QString other = makeShow(QStringLiteral("Pond.KAV"), {5}, {0});
    ASSERT_TRUE(ReadSlideShow(other));
    fake->name.clear();
    {
        SlideLoadFrm editor;
        clickInNextDialog("CmdOK");
        editor.findChild<QAction*>(QStringLiteral("mnuSetScreenSaver"))->trigger();
    }
    EXPECT_EQ(registrySaver(), other);
    EXPECT_EQ(fake->madeCurrent, 2);
    InstallSystemSaver(std::move(previous));
}
