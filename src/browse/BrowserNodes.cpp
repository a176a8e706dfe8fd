#include "BrowserNodes.h"

#include "fileutil/QuickFolders.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace kavori {

namespace {

QString documentsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString desktopFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

QString withSlash(const QString& folder)
{
    return folder.isEmpty() ? QString() : AddSlash(folder);
}

// The program's own folders, found whatever the case of their names.
QString programFolder(const QString& name)
{
    return withSlash(PathNoCase(AppPath(), name));
}

} // namespace

QVector<BrowserNode> SpecialNodes()
{
    QVector<BrowserNode> nodes;
    auto add = [&](const char* key, const QString& caption, const char* parent) {
        nodes.push_back({QString::fromLatin1(key), caption, QString::fromLatin1(parent),
                         QString::fromLatin1(key)});
    };
    add("mycomputer", QStringLiteral("My Computer"), "");
    add("desktop", QStringLiteral("Desktop Folder"), "");
    if (QFileInfo(documentsFolder()).isDir())
        add("mydocuments", QStringLiteral("My Documents"), "");
    add("kavori", AppTitle(), "");
    add("favfolder", QStringLiteral("Favorite Folder"), "kavori");
    add("slides", QStringLiteral("Slides Folder"), "kavori");
    add("bonus", QStringLiteral("Bonus Pack Folder"), "kavori");
    add("quick", QStringLiteral("Quick Folders"), "kavori");
    for (int i = 0; i < kQuickFolders; ++i) {
        const QString path = QuickFolderPath(i);
        QString name = CurrentSettings().QuickFolder[size_t(i)];
        if (name.isEmpty())
            name = path.isEmpty() ? QStringLiteral("(not set)") : QDir::toNativeSeparators(path);
        nodes.push_back({QStringLiteral("quick") + QString::number(i + 1), name,
                         QStringLiteral("quick"), QStringLiteral("quickfolder")});
    }
    return nodes;
}

QString DriveEntry(const Volume& volume)
{
    const QString root = QDir::toNativeSeparators(volume.root);
    if (volume.type == DriveType::Fixed && !volume.label.isEmpty())
        return root + QStringLiteral(" [") + volume.label + u']';
    return root;
}

BrowserNode DriveNode(const QString& entry, DriveType type)
{
    BrowserNode node{entry, entry, QStringLiteral("mycomputer"), QStringLiteral("hd")};
    if (entry.contains(QLatin1String("\\\\"))) {
        node.iconKey = QStringLiteral("net");
    } else if (entry.contains(u'[')) {
        node.iconKey = QStringLiteral("hd");
    } else if (entry.startsWith(QLatin1String("A:"), Qt::CaseInsensitive)) {
        node.key = node.iconKey = QStringLiteral("floppya");
        node.caption = QStringLiteral("Floppy Drive A:\\");
    } else if (entry.startsWith(QLatin1String("B:"), Qt::CaseInsensitive)) {
        node.key = node.iconKey = QStringLiteral("floppyb");
        node.caption = QStringLiteral("Floppy Drive B:\\");
    } else if (type == DriveType::CDRom) {
        node.iconKey = QStringLiteral("cdrom");
        node.caption = entry + QStringLiteral(" CD-ROM Drive");
    } else if (type == DriveType::Removable) {
        node.iconKey = QStringLiteral("remove");
        node.caption = entry + QStringLiteral(" Removeable Disk");
    } else if (type == DriveType::Remote) {
        node.iconKey = QStringLiteral("net"); // a share mounted into the tree, no "\\" in it
    }
    return node;
}

QVector<BrowserNode> DriveNodes(const QVector<Volume>& volumes)
{
    QVector<BrowserNode> nodes;
    for (const Volume& v : volumes)
        nodes.push_back(DriveNode(DriveEntry(v), v.type));
    return nodes;
}

bool IsExpandOnlyNode(const QString& key)
{
    return key == QLatin1String("mycomputer") || key == QLatin1String("kavori") ||
           key == QLatin1String("quick");
}

QString ResolveNodeKey(const QString& key)
{
    if (key == QLatin1String("desktop"))
        return withSlash(desktopFolder());
    if (key == QLatin1String("mydocuments"))
        return withSlash(documentsFolder());
    if (key == QLatin1String("favfolder"))
        return withSlash(CurrentSettings().FavoriteFolder);
    if (key == QLatin1String("slides"))
        return programFolder(QStringLiteral("Slides"));
    if (key == QLatin1String("bonus"))
        return programFolder(QStringLiteral("Bonus"));
    for (int i = 1; i <= kQuickFolders; ++i) {
        if (key == QStringLiteral("quick") + QString::number(i))
            return withSlash(QuickFolderPath(i - 1));
    }
    if (key == QLatin1String("floppya"))
        return QStringLiteral("A:\\");
    if (key == QLatin1String("floppyb"))
        return QStringLiteral("B:\\");
    if (key.isEmpty() || IsExpandOnlyNode(key))
        return {};
    // Any other key is a drive entry: "C:\ [DISK]" leads to "C:\", "/media/stick" to itself.
    if (key.size() >= 2 && key[1] == u':')
        return key.left(2) + u'\\';
    const int label = int(key.indexOf(QLatin1String(" [")));
    return withSlash(QDir::fromNativeSeparators(label < 0 ? key : key.left(label)));
}

} // namespace kavori
