#include "DesktopApplications.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <QTextStream>
#include <QUrl>

#include <algorithm>

namespace kavori {

namespace {

using Group = QHash<QString, QString>;
using Groups = QHash<QString, Group>;

// The key-file layout shared by .desktop files and mimeapps.list: [Group] headers, Key=Value
// lines, # comments. Values keep their escapes (\s \n \t \r \\) undone.
Groups readKeyFile(const QString& path)
{
    Groups groups;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return groups;
    QString current;
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            current = line.mid(1, line.size() - 2);
            continue;
        }
        const int equals = line.indexOf(u'=');
        if (equals <= 0 || current.isEmpty())
            continue;
        const QString key = line.left(equals).trimmed();
        QString value;
        const QString raw = line.mid(equals + 1).trimmed();
        for (int i = 0; i < raw.size(); ++i) {
            const QChar next = i + 1 < raw.size() ? raw[i + 1] : QChar();
            if (raw[i] != u'\\' || !QStringLiteral("sntr\\").contains(next)) {
                // Other escapes (\; in lists, \" in Exec) are the next layer's to read.
                value += raw[i];
                continue;
            }
            value += next == u's'   ? QChar(u' ')
                     : next == u'n' ? QChar(u'\n')
                     : next == u't' ? QChar(u'\t')
                     : next == u'r' ? QChar(u'\r')
                                    : QChar(u'\\');
            ++i;
        }
        Group& group = groups[current];
        if (!group.contains(key)) // the first of a repeated key counts
            group.insert(key, value);
    }
    return groups;
}

// A list value: items split at ";" (an escaped "\;" stays in the item).
QStringList listValue(const QString& value)
{
    QStringList items;
    QString item;
    for (int i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && i + 1 < value.size() && value[i + 1] == u';') {
            item += u';';
            ++i;
        } else if (value[i] == u';') {
            if (!item.isEmpty())
                items << item;
            item.clear();
        } else {
            item += value[i];
        }
    }
    if (!item.isEmpty())
        items << item;
    return items;
}

// Name=, or its translation for the user's language (Name[de_DE], Name[de]).
QString localized(const Group& group, const QString& key)
{
    const QString locale = QLocale().name(); // "de_DE"
    for (const QString& tag : {locale, locale.section(u'_', 0, 0)}) {
        const QString value = group.value(key + u'[' + tag + u']');
        if (!value.isEmpty())
            return value;
    }
    return group.value(key);
}

QString dataHome()
{
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    return home.isEmpty() ? QDir::homePath() + QStringLiteral("/.local/share") : home;
}

QStringList dataDirs()
{
    QString dirs = qEnvironmentVariable("XDG_DATA_DIRS");
    if (dirs.isEmpty())
        dirs = QStringLiteral("/usr/local/share:/usr/share");
    return QStringList{dataHome()} + dirs.split(u':', Qt::SkipEmptyParts);
}

// Where mimeapps.list files are, most important first; in each folder the current desktop's
// own list comes before the common one.
QStringList mimeAppsLists()
{
    QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (configHome.isEmpty())
        configHome = QDir::homePath() + QStringLiteral("/.config");
    QString configDirs = qEnvironmentVariable("XDG_CONFIG_DIRS");
    if (configDirs.isEmpty())
        configDirs = QStringLiteral("/etc/xdg");
    QStringList folders = QStringList{configHome} + configDirs.split(u':', Qt::SkipEmptyParts);
    for (const QString& dir : dataDirs())
        folders << dir + QStringLiteral("/applications");
    const QStringList desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(u':', Qt::SkipEmptyParts);
    QStringList lists;
    for (const QString& folder : folders) {
        for (const QString& desktop : desktops)
            lists << folder + u'/' + desktop + QStringLiteral("-mimeapps.list");
        lists << folder + QStringLiteral("/mimeapps.list");
    }
    return lists;
}

} // namespace

std::optional<DesktopApplication> ReadDesktopEntry(const QString& path, const QString& id)
{
    const Groups groups = readKeyFile(path);
    const auto found = groups.constFind(QStringLiteral("Desktop Entry"));
    if (found == groups.cend())
        return std::nullopt;
    const Group& entry = *found;
    if (entry.value(QStringLiteral("Type")) != QLatin1String("Application") ||
        entry.value(QStringLiteral("Hidden")) == QLatin1String("true") ||
        entry.value(QStringLiteral("Exec")).isEmpty())
        return std::nullopt;
    DesktopApplication app;
    app.id = id;
    app.name = localized(entry, QStringLiteral("Name"));
    if (app.name.isEmpty())
        app.name = QFileInfo(path).completeBaseName();
    app.exec = entry.value(QStringLiteral("Exec"));
    app.icon = entry.value(QStringLiteral("Icon"));
    app.path = path;
    app.mimeTypes = listValue(entry.value(QStringLiteral("MimeType")));
    return app;
}

QList<DesktopApplication> DesktopApplications()
{
    QList<DesktopApplication> apps;
    QSet<QString> seen;
    for (const QString& dir : dataDirs()) {
        const QString folder = dir + QStringLiteral("/applications");
        QDirIterator it(folder, {QStringLiteral("*.desktop")}, QDir::Files,
                        QDirIterator::Subdirectories);
        QStringList files;
        while (it.hasNext())
            files << it.next();
        files.sort();
        for (const QString& file : files) {
            // The id is the path below applications/ with "/" turned into "-".
            QString id = file.mid(folder.size() + 1);
            id.replace(u'/', u'-');
            if (seen.contains(id))
                continue;
            seen.insert(id); // a hidden or broken entry still hides later ones of its id
            if (auto app = ReadDesktopEntry(file, id))
                apps << *app;
        }
    }
    return apps;
}

std::optional<DesktopApplication> FindDesktopApplication(const QString& id)
{
    for (const DesktopApplication& app : DesktopApplications())
        if (app.id == id)
            return app;
    return std::nullopt;
}

QList<DesktopApplication> ApplicationsForMimeType(const QString& mimeType, const QString& leaveOut)
{
    const QList<DesktopApplication> all = DesktopApplications();
    QHash<QString, DesktopApplication> byId;
    for (const DesktopApplication& app : all)
        byId.insert(app.id, app);

    QStringList defaults;
    QStringList added;
    QSet<QString> removed;
    for (const QString& list : mimeAppsLists()) {
        const Groups groups = readKeyFile(list);
        defaults += listValue(groups.value(QStringLiteral("Default Applications")).value(mimeType));
        // A list removes associations of the lists after it, not its own additions.
        for (const QString& id :
             listValue(groups.value(QStringLiteral("Added Associations")).value(mimeType)))
            if (!removed.contains(id))
                added << id;
        for (const QString& id :
             listValue(groups.value(QStringLiteral("Removed Associations")).value(mimeType)))
            removed.insert(id);
    }

    QList<DesktopApplication> result;
    QSet<QString> taken;
    const auto take = [&](const QString& id) {
        if (id == leaveOut || taken.contains(id) || !byId.contains(id))
            return;
        taken.insert(id);
        result << byId.value(id);
    };
    for (const QString& id : std::as_const(defaults))
        take(id);
    for (const QString& id : std::as_const(added))
        take(id);
    QList<DesktopApplication> listing;
    for (const DesktopApplication& app : all)
        if (app.mimeTypes.contains(mimeType) && !removed.contains(app.id))
            listing << app;
    std::stable_sort(listing.begin(), listing.end(),
                     [](const DesktopApplication& a, const DesktopApplication& b) {
                         return a.name.localeAwareCompare(b.name) < 0;
                     });
    for (const DesktopApplication& app : std::as_const(listing))
        take(app.id);
    return result;
}

QStringList DesktopCommandFor(const DesktopApplication& app, const QString& file)
{
    // Split Exec into arguments: double quotes group, and inside them \" \` \$ \\ escape.
    QStringList words;
    QString word;
    bool inWord = false;
    const QString& exec = app.exec;
    for (int i = 0; i < exec.size(); ++i) {
        const QChar c = exec[i];
        if (c == u'"') {
            bool closed = false;
            for (++i; i < exec.size(); ++i) {
                if (exec[i] == u'\\' && i + 1 < exec.size()) {
                    word += exec[++i];
                } else if (exec[i] == u'"') {
                    closed = true;
                    break;
                } else {
                    word += exec[i];
                }
            }
            if (!closed)
                return {};
            inWord = true;
        } else if (c == u' ' || c == u'\t') {
            if (inWord)
                words << word;
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words << word;
    if (words.isEmpty())
        return {};

    QStringList command;
    bool placed = false;
    for (const QString& w : std::as_const(words)) {
        // A field code standing alone may become several arguments or none.
        if (w == QLatin1String("%f") || w == QLatin1String("%F")) {
            command << file;
            placed = true;
            continue;
        }
        if (w == QLatin1String("%u") || w == QLatin1String("%U")) {
            command << QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
            placed = true;
            continue;
        }
        if (w == QLatin1String("%i")) {
            if (!app.icon.isEmpty())
                command << QStringLiteral("--icon") << app.icon;
            continue;
        }
        QString out;
        for (int i = 0; i < w.size(); ++i) {
            if (w[i] != u'%' || i + 1 >= w.size()) {
                out += w[i];
                continue;
            }
            const QChar code = w[++i];
            if (code == u'%')
                out += u'%';
            else if (code == u'c')
                out += app.name;
            else if (code == u'k')
                out += app.path;
            else if (code == u'f' || code == u'F') {
                out += file;
                placed = true;
            } else if (code == u'u' || code == u'U') {
                out += QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
                placed = true;
            }
            // Deprecated codes (%d %D %n %N %v %m) are dropped.
        }
        if (!out.isEmpty() || w.isEmpty())
            command << out; // a word of dropped codes alone is no argument
    }
    if (!placed)
        command << file;
    return command;
}

QStringList OpenWithCommand(const QString& program, const QString& file)
{
    if (program.isEmpty())
        return {};
    if (!program.endsWith(QLatin1String(".desktop")))
        return {program, file};
    const std::optional<DesktopApplication> app = FindDesktopApplication(program);
    return app ? DesktopCommandFor(*app, file) : QStringList();
}

} // namespace kavori
