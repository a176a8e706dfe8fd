#include "MainMenus.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QStandardPaths>
#include <QToolBar>
#include <QToolButton>

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
      {"mnuArrangeList", "&Arrange Slide List...", ""},
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
      {"mnuFloppy", ">Removable Dis&k", ""},
      {"mnuCopyImgToFloppy", "&Copy Images to Removable Disk...", ""},
      {"mnuCopyFromFloppy", "Copy Images &from Removable Disk...", ""},
      {"mnuDelImgOnFloppy", "&Delete Images on Removable Disk...", ""},
      {"mnuDiskcopyFloppy", "Co&py Whole Removable Disk...", ""},
      {"mnuFormatFloppy", "F&ormat Removable Disk...", ""},
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

// The icon of every command, by freedesktop icon name (Breeze has them all). A name followed by
// digits in a window ("mnuQuickCopy3", "mnuLast5") takes the icon of the name without them.
struct IconRow {
    const char* command;
    const char* icon;
};

const IconRow kCommandIcons[] = {
    {"mnuOpen", "document-open"},
    {"mnuNewImage", "document-new"},
    {"mnuSaveCopy", "document-save-as"},
    {"mnuExportJPG", "document-export"},
    {"mnuExportBMP", "document-save"},
    {"mnuImportPCX", "document-import"},
    {"mnuImportTGA", "insert-image"},
    {"mnuPrintImage", "document-print"},
    {"mnuPrintOptions", "document-print-preview"},
    {"mnuPrinterSetup", "printer"},
    {"mnuReloadImage", "view-refresh"},
    {"mnuLast", "image-x-generic"},
    {"mnuMoreRecent", "document-open-recent"},
    {"mnuExitToLauncher", "system-log-out"},
    {"mnuExit", "application-exit"},
    {"mnuUndo", "edit-undo"},
    {"mnuCopy", "edit-copy"},
    {"mnuPaste", "edit-paste"},
    {"mnuCrop", "transform-crop"},
    {"mnuImageSize", "transform-scale"},
    {"mnu25Larger", "zoom-in"},
    {"mnu25Smaller", "zoom-out"},
    {"mnu50Larger", "zoom-in-large"},
    {"mnu50Smaller", "zoom-out-large"},
    {"mnuEditImageSize", "transform-scale"},
    {"mnu90CW", "object-rotate-right"},
    {"mnu90CCW", "object-rotate-left"},
    {"mnu180Degrees", "transform-rotate"},
    {"mnuArbitrary", "edit-image"},
    {"mnuFlipHorizontal", "object-flip-horizontal"},
    {"mnuFlipVertically", "object-flip-vertical"},
    {"mnuCaptureDesktop", "camera-photo"},
    {"mnuTempFile", "folder-temp"},
    {"mnuBrowseFirst", "go-first"},
    {"mnuBrowsePrevious", "go-previous"},
    {"mnuBrowseNext", "go-next"},
    {"mnuBrowseLast", "go-last"},
    {"mnuFileBrowser", "view-list-tree"},
    {"mnuThumbnailBrowse", "view-list-icons"},
    {"mnuThumbnailSelect", "folder-pictures"},
    {"mnuFindImage", "edit-find"},
    {"mnuFullScreen", "view-fullscreen"},
    {"mnuAnimatedGIF", "media-playback-start"},
    {"mnuSlideShow", "view-presentation"},
    {"mnuOpenSlideShow", "folder-open"},
    {"mnuSlideShowWizard", "tools-wizard"},
    {"mnuLoadRecentShow", "folder-open-recent"},
    {"mnuLoadFavoriteShow", "bookmarks"},
    {"mnuArrangeList", "bookmarks-organize"},
    {"mnuDescOptions", "draw-text"},
    {"mnuRenameShow", "edit-rename"},
    {"mnuDeleteSlideShow", "edit-delete"},
    {"mnuFindSlideShow", "edit-find-replace"},
    {"mnuPackage", "package-x-generic"},
    {"mnuDeletePackage", "edit-delete-remove"},
    {"mnuSetScreenSaver", "preferences-desktop-screensaver"},
    {"mnuSSaverSettings", "configure"},
    {"mnuFileCopyImages", "edit-copy"},
    {"mnuMoveImages", "edit-move"},
    {"mnuMoveCurrentImg", "transform-move"},
    {"mnuDeleteImages", "edit-delete"},
    {"mnuDeleteCurrentImage", "delete"},
    {"mnuRenameImg", "edit-rename"},
    {"mnuRenameCurrentImg", "document-edit"},
    {"mnuDelEmptyFolder", "trash-empty"},
    {"mnuSearchDuplicate", "kr_comparedirs"},
    {"mnuFloppy", "drive-removable-media"},
    {"mnuCopyImgToFloppy", "document-send"},
    {"mnuCopyFromFloppy", "document-import"},
    {"mnuDelImgOnFloppy", "edit-delete"},
    {"mnuDiskcopyFloppy", "tools-media-optical-copy"},
    {"mnuFormatFloppy", "tools-media-optical-format"},
    {"mnuZip", "application-x-archive"},
    {"mnuZipCurImage", "archive-insert"},
    {"mnuZipImgFolder", "archive-insert"},
    {"mnuZipFolder", "archive-insert"},
    {"mnuQuickFolders", "folder-favorites"},
    {"mnuQuickCopy", "edit-copy"},
    {"mnuQuickMove", "edit-move"},
    {"mnuFavoriteFolder", "go-home"},
    {"mnuFavorites", "favorite"},
    {"mnuFavoritesAdd", "bookmark-new"},
    {"mnuFavoritesRemove", "bookmark-remove"},
    {"mnuFavoritesClear", "edit-clear-list"},
    {"mnuFavoritesList", "bookmark-edit"},
    {"mnuViewFavorites", "view-preview"},
    {"mnuSaveFavoritesAsShow", "media-playlist-append"},
    {"mnuSetWallpaper", "preferences-desktop-wallpaper"},
    {"mnuLoadWallpaper", "insert-image"},
    {"mnuClearWallpaper", "edit-clear-all"},
    {"mnuTileImage", "view-list-icons"},
    {"mnuDisplayProperties", "preferences-desktop-display"},
    {"mnuMultimediaProperties", "preferences-desktop-sound"},
    {"mnuSysInfo", "documentinfo"},
    {"mnuTopmost", "window-keep-above"},
    {"mnuPref", "configure"},
    {"mnuAdvancedSettings", "preferences-other"},
    {"mnuSelectLanguage", "preferences-desktop-locale"},
    {"mnuOpenWith", "system-run"},
    {"mnuOpenEditor", "system-run"},
    {"mnuSelectProgram", "document-properties"},
    {"mnuMediaPlayer", "applications-multimedia"},
    {"mnuHelpContents", "help-contents"},
    {"mnuHelpSearch", "help-hint"},
    {"mnuTipOfDay", "help-whatsthis"},
    {"mnuReadMe", "text-x-readme"},
    {"mnuWebSite", "globe"},
    {"mnuAbout", "help-about"},
};

// The icon theme the program ships with (Debian's breeze-icon-theme).
const char kIconTheme[] = "breeze";

// The twelve quick folder buttons show a folder beside their key.
const char kQuickFolderIcon[] = "folder-favorites";

// A button shows the icon of the command it runs.
struct ButtonRow {
    const char* key;
    const char* action; // the menu command the button runs
    const char* tip;
};

const ButtonRow kMainButtons[] = {
    {"New", "mnuNewImage", "New Image"},
    {"Open", "mnuOpen", "Open Image"},
    {"File", "mnuFileBrowser", "File Browser"},
    {"Print", "mnuPrintImage", "Print Image"},
    {"PrintOptions", "mnuPrintOptions", "Print Options"},
    {"Copy", "mnuCopy", "Copy"},
    {"Paste", "mnuPaste", "Paste"},
    {"Find", "mnuFindImage", "Find Image"},
    {"Fullscreen", "mnuFullScreen", "Full Screen"},
    {"Thumbnail", "mnuThumbnailBrowse", "Thumbnails"},
    {"Slide Show Editor", "mnuSlideShow", "Slide Show Editor"},
    {"Load Slide Show", "mnuOpenSlideShow", "Open Slide Show"},
    {"Add", "mnuFavoritesAdd", "Add to Favorites"},
    {"Remove", "mnuFavoritesRemove", "Remove from Favorites"},
    {"Preferences", "mnuPref", "Preferences"},
    {"About", "mnuAbout", "About Kavori"},
    {"Description", "mnuDescOptions", "Description Options"},
    {"Wizard", "mnuSlideShowWizard", "Slide Show Wizard"},
    {"Arrange", "mnuArrangeList", "Arrange Slide List"},
    {"Help2", "mnuTipOfDay", "Tip of the Day"},
    {"Help", "mnuHelpContents", "Help"},
};

const ButtonRow kQuickButtons[] = {
    {"COP", "mnuQuickFolders", "Quick Folders"},
    {"FF", "mnuFavoriteFolder", "Favorite Folder"},
    {"tFirst", "mnuBrowseFirst", "First Image"},
    {"tBack", "mnuBrowsePrevious", "Previous Image"},
    {"tNext", "mnuBrowseNext", "Next Image"},
    {"tLast", "mnuBrowseLast", "Last Image"},
    {"tBrowser", "mnuFileBrowser", "File Browser"},
};

// The command a toolbar button runs, kept on the button for its icon.
const char kCommandProperty[] = "command";

// Breeze's icons are dark grey line drawings, which the style's own disabled look only lightens
// a little: a disabled command gets its icon at a third of its strength, so it reads as off.
QIcon WithGreyedDisabled(const QIcon& icon)
{
    if (icon.isNull())
        return icon;
    QIcon out;
    for (const int size : {16, 20, 22, 24, 32, 44, 64}) {
        const QPixmap normal = icon.pixmap(QSize(size, size));
        if (normal.isNull())
            continue;
        QImage faded = normal.toImage().convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < faded.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(faded.scanLine(y));
            for (int x = 0; x < faded.width(); ++x) {
                const int grey = qGray(line[x]);
                line[x] = qRgba(grey, grey, grey, qAlpha(line[x]) / 3);
            }
        }
        out.addPixmap(normal, QIcon::Normal);
        out.addPixmap(QPixmap::fromImage(faded), QIcon::Disabled);
    }
    return out;
}

} // namespace

void UseIconTheme()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    // Found without a desktop session too: the system's icon folders are searched as well.
    QStringList paths = QIcon::themeSearchPaths();
    QStringList system =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                  QStandardPaths::LocateDirectory);
    system << QStringLiteral("/usr/share/icons") << QStringLiteral("/usr/local/share/icons");
    for (const QString& folder : std::as_const(system))
        if (!paths.contains(folder))
            paths << folder;
    QIcon::setThemeSearchPaths(paths);
    QIcon::setFallbackThemeName(QString::fromLatin1(kIconTheme));
    // Without a desktop there is no theme of the user's (or only the bare "hicolor"): ours is it.
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == QLatin1String("hicolor"))
        QIcon::setThemeName(QString::fromLatin1(kIconTheme));
}

QString CommandIconName(const QString& command)
{
    QString name = command;
    while (!name.isEmpty() && name.back().isDigit())
        name.chop(1);
    for (const IconRow& row : kCommandIcons) {
        if (name == QLatin1String(row.command))
            return QString::fromLatin1(row.icon);
    }
    return {};
}

void ApplyCommandIcons(QMainWindow* window)
{
    UseIconTheme();
    for (QAction* action : window->findChildren<QAction*>()) {
        const QString command = action->property(kCommandProperty).toString();
        QString icon = CommandIconName(command.isEmpty() ? action->objectName() : command);
        const bool quickFolder = command.isEmpty() &&
                                 action->objectName().startsWith(QLatin1String("btnF")) &&
                                 action->objectName().mid(4).toInt() > 0;
        if (quickFolder)
            icon = QString::fromLatin1(kQuickFolderIcon);
        if (icon.isEmpty())
            continue;
        action->setIcon(WithGreyedDisabled(QIcon::fromTheme(icon)));
        if (quickFolder) {
            // Twelve keys side by side: on the toolbar the key is the picture (as it always
            // was); the folder shows where the toolbar overflows into a menu.
            for (QToolBar* bar : window->findChildren<QToolBar*>()) {
                if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action)))
                    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
            }
        }
    }
}

MainMenus BuildMainMenus(QMainWindow* window)
{
    UseIconTheme();
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

    auto addButtons = [&](QToolBar* toolbar, const auto& rows) {
        for (const ButtonRow& row : rows) {
            const QString key = QString::fromLatin1(row.key);
            auto* button = new QAction(QString::fromLatin1(row.tip), toolbar);
            button->setObjectName(QStringLiteral("btn") + QString(key).remove(u' '));
            button->setData(key);
            button->setProperty(kCommandProperty, QString::fromLatin1(row.action));
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
