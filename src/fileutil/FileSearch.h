#pragma once

#include <QDateTime>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

namespace kavori {

// Finding pictures or slide shows by name under a folder and its subfolders, without a window:
// the name test, the search itself (safe on a worker thread) and what the find dialog says.

enum class FindKind { Pictures, SlideShows };

// The name test made from what the user typed. Several names may be given, separated by ";".
// A name with "*" or "?" is a wildcard the whole file name must match; any other name needs
// only to occur in the file name. Both without regard to case. An empty text matches all.
class NameMatcher {
public:
    explicit NameMatcher(const QString& text);
    bool matches(const QString& fileName) const;

private:
    QVector<QRegularExpression> m_wildcards;
    QStringList m_parts;
};

struct FoundFile {
    QString path;
    qint64 size = 0;
    QDateTime modified;
};

struct FileSearchResult {
    QVector<FoundFile> files; // folder by folder as walked, each folder's names in natural order
    bool cancelled = false;   // then files holds what was found until then
};

// Finds the files of a kind under root whose names match text. Pictures are the types the
// viewer opens; slide shows are ".KAV" files (any case). found, when given, counts each hit as
// it is made so a window can show a live count; the search stops soon after cancel is set.
FileSearchResult FindFiles(const QString& root, const QString& text, FindKind kind,
                           const std::atomic<bool>* cancel = nullptr,
                           std::atomic<int>* found = nullptr);

// Why a search of root cannot start (nothing given, no such folder), or empty.
QString FindRefusal(const QString& root);
// The line under the list: the running count while searching, the outcome after.
QString FindCountText(FindKind kind, int count, bool searching, bool cancelled = false);
// The message when a finished search found nothing.
QString NothingFoundMessage(FindKind kind, const QString& text, const QString& root);
// The size as the list shows it ("1,234 KB"; "0 KB" only for an empty file).
QString FoundSizeText(qint64 bytes);

} // namespace kavori
