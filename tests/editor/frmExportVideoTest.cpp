#include "editor/frmExportVideo.h"
#include "editor/SlideLoadFrm.h"
#include "export/ExportTestFiles.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "support/ShowTest.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

using namespace kavori;
using namespace kavori::test;

class frmExportVideoTest : public ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        for (int i = 0; i < 2; ++i) {
            QImage picture(64, 36, QImage::Format_RGB32);
            picture.fill(i ? Qt::darkCyan : Qt::darkYellow);
            const QString path = root() + QStringLiteral("p%1.bmp").arg(i);
            ASSERT_TRUE(picture.save(path, "BMP"));
            CurrentShow().slides.append(NewSlide(path));
        }
        CurrentShow().path = root() + QStringLiteral("Holiday.kav");
        CurrentSettings().SlideInterval = 1;
        CurrentSettings().ExportSize = 0; // 720p, the smallest on offer
        CurrentSettings().ExportFrameRate = 25;
    }

    template <typename T> static T* child(QWidget& w, const char* name)
    {
        return w.findChild<T*>(QString::fromLatin1(name));
    }
};

TEST_F(frmExportVideoTest, ExportsWithProgressAndRemembersTheChoices)
{
    frmExportVideo dialog;
    // The name offered is the show's, with the format's extension, which follows the format.
    auto* file = child<QLineEdit>(dialog, "txtFile");
    EXPECT_EQ(file->text(), root() + QStringLiteral("Holiday.mp4"));
    child<QComboBox>(dialog, "cboFormat")->setCurrentIndex(1);
    EXPECT_EQ(file->text(), root() + QStringLiteral("Holiday.webm"));
    child<QComboBox>(dialog, "cboFormat")->setCurrentIndex(0);
    child<QSpinBox>(dialog, "txtSeed")->setValue(77);
    dialog.resize(dialog.sizeHint());
    dialog.grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath()) +
                       QStringLiteral("/frmExportVideo.png"));

    QStringList seen;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (dialog.isExporting())
            seen << child<QLabel>(dialog, "lblProgress")->text();
    });
    watch.start(0);
    EXPECT_TRUE(dialog.exportVideo());
    watch.stop();
    ASSERT_FALSE(seen.isEmpty());
    EXPECT_TRUE(seen.last().startsWith(QStringLiteral("Frame "))) << seen.last().toStdString();
    EXPECT_TRUE(seen.last().contains(QStringLiteral(" of 50, ")) ||
                seen.last().contains(QStringLiteral(" of 50, Finishing")))
        << seen.last().toStdString();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(QStringLiteral("The video has been made:")));
    const Discovered info = Discover(root() + QStringLiteral("Holiday.mp4"));
    ASSERT_TRUE(info.ok);
    EXPECT_EQ(info.width, 1280);
    EXPECT_EQ(info.height, 720);
    EXPECT_DOUBLE_EQ(info.frameRate, 25.0);

    // The choices are kept in the settings file's own group.
    ResetSettings();
    LoadSettings();
    EXPECT_EQ(CurrentSettings().ExportSeed, 77);
    EXPECT_EQ(CurrentSettings().ExportFile, root() + QStringLiteral("Holiday.mp4"));
    EXPECT_EQ(CurrentSettings().ExportFrameRate, 25);
    EXPECT_TRUE(CatalogueKeys().contains(QStringLiteral("Export/ExportSeed")));

    // Replacing the file is asked first; No leaves it alone.
    CurrentSettings().SlideInterval = 1;
    frmExportVideo again;
    EXPECT_EQ(child<QSpinBox>(again, "txtSeed")->value(), 77);
    prompts().clear();
    prompts().answers = {vbNo};
    EXPECT_FALSE(again.exportVideo());
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(
        prompts().calls[0].text.startsWith(QStringLiteral("The following file already exists:")));
}

TEST_F(frmExportVideoTest, CancelStopsAndLeavesNothing)
{
    frmExportVideo dialog;
    child<QLineEdit>(dialog, "txtFile")->setText(root() + QStringLiteral("cut.mp4"));
    QTimer click;
    QObject::connect(&click, &QTimer::timeout, [&] {
        if (dialog.isExporting())
            child<QPushButton>(dialog, "CmdCancel")->click();
    });
    click.start(0);
    EXPECT_FALSE(dialog.exportVideo());
    click.stop();
    EXPECT_EQ(child<QLabel>(dialog, "lblProgress")->text(),
              QStringLiteral("Cancelled, no file was made."));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("cut.mp4")));
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_TRUE(child<QPushButton>(dialog, "CmdExport")->isEnabled());

    // A refusal before anything is made.
    child<QLineEdit>(dialog, "txtFile")->clear();
    EXPECT_FALSE(dialog.exportVideo());
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("Please enter the name of the video file to make..."));
}

TEST_F(frmExportVideoTest, TheEditorsCommand)
{
    SlideLoadFrm editor;
    auto* command = editor.findChild<QAction*>(QStringLiteral("mnuExportVideo"));
    ASSERT_NE(command, nullptr);
    EXPECT_TRUE(command->isEnabled());
    EXPECT_EQ(command->text().remove(u'&'), QStringLiteral("Export to Video..."));
    ResetShow();
    command->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("There are no slides in this slide show to export..."));
}
