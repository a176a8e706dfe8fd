#include "WindowLock.h"

#include "AppPaths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

namespace kavori {

namespace {
QString lockPath(const QString& title)
{
    QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        folder = QDir::tempPath();
    folder = AddSlash(folder) + QStringLiteral("kavori-windows/");
    QDir().mkpath(folder);
    const QByteArray hash =
        QCryptographicHash::hash(title.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return folder + QString::fromLatin1(hash) + QStringLiteral(".lock");
}
} // namespace

WindowLock::WindowLock(const QString& title) : m_lock(std::make_unique<QLockFile>(lockPath(title)))
{
    m_lock->setStaleLockTime(0); // held for the life of a window, however long
    m_held = m_lock->tryLock(0);
}

WindowLock::~WindowLock()
{
    if (m_held)
        m_lock->unlock();
}

bool WindowLock::isHeld() const
{
    return m_held;
}

bool WindowLock::Exists(const QString& title)
{
    QLockFile probe(lockPath(title));
    probe.setStaleLockTime(0);
    if (!probe.tryLock(0))
        return true;
    probe.unlock();
    return false;
}

} // namespace kavori
