#include "ListOrder.h"

#include "SlideShow.h"
#include "runtime/Random.h"

#include <algorithm>
#include <cmath>

namespace kavori {

const ListWords& ViewListWords()
{
    static const ListWords words = {
        {{"There is nothing in the View List, unable to move file(s) up...",
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
          "The selected file is already at the bottom of the View List, unable to move file..."}},
        "There is nothing in the View List, unable to randomize files...",
        "There is only one item in the View List, unable to randomize files...",
        "There is nothing in the View List, unable to reverse the order of images...",
        "There is only one item in the View List, no need to reverse the order of images..."};
    return words;
}

const ListWords& PlayListWords()
{
    // "sounds(s)" is the program's own spelling; only moving up says "sound(s)".
    static const ListWords words = {
        {{"There is nothing in the Play List, unable to move file(s) up...",
          "There is nothing in the Play List, unable to move file(s) down...",
          "There is nothing in the Play List, unable to move file(s) to the top...",
          "There is nothing in the Play List, unable to move file(s) to the bottom..."},
         {"There is only one item in the Play List, unable to move file(s) up...",
          "There is only one item in the Play List, unable to move file(s) down...",
          "There is only one item in the Play List, file is already at the top...",
          "There is only one item in the Play List, file is already at the bottom..."},
         {"Select the sound(s) to move up and then try again...",
          "Select the sounds(s) to move down and then try again...",
          "Select the sounds(s) to move to the top and then try again...",
          "Select the sounds(s) to move to the bottom and then try again..."},
         {"The selected file(s) are already at top of the Play List, unable to move file(s) "
          "up...",
          "The selected file(s) are already at bottom of the Play List, unable to move file(s) "
          "down...",
          "The selected file is already at the top of the Play List, unable to move file...",
          "The selected file is already at the bottom of the Play List, unable to move file..."}},
        "There are no files in the Play List, unable to randomize sound order...",
        "There is only one file in the Play List, unable to randomize sound order...",
        "There are no files in the Play List, unable to reverse the order of sounds...",
        "There is only one file in the Play List, no need to reverse the order of sounds..."};
    return words;
}

QVector<int> SortedLines(const QVector<int>& selection, int count)
{
    QVector<int> lines;
    for (int line : selection)
        if (line >= 0 && line < count)
            lines << line;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

template <typename T>
ListResult MoveLines(QVector<T>& items, const QVector<int>& selection, MoveKind kind,
                     const ListWords& words)
{
    ListResult result;
    const int count = int(items.size());
    const QVector<int> lines = SortedLines(selection, count);
    auto refuse = [&](int row) {
        result.message = QString::fromLatin1(words.move[row][int(kind)]);
        return result;
    };
    if (count == 0)
        return refuse(0);
    if (count == 1)
        return refuse(1);
    if (lines.isEmpty())
        return refuse(2);

    const bool atTop = lines.first() == 0;
    const bool atBottom = lines.last() == count - 1;
    const bool blockAtTop = lines.last() == lines.size() - 1;
    const bool blockAtBottom = lines.first() == count - lines.size();
    if ((kind == MoveKind::Up && atTop) || (kind == MoveKind::Down && atBottom) ||
        (kind == MoveKind::Top && blockAtTop) || (kind == MoveKind::Bottom && blockAtBottom)) {
        result.selection = lines;
        return refuse(3);
    }

    switch (kind) {
    case MoveKind::Up:
        for (int line : lines) {
            std::swap(items[line - 1], items[line]);
            result.selection << line - 1;
        }
        break;
    case MoveKind::Down:
        for (auto it = lines.crbegin(); it != lines.crend(); ++it) {
            std::swap(items[*it], items[*it + 1]);
            result.selection.prepend(*it + 1);
        }
        break;
    case MoveKind::Top:
    case MoveKind::Bottom: {
        QVector<T> chosen;
        QVector<T> rest;
        chosen.reserve(lines.size());
        rest.reserve(count - lines.size());
        int next = 0;
        for (int i = 0; i < count; ++i) {
            if (next < lines.size() && lines[next] == i) {
                chosen.append(std::move(items[i]));
                ++next;
            } else {
                rest.append(std::move(items[i]));
            }
        }
        const int first = kind == MoveKind::Top ? 0 : int(rest.size());
        items = kind == MoveKind::Top ? chosen + rest : rest + chosen;
        for (int i = 0; i < chosen.size(); ++i)
            result.selection << first + i;
        break;
    }
    }
    result.changed = true;
    return result;
}

template <typename T> ListResult RandomizeLines(QVector<T>& items, const ListWords& words)
{
    ListResult result;
    const int n = int(items.size());
    if (n < 2) {
        result.message = QString::fromLatin1(n == 0 ? words.randomizeEmpty : words.randomizeOne);
        return result;
    }
    // The random source is seeded from the clock when the program starts. The factor is the
    // count left minus 2, so a line never goes back into the last two places: kept as it was.
    // With two lines the factor is -1; such a line goes to the top.
    for (int i = 0; i < n; ++i) {
        T item = std::move(items[i]);
        items.remove(i);
        const int left = int(items.size());
        const int j = std::max(0, int(std::floor(double(left - 2) * Rnd())));
        items.insert(j, std::move(item));
    }
    result.changed = true;
    return result;
}

template <typename T> ListResult ReverseLines(QVector<T>& items, const ListWords& words)
{
    ListResult result;
    if (items.size() < 2) {
        result.message =
            QString::fromLatin1(items.isEmpty() ? words.reverseEmpty : words.reverseOne);
        return result;
    }
    std::reverse(items.begin(), items.end());
    result.changed = true;
    return result;
}

template ListResult MoveLines(QVector<Slide>&, const QVector<int>&, MoveKind, const ListWords&);
template ListResult MoveLines(QVector<QString>&, const QVector<int>&, MoveKind, const ListWords&);
template ListResult RandomizeLines(QVector<Slide>&, const ListWords&);
template ListResult RandomizeLines(QVector<QString>&, const ListWords&);
template ListResult ReverseLines(QVector<Slide>&, const ListWords&);
template ListResult ReverseLines(QVector<QString>&, const ListWords&);

} // namespace kavori
