#pragma once

#include "platform/Volumes.h"

#include <QString>
#include <QVector>

namespace kavori {

// The nodes of the file browser's tree: the special places first, in a fixed order, then one
// node per drive under "mycomputer". A node's key says where it leads.
struct BrowserNode {
    QString key;
    QString caption;
    QString parent;  // the key of the node above, empty for the top level
    QString iconKey; // which picture the tree shows beside it
};

// The special nodes in the order the tree shows them. "mydocuments" is there only when the
// user's documents folder exists.
QVector<BrowserNode> SpecialNodes();

// A drive's entry as the tree names it: its root, and a fixed disk's name in brackets.
QString DriveEntry(const Volume& volume);
// The node of a drive entry: its key, caption and icon key ("net", "hd", "floppya",
// "floppyb", "cdrom", "remove").
BrowserNode DriveNode(const QString& entry, DriveType type);
QVector<BrowserNode> DriveNodes(const QVector<Volume>& volumes);

// The folder a node leads to, ending in the separator; empty for the nodes that only open
// and close ("mycomputer", "kavori", "quick") and for a quick folder not set.
QString ResolveNodeKey(const QString& key);
bool IsExpandOnlyNode(const QString& key);

} // namespace kavori
