#pragma once

#include "SystemSaver.h"

#include <QStringList>

#include <functional>
#include <memory>

class QTimer;

namespace kavori {

// XScreenSaver as the system's screen saver. Our module is this program started with "/S" (the
// switch a Windows saver module runs with); making it current adds it to the user's "programs:"
// and selects it ("mode: one"), keeping every other entry and setting. While a show plays the
// saver is held off the way xdg-screensaver does it for XScreenSaver: by telling it to
// deactivate, now and every 50 seconds.
class XScreenSaverSaver final : public SystemSaver {
public:
    // Runs one command with its arguments, without waiting.
    using Runner = std::function<void(const QString& program, const QStringList& arguments)>;

    XScreenSaverSaver(QString configPath, QString modulePath, Runner runner = {});
    ~XScreenSaverSaver() override;

    QString MakeCurrent() override;
    QString CurrentSaverName() override;
    QString CurrentSaverValue() override;
    void DisableSaver() override;
    void RestoreSaver(const QString& remembered) override;
    bool SaverActive() override;
    bool PasswordInUse() override;

    // The line our module has among the programs.
    QString programEntry(const QString& shortPath) const;
    bool isHoldingOff() const;
    // One beat of holding the saver off.
    void holdOff();

private:
    QString m_config;
    QString m_module;
    Runner m_run;
    std::unique_ptr<QTimer> m_beat;
};

// The user's configuration file, ~/.xscreensaver.
QString XScreenSaverConfigPath();

} // namespace kavori
