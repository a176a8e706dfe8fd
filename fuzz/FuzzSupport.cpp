#include "FuzzSupport.h"

#include "runtime/Prompts.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kavori::fuzz {

namespace {

// Answers every question with its first button and every picker with "cancelled".
class SilentPrompts : public Prompts {
public:
    int msgBox(const QString&, int, const QString&) override { return 1; }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override
    {
        return std::nullopt;
    }
    QString openFile(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFile(const QString&, const QString&, const QString&) override { return {}; }
    QString chooseFolder(const QString&, const QString&) override { return {}; }
    std::optional<QString> chooseItem(const QString&, const QString&, const QStringList&) override
    {
        return std::nullopt;
    }
    std::optional<QColor> chooseColor(const QColor&) override { return std::nullopt; }
    std::optional<QFont> chooseFont(const QFont&) override { return std::nullopt; }
};

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
    InstallPrompts(std::make_unique<SilentPrompts>());
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
