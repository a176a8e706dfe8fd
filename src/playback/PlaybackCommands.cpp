#include "PlaybackCommands.h"

#include "FullViewFrm.h"
#include "platform/AppPaths.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QAction>
#include <QFileInfo>
#include <QWidget>

#include <array>

namespace kavori {

namespace {

// The shows of a list that still exist, in the list's order.
QStringList existingShows(const std::array<QString, 20>& list)
{
    QStringList shows;
    for (const QString& path : list)
        if (!path.isEmpty() && QFileInfo(path).isFile())
            shows << path;
    return shows;
}

// Lets the user pick one show of a list and plays it.
void playFromList(const QStringList& shows, const QString& title, const QString& empty,
                  QWidget* parent)
{
    if (shows.isEmpty()) {
        MsgBox(empty, vbInformation);
        return;
    }
    const std::optional<QString> chosen =
        CurrentPrompts().chooseItem(title, QStringLiteral("Select the slide show to play:"), shows);
    if (chosen && !chosen->isEmpty())
        PlaySlideShowFile(*chosen, parent);
}

} // namespace

void PlaySlideShowFile(const QString& path, QWidget* parent)
{
    if (!ReadSlideShow(path))
        return;
    if (CurrentShow().slides.isEmpty()) {
        MsgBox(
            QStringLiteral("This slide show file does not contain any images, nothing to show..."),
            vbInformation);
        return;
    }
    FullViewFrm::PlaySlideShowModal({}, parent);
}

QString SlideShowFolder()
{
    const Settings& s = CurrentSettings();
    return s.FavoriteFolder.isEmpty() ? PathNoCase(AppPath(), QStringLiteral("Slides"))
                                      : s.FavoriteFolder;
}

void ConnectPlaybackCommands(QWidget* window)
{
    auto handle = [window](const char* name, auto&& slot) {
        EnableCommand(window, name, std::forward<decltype(slot)>(slot));
    };
    handle("mnuOpenSlideShow", [window] {
        const QString path = CurrentPrompts().openFile(QStringLiteral("Open Slide Show"),
                                                       SlideShowFolder(), SlideShowFilter());
        if (!path.isEmpty())
            PlaySlideShowFile(path, window);
    });
    handle("mnuLoadRecentShow", [window] {
        playFromList(existingShows(CurrentSettings().RecentShow),
                     QStringLiteral("Recent Slide Shows"),
                     QStringLiteral("There are no recent slide shows to play..."), window);
    });
    handle("mnuLoadFavoriteShow", [window] {
        playFromList(existingShows(CurrentSettings().FavoriteShow),
                     QStringLiteral("Favorite Slide Shows"),
                     QStringLiteral("There are no favorite slide shows to play..."), window);
    });
}

} // namespace kavori
