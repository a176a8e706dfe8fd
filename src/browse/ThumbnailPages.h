#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace kavori {

// What the thumbnail browser decides without a window: the size of a thumbnail, the files
// of a folder in the order the user chose, the captions of each page size and where each
// navigation command goes.

// The box a thumbnail fits in, and the most files the browser takes at once.
constexpr int kThumbWidth = 160;
constexpr int kThumbHeight = 120;
constexpr int kMaxThumbnailFiles = 5000;

// A picture of size shrunk (never enlarged) to fit 160 x 120: the width is brought down
// first, then the height, each time the other side following the picture's proportions,
// rounded to a whole pixel.
QSize ThumbnailFit(const QSize& size);

// The pictures and movies of folder, full paths. ThumbnailExtension narrows the list: "?"
// takes every type the browser shows, anything else only the files whose extension begins
// with it ("JP" takes .JPG, .JPE and .JPEG). ThumbnailOrder sorts it: 0 by name (numbers in
// names counted as numbers), 1 newest first, 2 largest first, 3 by type, then name.
QStringList ThumbnailFiles(const QString& folder);
// The same rules applied to a list of files already gathered (a selection).
QStringList SortThumbnailFiles(QStringList files);
bool TakesThumbnailFile(const QString& path);

// The refusal of a selection of more than 5,000 files, or empty.
QString SelectionRefusal(int count);

// The captions and tips that follow the page size (9, 16 or 25).
struct PageCaptions {
    QString previous, next, first, last;                 // buttons
    QString menuPrevious, menuNext, menuFirst, menuLast; // menu entries, with their keys
    QString tipPrevious, tipNext;
};
PageCaptions CaptionsForPage(int pageSize);

// "Showing File: 7" or "Showing Files: 1 to 25" for the files first..last (0-based).
QString ShowingText(int first, int last);

// Moving through the list: each move from the page that starts at first gives the new first
// file, or the message and the page kept.
enum class PageMove { Previous, Next, Back1, Forward1, First, Last };
struct PageStep {
    int first = 0;
    QString message; // set when the move is refused
};
PageStep MovePage(PageMove move, int first, int pageSize, int count);

// Go to a thumbnail: the prompt, and where a typed number leads.
QString GoToPrompt(int count);
PageStep GoToThumbnail(const QString& typed, int first, int count);

} // namespace kavori
