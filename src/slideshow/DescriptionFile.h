#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// A folder's "!Description" file maps the bare names of its pictures to their descriptions:
// the header "Kavori Description File", a line of 30 dashes, then a name line and a text
// line per entry. One folder's table is loaded at a time.

constexpr int kDescriptionSlots = 10001; // slots 0..10000

struct DescriptionTable {
    QStringList DescFileName;
    QStringList DescText;
};

DescriptionTable& CurrentDescriptions();
QString DescriptionFilePath(const QString& folder);

// Loads the folder's file: 0 when there is none, -1 when its header is foreign, else the
// number of entries (at most 10,000).
qint32 ReadDescriptionFile(const QString& folder);
// The same into a table of the caller's (safe off the UI thread).
qint32 ReadDescriptionFile(const QString& folder, DescriptionTable& table);
// Writes the loaded table; an empty table deletes the folder's file (only when it is ours).
bool WriteDescriptionFile(const QString& folder);
// The description of a picture given by its full path, or empty.
QString GetDescription(const QString& path);
// Changes or adds an entry in the loaded table (the caller writes it back).
void SetDescription(const QString& fileName, const QString& text);
void RemoveDescription(const QString& fileName);

// The look of a slide's description: 14 values, the first a "custom" flag.
struct DescriptionLook {
    qint16 custom = 0;
    qint16 location = 5;
    qint16 speed = 5;
    QString font = QStringLiteral("MS Sans Serif");
    qint16 size = 12;
    qint16 style = 0;
    qint32 foreColor = 0;
    qint16 useBack = 0;
    qint32 backColor = 0;
    qint16 border = 1;
    qint16 shadow = 0;
    qint16 shadowDistance = 0;
    qint16 shadowDirection = 3;
    qint32 shadowColor = 0;
};

// The places and movements a description can have, in the order of their codes (0 to 21).
QStringList DescriptionLocations();

// The look the settings give a slide without its own, and making a look that default (the
// settings' fields only, kept within their ranges; the caller writes them).
DescriptionLook DefaultDescriptionLook();
void SetDefaultDescriptionLook(const DescriptionLook& look);
// The same 13 values (the custom flag aside).
bool SameLook(const DescriptionLook& a, const DescriptionLook& b);
// SlideDescProps of a look: empty unless it is custom, else the 14 values joined by ",".
QString BuildDescProps(const DescriptionLook& look);
// The look a SlideDescProps stands for (the defaults when empty; bad values take defaults).
DescriptionLook ParseDescProps(const QString& props);

// Verifying a description file.
struct DescriptionProblems {
    int withoutFileName = 0;
    int withoutDescription = 0;
    int missingFiles = 0;
    bool any() const { return withoutFileName || withoutDescription || missingFiles; }
};
DescriptionProblems CheckDescriptionFile(const QString& folder);
// The report: "no problems", or the list of problems and the repair question.
QString DescriptionReport(const DescriptionProblems& problems);
// Keeps only entries with a name, a text and an existing file, in order, and rewrites the file.
bool RepairDescriptionFile(const QString& folder);

} // namespace kavori
