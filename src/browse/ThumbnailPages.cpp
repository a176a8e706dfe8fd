#include "ThumbnailPages.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/FolderEntries.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "settings/Settings.h"

#include <QCollator>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

int roundPixel(double v)
{
    return int(RoundHalfEven(v));
}

QString extensionOf(const QString& path)
{
    const QString name = FileNameOf(path);
    const int dot = int(name.lastIndexOf(u'.'));
    return dot < 0 ? QString() : name.mid(dot + 1).toUpper();
}

QString noMore()
{
    return QStringLiteral("There are no more thumbnail files to show...");
}

} // namespace

QSize ThumbnailFit(const QSize& size)
{
    if (size.width() <= 0 || size.height() <= 0)
        return {};
    const double ratio = double(size.width()) / double(size.height());
    int w = size.width();
    int h = size.height();
    if (w > kThumbWidth) {
        w = kThumbWidth;
        h = roundPixel(kThumbWidth / ratio);
    }
    if (h > kThumbHeight) {
        h = kThumbHeight;
        w = roundPixel(kThumbHeight * ratio);
    }
    return QSize(std::max(w, 1), std::max(h, 1));
}

bool TakesThumbnailFile(const QString& path)
{
    if (!IsImageFile(path) && !IsMovieFile(path))
        return false;
    const QString wanted = CurrentSettings().ThumbnailExtension.toUpper();
    return wanted.isEmpty() || wanted == QLatin1String("?") || extensionOf(path).startsWith(wanted);
}

QStringList SortThumbnailFiles(QStringList files)
{
    QCollator collator(
        QLocale(QLocale::English, QLocale::UnitedStates)); // numeric mode needs a real locale
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const qint16 order = CurrentSettings().ThumbnailOrder;
    // Every key is made once per file, not at each comparison: thousands of files sort at once.
    struct Keyed {
        QString path;
        qint64 number; // newest or largest first
        QString type;
        QCollatorSortKey name;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(size_t(files.size()));
    for (const QString& f : std::as_const(files)) {
        qint64 number = 0;
        if (order == 1 || order == 2) {
            const QFileInfo info(f);
            number = order == 1 ? info.lastModified().toMSecsSinceEpoch() : info.size();
        }
        keyed.push_back(
            {f, number, order == 3 ? extensionOf(f) : QString(), collator.sortKey(FileNameOf(f))});
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
        if (a.number != b.number)
            return a.number > b.number;
        const int byType = QString::compare(a.type, b.type);
        if (byType != 0)
            return byType < 0;
        return a.name.compare(b.name) < 0;
    });
    for (size_t i = 0; i < keyed.size(); ++i)
        files[qsizetype(i)] = keyed[i].path;
    return files;
}

QStringList ThumbnailFiles(const QString& folder)
{
    const QString base = AddSlash(folder);
    QStringList files;
    // Names only, no details per file: a folder of thousands lists in a moment.
    ForEachEntry(folder, [&](const QByteArray& name, EntryKind kind) {
        if (kind != EntryKind::File)
            return;
        const QString path = base + QFile::decodeName(name);
        if (TakesThumbnailFile(path))
            files << path;
    });
    return SortThumbnailFiles(files);
}

QString SelectionRefusal(int count)
{
    if (count <= kMaxThumbnailFiles)
        return {};
    return QStringLiteral("You may not select any more than ") +
           Format(kMaxThumbnailFiles, QStringLiteral("###,###")) +
           QStringLiteral(" thumbnails at one time, maximum has been reached...");
}

PageCaptions CaptionsForPage(int pageSize)
{
    const QString n = QString::number(pageSize);
    const QString gap = QStringLiteral("          ");
    PageCaptions c;
    c.previous = QStringLiteral("&Previous ") + n;
    c.next = QStringLiteral("&Next ") + n;
    c.first = QStringLiteral("&First ") + n;
    c.last = QStringLiteral("&Last ") + n;
    // The menu and the buttons' tips name F5 and F6 the other way round; both are kept.
    c.menuPrevious = c.previous + gap + QStringLiteral("[F6]");
    c.menuNext = c.next + gap + QStringLiteral("[F5]");
    c.menuFirst = c.first + gap + QStringLiteral("[F11]");
    c.menuLast = c.last + gap + QStringLiteral("[F12]");
    c.tipNext = QStringLiteral("Show the next ") + n + QStringLiteral(" images.  (F6)");
    c.tipPrevious = QStringLiteral("Show the previous ") + n + QStringLiteral(" images.  (F5)");
    return c;
}

QString ShowingText(int first, int last)
{
    const QString pattern = QStringLiteral("###,##0");
    if (last <= first)
        return QStringLiteral("Showing File: ") + Format(first + 1, pattern);
    return QStringLiteral("Showing Files: ") + Format(first + 1, pattern) + QStringLiteral(" to ") +
           Format(last + 1, pattern);
}

PageStep MovePage(PageMove move, int first, int pageSize, int count)
{
    PageStep step{first, {}};
    const bool atStart = first <= 0;
    const bool atEnd = first + pageSize >= count; // the last file is on the page
    switch (move) {
    case PageMove::Previous:
        if (atStart)
            step.message = noMore();
        else
            step.first = std::max(0, first - pageSize);
        break;
    case PageMove::Next:
        if (atEnd)
            step.message = noMore();
        else
            step.first = first + pageSize;
        break;
    case PageMove::Back1:
        if (atStart)
            step.message = noMore();
        else
            step.first = first - 1;
        break;
    case PageMove::Forward1:
        if (atEnd)
            step.message = noMore();
        else
            step.first = first + 1;
        break;
    case PageMove::First:
        step.first = 0;
        break;
    case PageMove::Last:
        step.first = std::max(0, count - pageSize);
        break;
    }
    return step;
}

QString GoToPrompt(int count)
{
    return QStringLiteral("Enter number of thumbnail to show:") + NewLine2() +
           QStringLiteral("(1-") + QString::number(count) + QStringLiteral(")");
}

PageStep GoToThumbnail(const QString& typed, int first, int count)
{
    PageStep step{first, {}};
    const std::optional<double> number = ParseNumber(typed);
    if (!number || !std::isfinite(*number)) {
        step.message = QStringLiteral("A invalid number was entered, please try again...");
        return step;
    }
    const double value = *number;
    if (value < 1) {
        step.message =
            QStringLiteral("Please enter a number greater than zero and then try again...");
        return step;
    }
    if (value > count) {
        step.message = QStringLiteral("There are no thumbnails to show at the specified "
                                      "location, please enter another number...");
        return step;
    }
    step.first = int(value) - 1;
    return step;
}

} // namespace kavori
