#include "MainMenus.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

namespace kavori {

namespace {

// One row per menu entry. A row whose name is empty is a separator; a row whose caption starts
// with ">" opens a submenu that holds the following rows up to a row named "<".
struct MenuRow {
    const char* name;
    const char* caption;
    const char* shortcut;
};

struct MenuTable {
    const char* objectName;
    const char* title;
    std::initializer_list<MenuRow> rows;
};

const MenuTable kMenus[] = {
    {"mnuFile",
     "&File",
     {{"mnuOpen", "&Open Image...", "Ctrl+O"},
      {"mnuNewImage", "&New Image...", "Ctrl+N"},
      {"mnuSaveCopy", "Save a &Copy As...", "Ctrl+S"},
      {"mnuExportJPG", "Export as &JPEG...", ""},
      {"mnuExportBMP", "Export as &Bitmap...", ""},
      {"", "", ""},
      {"mnuImportPCX", "Import PCX Image File", ""},
      {"mnuImportTGA", "Import TGA Image File", ""},
      {"", "", ""},
      {"mnuPrintImage", "&Print Image...", "Ctrl+P"},
      {"mnuPrintOptions", "Print Op&tions...", ""},
      {"mnuPrinterSetup", "P&rinter Setup...", ""},
      {"", "", ""},
      {"mnuReloadImage", "Re&load Image", "F5"},
      {"", "", ""},
      {"mnuLast1", "", ""},
      {"mnuLast2", "", ""},
      {"mnuLast3", "", ""},
      {"mnuLast4", "", ""},
      {"mnuLast5", "", ""},
      {"mnuLast6", "", ""},
      {"mnuLast7", "", ""},
      {"mnuMoreRecent", "&More Recent Files...", ""},
      {"", "", ""},
      {"mnuExitToLauncher", "Exit to &Launcher", ""},
      {"mnuExit", "E&xit", "Ctrl+Q"}}},
    {"mnuEdit",
     "&Edit",
     {{"mnuUndo", "Can't Undo", "Ctrl+Z"},
      {"", "", ""},
      {"mnuCopy", "&Copy", "Ctrl+C"},
      {"mnuPaste", "&Paste", "Ctrl+V"},
      {"mnuCrop", "C&rop to Selection", "Ctrl+R"},
      {"", "", ""},
      {"mnuImageSize", ">Image &Size", ""},
      {"mnu25Larger", "25% &Larger", "Ctrl++"},
      {"mnu25Smaller", "25% &Smaller", "Ctrl+-"},
      {"mnu50Larger", "50% L&arger", ""},
      {"mnu50Smaller", "50% S&maller", ""},
      {"", "", ""},
      {"mnuEditImageSize", "&Image Size...", ""},
      {"<", "", ""},
      {"mnu90CW", "Rotate 90\u00b0 &Clockwise", "Ctrl+]"},
      {"mnu90CCW", "Rotate 90\u00b0 Co&unterclockwise", "Ctrl+["},
      {"mnu180Degrees", "Rotate &180\u00b0", ""},
      {"mnuArbitrary", "Rotate by &Angle...", ""},
      {"mnuFlipHorizontal", "Flip &Horizontal", ""},
      {"mnuFlipVertically", "Flip &Vertical", ""},
      {"", "", ""},
      {"mnuCaptureDesktop", "Capture &Desktop", ""},
      {"mnuTempFile", "Open &Temporary Image", ""}}},
    {"mnuBrowse",
     "&Browse",
     {{"mnuBrowseFirst", "&First Image", "Home"},
      {"mnuBrowsePrevious", "&Previous Image", "PgUp"},
      {"mnuBrowseNext", "&Next Image", "PgDown"},
      {"mnuBrowseLast", "&Last Image", "End"},
      {"", "", ""},
      {"mnuFileBrowser", "File &Browser", "F9"},
      {"mnuThumbnailBrowse", "&Thumbnails...", "Ctrl+T"},
      {"mnuThumbnailSelect", "Thumbnails of &Folder...", ""},
      {"mnuFindImage", "F&ind Image...", "Ctrl+F"},
      {"", "", ""},
      {"mnuFullScreen", "F&ull Screen", "F11"},
      {"mnuAnimatedGIF", "View &Animated GIF", ""}}},
    {"mnuShows",
     "&Slide Shows",
     {{"mnuSlideShow", "Slide Show &Editor...", "Ctrl+E"},
      {"mnuOpenSlideShow", "&Open Slide Show...", "Ctrl+L"},
      {"mnuSlideShowWizard", "Slide Show &Wizard...", "Ctrl+W"},
      {"mnuLoadRecentShow", "&Recent Slide Shows...", ""},
      {"mnuLoadFavoriteShow", "&Favorite Slide Shows...", ""},
      {"mnuArrangeList", "&Arrange Favorite Shows...", ""},
      {"", "", ""},
      {"mnuDescOptions", "&Description Options...", ""},
      {"mnuRenameShow", "Re&name Slide Show...", ""},
      {"mnuDeleteSlideShow", "De&lete Slide Show...", ""},
      {"mnuFindSlideShow", "F&ind Slide Shows...", ""},
      {"", "", ""},
      {"mnuPackage", "&Package Slide Show...", ""},
      {"mnuDeletePackage", "Delete Pac&kage...", ""},
      {"", "", ""},
      {"mnuSetScreenSaver", "Set as &Screen Saver...", ""},
      {"mnuSSaverSettings", "Screen Saver Se&ttings...", ""}}},
    {"mnuFiles",
     "F&iles",
     {{"mnuFileCopyImages", "&Copy Images...", ""},
      {"mnuMoveImages", "&Move Images...", ""},
      {"mnuMoveCurrentImg", "Move C&urrent Image...", ""},
      {"mnuDeleteImages", "&Delete Images...", ""},
      {"mnuDeleteCurrentImage", "Delete Current &Image", "Del"},
      {"mnuRenameImg", "&Rename Images...", ""},
      {"mnuRenameCurrentImg", "Rename Current Ima&ge...", "F2"},
      {"mnuDelEmptyFolder", "Delete &Empty Folder...", ""},
      {"mnuSearchDuplicate", "Find Du&plicate Files...", ""},
      {"", "", ""},
      {"mnuFloppy", ">Flopp&y Disk", ""},
      {"mnuCopyImgToFloppy", "&Copy Images to Floppy...", ""},
      {"mnuCopyFromFloppy", "Copy Images &from Floppy...", ""},
      {"mnuDelImgOnFloppy", "&Delete Images on Floppy...", ""},
      {"mnuDiskcopyFloppy", "Co&py Floppy Disk...", ""},
      {"mnuFormatFloppy", "F&ormat Floppy Disk...", ""},
      {"<", "", ""},
      {"mnuZip", ">&Zip", ""},
      {"mnuZipCurImage", "Zip &Current Image...", ""},
      {"mnuZipImgFolder", "Zip &Images in Folder...", ""},
      {"mnuZipFolder", "Zip &Folder...", ""},
      {"<", "", ""},
      {"", "", ""},
      {"mnuQuickFolders", "&Quick Folders...", ""},
      {"mnuFavoriteFolder", "Fa&vorite Folder", ""},
      {"mnuFavorites", ">Favorite Fi&les", ""},
      {"mnuFavoritesAdd", "&Add Current Image", ""},
      {"mnuFavoritesRemove", "&Remove Current Image", ""},
      {"mnuFavoritesClear", "&Clear List", ""},
      {"mnuFavoritesList", "&Edit List...", ""},
      {"mnuViewFavorites", "&View Favorites...", ""},
      {"mnuSaveFavoritesAsShow", "&Save as Slide Show...", ""},
      {"<", "", ""}}},
    {"mnuSystem",
     "S&ystem",
     {{"mnuSetWallpaper", "Set as &Wallpaper", ""},
      {"mnuLoadWallpaper", "&Open Wallpaper", ""},
      {"mnuClearWallpaper", "&Clear Wallpaper", ""},
      {"mnuTileImage", "&Tile Image", ""},
      {"", "", ""},
      {"mnuDisplayProperties", "&Display Properties...", ""},
      {"mnuMultimediaProperties", "&Multimedia Properties...", ""},
      {"mnuSysInfo", "System &Information...", ""},
      {"", "", ""},
      {"mnuTopmost", "Always on To&p", ""},
      {"mnuPref", "P&references...", ""},
      {"mnuAdvancedSettings", "Ad&vanced Settings...", ""},
      {"mnuSelectLanguage", "Select &Language...", ""},
      {"", "", ""},
      {"mnuOpenWith", ">Open &With", ""},
      {"mnuOpenEditor", "", ""},
      {"mnuOpenEditor2", "", ""},
      {"mnuOpenEditor3", "", ""},
      {"mnuOpenEditor4", "", ""},
      {"mnuOpenEditor5", "", ""},
      {"", "", ""},
      {"mnuSelectProgram", "Select Program &1...", ""},
      {"mnuSelectProgram2", "Select Program &2...", ""},
      {"mnuSelectProgram3", "Select Program &3...", ""},
      {"mnuSelectProgram4", "Select Program &4...", ""},
      {"mnuSelectProgram5", "Select Program &5...", ""},
      {"<", "", ""},
      {"mnuMediaPlayer", "Media &Player", ""}}},
    {"mnuHelp",
     "&Help",
     {{"mnuHelpContents", "&Contents", "F1"},
      {"mnuHelpSearch", "&Search for Help On...", ""},
      {"mnuTipOfDay", "&Tip of the Day...", ""},
      {"", "", ""},
      {"mnuReadMe", "&Read Me", ""},
      {"mnuWebSite", "Kavori on the &Web", ""},
      {"", "", ""},
      {"mnuAbout", "&About Kavori...", ""}}},
};

struct ButtonRow {
    const char* key;
    const char* action; // the menu command the button runs
    const char* tip;
    QStyle::StandardPixmap icon;
};

const ButtonRow kMainButtons[] = {
    {"New", "mnuNewImage", "New Image", QStyle::SP_FileIcon},
    {"Open", "mnuOpen", "Open Image", QStyle::SP_DialogOpenButton},
    {"File", "mnuFileBrowser", "File Browser", QStyle::SP_DirIcon},
    {"Print", "mnuPrintImage", "Print Image", QStyle::SP_FileDialogDetailedView},
    {"PrintOptions", "mnuPrintOptions", "Print Options", QStyle::SP_FileDialogInfoView},
    {"Copy", "mnuCopy", "Copy", QStyle::SP_FileDialogNewFolder},
    {"Paste", "mnuPaste", "Paste", QStyle::SP_DialogApplyButton},
    {"Find", "mnuFindImage", "Find Image", QStyle::SP_FileDialogContentsView},
    {"Fullscreen", "mnuFullScreen", "Full Screen", QStyle::SP_TitleBarMaxButton},
    {"Thumbnail", "mnuThumbnailBrowse", "Thumbnails", QStyle::SP_FileDialogListView},
    {"Slide Show Editor", "mnuSlideShow", "Slide Show Editor", QStyle::SP_MediaPlay},
    {"Load Slide Show", "mnuOpenSlideShow", "Open Slide Show", QStyle::SP_DirOpenIcon},
    {"Add", "mnuFavoritesAdd", "Add to Favorites", QStyle::SP_ArrowUp},
    {"Remove", "mnuFavoritesRemove", "Remove from Favorites", QStyle::SP_ArrowDown},
    {"Preferences", "mnuPref", "Preferences", QStyle::SP_ComputerIcon},
    {"About", "mnuAbout", "About Kavori", QStyle::SP_MessageBoxInformation},
    {"Description", "mnuDescOptions", "Description Options", QStyle::SP_FileDialogInfoView},
    {"Wizard", "mnuSlideShowWizard", "Slide Show Wizard", QStyle::SP_DialogYesButton},
    {"Arrange", "mnuArrangeList", "Arrange Favorite Shows", QStyle::SP_FileDialogToParent},
    {"Help2", "mnuTipOfDay", "Tip of the Day", QStyle::SP_MessageBoxQuestion},
    {"Help", "mnuHelpContents", "Help", QStyle::SP_TitleBarContextHelpButton},
};

const ButtonRow kQuickButtons[] = {
    {"COP", "mnuQuickFolders", "Quick Folders", QStyle::SP_DirLinkIcon},
    {"FF", "mnuFavoriteFolder", "Favorite Folder", QStyle::SP_DirHomeIcon},
    {"tFirst", "mnuBrowseFirst", "First Image", QStyle::SP_MediaSkipBackward},
    {"tBack", "mnuBrowsePrevious", "Previous Image", QStyle::SP_MediaSeekBackward},
    {"tNext", "mnuBrowseNext", "Next Image", QStyle::SP_MediaSeekForward},
    {"tLast", "mnuBrowseLast", "Last Image", QStyle::SP_MediaSkipForward},
    {"tBrowser", "mnuFileBrowser", "File Browser", QStyle::SP_DirIcon},
};

} // namespace

MainMenus BuildMainMenus(QMainWindow* window)
{
    MainMenus menus;
    QMenuBar* bar = window->menuBar();
    for (const MenuTable& table : kMenus) {
        QMenu* top = bar->addMenu(QString::fromUtf8(table.title));
        top->setObjectName(QString::fromLatin1(table.objectName));
        QMenu* current = top;
        for (const MenuRow& row : table.rows) {
            const QString name = QString::fromLatin1(row.name);
            const QString caption = QString::fromUtf8(row.caption);
            if (name.isEmpty()) {
                current->addSeparator();
            } else if (name == QLatin1String("<")) {
                current = top;
            } else if (caption.startsWith(u'>')) {
                current = top->addMenu(caption.mid(1));
                current->setObjectName(name);
                current->menuAction()->setObjectName(name);
                menus.actions.insert(name, current->menuAction());
            } else {
                auto* action = new QAction(caption, window);
                action->setObjectName(name);
                if (row.shortcut[0] != '\0')
                    action->setShortcut(QKeySequence(QString::fromLatin1(row.shortcut)));
                current->addAction(action);
                menus.actions.insert(name, action);
            }
        }
    }

    QStyle* style = window->style();
    auto addButtons = [&](QToolBar* toolbar, const auto& rows) {
        for (const ButtonRow& row : rows) {
            const QString key = QString::fromLatin1(row.key);
            auto* button =
                new QAction(style->standardIcon(row.icon), QString::fromLatin1(row.tip), toolbar);
            button->setObjectName(QStringLiteral("btn") + QString(key).remove(u' '));
            button->setData(key);
            if (QAction* target = menus.actions.value(QString::fromLatin1(row.action))) {
                QObject::connect(button, &QAction::triggered, target, &QAction::trigger);
                button->setEnabled(target->isEnabled());
                QObject::connect(target, &QAction::changed, button,
                                 [button, target] { button->setEnabled(target->isEnabled()); });
            }
            toolbar->addAction(button);
            menus.buttons.insert(key, button);
        }
    };

    menus.mainToolbar = window->addToolBar(QStringLiteral("Main"));
    menus.mainToolbar->setObjectName(QStringLiteral("Toolbar1"));
    menus.mainToolbar->setIconSize(QSize(20, 20));
    addButtons(menus.mainToolbar, kMainButtons);

    window->addToolBarBreak();
    menus.quickToolbar = window->addToolBar(QStringLiteral("Quick"));
    menus.quickToolbar->setObjectName(QStringLiteral("Toolbar2"));
    menus.quickToolbar->setIconSize(QSize(16, 16));
    addButtons(menus.quickToolbar, kQuickButtons);
    menus.quickToolbar->addSeparator();
    // The twelve quick folder buttons, captioned with their key.
    for (int i = 1; i <= 12; ++i) {
        const QString key = QStringLiteral("F") + QString::number(i);
        auto* button = new QAction(key, menus.quickToolbar);
        button->setObjectName(QStringLiteral("btn") + key);
        button->setData(key);
        button->setEnabled(false);
        menus.quickToolbar->addAction(button);
        menus.buttons.insert(key, button);
    }
    return menus;
}

QStringList MainMenuActionNames()
{
    QStringList names;
    for (const MenuTable& table : kMenus) {
        for (const MenuRow& row : table.rows) {
            const QString name = QString::fromLatin1(row.name);
            if (!name.isEmpty() && name != QLatin1String("<") && row.caption[0] != '>')
                names << name;
        }
    }
    return names;
}

QStringList MainToolbarKeys()
{
    QStringList keys;
    for (const ButtonRow& row : kMainButtons)
        keys << QString::fromLatin1(row.key);
    return keys;
}

QStringList QuickToolbarKeys()
{
    QStringList keys;
    for (const ButtonRow& row : kQuickButtons)
        keys << QString::fromLatin1(row.key);
    for (int i = 1; i <= 12; ++i)
        keys << QStringLiteral("F") + QString::number(i);
    return keys;
}

} // namespace kavori
