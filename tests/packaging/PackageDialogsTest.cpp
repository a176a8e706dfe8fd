#include "files/FolderPane.h"
#include "packaging/DelPackageFrm.h"
#include "packaging/PackageBuilder.h"
#include "packaging/PackageCommands.h"
#include "packaging/PackageFrm.h"
#include "packaging/PackageRemoval.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

using namespace kavori;

class PackageDialogsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        ASSERT_TRUE(EnsureAppHome());
        writeFile(QStringLiteral("bin/run-kav"), "player");
        writeFile(QStringLiteral("bin/Kavori"), "program");
        writeFile(QStringLiteral("src/one.jpg"), QByteArray(700000, '1'));
        writeFile(QStringLiteral("src/two.jpg"), QByteArray(300000, '2'));
        CurrentShow().slides = {NewSlide(QStringLiteral("one.jpg")),
                                NewSlide(QStringLiteral("two.jpg"))};
        WriteSlideShow(root() + QStringLiteral("src/Walk.KAV"));
        ResetShow();
        CurrentSettings().UseRecycleBin = false;
    }

    // A full package of the show, built through the dialog as a user would.
    void buildFullPackage()
    {
        PackageFrm form;
        form.setProgramFolder(root() + QStringLiteral("bin"));
        PackageRequest r = form.request();
        r.source = root() + QStringLiteral("src");
        r.showFile = QStringLiteral("Walk.KAV");
        r.destination = root() + QStringLiteral("pkg");
        QDir().mkpath(r.destination);
        r.name = QStringLiteral("Walk");
        r.size = QStringLiteral("1.0");
        r.options = PackageOptions();
        form.setRequest(r);
        form.findChild<QPushButton*>(QStringLiteral("CmdPackage"))->click();
        ASSERT_TRUE(QFileInfo::exists(pkg(QStringLiteral("setup.ini"))));
        prompts().clear();
    }
    QString pkg(const QString& relative = QString())
    {
        return root() + QStringLiteral("pkg/") + relative;
    }
};

TEST_F(PackageDialogsTest, PackageFormShowsSizesAndBuildsFromItsControls)
{
    // Saved settings come back; the default-saver option is on unless saved off.
    CurrentSettings().PackageRuntime = true;
    CurrentSettings().PackageSource = root() + QStringLiteral("src");
    PackageFrm form;
    form.setProgramFolder(root() + QStringLiteral("bin"));
    EXPECT_EQ(form.windowTitle(), "Kavori - [Package Slide Show]");
    auto* runtime = form.findChild<QCheckBox*>(QStringLiteral("CheckRuntime"));
    auto* makeDefault = form.findChild<QCheckBox*>(QStringLiteral("CheckMakeDefault"));
    auto* shortcut = form.findChild<QCheckBox*>(QStringLiteral("CheckShortcut"));
    auto* size = form.findChild<QLineEdit*>(QStringLiteral("txtSize"));
    auto* req = form.findChild<QLabel*>(QStringLiteral("lblReqSize"));
    auto* tot = form.findChild<QLabel*>(QStringLiteral("lblTotSize"));
    ASSERT_TRUE(runtime && makeDefault && shortcut && size && req && tot);
    EXPECT_TRUE(runtime->isChecked());
    EXPECT_TRUE(makeDefault->isChecked());
    EXPECT_FALSE(makeDefault->isEnabled());
    EXPECT_FALSE(shortcut->isEnabled());
    EXPECT_EQ(req->text(), "3MB Required +");
    EXPECT_EQ(size->text(), "Unknown");
    EXPECT_EQ(tot->text(), "= 3.0MB");
    runtime->click();
    EXPECT_TRUE(makeDefault->isEnabled());
    EXPECT_EQ(req->text(), "13MB Required +");
    size->setText(QStringLiteral("2.5"));
    EXPECT_EQ(tot->text(), "= 15.5MB");

    // The Sum button with nothing chosen, then with the show chosen.
    auto* sum = form.findChild<QPushButton*>(QStringLiteral("CmdSize"));
    sum->click();
    EXPECT_EQ(size->text(), "Unknown");
    EXPECT_EQ(prompts().calls.size(), 1);
    auto* list = form.findChild<QListWidget*>(QStringLiteral("File1"));
    ASSERT_EQ(list->count(), 1);
    list->setCurrentRow(0);
    sum->click();
    const qint64 total = 1000000 + QFileInfo(root() + QStringLiteral("src/Walk.KAV")).size();
    EXPECT_EQ(size->text(), QString::number(total / 100000 / 10.0, 'f', 1));

    // Dropped files: only an existing show with data, a link followed to its target.
    writeFile(QStringLiteral("other/empty.KAV"), QByteArray());
    writeFile(QStringLiteral("other/photo.jpg"), "x");
    ASSERT_TRUE(QFile::link(root() + QStringLiteral("src/Walk.KAV"),
                            root() + QStringLiteral("other/Walk shortcut")));
    form.source()->setFolder(root() + QStringLiteral("other"));
    prompts().clear();
    form.File1_DragDrop({root() + QStringLiteral("other/photo.jpg")});
    form.File1_DragDrop({root() + QStringLiteral("other/gone.KAV")});
    form.File1_DragDrop({root() + QStringLiteral("other/empty.KAV")});
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"The file that was dropped here is not a valid Kavori slide show (.KAV) file.",
                     "The file that was dropped here may have been deleted, unable to locate "
                     "specified slide show file...",
                     "The file that was dropped here may have been deleted, no slide show "
                     "data could be found..."}));
    EXPECT_EQ(form.source()->folder(), root() + "other/");
    form.File1_DragDrop({root() + QStringLiteral("other/Walk shortcut")});
    EXPECT_EQ(form.source()->folder(), root() + "src/");
    EXPECT_EQ(form.request().showFile, "Walk.KAV");

    // Building from the controls: an empty name takes the show's name when the user agrees.
    form.findChild<QLineEdit*>(QStringLiteral("txtName"))->clear();
    form.destination()->setFolder(root());
    QDir().mkpath(root() + QStringLiteral("out"));
    form.destination()->setFolder(root() + QStringLiteral("out"));
    runtime->click();
    form.findChild<QCheckBox*>(QStringLiteral("CheckAutorun"))->click();
    prompts().clear();
    form.findChild<QPushButton*>(QStringLiteral("CmdPackage"))->click();
    EXPECT_EQ(form.findChild<QLineEdit*>(QStringLiteral("txtName"))->text(), "Walk");
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("out/SLIDES/Walk.KAV")));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("out/AUTORUN.INF")));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("out/RUN-KAV.INI")));
    EXPECT_EQ(CurrentSettings().PackageName, "Walk");
    EXPECT_TRUE(CurrentSettings().PackageAutorun);

    const QString shots = qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath());
    form.grab().save(shots + QStringLiteral("/PackageFrm.png"));
}

TEST_F(PackageDialogsTest, DeletingAPackageRemovesItsFilesAndNeverFollowsALinkOut)
{
    buildFullPackage();
    writeFile(QStringLiteral("keep/outside.jpg"), "precious");
    writeFile(QStringLiteral("keep/inner/deep.jpg"), "precious too");
    ASSERT_TRUE(QFile::link(root() + QStringLiteral("keep/outside.jpg"),
                            pkg(QStringLiteral("SLIDES/link.jpg"))));
    QDir().mkpath(pkg(QStringLiteral("lib")));
    ASSERT_TRUE(QFile::link(root() + QStringLiteral("keep"), pkg(QStringLiteral("lib/keep"))));
    ASSERT_TRUE(QFile::link(root() + QStringLiteral("keep"), pkg(QStringLiteral("Help/more"))));
    writeFile(QStringLiteral("pkg/notes.txt"), "mine");

    DelPackageFrm form;
    EXPECT_EQ(form.windowTitle(), "Kavori - [Delete Package]");
    form.setFolder(root() + QStringLiteral("src"));
    EXPECT_EQ(form.status(), "Unable to locate slide show file in selected package directory...");
    EXPECT_FALSE(form.findChild<QPushButton*>(QStringLiteral("CmdDelete"))->isEnabled());
    form.setFolder(pkg());
    EXPECT_EQ(form.status(), "Package directory located!");
    auto* del = form.findChild<QPushButton*>(QStringLiteral("CmdDelete"));
    ASSERT_TRUE(del->isEnabled());

    // No at the question deletes nothing.
    prompts().answers = {vbNo};
    del->click();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "You are about to remove the slide show package Walk from the directory:\r\n" +
                  pkg() + "\r\n\r\nWARNING:\r\nALL files will be deleted from:\r\n" + pkg() +
                  "SLIDES/\r\nAre you sure?");
    EXPECT_TRUE(QFileInfo::exists(pkg(QStringLiteral("Kavori"))));

    prompts().clear();
    prompts().answers = {vbYes};
    del->click();
    EXPECT_EQ(prompts().texts(),
              QStringList({prompts().calls[0].text,
                           "There are other files in " + pkg() +
                               " that could not be removed by this command, you may want to delete "
                               "these later...",
                           "The slide show package Walk has been deleted..."}));
    const QStringList left = QDir(pkg()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot |
                                                   QDir::Hidden | QDir::System);
    EXPECT_EQ(left, QStringList({"notes.txt"}));
    EXPECT_EQ(readFile(root() + QStringLiteral("keep/outside.jpg")), "precious");
    EXPECT_EQ(readFile(root() + QStringLiteral("keep/inner/deep.jpg")), "precious too");
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("src/one.jpg")));

    const QString shots = qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath());
    form.setFolder(root());
    form.grab().save(shots + QStringLiteral("/DelPackageFrm.png"));
}

TEST_F(PackageDialogsTest, DeletingRefusesWhatIsNoCompletePackage)
{
    // The program's folder and the system's.
    prompts().clear();
    EXPECT_FALSE(DeletePackage(AppPath()));
    EXPECT_FALSE(DeletePackage(QStringLiteral("/usr/share")));
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_EQ(prompts().calls[0].text, "You may not delete any packages from:\r\n" + AppPath() +
                                           "\r\nor\r\n/usr/\r\nUnable to continue...");
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Delete Package]");

    // No SETUP.INI, and one without the package's name.
    writeFile(QStringLiteral("half/SLIDES/a.KAV"), "x");
    prompts().clear();
    EXPECT_FALSE(DeletePackage(root() + QStringLiteral("half")));
    writeFile(QStringLiteral("half/SETUP.INI"), "[Kavori Setup]\r\nInstallSize=3\r\n");
    EXPECT_FALSE(DeletePackage(root() + QStringLiteral("half")));
    EXPECT_EQ(prompts().texts(),
              QStringList({"The selected folder is not a complete package directory, SETUP.INI "
                           "could not be found.\r\nUnable to delete selected package...",
                           "The selected folder is not a complete package directory, the package "
                           "name could not be found.\r\nUnable to delete selected package..."}));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("half/SLIDES/a.KAV")));

    // A SLIDES that links elsewhere loses the link, not what it points to; other folders in
    // SLIDES are reported.
    writeFile(QStringLiteral("linked/SETUP.INI"), "[Kavori Setup]\r\nSlideShowName=L\r\n");
    writeFile(QStringLiteral("shows/L.KAV"), "x");
    writeFile(QStringLiteral("shows/a.jpg"), "x");
    ASSERT_TRUE(
        QFile::link(root() + QStringLiteral("shows"), root() + QStringLiteral("linked/SLIDES")));
    EXPECT_TRUE(IsPackageFolder(root() + QStringLiteral("linked")));
    prompts().clear();
    prompts().answers = {vbYes};
    EXPECT_TRUE(DeletePackage(root() + QStringLiteral("linked")));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("shows/L.KAV")));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("shows/a.jpg")));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("linked")));

    writeFile(QStringLiteral("deep/SETUP.INI"), "[Kavori Setup]\r\nSlideShowName=D\r\n");
    writeFile(QStringLiteral("deep/SLIDES/D.KAV"), "x");
    writeFile(QStringLiteral("deep/SLIDES/photo.JPEG"), "x");
    writeFile(QStringLiteral("deep/SLIDES/sound.wav"), "x");
    writeFile(QStringLiteral("deep/SLIDES/Old/x.jpg"), "x");
    prompts().clear();
    prompts().answers = {vbYes};
    EXPECT_TRUE(DeletePackage(root() + QStringLiteral("deep")));
    EXPECT_EQ(prompts().texts()[1], "There are other folders in " + root() +
                                        "deep/SLIDES/ that could not be removed by this command, "
                                        "you may want to delete these later...");
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("deep/SLIDES/D.KAV")));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("deep/SLIDES/photo.JPEG")));
    EXPECT_TRUE(QFileInfo::exists(root() + QStringLiteral("deep/SLIDES/sound.wav")));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("deep/SETUP.INI")));
}

TEST_F(PackageDialogsTest, MainWindowCommandsOpenTheTwoDialogs)
{
    QWidget window;
    for (const char* name : {"mnuPackage", "mnuDeletePackage"}) {
        auto* action = new QAction(&window);
        action->setObjectName(QString::fromLatin1(name));
        action->setEnabled(false);
    }
    ConnectPackageCommands(&window);
    QStringList opened;
    for (const char* name : {"mnuPackage", "mnuDeletePackage"}) {
        auto* action = window.findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_TRUE(action->isEnabled());
        QTimer::singleShot(0, qApp, [&opened] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            opened << dialog->objectName();
            dialog->findChild<QPushButton*>(QStringLiteral("CmdClose"))->click();
        });
        action->trigger();
    }
    EXPECT_EQ(opened, QStringList({"PackageFrm", "DelPackageFrm"}));
}
