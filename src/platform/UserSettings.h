#pragma once

#include <QString>

namespace kavori {

// The per-user store of the application "Kavorix": section, key, value, as the registry holds
// them on Windows. On Linux it is an INI file in the user's configuration folder.
QString GetSetting(const QString& section, const QString& key, const QString& defaultValue = {});
void SaveSetting(const QString& section, const QString& key, const QString& value);
void DeleteSetting(const QString& section, const QString& key);

} // namespace kavori
