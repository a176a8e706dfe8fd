#include "DescriptionFolders.h"

#include "DescriptionFile.h"
#include "SlideList.h"
#include "platform/AppPaths.h"
#include "platform/FolderWalk.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>

#include <algorithm>

namespace kavori {

namespace {

const QString kFileName = QStringLiteral("!Description");

void sortNaturally(QStringList& names)
{
    QCollator collator(
        QLocale(QLocale::English, QLocale::UnitedStates)); // numeric mode needs a real locale
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(names.begin(), names.end(), collator);
}

bool cancelled(const std::atomic<bool>* cancel)
{
    return cancel && cancel->load();
}

int countHits(const QString& haystack, const QString& needle)
{
    int hits = 0;
    for (qsizetype at = haystack.indexOf(needle, 0, Qt::CaseInsensitive); at >= 0;
         at = haystack.indexOf(needle, at + needle.size(), Qt::CaseInsensitive))
        ++hits;
    return hits;
}

} // namespace

QStringList SupportedFiles(const QString& folder)
{
    QStringList names;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo& entry : entries)
        if (IsSlideFile(entry.fileName()))
            names << entry.fileName();
    sortNaturally(names);
    return names;
}

QStringList FilesWithoutDescriptions(const QString& folder)
{
    DescriptionTable table;
    QSet<QString> described;
    if (ReadDescriptionFile(folder, table) > 0)
        for (const QString& name : table.DescFileName)
            described.insert(name.toCaseFolded());
    QStringList missing;
    for (const QString& name : SupportedFiles(folder))
        if (!described.contains(name.toCaseFolded()))
            missing << name;
    return missing;
}

QString CreateDescriptionRefusal(const QString& folder)
{
    const QStorageInfo volume(folder);
    const QFileInfo info(folder);
    if ((volume.isValid() && volume.isReadOnly()) || !info.isDir() || !info.isWritable())
        return QStringLiteral(
            "You may not create a description file on a read-only drive such as a CD-ROM...");
    if (SupportedFiles(folder).isEmpty())
        return QStringLiteral(
            "There are no supported files in this folder, unable to create description file...");
    return {};
}

QString AddDescriptionRefusal(const QString& folder)
{
    if (!SupportedFiles(folder).isEmpty() && FilesWithoutDescriptions(folder).isEmpty())
        return QStringLiteral("All of the supported files in this folder already have "
                              "descriptions...");
    return CreateDescriptionRefusal(folder);
}

QString DescriptionListHeading(int count)
{
    if (count == 0)
        return QStringLiteral("No description files were found...");
    if (count == 1)
        return QStringLiteral("Found one description file:");
    return QStringLiteral("Found ") + QString::number(count) +
           QStringLiteral(" description files:");
}

QString DescriptionFileDetails(const QString& file)
{
    DescriptionTable table;
    const qint32 count = std::max<qint32>(0, ReadDescriptionFile(FolderOf(file), table));
    const QFileInfo info(file);
    const QString size = info.isFile() ? QStringLiteral("File size = ") +
                                             Format(info.size(), QStringLiteral("###,##0")) +
                                             QStringLiteral(" bytes")
                                       : QStringLiteral("(Unable to get file size.)");
    return QStringLiteral("Selected description file:") + NewLine() +
           QDir::toNativeSeparators(file) + NewLine2() +
           QStringLiteral("Number of descriptions = ") + QString::number(count) + NewLine() + size;
}

QString RemoveDescriptionQuestion(const QString& fileName, const QString& text)
{
    return QStringLiteral("Remove the following file description?") + NewLine2() + fileName +
           NewLine() + text;
}

int DeleteDescriptionFiles(const QStringList& files)
{
    int deleted = 0;
    for (const QString& file : files) {
        DescriptionTable table;
        if (FileNameOf(file).compare(kFileName, Qt::CaseInsensitive) != 0 ||
            ReadDescriptionFile(FolderOf(file), table) < 0)
            continue;
        if (QFile::remove(file))
            ++deleted;
    }
    return deleted;
}

DescriptionSearch SearchDescriptionFiles(const QString& root, const QString& text,
                                         const std::atomic<bool>* cancel)
{
    DescriptionSearch search;
    QStringList found;
    const bool walked = WalkFolderTree(
        root,
        [&found](const QFileInfo& file) {
            if (file.fileName().compare(kFileName, Qt::CaseInsensitive) == 0)
                found << file.absoluteFilePath();
        },
        cancel);
    if (!walked) {
        search.cancelled = true;
        return search;
    }
    for (const QString& file : found) {
        if (cancelled(cancel)) {
            search.cancelled = true;
            break;
        }
        DescriptionTable table;
        // A foreign file of the name is no description file.
        if (ReadDescriptionFile(FolderOf(file), table) < 0)
            continue;
        int hits = 0;
        if (!text.isEmpty()) {
            for (const QString& description : table.DescText)
                hits += countHits(description, text);
            if (hits == 0)
                continue;
        }
        search.files << QDir::toNativeSeparators(file);
        search.hits << hits;
        search.totalHits += hits;
    }
    return search;
}

QString SearchQuestion(const QString& drive)
{
    return QStringLiteral("About to search ") + drive + QStringLiteral(" for description files.") +
           NewLine2() + QStringLiteral("This could take several minutes to complete...");
}

SearchTexts DescriptionSearchTexts(const DescriptionSearch& search, const QString& text)
{
    SearchTexts texts;
    const int count = int(search.files.size());
    const QString finished =
        QStringLiteral("Finished searching the selected drive for description files...");
    if (text.isEmpty()) {
        texts.heading = DescriptionListHeading(count);
        if (count == 0) {
            texts.message =
                QStringLiteral("No description files were found on the selected drive...");
            return texts;
        }
    } else if (count == 0) {
        texts.heading =
            QStringLiteral("The following description text could not be found:") + NewLine() + text;
        texts.message = texts.heading;
        return texts;
    } else {
        texts.heading = text + QStringLiteral(" was found in ") + QString::number(count) +
                        QStringLiteral(" description file(s) a total of ") +
                        QString::number(search.totalHits) + QStringLiteral(" time(s).");
    }
    texts.hint = QStringLiteral("(Double-click file for details.)");
    texts.message = finished;
    return texts;
}

} // namespace kavori
