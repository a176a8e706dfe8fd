#include "KavoriTest.h"

#include "platform/Display.h"
#include "platform/SoundDevices.h"
#include "platform/StartupState.h"
#include "runtime/Random.h"
#include "settings/Settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QWidget>

namespace kavori::test {

void KavoriTest::SetUp()
{
    m_dir = std::make_unique<QTemporaryDir>();
    ASSERT_TRUE(m_dir->isValid());
    const QString base = m_dir->path();
    const QList<QPair<const char*, QString>> places = {
        {"KAVORI_HOME", base + QStringLiteral("/kavori")},
        {"HOME", base + QStringLiteral("/home")},
        {"TMPDIR", base + QStringLiteral("/tmp")},
        {"XDG_CONFIG_HOME", base + QStringLiteral("/home/.config")},
        {"XDG_DATA_HOME", base + QStringLiteral("/home/.local/share")},
        {"XDG_CACHE_HOME", base + QStringLiteral("/home/.cache")},
        {"XDG_RUNTIME_DIR", base + QStringLiteral("/run")},
        {"XDG_STATE_HOME", base + QStringLiteral("/home/.local/state")},
    };
    for (const auto& [name, path] : places) {
        m_savedEnv.insert(name, qgetenv(name));
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, QFile::encodeName(path));
    }

    auto recorder = std::make_unique<PromptRecorder>();
    m_recorder = recorder.get();
    m_previous = InstallPrompts(std::move(recorder));
    Randomize(20261122u);
    ResetSettings();
    ResetStartup(); // a command line one test set must not reach the next
    SetDisplayColorDepthOverride(32);
    SetSoundDevicesOverride(true, true);
}

void KavoriTest::TearDown()
{
    // Windows a test opened go with it (menus and dialogs owned by them go along).
    QList<QPointer<QWidget>> windows;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (!w->parentWidget())
            windows << w;
    }
    for (const QPointer<QWidget>& w : windows)
        delete w.data();

    InstallPrompts(std::move(m_previous));
    m_recorder = nullptr;
    SetDisplayColorDepthOverride(0);
    SetSoundDevicesOverride(std::nullopt, std::nullopt);
    for (auto it = m_savedEnv.cbegin(); it != m_savedEnv.cend(); ++it) {
        if (it.value().isNull())
            qunsetenv(it.key().constData());
        else
            qputenv(it.key().constData(), it.value());
    }
    m_dir.reset();
}

QString KavoriTest::root() const
{
    return m_dir->path() + u'/';
}

QString KavoriTest::home() const
{
    return root() + QStringLiteral("kavori/");
}

QString KavoriTest::writeFile(const QString& relative, const QByteArray& bytes) const
{
    const QString path = QFileInfo(relative).isAbsolute() ? relative : root() + relative;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return {};
    file.write(bytes);
    return path;
}

QByteArray KavoriTest::readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace kavori::test
