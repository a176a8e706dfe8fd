#include "SlideList.h"

#include "SlideShowFile.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

QVector<int> sortedUnique(const QVector<int>& selection, int count)
{
    QVector<int> lines;
    for (int line : selection)
        if (line >= 0 && line < count)
            lines << line;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

QString moveRefusal(MoveKind kind, int row)
{
    // Rows: empty list, one line, nothing selected, already there.
    static const char* const kTexts[4][4] = {
        {"There is nothing in the View List, unable to move file(s) up...",
         "There is nothing in the View List, unable to move file(s) down...",
         "There is nothing in the View List, unable to move file(s) to the top...",
         "There is nothing in the View List, unable to move file(s) to the bottom..."},
        {"There is only one item in the View List, unable to move file(s) up...",
         "There is only one item in the View List, unable to move file(s) down...",
         "There is only one item in the View List, file is already at the top...",
         "There is only one item in the View List, file is already at the bottom..."},
        {"Select the image(s) to move up and then try again...",
         "Select the image(s) to move down and then try again...",
         "Select the image(s) to move to the top and then try again...",
         "Select the image(s) to move to the bottom and then try again..."},
        {"The selected file(s) are already at top of the View List, unable to move file(s) "
         "up...",
         "The selected file(s) are already at bottom of the View List, unable to move file(s) "
         "down...",
         "The selected file is already at the top of the View List, unable to move file...",
         "The selected file is already at the bottom of the View List, unable to move file..."}};
    return QString::fromLatin1(kTexts[row][int(kind)]);
}

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
    const QVector<int> lines = sortedUnique(selection, int(show.slides.size()));
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
    ListResult result;
    const int count = int(show.slides.size());
    const QVector<int> lines = sortedUnique(selection, count);
    if (count == 0)
        result.message = moveRefusal(kind, 0);
    else if (count == 1)
        result.message = moveRefusal(kind, 1);
    else if (lines.isEmpty())
        result.message = moveRefusal(kind, 2);
    if (!result.message.isEmpty())
        return result;

    const bool atTop = lines.first() == 0;
    const bool atBottom = lines.last() == count - 1;
    const bool blockAtTop = lines.last() == lines.size() - 1;
    const bool blockAtBottom = lines.first() == count - lines.size();
    if ((kind == MoveKind::Up && atTop) || (kind == MoveKind::Down && atBottom) ||
        (kind == MoveKind::Top && blockAtTop) || (kind == MoveKind::Bottom && blockAtBottom)) {
        result.message = moveRefusal(kind, 3);
        result.selection = lines;
        return result;
    }

    QVector<Slide>& slides = show.slides;
    switch (kind) {
    case MoveKind::Up:
        for (int line : lines) {
            std::swap(slides[line - 1], slides[line]);
            result.selection << line - 1;
        }
        break;
    case MoveKind::Down:
        for (auto it = lines.crbegin(); it != lines.crend(); ++it) {
            std::swap(slides[*it], slides[*it + 1]);
            result.selection.prepend(*it + 1);
        }
        break;
    case MoveKind::Top:
    case MoveKind::Bottom: {
        // The selected lines keep their order as a block at the chosen end.
        QVector<Slide> chosen;
        QVector<Slide> rest;
        chosen.reserve(lines.size());
        rest.reserve(count - lines.size());
        int next = 0;
        for (int i = 0; i < count; ++i) {
            if (next < lines.size() && lines[next] == i) {
                chosen.append(std::move(slides[i]));
                ++next;
            } else {
                rest.append(std::move(slides[i]));
            }
        }
        const int first = kind == MoveKind::Top ? 0 : int(rest.size());
        slides = kind == MoveKind::Top ? chosen + rest : rest + chosen;
        for (int i = 0; i < chosen.size(); ++i)
            result.selection << first + i;
        break;
    }
    }
    result.changed = true;
    show.changed = true;
    return result;
}

ListResult RandomizeSlides(SlideShow& show)
{
    ListResult result;
    const int n = int(show.slides.size());
    if (n == 0) {
        result.message =
            QStringLiteral("There is nothing in the View List, unable to randomize files...");
        return result;
    }
    if (n == 1) {
        result.message =
            QStringLiteral("There is only one item in the View List, unable to randomize files...");
        return result;
    }
    // The random source is seeded from the clock when the program starts. The factor is the
    // count left minus 2, so a line never goes back into the last two places: kept as it was.
    // With two lines the factor is -1; such a line goes to the top.
    QVector<Slide>& slides = show.slides;
    for (int i = 0; i < n; ++i) {
        Slide slide = std::move(slides[i]);
        slides.remove(i);
        const int left = int(slides.size());
        const int j = std::max(0, int(std::floor(double(left - 2) * Rnd())));
        slides.insert(j, std::move(slide));
    }
    result.changed = true;
    show.changed = true;
    return result;
}

ListResult ReverseSlides(SlideShow& show)
{
    ListResult result;
    if (show.slides.isEmpty()) {
        result.message = QStringLiteral(
            "There is nothing in the View List, unable to reverse the order of images...");
        return result;
    }
    if (show.slides.size() == 1) {
        result.message = QStringLiteral(
            "There is only one item in the View List, no need to reverse the order of images...");
        return result;
    }
    std::reverse(show.slides.begin(), show.slides.end());
    result.changed = true;
    show.changed = true;
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

bool IsSlideFile(const QString& path)
{
    static const char* const kExtensions[] = {
        ".BMP", ".DIB", ".GIF", ".JPG", ".JIF",  ".JPE", ".JPEG", ".WMF", ".EMF", ".ICO", ".CUR",
        ".RLE", ".AVI", ".MPG", ".MPE", ".MPEG", ".MPA", ".ENC",  ".MOV", ".QT",  ".M1V", ".MP2"};
    for (const char* ext : kExtensions)
        if (HasExtension(path, QString::fromLatin1(ext)))
            return true;
    return false;
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
