#include "Favorites.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QFileInfo>

#include <utility>

namespace kavori {

namespace {

void writeFavorites()
{
    QStringList keys;
    for (int i = 1; i <= kMaxFavoriteFiles; ++i)
        keys << QStringLiteral("FavoriteFile") + QString::number(i);
    WriteSettingsKeys(keys);
}

bool listed(const QStringList& files, const QString& path)
{
    for (const QString& f : files)
        if (f.compare(path, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

} // namespace

QStringList FavoriteFiles()
{
    QStringList files;
    for (const QString& entry : CurrentSettings().FavoriteFile)
        if (!entry.isEmpty())
            files << entry;
    return files;
}

void SetFavoriteFiles(const QStringList& files)
{
    auto& list = CurrentSettings().FavoriteFile;
    for (int i = 0; i < kMaxFavoriteFiles; ++i)
        list[size_t(i)] = i < files.size() ? files[i] : QString();
    writeFavorites();
}

bool AddFavoriteFile(const QString& path)
{
    QStringList files = FavoriteFiles();
    if (listed(files, path)) {
        MsgBox(QStringLiteral("The file:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("...is already in your Favorite Files List."),
               vbInformation);
        return false;
    }
    if (files.size() >= kMaxFavoriteFiles) {
        MsgBox(QStringLiteral(
                   "Your \"Favorite Files\" list is full, you need to remove an item first."),
               vbExclamation);
        return false;
    }
    files << path;
    SetFavoriteFiles(files);
    return true;
}

bool RemoveFavoriteFile(const QString& path)
{
    QStringList files = FavoriteFiles();
    const qsizetype before = files.size();
    files.removeIf([&](const QString& f) { return f.compare(path, Qt::CaseInsensitive) == 0; });
    if (files.size() == before) {
        MsgBox(QStringLiteral("The file:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("...is not in your Favorite Files List."),
               vbInformation);
        return false;
    }
    SetFavoriteFiles(files);
    return true;
}

bool ClearFavoriteFiles()
{
    if (FavoriteFiles().isEmpty()) {
        MsgBox(QStringLiteral("Your Favorite Files List is already empty..."), vbInformation);
        return false;
    }
    if (MsgBox(QStringLiteral("Remove every entry from your Favorite Files List?"),
               vbYesNo + vbQuestion + vbDefaultButton2) != vbYes)
        return false;
    SetFavoriteFiles({});
    return true;
}

bool IsFavoriteFolder(const QString& entry)
{
    return QFileInfo(entry).isDir();
}

bool SaveFavoritesAsShow(const QString& path)
{
    QStringList pictures;
    for (const QString& f : FavoriteFiles())
        if (IsSlideFile(f) && QFileInfo(f).isFile())
            pictures << f;
    if (pictures.isEmpty()) {
        MsgBox(QStringLiteral("There are no pictures in your Favorite Files List to save as a "
                              "slide show..."),
               vbInformation);
        return false;
    }
    // The show in memory is the user's: it is put back whatever happens.
    SlideShow kept = std::move(CurrentShow());
    ResetShow();
    for (const QString& picture : pictures)
        CurrentShow().slides << NewSlide(picture);
    CurrentShow().path = path;
    const bool saved = SaveSlideShow(path);
    CurrentShow() = std::move(kept);
    if (!saved)
        MsgBox(QStringLiteral("Unable to save the slide show file:") + NewLine2() + path +
                   NewLine2() + QStringLiteral("The drive may be full or read-only..."),
               vbExclamation);
    return saved;
}

} // namespace kavori
