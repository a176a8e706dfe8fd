#include "UserSettings.h"

#include "AppPaths.h"

#include <QSettings>
#include <QStandardPaths>

namespace kavori {

namespace {
// The path is worked out on each use (not cached by QSettings) so that a test's fresh
// configuration folder is honoured.
QSettings store()
{
#ifdef Q_OS_WIN
    return QSettings(QStringLiteral("Kavorix"), QStringLiteral("Kavorix"));
#else
    const QString config =
        AddSlash(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    return QSettings(config + QStringLiteral("Kavorix/Kavorix.conf"), QSettings::IniFormat);
#endif
}

QString entry(const QString& section, const QString& key)
{
    return section + u'/' + key;
}
} // namespace

QString GetSetting(const QString& section, const QString& key, const QString& defaultValue)
{
    return store().value(entry(section, key), defaultValue).toString();
}

void SaveSetting(const QString& section, const QString& key, const QString& value)
{
    QSettings s = store();
    s.setValue(entry(section, key), value);
}

void DeleteSetting(const QString& section, const QString& key)
{
    QSettings s = store();
    s.remove(entry(section, key));
}

} // namespace kavori
