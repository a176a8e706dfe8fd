#include "FileSearch.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/FolderWalk.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace kavori {

namespace {

bool isShowFile(const QString& name)
{
    return name.endsWith(QLatin1String(".KAV"), Qt::CaseInsensitive);
}

QString kindWord(FindKind kind, int count)
{
    if (kind == FindKind::Pictures)
        return count == 1 ? QStringLiteral("picture") : QStringLiteral("pictures");
    return count == 1 ? QStringLiteral("slide show") : QStringLiteral("slide shows");
}

QString countOf(FindKind kind, int count)
{
    return (count == 0 ? QStringLiteral("0") : Format(count, QStringLiteral("###,###"))) + u' ' +
           kindWord(kind, count);
}

} // namespace

NameMatcher::NameMatcher(const QString& text)
{
    for (const QString& piece : text.split(u';', Qt::SkipEmptyParts)) {
        const QString name = piece.trimmed();
        if (name.isEmpty())
            continue;
        if (name.contains(u'*') || name.contains(u'?'))
            m_wildcards << QRegularExpression(QRegularExpression::wildcardToRegularExpression(name),
                                              QRegularExpression::CaseInsensitiveOption);
        else
            m_parts << name;
    }
}

bool NameMatcher::matches(const QString& fileName) const
{
    if (m_wildcards.isEmpty() && m_parts.isEmpty())
        return true;
    for (const QRegularExpression& re : m_wildcards)
        if (re.match(fileName).hasMatch())
            return true;
    for (const QString& part : m_parts)
        if (fileName.contains(part, Qt::CaseInsensitive))
            return true;
    return false;
}

FileSearchResult FindFiles(const QString& root, const QString& text, FindKind kind,
                           const std::atomic<bool>* cancel, std::atomic<int>* found)
{
    const NameMatcher matcher(text);
    FileSearchResult result;
    const bool walked = WalkFolderTree(
        root,
        [&](const QFileInfo& file) {
            const QString name = file.fileName();
            const bool wanted = kind == FindKind::Pictures ? IsImageFile(name) : isShowFile(name);
            if (!wanted || !matcher.matches(name))
                return;
            result.files.push_back({file.absoluteFilePath(), file.size(), file.lastModified()});
            if (found)
                ++*found;
        },
        cancel);
    result.cancelled = !walked;

    // The walk gives each folder's files together but in the system's order.
    QCollator collator(QLocale(QLocale::English, QLocale::UnitedStates));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    auto from = result.files.begin();
    while (from != result.files.end()) {
        const QString folder = FolderOf(from->path);
        auto to = std::find_if(from, result.files.end(),
                               [&](const FoundFile& f) { return FolderOf(f.path) != folder; });
        std::sort(from, to, [&](const FoundFile& a, const FoundFile& b) {
            return collator.compare(FileNameOf(a.path), FileNameOf(b.path)) < 0;
        });
        from = to;
    }
    return result;
}

QString FindRefusal(const QString& root)
{
    if (root.trimmed().isEmpty())
        return QStringLiteral("Choose the folder to search first...");
    if (!QFileInfo(root).isDir())
        return QStringLiteral("The folder to search could not be found:") + NewLine2() +
               QDir::toNativeSeparators(root) + NewLine2() +
               QStringLiteral("Choose another folder and then try again...");
    return QString();
}

QString FindCountText(FindKind kind, int count, bool searching, bool cancelled)
{
    if (searching)
        return QStringLiteral("Searching... ") + countOf(kind, count) + QStringLiteral(" found");
    if (cancelled)
        return QStringLiteral("Search cancelled: ") + countOf(kind, count) +
               QStringLiteral(" found");
    return countOf(kind, count) + QStringLiteral(" found");
}

QString NothingFoundMessage(FindKind kind, const QString& text, const QString& root)
{
    QString what = QStringLiteral("No ") + kindWord(kind, 2);
    if (!text.trimmed().isEmpty())
        what += QStringLiteral(" named \"") + text.trimmed() + u'"';
    return what + QStringLiteral(" were found in:") + NewLine2() + QDir::toNativeSeparators(root) +
           NewLine2() + QStringLiteral("or any of its subfolders.");
}

QString FoundSizeText(qint64 bytes)
{
    if (bytes <= 0)
        return QStringLiteral("0 KB");
    // Rounded up, as file managers do, so a small file never shows as nothing.
    return Format((bytes + 1023) / 1024, QStringLiteral("###,##0")) + QStringLiteral(" KB");
}

} // namespace kavori
