#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// Reads every key of KAVORI.INI into the settings object, with the default, range and
// correction of each key. A missing file gives every default.
void LoadSettings();
// The same from another file of the same form (the run-time player's RUN-KAV.INI).
void LoadSettingsFile(const QString& path);

// Group writers: each loads KAVORI.INI, sets its keys from the settings object and saves it.
// Flags are always written "True" or "False".
void WritePreferences();      // the preferences dialog's OK
void WriteMainWindowState();  // on closing the main window
void WriteSlideShowOptions(); // transition, sound, interval, order, description, mouse, toolbar
void WriteDescriptionLook();  // the default description look (SlideDesc... keys)
void WriteFavoriteShows();
void WriteRecentFiles();     // Recent1..Recent7 and MoreRecentFiles1..MoreRecentFiles20
void WritePackageSettings(); // section "Package"
void WriteExtras();          // section "Extras"
void WriteExportSettings();  // section "Export"
// Any keys of the catalogue, by name.
void WriteSettingsKeys(const QStringList& keys);

// The keys of each group, in the order they are written.
QStringList PreferencesKeys();
QStringList MainWindowStateKeys();
QStringList SlideShowOptionKeys();
QStringList DescriptionLookKeys();
QStringList ExtrasKeys();

// Every key of the catalogue, "Section/Key", in catalogue order.
QStringList CatalogueKeys();
// The text a key's current value is written as (for tests and the writers).
QString SettingText(const QString& key);

// The menu caption of a recent file: two spaces and the path, or two spaces, "..." and the
// last 57 characters of a path of 61 characters or more.
QString RecentFileCaption(const QString& path);

// Adds a show to the favourite shows and writes the list. False (after its message) when it
// is already there or the list is full.
bool AddFavoriteShow(const QString& path);

} // namespace kavori
