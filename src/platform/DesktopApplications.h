#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kavori {

// The desktop's applications as freedesktop menu entries describe them: the .desktop files in
// the applications/ folder of $XDG_DATA_HOME and each of $XDG_DATA_DIRS, and the user's and
// system's choices in mimeapps.list.

struct DesktopApplication {
    QString id;   // desktop file id, "org.example.Paint.desktop"
    QString name; // Name=, in the user's language when the entry has it
    QString exec; // Exec=, as written
    QString icon; // Icon=
    QString path; // the .desktop file
    QStringList mimeTypes;
};

// One entry; nothing for a file that is not an application entry (no [Desktop Entry] group,
// Type other than Application, no Exec, Hidden=true).
std::optional<DesktopApplication> ReadDesktopEntry(const QString& path, const QString& id);

// Every application entry, each id once: an entry earlier in the data folders hides a later
// one of the same id.
QList<DesktopApplication> DesktopApplications();

// The applications for a MIME type, best first: the defaults of mimeapps.list, its added
// associations, then every entry that lists the type, by name; removed associations are left
// out, and so is the entry with the id to leave out (this program's own).
QList<DesktopApplication> ApplicationsForMimeType(const QString& mimeType,
                                                  const QString& leaveOut = QString());

// The entry of a desktop file id, if it is installed.
std::optional<DesktopApplication> FindDesktopApplication(const QString& id);

// The command line that opens file in the application: Exec= split as the entry format
// quotes it, its field codes filled in (%f %F %u %U with the file, %i %c %k), and the file
// added at the end when Exec names no place for it. Empty when Exec cannot be read.
QStringList DesktopCommandFor(const DesktopApplication& app, const QString& file);

// The command that opens file in a program remembered for "open with": a desktop file id
// ("....desktop") through its entry, or a program's path given the file. Empty when the entry
// is no longer installed or its Exec cannot be read.
QStringList OpenWithCommand(const QString& program, const QString& file);

} // namespace kavori
