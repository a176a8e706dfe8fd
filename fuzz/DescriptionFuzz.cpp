// A folder's description file and the look properties stored in it.
#include "FuzzSupport.h"

#include "slideshow/DescriptionFile.h"

#include <QDir>
#include <QFile>

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    const QString folder = fuzz::ScratchFolder() + QStringLiteral("pictures/");
    QDir().mkpath(folder);
    QFile file(DescriptionFilePath(folder));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(reinterpret_cast<const char*>(data), qint64(size));
        file.close();
    }
    DescriptionTable table;
    ReadDescriptionFile(folder, table);
    (void)DescriptionReport(CheckDescriptionFile(folder));
    const DescriptionLook look =
        ParseDescProps(QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size)));
    (void)BuildDescProps(look);
    return 0;
}
