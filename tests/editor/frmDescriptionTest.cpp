#include "editor/frmDescription.h"
#include "editor/SlideLoadFrm.h"
#include "editor/frmAdvDescription.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>
#include <QTimer>

#include <functional>

using namespace kavori;

namespace {

QByteArray descriptions(const QByteArray& body)
{
    return "Kavori Description File\r\n------------------------------\r\n" + body;
}

// Runs steps on the modal dialogs as they open, one step per dialog, in order. Each step must
// close its dialog: one left open (a refused OK) is a failure and is closed here, so the test
// fails at once instead of waiting on a window nobody answers.
void onNextDialogs(QList<std::function<void(QWidget*)>> steps)
{
    if (steps.isEmpty())
        return;
    QTimer::singleShot(0, qApp, [steps]() mutable {
        QWidget* found = nullptr;
        const bool opened = QTest::qWaitFor(
            [&] { return (found = QApplication::activeModalWidget()) != nullptr; }, 3000);
        auto step = steps.takeFirst();
        if (!opened) {
            ADD_FAILURE() << "no dialog opened for a step";
            return;
        }
        QPointer<QWidget> dialog = found;
        step(dialog);
        if (dialog && dialog->isVisible()) {
            ADD_FAILURE() << "a step left " << dialog->objectName().toStdString() << " open";
            if (auto* d = qobject_cast<QDialog*>(dialog.data()))
                d->reject();
            else
                dialog->close();
        }
        onNextDialogs(steps); // the next dialog opens once this one has closed
    });
}

template <typename W> W* child(QWidget* parent, const char* name)
{
    W* w = parent->findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

void click(QWidget* parent, const char* name)
{
    if (auto* b = child<QPushButton>(parent, name))
        b->click();
}

// With $KAVORI_SHOTS naming a folder, a dialog's picture is kept there to be looked at.
void shoot(QWidget* w, const char* name)
{
    const QString folder = qEnvironmentVariable("KAVORI_SHOTS");
    if (folder.isEmpty())
        return;
    QApplication::processEvents(); // let the layouts settle
    w->grab().save(folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
}

} // namespace

class frmDescriptionTest : public kavori::test::ShowTest {
protected:
    QString picture(const QString& relative, const QColor& colour)
    {
        const QString path = root() + relative;
        QDir().mkpath(QFileInfo(path).path());
        QImage image(160, 120, QImage::Format_RGB32);
        image.fill(colour);
        image.save(path, "BMP");
        return path;
    }
};

TEST_F(frmDescriptionTest, EditedInTheEditorAndSavedInTheShowFile)
{
    const QString red = picture(QStringLiteral("pics/red.bmp"), Qt::red);
    const QString blue = picture(QStringLiteral("pics/blue.bmp"), Qt::blue);
    writeFile(QStringLiteral("pics/!Description"), descriptions("RED.BMP\r\nA red square\r\n"));
    CurrentShow().slides = {NewSlide(red), NewSlide(blue)};
    QDir().mkpath(root() + QStringLiteral("shows"));
    const QString showPath = root() + QStringLiteral("shows/Squares.KAV");
    ASSERT_TRUE(WriteSlideShow(showPath));
    CurrentShow().path = showPath;

    SlideLoadFrm editor;
    editor.refreshList();
    editor.selectLines({1});
    QString firstCaption;
    onNextDialogs({[&](QWidget* dialog) {
        firstCaption = child<QLabel>(dialog, "lblSlide")->text();
        child<QLineEdit>(dialog, "txtDescription")->setText(QStringLiteral("Deep blue"));
        click(dialog, "CmdPrevious");
        click(dialog, "CmdInsert"); // the folder's description of the red square
        child<QCheckBox>(dialog, "chkCustom")->setChecked(true);
        child<QCheckBox>(dialog, "chkShadow")->setChecked(true);
        prompts().colors = {QColor(Qt::yellow), QColor(Qt::darkBlue)};
        click(dialog, "CmdForeColor");
        click(dialog, "CmdBackColor");
        child<QCheckBox>(dialog, "chkUseBack")->setChecked(true);
        child<QCheckBox>(dialog, "chkShowDescription")->setChecked(true);
        shoot(dialog, "frmDescription");
        click(dialog, "CmdOK");
    }});
    editor.findChild<QAction*>(QStringLiteral("mnuEditDescription"))->trigger();
    EXPECT_EQ(firstCaption, "Editing description for slide 2:");
    EXPECT_TRUE(prompts().calls.isEmpty()) << prompts().texts().join('|').toStdString();
    EXPECT_TRUE(CurrentShow().changed);
    EXPECT_EQ(CurrentShow().slides[0].SlideDescription, "A red square");
    EXPECT_EQ(CurrentShow().slides[1].SlideDescription, "Deep blue");
    const DescriptionLook look = ParseDescProps(CurrentShow().slides[0].SlideDescProps);
    EXPECT_EQ(look.shadow, 1);
    EXPECT_EQ(look.useBack, 1);
    EXPECT_EQ(look.foreColor, 0x00FFFF); // yellow, as the files keep colours
    EXPECT_EQ(look.backColor, 0x800000);
    EXPECT_EQ(CurrentShow().slides[1].SlideDescProps, "");

    // Saved, the file holds the texts, the look and ShowDescription.
    prompts().answers = {vbYes};
    ASSERT_TRUE(editor.save());
    const QByteArray file = readFile(showPath);
    EXPECT_TRUE(file.contains("\"A red square\"\r\n"));
    EXPECT_TRUE(file.contains("\"Deep blue\"\r\n"));
    ResetShow();
    ResetSettings();
    ASSERT_TRUE(ReadSlideShow(showPath));
    EXPECT_EQ(CurrentShow().slides[1].SlideDescription, "Deep blue");
    EXPECT_EQ(ParseDescProps(CurrentShow().slides[0].SlideDescProps).shadow, 1);
    EXPECT_TRUE(CurrentSettings().ShowDescription);
    // And the settings file keeps ShowDescription too.
    ResetSettings();
    LoadSettings();
    EXPECT_TRUE(CurrentSettings().ShowDescription);

    // Clearing every description from the editor's menu asks first.
    prompts().clear();
    prompts().answers = {vbYes};
    editor.findChild<QAction*>(QStringLiteral("mnuClearDescriptions"))->trigger();
    EXPECT_EQ(prompts().texts(), QStringList({"You are about to clear ALL of the image "
                                              "descriptions for this slide show.\r\n\r\nAre you "
                                              "sure?"}));
    EXPECT_EQ(CurrentShow().slides[1].SlideDescription, "");
    EXPECT_TRUE(CurrentShow().changed);
    prompts().clear();
    editor.findChild<QAction*>(QStringLiteral("mnuClearDescriptions"))->trigger();
    EXPECT_EQ(prompts().texts(), QStringList({"There are no descriptions to clear..."}));

    // The description files of the source folder are a menu command away.
    editor.setSourceFolder(root() + QStringLiteral("pics"));
    QStringList listed;
    onNextDialogs({[&](QWidget* dialog) {
        if (auto* advanced = qobject_cast<frmAdvDescription*>(dialog))
            listed = advanced->files();
        click(dialog, "CmdClose");
    }});
    editor.findChild<QAction*>(QStringLiteral("mnuAdvDescriptions"))->trigger();
    EXPECT_EQ(listed, QStringList({root() + "pics/!Description"}));

    // An empty show has nothing to describe.
    prompts().clear();
    CurrentShow().slides.clear();
    editor.editDescriptions();
    EXPECT_EQ(prompts().texts(),
              QStringList({"There are no slides in the View List to edit.\r\n\r\nAdd files to "
                           "the list and then try again..."}));
}

TEST_F(frmDescriptionTest, CommandsWorkOnACopyUntilOK)
{
    const QString red = picture(QStringLiteral("pics/red.bmp"), Qt::red);
    CurrentShow().slides = {NewSlide(red), NewSlide(root() + QStringLiteral("gone.bmp")),
                            NewSlide(red)};
    CurrentShow().slides[2].SlideDescription = QStringLiteral("Third");

    frmDescription dialog(0);
    EXPECT_FALSE(child<QPushButton>(&dialog, "CmdPrevious")->isEnabled());
    dialog.clearOne();
    dialog.insertOne();
    EXPECT_EQ(prompts().texts(),
              QStringList({"This description is already blank...",
                           "The selected image does not have a description, nothing to "
                           "insert..."}));
    prompts().clear();
    prompts().answers = {vbNo};
    dialog.clearAll();
    EXPECT_EQ(dialog.edited().slides[2].SlideDescription, "Third");
    prompts().answers = {vbYes};
    dialog.clearAll();
    EXPECT_EQ(dialog.edited().slides[2].SlideDescription, "");
    EXPECT_EQ(prompts().calls.size(), 2);

    // A text is cut to 200 characters.
    child<QLineEdit>(&dialog, "txtDescription")->setText(QString(250, u'x'));
    EXPECT_EQ(dialog.edited().slides[0].SlideDescription.size(), 200);

    // The slide's own look, given to all after the question.
    prompts().clear();
    child<QCheckBox>(&dialog, "chkCustom")->setChecked(true);
    child<QComboBox>(&dialog, "cboLocation")->setCurrentIndex(4);
    prompts().answers = {vbYes};
    dialog.applyToAll(LookPart::Properties);
    EXPECT_EQ(prompts().texts(),
              QStringList({"Apply the selected description properties to all of the slides in "
                           "the show?"}));
    for (const Slide& slide : dialog.edited().slides)
        EXPECT_EQ(ParseDescProps(slide.SlideDescProps).location, 4);

    // File information, for a file that is there and one that is not.
    prompts().clear();
    dialog.fileInformation();
    dialog.showSlide(1);
    EXPECT_EQ(child<QLabel>(&dialog, "lblSlide")->text(), "Editing description for slide 2:");
    dialog.fileInformation();
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_TRUE(prompts().calls[0].text.startsWith("File Date: "));
    EXPECT_TRUE(prompts().calls[0].text.endsWith(" - File Path: " + red));
    EXPECT_EQ(prompts().calls[1].text,
              "Selected file could not be found, unable to get information...");

    // The defaults: a slide without its own look edits them, and Cancel puts them back.
    dialog.showSlide(1);
    child<QCheckBox>(&dialog, "chkCustom")->setChecked(false);
    child<QComboBox>(&dialog, "cboLocation")->setCurrentIndex(20);
    EXPECT_EQ(CurrentSettings().SlideDescLoc, 20);
    EXPECT_TRUE(child<QLabel>(&dialog, "lblFontInfo")
                    ->text()
                    .startsWith("Currently selected font:\nName: "));
    dialog.reject();
    EXPECT_EQ(CurrentSettings().SlideDescLoc, 5);
    EXPECT_EQ(CurrentShow().slides[2].SlideDescription, "Third");
    EXPECT_FALSE(CurrentShow().changed);

    // Saved as the default look, it reaches the settings file.
    frmDescription again(0);
    child<QComboBox>(&again, "cboLocation")->setCurrentIndex(7);
    child<QCheckBox>(&again, "chkCustom")->setChecked(true);
    child<QComboBox>(&again, "cboLocation")->setCurrentIndex(9);
    again.saveAsDefault();
    again.reject();
    ResetSettings();
    LoadSettings();
    EXPECT_EQ(CurrentSettings().SlideDescLoc, 9);

    // OK keeps a changed default look too; the show itself is no different.
    frmDescription third(1);
    child<QComboBox>(&third, "cboLocation")->setCurrentIndex(3);
    third.store();
    EXPECT_FALSE(third.changedShow());
    EXPECT_FALSE(CurrentShow().changed);
    ResetSettings();
    LoadSettings();
    EXPECT_EQ(CurrentSettings().SlideDescLoc, 3);
}

TEST_F(frmDescriptionTest, AdvancedDialogManagesAFoldersFile)
{
    picture(QStringLiteral("pics/a.bmp"), Qt::red);
    picture(QStringLiteral("pics/b.bmp"), Qt::green);
    picture(QStringLiteral("pics/c.bmp"), Qt::blue);
    const QString folder = root() + QStringLiteral("pics");
    writeFile(QStringLiteral("pics/!Description"),
              descriptions("a.bmp\r\nApple\r\ngone.bmp\r\nLost\r\n"));

    frmAdvDescription dialog(folder);
    EXPECT_EQ(dialog.heading(), "Found one description file:");
    ASSERT_EQ(dialog.files(), QStringList({folder + "/!Description"}));
    EXPECT_EQ(dialog.entryCount(), 2);
    shoot(&dialog, "frmAdvDescription");

    // Editing: nothing chosen, then an empty text refused, then a new one.
    dialog.editDescription();
    EXPECT_EQ(prompts().texts(),
              QStringList({"Select the description to edit and then try again..."}));
    prompts().clear();
    dialog.selectEntry(0);
    onNextDialogs({[&](QWidget* edit) {
        child<QLineEdit>(edit, "txtDescription")->clear();
        click(edit, "CmdOK");
        EXPECT_TRUE(edit->isVisible());
        child<QLineEdit>(edit, "txtDescription")->setText(QStringLiteral("Green apple"));
        shoot(edit, "frmAdvDescEdit");
        click(edit, "CmdOK");
    }});
    dialog.editDescription();
    EXPECT_EQ(prompts().texts(),
              QStringList({"A description was not entered.\r\n\r\nUse the \"Remove "
                           "Description\" command to clear a description..."}));
    EXPECT_EQ(GetDescription(folder + QStringLiteral("/a.bmp")), "Green apple");

    // Adding: the files without a description to choose from, one of them chosen.
    prompts().clear();
    QStringList offered;
    onNextDialogs({[&](QWidget* add) {
                       auto* list = child<QListWidget>(add, "lstFiles");
                       for (int i = 0; i < list->count(); ++i)
                           offered << list->item(i)->text();
                       click(add, "CmdOK");
                       shoot(add, "frmAddDesc");
                       list->setCurrentRow(1);
                       click(add, "CmdOK");
                   },
                   [&](QWidget* edit) {
                       child<QLineEdit>(edit, "txtDescription")->setText(QStringLiteral("Sea"));
                       click(edit, "CmdOK");
                   }});
    dialog.addDescription();
    EXPECT_EQ(offered, QStringList({"b.bmp", "c.bmp"}));
    EXPECT_EQ(prompts().texts(),
              QStringList({"Select a file to create a description for and then try again..."}));
    EXPECT_EQ(GetDescription(folder + QStringLiteral("/c.bmp")), "Sea");
    EXPECT_EQ(dialog.entryCount(), 3);

    // Verify and repair: the entry whose picture is gone.
    prompts().clear();
    prompts().answers = {vbYes};
    dialog.verify();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.contains("  * One filename could not be found."));
    EXPECT_EQ(dialog.entryCount(), 2);
    prompts().clear();
    dialog.verify();
    EXPECT_EQ(prompts().texts(),
              QStringList({"There are no problems with the selected description file..."}));

    // Removing asks; details tell the count and size.
    prompts().clear();
    dialog.selectEntry(1);
    prompts().answers = {vbYes};
    dialog.removeDescription();
    EXPECT_EQ(prompts().texts(), QStringList({"Remove the following file "
                                              "description?\r\n\r\nc.bmp\r\nSea"}));
    prompts().clear();
    dialog.details();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.contains("Number of descriptions = 1\r\nFile size = "));

    // Deleting the file empties the list.
    prompts().clear();
    dialog.findChild<QListWidget*>(QStringLiteral("lstFiles"))->selectAll();
    prompts().answers = {vbYes};
    dialog.deleteFiles();
    EXPECT_EQ(prompts().texts(), QStringList({"About to delete the selected description "
                                              "files.\r\n\r\nAre you sure?"}));
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("/!Description")));
    EXPECT_EQ(dialog.heading(), "No description files were found...");
    prompts().clear();
    dialog.deleteFiles();
    dialog.editDescription();
    EXPECT_EQ(prompts().texts(),
              QStringList({"No description files were selected, nothing to delete...",
                           "There are no descriptions to edit..."}));

    // Creating in a folder without pictures is refused.
    prompts().clear();
    QDir().mkpath(root() + QStringLiteral("empty"));
    prompts().files = {root() + QStringLiteral("empty")};
    dialog.createFile();
    EXPECT_EQ(prompts().texts(), QStringList({"There are no supported files in this folder, "
                                              "unable to create description file..."}));
}

TEST_F(frmDescriptionTest, AdvancedSearchRunsBesideTheWindowAndCanBeCancelled)
{
    writeFile(QStringLiteral("tree/x/!Description"), descriptions("a.jpg\r\nHarbour at dawn\r\n"));
    writeFile(QStringLiteral("tree/y/!Description"), descriptions("b.jpg\r\nDawn again\r\n"));
    writeFile(QStringLiteral("tree/z/!Description"), descriptions("c.jpg\r\nNoon\r\n"));
    const QString tree = root() + QStringLiteral("tree");

    frmAdvDescription dialog(tree);
    dialog.show();
    EXPECT_EQ(dialog.heading(), "No description files were found...");
    dialog.findChild<QComboBox*>(QStringLiteral("cboDrive"))->setEditText(tree);
    dialog.findChild<QLineEdit*>(QStringLiteral("txtSearch"))->setText(QStringLiteral("dawn"));
    prompts().answers = {vbOK};
    dialog.search();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.searching(); }, 10000));
    EXPECT_EQ(prompts().texts(),
              QStringList({"About to search " + tree +
                               " for description files.\r\n\r\nThis could take several minutes "
                               "to complete...",
                           "Finished searching the selected drive for description files..."}));
    EXPECT_EQ(dialog.files(), QStringList({tree + "/x/!Description", tree + "/y/!Description"}));
    EXPECT_EQ(dialog.heading(), "dawn was found in 2 description file(s) a total of 2 time(s).");
    EXPECT_EQ(dialog.hint(), "(Double-click file for details.)");
    shoot(&dialog, "frmAdvDescription-search");

    // While the search waits for a thread the window lives: its button cancels, closing is
    // refused.
    QThreadPool* pool = QThreadPool::globalInstance();
    QSemaphore release;
    for (int i = 0; i < pool->maxThreadCount(); ++i)
        pool->start([&release] { release.acquire(); });
    prompts().clear();
    prompts().answers = {vbOK};
    dialog.findChild<QLineEdit*>(QStringLiteral("txtSearch"))->clear();
    dialog.search();
    EXPECT_TRUE(dialog.searching());
    auto* button = dialog.findChild<QPushButton*>(QStringLiteral("CmdSearch"));
    EXPECT_EQ(button->text(), "Canc&el Search");
    EXPECT_EQ(dialog.findChild<QListWidget*>(QStringLiteral("lstFiles"))->item(0)->text(),
              "(Searching for files, please wait...)");
    shoot(&dialog, "frmAdvDescription-searching");
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    button->click(); // cancel
    release.release(pool->maxThreadCount());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.searching(); }, 10000));
    // The blockers may still be inside acquire(): the semaphore must outlive them.
    pool->waitForDone();
    EXPECT_EQ(button->text(), "&Search");
    EXPECT_EQ(prompts().texts().size(), 2);
    EXPECT_EQ(prompts().texts().value(1), "You need to cancel the description file search before "
                                          "you can close this dialog...");
    EXPECT_TRUE(dialog.files().isEmpty());
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}
