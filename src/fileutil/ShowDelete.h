#pragma once

#include <QString>

namespace kavori {

// Deleting a slide show file from the main window, without a window: who still uses the show,
// the refusal and the question, and the deleting itself through the one delete routine.

struct ShowUse {
    bool current = false; // the show in memory was read from it
    bool saver = false;   // the screen saver plays it
};
ShowUse ShowInUse(const QString& path);

// Why a chosen file cannot be deleted as a show (gone, not a ".KAV"), or empty.
QString DeleteShowRefusal(const QString& path);
// The one question before deleting, saying what else the show is.
QString DeleteShowQuestion(const QString& path, const ShowUse& use, bool toTrash);

// Deletes the file (to the trash when the settings say so) without asking again. Once it is
// gone it leaves the recent and favourite shows, a screen saver that played it has no show,
// and the show in memory that came from it stays, unsaved and without a file. True when gone.
bool DeleteSlideShowFile(const QString& path, const ShowUse& use);

} // namespace kavori
