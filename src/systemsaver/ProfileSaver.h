#pragma once

#include "SystemSaver.h"

#include <QSettings>

#include <functional>

namespace kavori {

// The Windows configuration of screen savers: "SCRNSAVE.EXE" in section "boot" of SYSTEM.INI in
// the Windows folder, the "Control Panel\desktop" values of the current user, and the system
// call that switches the saver on and off. Plain file and settings code, so it runs and is
// tested anywhere with folders of its own.
struct ProfilePlaces {
    QString windowsFolder; // holds SYSTEM.INI
    QString systemFolder;  // holds the module "Kavori Screen Saver.SCR"
    // Where the desktop values live: a registry key on Windows, an INI file elsewhere.
    QString desktopValues;
    QSettings::Format desktopFormat = QSettings::IniFormat;
    // Switches the system saver on (true) or off; the system parameter call on Windows.
    std::function<void(bool)> setActive;
};

class ProfileSaver final : public SystemSaver {
public:
    explicit ProfileSaver(ProfilePlaces places);

    QString MakeCurrent() override;
    QString CurrentSaverName() override;
    QString CurrentSaverValue() override;
    void DisableSaver() override;
    void RestoreSaver(const QString& remembered) override;
    bool SaverActive() override;
    bool PasswordInUse() override;

    QString systemIni() const;
    QString modulePath() const;

private:
    void writeSaver(const QString& value);
    QString desktopValue(const QString& name) const;

    ProfilePlaces m_places;
};

} // namespace kavori
