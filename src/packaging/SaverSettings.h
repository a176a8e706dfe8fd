#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <functional>

namespace kavori {

class SystemSaver;

// What the screen saver settings dialog edits, window-free: the form fills its controls from
// LoadSaverChoices and hands them back to SaveSaverChoices.

// The background choices, as written into every slide's background mode.
enum SaverColor : int {
    kSaverBlack = 0,
    kSaverWhite = 1,
    kSaverSystem = 2,
    kSaverDarkBlue = 3,
    kSaverDarkRed = 4,
    kSaverDarkBrown = 5,
    kSaverCustom = 6,
    kSaverKeepColors = 7, // leave the slides as they are
};

struct SaverChoices {
    QString showPath;             // CurrentSaver; empty when none is chosen
    int intervalIndex = 4;        // ComboInterval: entry i is i + 1 seconds
    bool keepIntervals = false;   // CheckKeepInt
    bool randomOrder = false;     // CheckRandom
    bool startAtLast = false;     // CheckStartLast
    bool sound = true;            // OptionYesSound (else OptionNoSound)
    int color = kSaverKeepColors; // Option1 ... Option6, OptionCustomColor, OptionKeepBC
    QColor customColor = Qt::black;
    int passwordDelay = 0; // ComboPassDelay
    QString soundNote;     // lblSoundFile
};

// The lists of ComboInterval and ComboPassDelay.
QStringList SaverIntervalItems();
QStringList SaverPasswordDelayItems();

// lblNameOnly: the file name less its extension, or "[No Slide Show Specified]".
QString SaverNameOnly(const QString& showPath);

// Opening the dialog: the chosen show is loaded into memory and the choices take its values.
SaverChoices LoadSaverChoices();
// A show picked with CmdSelectFile: loaded, and the choices that come from a show follow it.
// False (with the reader's message) when it cannot be read; the choices are left as they were.
bool SelectSaverShow(const QString& path, SaverChoices& choices);

// CmdOK: asks what it must, writes the registry, KAVORI.INI, the show and the system saver.
// False when no show is chosen (the message was shown); the dialog then stays open.
bool SaveSaverChoices(const SaverChoices& choices, SystemSaver& system);

// CmdEditShow: saves as CmdOK does and starts the program again with "/EDIT " and the show.
// True when the dialog is to close (a show is chosen, even if the start failed: its message
// was shown).
using ProgramStarter = std::function<bool(const QString& program, const QStringList& arguments)>;
bool EditSaverShow(const SaverChoices& choices, SystemSaver& system, const ProgramStarter& start);

// The information boxes of lblCurrentFile and lblSoundFile.
void ShowSaverFileInfo(const SaverChoices& choices);
void ShowSaverSoundInfo(const SaverChoices& choices);

// Makes a show the screen saver in one step (from the main window or the editor): the show
// becomes CurrentSaver, the recent list and our saver module the system's current one.
bool MakeShowTheSaver(const QString& showPath, SystemSaver& system);

} // namespace kavori
