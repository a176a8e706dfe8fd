#include "files/FileDialogs.h"
#include "files/FolderPane.h"
#include "files/frmCopyImages.h"
#include "platform/DesktopPrograms.h"
#include "platform/StartupState.h"
#include "platform/Volumes.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <functional>

using namespace kavori;

// Two media are "in": a stick the kernel calls removable and a card the desktop mounted, each
// a folder of the test's home, named by a recorded-style mount table.
class RemovableCommandsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
        CurrentSettings().UseRecycleBin = false;
        stick = root() + QStringLiteral("mnt/HOLIDAY STICK/");
        card = root() + QStringLiteral("mnt/CARD/");
        pics = root() + QStringLiteral("pics/");
        for (const QString& folder : {stick, card, pics})
            QDir().mkpath(folder);
        picture(pics + QStringLiteral("home.bmp"));
        picture(stick + QStringLiteral("beach.bmp"));
        picture(stick + QStringLiteral("DCIM/100/sea.bmp"));
        writeFile(stick + QStringLiteral(".hidden"), "settings of the camera");
        SetMountTableOverride(table({stick, card}),
                              {QStringLiteral("/dev/sdb1"), QStringLiteral("/dev/sdc1")});
        m_path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(root() + QStringLiteral("bin")));
        SetDesktopLauncher([this](const QString& program, const QStringList&) {
            started << program;
            return true;
        });
    }
    void TearDown() override
    {
        SetMountTableOverride(std::nullopt);
        SetDesktopLauncher({});
        qputenv("PATH", m_path);
        KavoriTest::TearDown();
    }
    static QString table(const QStringList& media)
    {
        QString text = QStringLiteral("/dev/nvme0n1p2 / ext4 rw 0 0\nproc /proc proc rw 0 0\n");
        for (int i = 0; i < media.size(); ++i)
            text += QStringLiteral("/dev/sd%1 %2 vfat rw 0 0\n")
                        .arg(QChar(u'b' + i) + QStringLiteral("1"),
                             QDir::cleanPath(media[i]).replace(u' ', QStringLiteral("\\040")));
        return text;
    }
    void picture(const QString& path)
    {
        writeFile(path, {});
        QImage image(16, 12, QImage::Format_RGB32);
        image.fill(Qt::blue);
        image.save(path, "BMP");
    }
    void runWithDialog(MainViewFrm& w, const char* action, std::function<void(QDialog*)> drive)
    {
        bool driven = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            drive(dialog);
            driven = true;
            if (dialog->isVisible())
                dialog->reject();
        });
        run(w, action);
        EXPECT_TRUE(driven) << action;
    }
    static void run(MainViewFrm& w, const char* action)
    {
        QAction* a = w.menus().action(QString::fromLatin1(action));
        ASSERT_TRUE(a->isEnabled()) << action;
        a->trigger();
    }
    static void selectAll(FolderPane* pane)
    {
        for (int row = 0; row < pane->fileList()->count(); ++row)
            pane->fileList()->item(row)->setSelected(true);
    }
    static void click(QDialog* dialog, const char* name)
    {
        dialog->findChild<QPushButton*>(QString::fromLatin1(name))->click();
    }
    QString stick, card, pics;
    QStringList started;

private:
    QByteArray m_path;
};

TEST_F(RemovableCommandsTest, CopyToAndFromAndDeleteOnTheChosenMedium)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("home.bmp")));
    EXPECT_EQ(w.menus().action(QStringLiteral("mnuCopyImgToFloppy"))->text(),
              "&Copy Images to Removable Disk...");

    // Two media: the user picks the card, and the copy dialog opens with it as destination.
    prompts().inputs = {QStringLiteral("CARD  (") + QDir::toNativeSeparators(card) + u')'};
    runWithDialog(w, "mnuCopyImgToFloppy", [&](QDialog* d) {
        auto* copy = qobject_cast<frmCopyImages*>(d);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(copy->destination()->folder(), card);
        EXPECT_EQ(copy->source()->folder(), pics);
        selectAll(copy->source());
        prompts().answers = {vbYes};
        click(d, "CmdCopy");
    });
    EXPECT_TRUE(prompts().pickerCalls.first().startsWith(
        "chooseItem: Kavori - [Copy Images to Removable Disk]"));
    EXPECT_TRUE(QFileInfo::exists(card + QStringLiteral("home.bmp")));

    // Cancelling the choice does nothing.
    prompts().clear();
    prompts().inputs = {std::nullopt};
    run(w, "mnuCopyImgToFloppy");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

    // One medium in: no question, the pictures of the stick are the source.
    SetMountTableOverride(table({stick}), {QStringLiteral("/dev/sdb1")});
    const QString into = root() + QStringLiteral("into/");
    QDir().mkpath(into);
    prompts().clear();
    runWithDialog(w, "mnuCopyFromFloppy", [&](QDialog* d) {
        auto* copy = qobject_cast<frmCopyImages*>(d);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(copy->source()->folder(), stick);
        EXPECT_EQ(copy->source()->fileList()->count(), 1);
        copy->destination()->setFolder(into);
        selectAll(copy->source());
        prompts().answers = {vbYes};
        click(d, "CmdCopy");
    });
    EXPECT_TRUE(prompts().pickerCalls.isEmpty());
    EXPECT_TRUE(QFileInfo::exists(into + QStringLiteral("beach.bmp")));

    runWithDialog(w, "mnuDelImgOnFloppy", [&](QDialog* d) {
        auto* del = qobject_cast<DeleteImgFrm*>(d);
        ASSERT_NE(del, nullptr);
        EXPECT_EQ(del->source()->folder(), stick);
        selectAll(del->source());
        prompts().answers = {vbYes};
        click(d, "CmdDelete");
    });
    EXPECT_FALSE(QFileInfo::exists(stick + QStringLiteral("beach.bmp")));
    EXPECT_TRUE(QFileInfo::exists(stick + QStringLiteral("DCIM/100/sea.bmp")));

    // No medium in: a message, and no dialog.
    SetMountTableOverride(table({}), {});
    prompts().clear();
    for (const char* command :
         {"mnuCopyImgToFloppy", "mnuCopyFromFloppy", "mnuDelImgOnFloppy", "mnuDiskcopyFloppy"})
        run(w, command);
    ASSERT_EQ(prompts().texts().size(), 4);
    for (const QString& text : prompts().texts())
        EXPECT_TRUE(text.startsWith("No removable disk was found.")) << text.toStdString();
}

TEST_F(RemovableCommandsTest, CopyAWholeMediumAndFormatThroughTheDiskUtility)
{
    SetMountTableOverride(table({stick}), {QStringLiteral("/dev/sdb1")});
    MainViewFrm w;
    const QString backups = root() + QStringLiteral("backups/");
    QDir().mkpath(backups);
    prompts().files = {backups};
    run(w, "mnuDiskcopyFloppy");
    // Every file, hidden ones and sub-folders too, into a folder named after the medium.
    const QString copy = backups + QStringLiteral("HOLIDAY STICK/");
    EXPECT_TRUE(QFileInfo::exists(copy + QStringLiteral("beach.bmp")));
    EXPECT_TRUE(QFileInfo::exists(copy + QStringLiteral("DCIM/100/sea.bmp")));
    EXPECT_EQ(readFile(copy + QStringLiteral(".hidden")), "settings of the camera");
    EXPECT_TRUE(prompts().texts().isEmpty());

    // Again: the folder is there, so the user is asked; No leaves it.
    QFile::remove(copy + QStringLiteral("beach.bmp"));
    prompts().files = {backups};
    prompts().answers = {vbNo};
    run(w, "mnuDiskcopyFloppy");
    EXPECT_TRUE(prompts().texts().last().endsWith(
        "...already exists. Copy the disk into it, replacing files of the same name?"));
    EXPECT_FALSE(QFileInfo::exists(copy + QStringLiteral("beach.bmp")));

    // Never into the medium itself.
    prompts().clear();
    prompts().files = {stick + QStringLiteral("DCIM")};
    run(w, "mnuDiskcopyFloppy");
    ASSERT_EQ(prompts().texts().size(), 1);
    EXPECT_TRUE(prompts().texts()[0].startsWith("A disk cannot be copied into a folder on itself"));
    EXPECT_FALSE(QFileInfo::exists(stick + QStringLiteral("DCIM/HOLIDAY STICK")));

    // Format: the desktop's disk utility when there is one, else which program to use.
    prompts().clear();
    run(w, "mnuFormatFloppy");
    EXPECT_TRUE(started.isEmpty());
    ASSERT_EQ(prompts().texts().size(), 1);
    EXPECT_TRUE(prompts().texts()[0].contains("gnome-disks, partitionmanager"));
    const QString utility = writeFile(QStringLiteral("bin/gnome-disks"), "#!/bin/sh\n");
    QFile::setPermissions(utility, QFile::ReadOwner | QFile::ExeOwner);
    run(w, "mnuFormatFloppy");
    EXPECT_EQ(started, QStringList({utility}));
}
