#pragma once

#include <QString>

#include <memory>

namespace kavori {

// The system's screen-saver configuration, as the settings dialog and the player use it. One
// back end per host: XScreenSaver's ~/.xscreensaver here, SYSTEM.INI and the desktop values of
// the user's registry on Windows. Nothing here opens a window.
class SystemSaver {
public:
    virtual ~SystemSaver() = default;

    // Makes our saver module the system's current screen saver. Returns the message to show
    // when it cannot (the module is missing), else an empty string.
    virtual QString MakeCurrent() = 0;
    // The current saver's name ("Kavori Screen Saver" when ours is current); empty when none.
    virtual QString CurrentSaverName() = 0;
    // What DisableSaver takes away, to hand back to RestoreSaver.
    virtual QString CurrentSaverValue() = 0;
    // Keeps the system saver from starting while a show plays, and gives it back.
    virtual void DisableSaver() = 0;
    virtual void RestoreSaver(const QString& remembered) = 0;
    // Whether a screen saver is switched on, and whether it asks for a password.
    virtual bool SaverActive() = 0;
    virtual bool PasswordInUse() = 0;
};

// The name our module carries among the system's savers.
QString SaverModuleName();

// The message shown when the module to make current is not where it should be.
QString MissingModuleMessage(const QString& modulePath);

// The back end in use (this host's, unless a test installed another); the previous one is
// returned by InstallSystemSaver.
SystemSaver& CurrentSystemSaver();
std::unique_ptr<SystemSaver> InstallSystemSaver(std::unique_ptr<SystemSaver> saver);
// This host's back end (one source file per host).
std::unique_ptr<SystemSaver> MakeHostSystemSaver();

} // namespace kavori
