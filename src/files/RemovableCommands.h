#pragma once

namespace kavori {

class MainViewFrm;

// The removable-disk commands (the floppy menu of old, captioned for what replaced the floppy)
// on the USB sticks, memory cards and discs that are in: copy pictures to one or from one and
// delete pictures on one through the usual copy and delete dialogs opened at the medium, copy a
// whole medium into a folder, and format through the desktop's disk utility. With several media
// in, the user picks one; with none, a message says so.
void ConnectRemovableCommands(MainViewFrm* window);

} // namespace kavori
