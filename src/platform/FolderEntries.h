#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace kavori {

enum class EntryKind { File, Folder };

// Lists the entries of one folder in the system's own order, without reading each file's
// details: a hidden entry (its name starting with ".") is left out, a link to a folder is not
// given as a folder, a link to a file is a file. The name comes as the system stores it (bytes;
// QFile::decodeName makes it a string). Returns false when the folder cannot be read.
bool ForEachEntry(const QString& folder,
                  const std::function<void(const QByteArray& name, EntryKind kind)>& visit);

} // namespace kavori
