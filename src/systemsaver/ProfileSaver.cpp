#include "ProfileSaver.h"

#include "platform/AppPaths.h"
#include "settings/IniStore.h"

#include <QVariant>

namespace kavori {

namespace {
const QString kBoot = QStringLiteral("boot");
const QString kSaverKey = QStringLiteral("SCRNSAVE.EXE");
} // namespace

ProfileSaver::ProfileSaver(ProfilePlaces places) : m_places(std::move(places)) {}

QString ProfileSaver::systemIni() const
{
    return AddSlash(m_places.windowsFolder) + QStringLiteral("SYSTEM.INI");
}

QString ProfileSaver::modulePath() const
{
    return AddSlash(m_places.systemFolder) + SaverModuleName() + QStringLiteral(".SCR");
}

QString ProfileSaver::MakeCurrent()
{
    const QString module = modulePath();
    QString shortPath = ShortPathName(module);
    if (shortPath.isEmpty())
        return MissingModuleMessage(module);
    while (shortPath.endsWith(u'/') || shortPath.endsWith(u'\\'))
        shortPath.chop(1);
    writeSaver(shortPath);
    if (m_places.setActive)
        m_places.setActive(true);
    return {};
}

QString ProfileSaver::CurrentSaverValue()
{
    LoadIniFile(systemIni());
    const QString value = GetIniValue(kBoot, kSaverKey).trimmed();
    ClearIni();
    return value;
}

QString ProfileSaver::CurrentSaverName()
{
    const QString value = CurrentSaverValue();
    if (value.isEmpty())
        return {};
    // The name less its folder and its four-character extension.
    const QString name = value.mid(qMax(value.lastIndexOf(u'\\'), value.lastIndexOf(u'/')) + 1);
    return name.left(qMax(0, int(name.size()) - 4));
}

void ProfileSaver::DisableSaver()
{
    writeSaver(QString());
    if (m_places.setActive)
        m_places.setActive(false);
}

void ProfileSaver::RestoreSaver(const QString& remembered)
{
    writeSaver(remembered);
    if (m_places.setActive)
        m_places.setActive(true);
}

bool ProfileSaver::SaverActive()
{
    return desktopValue(QStringLiteral("ScreenSaveActive")) == QLatin1String("1");
}

bool ProfileSaver::PasswordInUse()
{
    // A value that is missing or not a string counts as no password.
    const QString value = desktopValue(QStringLiteral("ScreenSaveUsePassword"));
    return !value.isNull() && value != QLatin1String("0");
}

void ProfileSaver::writeSaver(const QString& value)
{
    WriteProfileString(systemIni(), kBoot, kSaverKey, value);
}

QString ProfileSaver::desktopValue(const QString& name) const
{
    if (m_places.desktopValues.isEmpty())
        return {};
    QSettings store(m_places.desktopValues, m_places.desktopFormat);
    const QVariant value = store.value(name);
    if (value.typeId() != QMetaType::QString)
        return {};
    return value.toString();
}

} // namespace kavori
