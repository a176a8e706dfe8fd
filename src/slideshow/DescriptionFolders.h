#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

namespace kavori {

// What the advanced description dialog does with folders' description files, without a
// window: which files a folder can describe, the refusals, details, deleting, and searching a
// folder tree (safe on a worker thread: it reads no shared table).

// The pictures and movies of a folder (bare names, in natural order).
QStringList SupportedFiles(const QString& folder);
// Those of them the folder's description file does not describe yet.
QStringList FilesWithoutDescriptions(const QString& folder);

// Why no description file can be made in a folder (read-only, nothing to describe), or empty.
QString CreateDescriptionRefusal(const QString& folder);
// Why no description can be added to a folder's file (every file has one already), or empty.
QString AddDescriptionRefusal(const QString& folder);

// The line above the list of description files.
QString DescriptionListHeading(int count);
// "Selected description file:", the path, the number of descriptions and the file's size.
QString DescriptionFileDetails(const QString& file);
// The question before taking out one description.
QString RemoveDescriptionQuestion(const QString& fileName, const QString& text);

// Deletes description files (only ours: a foreign file of the name stays). Returns how many.
int DeleteDescriptionFiles(const QStringList& files);

// A search of a folder tree for description files, or for a text in their descriptions.
struct DescriptionSearch {
    QStringList files; // in the order of the walk
    QVector<int> hits; // per file: how often the text occurs in its descriptions
    int totalHits = 0;
    bool cancelled = false;
};
// Walks root and its subfolders (links are not followed). With an empty text every
// description file is found; otherwise only those whose descriptions hold the text (without
// regard to case). Stops early when cancel becomes true.
DescriptionSearch SearchDescriptionFiles(const QString& root, const QString& text,
                                         const std::atomic<bool>* cancel = nullptr);

// The question before searching.
QString SearchQuestion(const QString& drive);
// What the dialog shows after a search: the heading above the list, the hint under it and the
// message at the end.
struct SearchTexts {
    QString heading;
    QString hint;
    QString message;
};
SearchTexts DescriptionSearchTexts(const DescriptionSearch& search, const QString& text);

} // namespace kavori
