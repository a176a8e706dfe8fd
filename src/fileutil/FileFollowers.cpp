#include "FileFollowers.h"

#include "platform/AppPaths.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"

#include <QFileInfo>

namespace kavori {

namespace {

QStringList favoriteKeys()
{
    QStringList keys;
    for (int i = 1; i <= 20; ++i)
        keys << QStringLiteral("FavoriteFile") + QString::number(i);
    return keys;
}

// The entry of a name in the loaded description table, or -1.
int findEntry(const QString& name)
{
    const DescriptionTable& table = CurrentDescriptions();
    for (int i = 0; i < table.DescFileName.size() && !table.DescFileName[i].isEmpty(); ++i)
        if (table.DescFileName[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

} // namespace

bool SamePath(const QString& a, const QString& b)
{
    // Two files that both exist are the same only on disk (names differing in case may be two
    // files here); a name without its file is compared as the program compares names.
    const QFileInfo fa(a);
    const QFileInfo fb(b);
    if (fa.exists() && fb.exists())
        return fa.canonicalFilePath() == fb.canonicalFilePath();
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool CopyDescriptionEntry(const QString& source, const QString& target)
{
    // A foreign "!Description" (count -1) is neither read nor written.
    if (ReadDescriptionFile(FolderOf(source)) <= 0)
        return false;
    const int from = findEntry(FileNameOf(source));
    if (from < 0)
        return false;
    const QString text = CurrentDescriptions().DescText[from];
    const QString targetFolder = FolderOf(target);
    if (ReadDescriptionFile(targetFolder) < 0)
        return false;
    SetDescription(FileNameOf(target), text);
    return WriteDescriptionFile(targetFolder);
}

bool RemoveDescriptionEntry(const QString& path)
{
    const QString folder = FolderOf(path);
    if (ReadDescriptionFile(folder) <= 0 || findEntry(FileNameOf(path)) < 0)
        return false;
    RemoveDescription(FileNameOf(path));
    return WriteDescriptionFile(folder);
}

bool RenameFavoriteFile(const QString& path, const QString& newPath)
{
    bool changed = false;
    for (QString& entry : CurrentSettings().FavoriteFile) {
        if (!entry.isEmpty() && entry.compare(path, Qt::CaseInsensitive) == 0) {
            entry = newPath;
            changed = true;
        }
    }
    if (changed)
        WriteSettingsKeys(favoriteKeys());
    return changed;
}

bool ClearFavoriteFile(const QString& path)
{
    return RenameFavoriteFile(path, QString());
}

int MoveShowEntries(const QString& oldPath, const QString& newPath)
{
    Settings& s = CurrentSettings();
    if (!s.SoundFile.isEmpty() && SamePath(s.SoundFile, oldPath)) {
        s.SoundFile = newPath;
        WriteSettingsKeys({QStringLiteral("SoundFile")});
    }
    SlideShow& show = CurrentShow();
    int moved = 0;
    for (Slide& slide : show.slides) {
        if (SlideFullPath(show, slide.SlideFile).compare(oldPath, Qt::CaseInsensitive) == 0) {
            slide.SlideFile = newPath;
            ++moved;
        }
    }
    if (moved > 0)
        show.changed = true;
    return moved;
}

} // namespace kavori
