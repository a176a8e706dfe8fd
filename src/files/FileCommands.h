#pragma once

#include <QString>

namespace kavori {

class MainViewFrm;

// Brings the main window's file commands to life: copy, move, rename and delete pictures,
// delete an empty folder, find duplicate files, the quick folders and the favourites. The
// picture open in the window is protected from the dialogs, and the window follows it when a
// command of its own moves, renames or deletes it.
void ConnectFileCommands(MainViewFrm* window);

// The file of the picture in the window; empty for a picture that has none (a new or pasted
// one) and for a file that has gone.
QString CurrentPictureFile(const MainViewFrm* window);

// True when the window shows a picture from a file; else says "An image has not been opened
// yet, unable to " + doing + "...".
bool NeedsPicture(const MainViewFrm* window, const QString& doing);

} // namespace kavori
