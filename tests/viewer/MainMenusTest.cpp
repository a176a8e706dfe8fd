#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QSet>
#include <QToolBar>

using namespace kavori;

class MainMenusTest : public kavori::test::KavoriTest {};

TEST_F(MainMenusTest, EveryCommandAndButtonIsThereByName)
{
    MainViewFrm window;
    EXPECT_EQ(window.windowTitle(), "Kavori");
    const QStringList names = MainMenuActionNames();
    // clang-format off
    for (const char* name :
         {"mnuOpen", "mnuNewImage", "mnuSaveCopy", "mnuExportJPG", "mnuExportBMP", "mnuImportPCX",
          "mnuImportTGA", "mnuReloadImage", "mnuLast1", "mnuLast7", "mnuMoreRecent", "mnuExit",
          "mnuUndo", "mnuCopy", "mnuPaste", "mnuCrop", "mnu25Larger", "mnu50Smaller",
          "mnuEditImageSize", "mnu90CW", "mnu90CCW", "mnu180Degrees", "mnuArbitrary",
          "mnuFlipHorizontal", "mnuFlipVertically", "mnuBrowseFirst", "mnuBrowseLast",
          "mnuFullScreen", "mnuSlideShow", "mnuPackage", "mnuSSaverSettings", "mnuSearchDuplicate",
          "mnuSaveFavoritesAsShow", "mnuTopmost", "mnuSelectLanguage", "mnuOpenEditor5",
          "mnuSelectProgram5", "mnuMediaPlayer", "mnuHelpContents", "mnuTipOfDay", "mnuAbout"}) {
        // clang-format on
        EXPECT_TRUE(names.contains(QString::fromLatin1(name))) << name;
        EXPECT_NE(window.findChild<QAction*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(names.size(), QSet<QString>(names.cbegin(), names.cend()).size()); // no name twice
    EXPECT_EQ(window.menus().action(QStringLiteral("mnuUndo"))->text(), "Can't Undo");
    EXPECT_EQ(window.menus().action(QStringLiteral("mnuImportPCX"))->text(),
              "Import PCX Image File");
    EXPECT_NE(window.findChild<QAction*>(QStringLiteral("mnuImageSize")), nullptr);

    // Toolbars carry their keys in order.
    EXPECT_EQ(MainToolbarKeys(), QStringList({"New",
                                              "Open",
                                              "File",
                                              "Print",
                                              "PrintOptions",
                                              "Copy",
                                              "Paste",
                                              "Find",
                                              "Fullscreen",
                                              "Thumbnail",
                                              "Slide Show Editor",
                                              "Load Slide Show",
                                              "Add",
                                              "Remove",
                                              "Preferences",
                                              "About",
                                              "Description",
                                              "Wizard",
                                              "Arrange",
                                              "Help2",
                                              "Help"}));
    QStringList quick = {"COP", "FF", "tFirst", "tBack", "tNext", "tLast", "tBrowser"};
    for (int i = 1; i <= 12; ++i)
        quick << QStringLiteral("F") + QString::number(i);
    EXPECT_EQ(QuickToolbarKeys(), quick);
    auto* toolbar = window.findChild<QToolBar*>(QStringLiteral("Toolbar1"));
    ASSERT_NE(toolbar, nullptr);
    QStringList shown;
    for (QAction* a : toolbar->actions())
        shown << a->data().toString();
    EXPECT_EQ(shown, MainToolbarKeys());
    EXPECT_NE(window.findChild<QToolBar*>(QStringLiteral("Toolbar2")), nullptr);

    // A button follows its command: disabled while the command is.
    QAction* fullScreen = window.menus().action(QStringLiteral("mnuFullScreen"));
    QAction* button = window.menus().buttons.value(QStringLiteral("Fullscreen"));
    fullScreen->setEnabled(true);
    EXPECT_TRUE(button->isEnabled());
    fullScreen->setEnabled(false);
    EXPECT_FALSE(button->isEnabled());
}
