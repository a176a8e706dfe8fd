#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

class Progress;

// The decisions and messages of the file dialogs, without a window: each takes what the
// user chose, asks its questions through the message box handler, does the work and says
// what happened. currentFile is the picture open in the main window, which is never moved,
// renamed or deleted behind the window's back.

enum class FileJobKind { Copy, Move };

struct FileJobRequest {
    FileJobKind kind = FileJobKind::Copy;
    QString sourceFolder;
    QString destinationFolder;
    int filesInSource = 0;
    QStringList selected; // full paths, in list order
    QString currentFile;
};

struct FileJobResult {
    bool cancelled = false;
    QStringList sources; // the files copied or moved
    QStringList targets; // where they went
    int slidesUpdated = 0;
};

// The refusal before anything is asked (empty folder, nothing chosen, the same folder).
QString FileJobRefusal(const FileJobRequest& request);
// "Copy the file: ... to the following directory?" or "Copy 3 files to ...".
QString FileJobQuestion(const FileJobRequest& request);
// Shows the refusal, or asks the question: true when the job may run.
bool ConfirmFileJob(const FileJobRequest& request);
// Copies or moves file by file with progress; an existing target is
// replaced only when the user says so. Descriptions follow when CopyDescription is on (and
// always leave with a moved file); favourites, slides and the show's sound follow a move.
FileJobResult RunFileJob(const FileJobRequest& request, Progress& progress);

// Deleting the chosen files of a folder. filesInFolder counts the listed files, while
// folderIsEmpty says the folder holds nothing at all (it may then be removed).
struct DeleteRequest {
    QString folder;
    bool folderIsEmpty = false;
    int filesInFolder = 0;
    QStringList selected;
    QString currentFile;
};
// Returns the files that are gone; removedFolder tells the empty folder went.
QStringList DeleteFiles(const DeleteRequest& request, bool* removedFolder = nullptr);
// The Delete key on a file list: one file, with the routine's own question.
bool DeleteByKey(const QString& selected, const QString& currentFile);
// Deleting a folder chosen in a folder tree: only an empty one, after the question.
bool DeleteEmptyFolder(const QString& folder, bool fromTree);

// Renaming: the refusals, the prompt (again after a bad name) and the rename with its
// followers. Returns the new path, or empty when nothing was renamed.
QString RenameRefusal(int filesInFolder, const QString& selected, const QString& currentFile);
QString RenameTitle();
QString RenameFile(const QString& path, const QString& title = RenameTitle());

// Asks for the name of a new folder below parent (again after a bad name), makes it and
// returns its path; empty when none was made.
QString AskNewFolder(const QString& parent);

// Files and sub-folders of a folder, hidden ones included.
bool FolderIsEmpty(const QString& folder);
// A drive's root, which may never be deleted.
bool IsDriveRoot(const QString& folder);

} // namespace kavori
