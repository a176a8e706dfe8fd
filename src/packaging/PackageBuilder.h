#pragma once

#include "PackageLayout.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace kavori {

class Progress;

// Building a package folder from a saved show, window-free: the form gathers the request and
// calls these; the questions and messages go through MsgBox.

struct PackageRequest {
    QString source;      // the folder of the show files
    QString showFile;    // the show chosen in the file list (a name in source), empty when none
    QString destination; // the package folder
    QString name;        // txtName
    QString size;        // txtSize, as typed
    PackageOptions options;
    QString programFolder; // where the executables come from; empty: the running program's
};

// The title of every box of the package builder.
QString PackageTitle();

// The show files (.KAV) of a folder, sorted by name.
QStringList PackageShowFiles(const QString& folder);

// The refusal of a destination (the whole warning), or an empty string when it may hold a
// package: the program's folders, the system's folders, the source, and a destination whose
// SLIDES is the source.
QString CheckPackageDestination(const QString& destination, const QString& source,
                                bool screenSaver);

// The figure lblReqSize shows (3 for a run-time package, 13 otherwise), its caption, and
// lblTotSize for a size as typed.
int RequiredMegabytes(bool runtime);
QString RequiredSizeCaption(bool runtime);
QString TotalSizeCaption(bool runtime, const QString& size);

// CmdSize: the estimate of the selected show in decimal megabytes, or "Unknown" after the
// message saying why.
QString EstimatePackageSize(const QString& source, const QString& showFile);

// A file dropped on the show list: the show it names (a link followed to its target), or an
// empty string after the message saying why it is refused.
QString DroppedShowFile(const QString& path);

// The package settings as the dialog opens, and saving them when a build completes.
PackageRequest LoadPackageRequest();
void SavePackageSettings(const PackageRequest& request);

// CmdPackage: every check, question and copy. makeProgress opens the wait dialog when the
// copying starts. The name actually used (the default may have been taken) is put back into
// request. True when the package was built.
using ProgressFactory = std::function<std::unique_ptr<Progress>()>;
bool BuildPackage(PackageRequest& request, const ProgressFactory& makeProgress);

// Where a file a show names is found when it is packaged: a full path as it stands (or beside
// the show when it has moved), a bare name beside the show or in the source's SLIDES folder.
// Empty when it cannot be found.
QString PackageSourceFile(const QString& name, const QString& showFolder);

} // namespace kavori
