#include "FileCommands.h"

#include "FileDialogs.h"
#include "fileutil/Favorites.h"
#include "fileutil/FileDelete.h"
#include "fileutil/FileJobs.h"
#include "fileutil/QuickFolders.h"
#include "frmCopyImages.h"
#include "frmDuplicateFiles.h"
#include "frmFavorites.h"
#include "frmQuickFolders.h"
#include "platform/AppPaths.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/SlideShowFile.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QStatusBar>

namespace kavori {

QString CurrentPictureFile(const MainViewFrm* window)
{
    const QString path = window->document().currentFile();
    return IsFullPath(path) && QFileInfo(path).isFile() ? path : QString();
}

bool NeedsPicture(const MainViewFrm* window, const QString& doing)
{
    if (!CurrentPictureFile(window).isEmpty())
        return true;
    MsgBox(QStringLiteral("An image has not been opened yet, unable to ") + doing +
               QStringLiteral("..."),
           vbInformation);
    return false;
}

namespace {

// The open-image picker, starting in a folder.
void openFrom(MainViewFrm* window, const QString& folder)
{
    const QString path =
        CurrentPrompts().openFile(QStringLiteral("Open Image"), folder, OpenImageFilter());
    if (!path.isEmpty())
        window->openImage(path);
}

void openFavorite(MainViewFrm* window, const QString& entry)
{
    if (IsFavoriteFolder(entry)) {
        openFrom(window, entry);
    } else if (QFileInfo(entry).isFile()) {
        window->openImage(entry);
    } else {
        MsgBox(QStringLiteral("The favorite could not be found:") + NewLine2() +
                   QDir::toNativeSeparators(entry),
               vbInformation);
    }
}

// A quick folder's key: the current picture copied or moved there, or a picture opened from it.
void runQuickFolder(MainViewFrm* window, int index, QuickAction action)
{
    if (action == QuickAction::Open) {
        const QString refusal = QuickFolderRefusal(index);
        if (!refusal.isEmpty())
            MsgBox(refusal, vbInformation);
        else
            openFrom(window, QuickFolderPath(index));
        return;
    }
    const bool move = action == QuickAction::Move;
    const QString to = SendToQuickFolder(index, CurrentPictureFile(window), move);
    if (to.isEmpty())
        return;
    if (move)
        window->followCurrentFile(to);
    window->statusBar()->showMessage(
        (move ? QStringLiteral("Moved to ") : QStringLiteral("Copied to ")) +
            QDir::toNativeSeparators(to),
        4000);
}

// The quick folders' menu entries and buttons show their folders.
void showQuickFolders(MainViewFrm* window)
{
    for (int i = 0; i < kQuickFolders; ++i) {
        const QString caption = QuickFolderCaption(i);
        const bool set = !QuickFolderPath(i).isEmpty();
        for (const char* kind : {"mnuQuickCopy", "mnuQuickMove"}) {
            if (auto* a = window->findChild<QAction*>(QString::fromLatin1(kind) +
                                                      QString::number(i + 1))) {
                a->setText(caption);
                a->setEnabled(set);
            }
        }
        if (QAction* button =
                window->menus().buttons.value(QStringLiteral("F") + QString::number(i + 1))) {
            button->setEnabled(true);
            button->setToolTip(caption);
        }
    }
}

void addQuickMenus(MainViewFrm* window)
{
    auto* files = window->findChild<QMenu*>(QStringLiteral("mnuFiles"));
    QAction* before = window->menus().action(QStringLiteral("mnuFavoriteFolder"));
    if (!files || !before)
        return;
    struct Kind {
        const char* name;
        const char* caption;
        QuickAction action;
        const char* modifiers;
    };
    for (const Kind& k :
         {Kind{"mnuQuickCopy", "Cop&y to Quick Folder", QuickAction::Copy, "Ctrl+"},
          Kind{"mnuQuickMove", "Mo&ve to Quick Folder", QuickAction::Move, "Ctrl+Shift+"}}) {
        auto* menu = new QMenu(QString::fromLatin1(k.caption), files);
        menu->setObjectName(QString::fromLatin1(k.name));
        menu->menuAction()->setObjectName(QString::fromLatin1(k.name));
        for (int i = 0; i < kQuickFolders; ++i) {
            QAction* entry = menu->addAction(QuickFolderCaption(i));
            entry->setObjectName(QString::fromLatin1(k.name) + QString::number(i + 1));
            entry->setShortcut(
                QKeySequence(QString::fromLatin1(k.modifiers) + u'F' + QString::number(i + 1)));
            const QuickAction action = k.action;
            QObject::connect(entry, &QAction::triggered, window,
                             [window, i, action] { runQuickFolder(window, i, action); });
        }
        files->insertMenu(before, menu);
    }
    for (int i = 0; i < kQuickFolders; ++i) {
        if (QAction* button =
                window->menus().buttons.value(QStringLiteral("F") + QString::number(i + 1)))
            QObject::connect(button, &QAction::triggered, window,
                             [window, i] { runQuickFolder(window, i, CurrentQuickAction()); });
    }
    showQuickFolders(window);
}

} // namespace

void ConnectFileCommands(MainViewFrm* window)
{
    auto handle = [window](const char* name, auto&& slot) {
        EnableCommand(window, name, std::forward<decltype(slot)>(slot));
    };
    handle("mnuFileCopyImages", [window] {
        frmCopyImages dialog(CurrentPictureFile(window), window);
        dialog.exec();
    });
    handle("mnuMoveImages", [window] {
        frmMoveImages dialog(CurrentPictureFile(window), window);
        dialog.exec();
    });
    handle("mnuMoveCurrentImg", [window] {
        if (!NeedsPicture(window, QStringLiteral("move")))
            return;
        frmMoveCurrentImg dialog(CurrentPictureFile(window), window);
        if (dialog.exec() == QDialog::Accepted && !dialog.movedTo().isEmpty())
            window->followCurrentFile(dialog.movedTo());
    });
    handle("mnuDeleteImages", [window] {
        DeleteImgFrm dialog(CurrentPictureFile(window), window);
        dialog.exec();
    });
    handle("mnuDeleteCurrentImage", [window] {
        if (!NeedsPicture(window, QStringLiteral("delete")))
            return;
        if (DeleteOneFile(CurrentPictureFile(window), true))
            window->followCurrentFile(QString());
    });
    handle("mnuRenameImg", [window] {
        RenameImgFrm dialog(CurrentPictureFile(window), window);
        dialog.exec();
    });
    handle("mnuRenameCurrentImg", [window] {
        if (!NeedsPicture(window, QStringLiteral("rename")))
            return;
        const QString renamed = RenameFile(CurrentPictureFile(window));
        if (!renamed.isEmpty())
            window->followCurrentFile(renamed);
    });
    handle("mnuSearchDuplicate", [window] {
        frmDuplicateFiles dialog(window);
        dialog.exec();
    });
    handle("mnuQuickFolders", [window] {
        frmQuickFolders dialog(window);
        if (dialog.exec() == QDialog::Accepted)
            showQuickFolders(window);
    });
    addQuickMenus(window);
    handle("mnuFavoriteFolder", [window] { openFrom(window, CurrentSettings().FavoriteFolder); });
    handle("mnuFavoritesAdd", [window] {
        if (NeedsPicture(window, QStringLiteral("add it to your favorites")))
            AddFavoriteFile(CurrentPictureFile(window));
    });
    handle("mnuFavoritesRemove", [window] {
        if (NeedsPicture(window, QStringLiteral("remove it from your favorites")))
            RemoveFavoriteFile(CurrentPictureFile(window));
    });
    handle("mnuFavoritesClear", [] { ClearFavoriteFiles(); });
    handle("mnuFavoritesList", [window] {
        frmFavorites dialog(window);
        if (dialog.exec() == QDialog::Accepted && !dialog.chosen().isEmpty())
            openFavorite(window, dialog.chosen());
    });
    handle("mnuViewFavorites", [window] {
        const QStringList favorites = FavoriteFiles();
        if (favorites.isEmpty()) {
            MsgBox(QStringLiteral("Your Favorite Files List is empty, add the current image with "
                                  "\"Add Current Image\" first..."),
                   vbInformation);
            return;
        }
        QStringList shown;
        for (const QString& f : favorites)
            shown << QDir::toNativeSeparators(f);
        const std::optional<QString> chosen =
            CurrentPrompts().chooseItem(AppTitle() + QStringLiteral(" - [Favorite Files]"),
                                        QStringLiteral("Select a favorite to open:"), shown);
        if (chosen && shown.contains(*chosen))
            openFavorite(window, favorites[shown.indexOf(*chosen)]);
    });
    handle("mnuSaveFavoritesAsShow", [window] {
        if (FavoriteFiles().isEmpty()) {
            MsgBox(QStringLiteral("There are no pictures in your Favorite Files List to save as "
                                  "a slide show..."),
                   vbInformation);
            return;
        }
        QString path = CurrentPrompts().saveFile(QStringLiteral("Save Favorites as Slide Show"),
                                                 AddSlash(CurrentSettings().FavoriteFolder) +
                                                     QStringLiteral("Favorites.KAV"),
                                                 SlideShowFilter());
        if (path.isEmpty())
            return;
        if (!HasExtension(path, QStringLiteral(".KAV")))
            path += QStringLiteral(".KAV");
        if (SaveFavoritesAsShow(path))
            window->statusBar()->showMessage(
                QStringLiteral("Saved ") + QDir::toNativeSeparators(path), 4000);
    });
    handle("mnuDelEmptyFolder", [window] {
        DeleteFolderFrm dialog(StartFolder(CurrentPictureFile(window)), window);
        dialog.exec();
    });
}

} // namespace kavori
