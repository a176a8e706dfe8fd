#include "FuzzSupport.h"

#include "runtime/UnattendedPrompts.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kavori::fuzz {

namespace {

QTemporaryDir& Scratch()
{
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/kavori-fuzz-XXXXXX"));
    return dir;
}

} // namespace

void StartQt()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("KAVORI_HOME", Scratch().path().toLocal8Bit());
    static int argc = 1;
    static char name[] = "kavori-fuzz";
    static char* argv[] = {name, nullptr};
    static QApplication app(argc, argv);
    InstallPrompts(MakeUnattendedPrompts());
}

QString ScratchFolder()
{
    return Scratch().path() + QLatin1Char('/');
}

QString WriteScratch(const QString& name, const uint8_t* data, size_t size)
{
    const QString path = ScratchFolder() + name;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    return path;
}

} // namespace kavori::fuzz
