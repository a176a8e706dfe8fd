#pragma once

namespace kavori {

class MainViewFrm;

// Brings the main window's file commands to life: copy, move, rename and delete pictures,
// delete an empty folder, find duplicate files, the quick folders and the favourites. The
// picture open in the window is protected from the dialogs, and the window follows it when a
// command of its own moves, renames or deletes it.
void ConnectFileCommands(MainViewFrm* window);

} // namespace kavori
