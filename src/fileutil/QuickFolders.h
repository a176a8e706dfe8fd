#pragma once

#include <QString>

namespace kavori {

// The twelve quick folders (QuickFolder1..12 names, QuickFolderPath1..12 folders): each is
// bound to a key, F1 to F12. The current picture is copied to one with Ctrl and the key, moved
// with Ctrl+Shift and the key; its button on the quick toolbar does what LastQuickAction says.

constexpr int kQuickFolders = 12;

enum class QuickAction { Copy = 0, Move = 1, Open = 2 };
QuickAction CurrentQuickAction();

// "F3  Holidays", "F3  /pictures/holidays" when unnamed, "F3  (not set)".
QString QuickFolderCaption(int index); // index 0..11
QString QuickFolderPath(int index);
// The message for a quick folder that is not set or is gone, or empty when it is usable.
QString QuickFolderRefusal(int index);

// Sets or clears (empty path) one quick folder; an empty name is the folder's own name.
void SetQuickFolder(int index, const QString& name, const QString& path);
// Writes the names, the folders and LastQuickAction.
void WriteQuickFolders();

// Copies or moves a file into a quick folder at once (a file of the same name is replaced
// only after the question), its description, favourite entry and slides following a move.
// Returns where it went, or empty after the message when it did not.
QString SendToQuickFolder(int index, const QString& file, bool move);

} // namespace kavori
