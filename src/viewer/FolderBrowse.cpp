#include "FolderBrowse.h"

#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"

#include <QCollator>
#include <QDir>

#include <algorithm>

namespace kavori {

QStringList BrowseList(const QString& folder, const std::function<bool(const QString&)>& isImage)
{
    const QString base = AddSlash(folder);
    QStringList files;
    const QStringList names = QDir(base).entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (isImage(name))
            files << base + name;
    }
    QCollator collator(
        QLocale(QLocale::English, QLocale::UnitedStates)); // numeric mode needs a real locale
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(files.begin(), files.end(),
              [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return files;
}

QString OnlyOneFileQuestion()
{
    return QStringLiteral("There is only one file in the current folder to browse.") + NewLine2() +
           QStringLiteral("Use the Open Image dialog to select another folder?");
}

BrowseResult BrowseFolder(const QStringList& list, const QString& current, BrowseStep step)
{
    BrowseResult r;
    if (list.isEmpty())
        return r;
    if (list.size() == 1) {
        r.onlyOneFile = true;
        return r;
    }
    const QString name = FileNameOf(current).toUpper();
    qsizetype at = -1;
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (FileNameOf(list[i]).toUpper() == name) {
            at = i;
            break;
        }
    }
    switch (step) {
    case BrowseStep::First:
        r.file = list.first();
        break;
    case BrowseStep::Last:
        r.file = list.last();
        break;
    case BrowseStep::Previous:
        if (at == 0)
            r.message = QStringLiteral("The first file in the current folder is already open...");
        else
            r.file = at < 0 ? list.first() : list[at - 1];
        break;
    case BrowseStep::Next:
        if (at == list.size() - 1)
            r.message = QStringLiteral("The last file in the current folder is already open...");
        else
            r.file = list[at + 1];
        break;
    }
    return r;
}

} // namespace kavori
