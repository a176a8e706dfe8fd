#pragma once

#include <QString>
#include <QVector>

namespace kavori {

// Reordering a list whose lines carry their own values: the editor's View List of slides and
// the sound dialog's Play List. The logic is one; each list has its own words. Selections are
// line numbers in any order; results give the lines to select afterwards.

// The result of a command: a refusal or message to show (empty when none), and the selection.
struct ListResult {
    QString message;
    QVector<int> selection;
    bool changed = false;
};

enum class MoveKind { Up, Down, Top, Bottom };

// The refusals of one list.
struct ListWords {
    // Rows: empty list, one line, nothing selected, already there; columns by MoveKind.
    const char* move[4][4];
    const char* randomizeEmpty;
    const char* randomizeOne;
    const char* reverseEmpty;
    const char* reverseOne;
};
const ListWords& ViewListWords();
const ListWords& PlayListWords();

// The selection within 0..count-1, sorted, each line once.
QVector<int> SortedLines(const QVector<int>& selection, int count);

// Up and down move the selected lines one place; top and bottom move them as a block, in their
// order, to that end.
template <typename T>
ListResult MoveLines(QVector<T>& lines, const QVector<int>& selection, MoveKind kind,
                     const ListWords& words);
// One pass: each line in turn is taken out and put back at floor((lines left - 2) x r).
template <typename T> ListResult RandomizeLines(QVector<T>& lines, const ListWords& words);
template <typename T> ListResult ReverseLines(QVector<T>& lines, const ListWords& words);

} // namespace kavori
