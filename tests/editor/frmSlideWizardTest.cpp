#include "editor/frmSlideWizard.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "slideshow/SlideWizard.h"
#include "support/ShowTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>

using namespace kavori;

class SlideWizardTest : public kavori::test::ShowTest {
protected:
    QString pictures(int count)
    {
        const QString folder = root() + QStringLiteral("pics/");
        QDir().mkpath(folder);
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::gray);
        for (int i = 0; i < count; ++i)
            picture.save(folder + QStringLiteral("img%1.bmp").arg(i), "BMP");
        writeFile(QStringLiteral("pics/readme.txt"), "x");
        return folder;
    }
};

TEST_F(SlideWizardTest, NamesFoldersAndNotes)
{
    EXPECT_EQ(WizardNameRefusal(QStringLiteral("  ")),
              QStringLiteral("You need to name your slide show first..."));
    EXPECT_EQ(WizardNameRefusal(QStringLiteral("a:b")),
              QStringLiteral("The slide show name may not contain any of the following "
                             "characters:\r\n\r\n\\ / : * ? \" < > |\r\n\r\nEnter a new name and "
                             "then try again..."));
    EXPECT_EQ(WizardNameRefusal(QStringLiteral("Untitled")),
              QStringLiteral("You should give your slide show a name instead of using the word "
                             "Untitled.\r\n\r\nEnter a new name and then try again..."));
    EXPECT_TRUE(WizardNameRefusal(QStringLiteral("untitled")).isEmpty());
    EXPECT_TRUE(WizardNameRefusal(QStringLiteral("Untitled trip")).isEmpty());

    EXPECT_EQ(WizardFolderText(0), QStringLiteral("There are no images in this folder..."));
    EXPECT_EQ(WizardFolderText(1), QStringLiteral("This folder contains one image..."));
    EXPECT_EQ(WizardFolderText(1500), QStringLiteral("This folder contains 1,500 images..."));
    EXPECT_EQ(WizardFolderRefusal(0),
              QStringLiteral("The selected directory does not have any image files in it.\r\n\r\n"
                             "Choose another directory and then try again..."));
    EXPECT_TRUE(WizardFolderRefusal(kMaxEditorSlides).isEmpty());
    EXPECT_EQ(WizardFolderRefusal(kMaxEditorSlides + 1),
              QStringLiteral("The selected folder contains too many files, a slide show may "
                             "contain a maximum of 30,000 slides."));
    EXPECT_TRUE(WizardManualNote(true, 0).isEmpty());
    EXPECT_TRUE(WizardManualNote(false, 5).isEmpty());
    EXPECT_TRUE(WizardManualNote(false, 0).startsWith(QStringLiteral("NOTE:\r\n\r\nSince you")));
    EXPECT_EQ(WizardShowPath(QStringLiteral("/s"), QStringLiteral("Trip")),
              QStringLiteral("/s/Trip.KAV"));
    EXPECT_EQ(IntervalText(0), QStringLiteral("No Timer"));
    EXPECT_EQ(IntervalText(1), QStringLiteral("1 second"));
    EXPECT_EQ(IntervalText(15), QStringLiteral("15 seconds"));

    // Pictures in the order of the folder's list, by name, other files left out.
    const QString folder = pictures(11);
    const QStringList found = WizardPictures(folder);
    ASSERT_EQ(found.size(), 11);
    EXPECT_TRUE(found[1].endsWith(QStringLiteral("img1.bmp")));
    EXPECT_TRUE(found[2].endsWith(QStringLiteral("img10.bmp")));
    EXPECT_TRUE(found[10].endsWith(QStringLiteral("img9.bmp")));
}

TEST_F(SlideWizardTest, PagesCheckAndFinishMakesTheShow)
{
    const QString folder = pictures(3);
    const QString showFolder = root() + QStringLiteral("shows");
    QDir().mkpath(showFolder);
    frmSlideWizard wizard;
    auto* name = wizard.findChild<QLineEdit*>(QStringLiteral("txtName"));
    name->setText(QStringLiteral("Untitled"));
    EXPECT_FALSE(wizard.next());
    EXPECT_EQ(wizard.page(), 0);
    name->setText(QStringLiteral("Garden"));
    EXPECT_TRUE(wizard.next());

    // A folder without pictures is refused; the count follows the folder typed.
    auto* pictureFolder = wizard.findChild<QLineEdit*>(QStringLiteral("txtImagePath"));
    pictureFolder->setText(root());
    EXPECT_FALSE(wizard.next());
    pictureFolder->setText(folder);
    EXPECT_EQ(wizard.findChild<QLabel*>(QStringLiteral("lblImageCount"))->text(),
              QStringLiteral("This folder contains 3 images..."));
    EXPECT_TRUE(wizard.next());
    wizard.findChild<QLineEdit*>(QStringLiteral("txtShowPath"))->setText(showFolder);
    EXPECT_TRUE(wizard.next());
    auto* interval = wizard.findChild<QComboBox*>(QStringLiteral("cboInterval"));
    interval->setCurrentIndex(interval->findData(7));
    wizard.findChild<QCheckBox*>(QStringLiteral("chkRandom"))->setChecked(true);
    prompts().clear();
    ASSERT_TRUE(wizard.finish());
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("Your new slide show has been created!\r\n\r\nClick the \"View "
                             "Show\" button on the next screen to start your slide show..."));

    // The show is in memory and on disk, with the wizard's values, and among the favourites.
    const QString path = showFolder + QStringLiteral("/Garden.KAV");
    EXPECT_EQ(CurrentShow().path, path);
    EXPECT_EQ(CurrentShow().slides.size(), 3);
    EXPECT_EQ(CurrentSettings().FavoriteShow[0], path);
    EXPECT_EQ(CurrentSettings().LastWizardName, QStringLiteral("Garden"));
    ResetShow();
    ResetSettings();
    ASSERT_TRUE(ReadSlideShow(path));
    EXPECT_EQ(CurrentShow().slides.size(), 3);
    EXPECT_EQ(CurrentSettings().SlideInterval, 7);
    EXPECT_TRUE(CurrentSettings().RandomSlides);
    EXPECT_TRUE(CurrentSettings().ShowFilenames);

    // Again with the same name: the question, and No keeps the file.
    frmSlideWizard again;
    again.findChild<QLineEdit*>(QStringLiteral("txtName"))->setText(QStringLiteral("Garden"));
    again.findChild<QLineEdit*>(QStringLiteral("txtImagePath"))->setText(folder);
    again.findChild<QLineEdit*>(QStringLiteral("txtShowPath"))->setText(showFolder);
    prompts().clear();
    prompts().answers = {vbNo};
    EXPECT_FALSE(again.finish());
    EXPECT_TRUE(prompts().texts().first().startsWith(
        QStringLiteral("The specified slide show file already exists:")));
}
