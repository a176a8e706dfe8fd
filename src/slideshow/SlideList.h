#pragma once

#include "ListOrder.h"
#include "SlideShow.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// What the slide show editor does to the list of slides (the View List), without a window.
// Each slide carries all its values, so every reorder or removal keeps a slide's description,
// transition, sound, placement, interval, background and look together.

// The most slides a show may hold in the editor.
constexpr int kMaxEditorSlides = 30000;

// "Zero slides (images) total...", "One slide (image) total..." or the count.
QString SlideCountText(int count);

// Appends files as new slides with the defaults, or refuses: nothing in the source, nothing
// chosen, or more than the limit (then nothing is added).
ListResult AddSlides(SlideShow& show, const QStringList& files, bool sourceEmpty);
ListResult RemoveSlides(SlideShow& show, const QVector<int>& selection);
// The question before removing every slide.
QString RemoveAllQuestion();

ListResult MoveSlides(SlideShow& show, const QVector<int>& selection, MoveKind kind);

// One pass: each line in turn is taken out and put back at floor((lines left - 2) x r).
ListResult RandomizeSlides(SlideShow& show);
ListResult ReverseSlides(SlideShow& show);

// The full path of a slide's file: names without a folder are taken beside the show.
QString SlideFullPath(const SlideShow& show, const QString& file);
// Lines whose file is named by an earlier line too, in list order.
QVector<int> DuplicateSlides(const SlideShow& show);
// Lines whose file cannot be found.
QVector<int> MissingSlides(const SlideShow& show);
// The report after removing (or selecting) missing slides.
QString MissingSlidesText(int count, bool removed);

// Sorts dropped files: the pictures and movies a show takes, shows to load, and the notes for
// files that must be imported first.
struct DroppedFiles {
    QStringList slides;
    QString show;      // a dropped show file, loaded instead
    QStringList notes; // one per refused import type
};
DroppedFiles SortDroppedFiles(const QStringList& files);
// A picture the loader opens or a movie a show plays.
bool IsSlideFile(const QString& path);
// The same as name patterns for a file list ("*.bmp", ...).
QStringList SlideFilePatterns();

// Selecting lines of the View List: the lines first to last, or every nth line from start, n
// typed by the user (a whole number from 1 to the number of lines, or a refusal).
QVector<int> LinesBetween(int first, int last);
struct EveryNth {
    QString refusal;
    QVector<int> lines;
};
EveryNth EveryNthLine(const QString& typed, int count, int start);
QString NothingToSelectText();

// The message for a name holding a character no file name may hold, or empty.
QString FileNameRefusal(const QString& name);

// Renaming a show: the refusal (forbidden characters, the same name, a name taken), or empty
// and the new path (".KAV" added when missing).
struct RenameCheck {
    QString refusal;
    QString newPath;
};
RenameCheck CheckShowRename(const QString& oldPath, const QString& newName);
// Renaming a picture or movie of the source folder: the same checks, its extension kept when
// the new name has none.
RenameCheck CheckFileRename(const QString& oldPath, const QString& newName);
// After a file was renamed, the slides that named it name the new file. Returns how many.
int RenameSlideFiles(SlideShow& show, const QString& oldPath, const QString& newPath);

// The refusal of a name for a new folder, or empty.
QString FolderNameRefusal(const QString& name);

// What closing the editor with unsaved changes does, by the three-character PromptSaveKAV.
enum class CloseAction { Ask, SaveNow, Drop };
CloseAction ClosingAction(const QString& promptSaveKAV, bool named, int slideCount);
// Whether the editor opens the show it had last (the third PromptSaveKAV character).
bool ReopensLastShow(const QString& promptSaveKAV);

} // namespace kavori
