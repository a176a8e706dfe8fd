#include "SlideList.h"

#include "SlideShowFile.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace kavori {

namespace {

const char kForbidden[] = "\\/:*?\"<>|";

} // namespace

QString SlideCountText(int count)
{
    if (count == 0)
        return QStringLiteral("Zero slides (images) total...");
    if (count == 1)
        return QStringLiteral("One slide (image) total...");
    return Format(count, QStringLiteral("###,##0")) + QStringLiteral(" slides (images) total...");
}

ListResult AddSlides(SlideShow& show, const QStringList& files, bool sourceEmpty)
{
    ListResult result;
    if (sourceEmpty) {
        result.message = QStringLiteral("There are no files in the selected directory to add...");
        return result;
    }
    if (files.isEmpty()) {
        result.message = QStringLiteral("No files are selected, nothing to add...");
        return result;
    }
    if (show.slides.size() + files.size() > kMaxEditorSlides) {
        result.message = QStringLiteral("You can only have ") +
                         Format(kMaxEditorSlides, QStringLiteral("###,##0")) +
                         QStringLiteral(" slides in a Slide Show...");
        return result;
    }
    show.slides.reserve(show.slides.size() + files.size());
    for (const QString& file : files) {
        result.selection << int(show.slides.size());
        show.slides.append(NewSlide(file));
    }
    result.changed = true;
    show.changed = true;
    return result;
}

ListResult RemoveSlides(SlideShow& show, const QVector<int>& selection)
{
    ListResult result;
    if (show.slides.isEmpty()) {
        result.message = QStringLiteral("There are no files in the View List to remove...");
        return result;
    }
    const QVector<int> lines = SortedLines(selection, int(show.slides.size()));
    if (lines.isEmpty()) {
        result.message = QStringLiteral("No files are selected, nothing to remove...");
        return result;
    }
    // One pass that keeps the unselected slides in order.
    QVector<Slide> kept;
    kept.reserve(show.slides.size() - lines.size());
    int next = 0;
    for (int i = 0; i < show.slides.size(); ++i) {
        if (next < lines.size() && lines[next] == i) {
            ++next;
            continue;
        }
        kept.append(std::move(show.slides[i]));
    }
    show.slides = std::move(kept);
    if (!show.slides.isEmpty())
        result.selection << std::min(lines.first(), int(show.slides.size()) - 1);
    result.changed = true;
    show.changed = true;
    return result;
}

QString RemoveAllQuestion()
{
    return QStringLiteral("Remove all of the files from the current slide show?");
}

ListResult MoveSlides(SlideShow& show, const QVector<int>& selection, MoveKind kind)
{
    ListResult result = MoveLines(show.slides, selection, kind, ViewListWords());
    show.changed = show.changed || result.changed;
    return result;
}

ListResult RandomizeSlides(SlideShow& show)
{
    ListResult result = RandomizeLines(show.slides, ViewListWords());
    show.changed = show.changed || result.changed;
    return result;
}

ListResult ReverseSlides(SlideShow& show)
{
    ListResult result = ReverseLines(show.slides, ViewListWords());
    show.changed = show.changed || result.changed;
    return result;
}

QString SlideFullPath(const SlideShow& show, const QString& file)
{
    if (IsFullPath(file) || show.path.isEmpty())
        return file;
    return FolderOf(show.path) + file;
}

QVector<int> DuplicateSlides(const SlideShow& show)
{
    QSet<QString> seen;
    seen.reserve(show.slides.size());
    QVector<int> repeated;
    for (int i = 0; i < show.slides.size(); ++i) {
        const QString path = SlideFullPath(show, show.slides[i].SlideFile);
        if (seen.contains(path))
            repeated << i;
        else
            seen.insert(path);
    }
    return repeated;
}

QVector<int> MissingSlides(const SlideShow& show)
{
    const QString folder = show.path.isEmpty() ? QString() : FolderOf(show.path);
    QVector<int> missing;
    for (int i = 0; i < show.slides.size(); ++i) {
        const QString& file = show.slides[i].SlideFile;
        const bool found =
            folder.isEmpty() ? QFileInfo::exists(file) : !FindShowFile(file, folder).isEmpty();
        if (!found)
            missing << i;
    }
    return missing;
}

QString MissingSlidesText(int count, bool removed)
{
    if (count == 0)
        return QStringLiteral("No missing slide show files were found...");
    if (removed) {
        if (count == 1)
            return QStringLiteral("One missing slide show file was removed from the View List...");
        return Format(count, QStringLiteral("###,##0")) +
               QStringLiteral(" missing slide show files were removed from the View List...");
    }
    if (count == 1)
        return QStringLiteral("One missing slide show file was found in the View List...");
    return Format(count, QStringLiteral("###,##0")) +
           QStringLiteral(" missing slide show files were found in the View List...");
}

namespace {
const char* const kSlideMovies[] = {".AVI", ".MPG", ".MPE", ".MPEG", ".MPA",
                                    ".ENC", ".MOV", ".QT",  ".M1V",  ".MP2"};
} // namespace

bool IsSlideFile(const QString& path)
{
    if (IsImageFile(path))
        return true;
    for (const char* ext : kSlideMovies)
        if (HasExtension(path, QString::fromLatin1(ext)))
            return true;
    return false;
}

QStringList SlideFilePatterns()
{
    QStringList patterns;
    for (const QString& ext : ImageExtensions())
        patterns << u'*' + ext.toLower();
    for (const char* ext : kSlideMovies)
        patterns << u'*' + QString::fromLatin1(ext).toLower();
    return patterns;
}

DroppedFiles SortDroppedFiles(const QStringList& files)
{
    DroppedFiles sorted;
    QSet<QString> noted;
    for (const QString& file : files) {
        // Links are followed to what they name.
        const QFileInfo info(file);
        const QString target = info.isSymLink() ? info.symLinkTarget() : file;
        if (HasExtension(target, QStringLiteral(".KAV"))) {
            sorted.show = target;
        } else if (IsSlideFile(target)) {
            sorted.slides << target;
        } else if (IsImportFile(target)) {
            const QString ext = target.right(4).toUpper();
            if (!noted.contains(ext)) {
                noted.insert(ext);
                sorted.notes << ext + QStringLiteral(" files must be imported into ") + AppTitle() +
                                    QStringLiteral(" before they can be used in Slide Shows...");
            }
        }
    }
    return sorted;
}

QString FileNameRefusal(const QString& name)
{
    for (const char c : QByteArrayView(kForbidden)) {
        if (name.contains(QLatin1Char(c))) {
            QStringList shown;
            for (const char f : QByteArrayView(kForbidden))
                shown << QString(QLatin1Char(f));
            return QStringLiteral("A filename may not contain any of the following characters:") +
                   NewLine2() + shown.join(u' ') + NewLine2() +
                   QStringLiteral("Enter a new name and then try again...");
        }
    }
    return {};
}

RenameCheck CheckShowRename(const QString& oldPath, const QString& newName)
{
    RenameCheck check;
    QString name = newName.trimmed();
    check.refusal = FileNameRefusal(name);
    if (!check.refusal.isEmpty())
        return check;
    if (!HasExtension(name, QStringLiteral(".KAV")))
        name += QStringLiteral(".KAV");
    const QString path = FolderOf(oldPath) + name;
    if (name == FileNameOf(oldPath)) {
        check.refusal = QStringLiteral(
            "The new filename is the same as the current one, unable to rename slide show...");
        return check;
    }
    if (QFileInfo::exists(path)) {
        check.refusal = QStringLiteral(
            "The filename that was specified already exists, unable to rename slide show...");
        return check;
    }
    check.newPath = path;
    return check;
}

RenameCheck CheckFileRename(const QString& oldPath, const QString& newName)
{
    RenameCheck check;
    QString name = newName.trimmed();
    check.refusal = FileNameRefusal(name);
    if (!check.refusal.isEmpty())
        return check;
    if (QFileInfo(name).suffix().isEmpty())
        name += u'.' + QFileInfo(oldPath).suffix();
    const QString path = FolderOf(oldPath) + name;
    if (name == FileNameOf(oldPath)) {
        check.refusal = QStringLiteral(
            "The new filename is the same as the current one, unable to rename file...");
        return check;
    }
    if (QFileInfo::exists(path)) {
        check.refusal = QStringLiteral(
            "The filename that was specified already exists, unable to rename file...");
        return check;
    }
    check.newPath = path;
    return check;
}

int RenameSlideFiles(SlideShow& show, const QString& oldPath, const QString& newPath)
{
    int renamed = 0;
    for (Slide& slide : show.slides) {
        if (SlideFullPath(show, slide.SlideFile) == oldPath) {
            slide.SlideFile = newPath;
            ++renamed;
        }
    }
    if (renamed > 0)
        show.changed = true;
    return renamed;
}

QString FolderNameRefusal(const QString& name)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("A folder name was not entered, try again...");
    if (name.contains(u'\\'))
        return QStringLiteral(
            "You may not use the \\ character in a folder name, enter folder name again...");
    if (name.contains(u':'))
        return QStringLiteral(
            "You may not use the : character in a folder name, enter folder name again...");
    return {};
}

CloseAction ClosingAction(const QString& promptSaveKAV, bool named, int slideCount)
{
    if (promptSaveKAV.left(1) == QLatin1String("0"))
        return CloseAction::Ask;
    if (promptSaveKAV.mid(1, 1) == QLatin1String("1") && named && slideCount > 0)
        return CloseAction::SaveNow;
    return CloseAction::Drop;
}

bool ReopensLastShow(const QString& promptSaveKAV)
{
    // The third switch: the editor opens with the show it had when it was last closed.
    return promptSaveKAV.mid(2, 1) == QLatin1String("1");
}

QVector<int> LinesBetween(int first, int last)
{
    QVector<int> lines;
    for (int line = first; line <= last; ++line)
        lines << line;
    return lines;
}

EveryNth EveryNthLine(const QString& typed, int count, int start)
{
    bool number = false;
    const int n = typed.trimmed().toInt(&number);
    if (!number || n < 1 || n > count)
        return {QStringLiteral("Enter a whole number from 1 to ") +
                    Format(count, QStringLiteral("###,##0")) +
                    QStringLiteral(" and then try again..."),
                {}};
    EveryNth result;
    for (int line = qBound(0, start, count - 1); line < count; line += n)
        result.lines << line;
    return result;
}

QString NothingToSelectText()
{
    return QStringLiteral("There are no files in the View List to select...");
}

} // namespace kavori
