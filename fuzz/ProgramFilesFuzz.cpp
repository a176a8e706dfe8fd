// The program folder's own lists: the bonus pack and the language file.
#include "FuzzSupport.h"

#include "settings/Languages.h"
#include "slideshow/BonusPack.h"

#include <QFile>

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    fuzz::WriteScratch(QStringLiteral("BONUSPAK.DAT"), data, size);
    QFile::remove(LanguageFilePath());
    QFile languages(LanguageFilePath());
    if (languages.open(QIODevice::WriteOnly))
        languages.write(reinterpret_cast<const char*>(data), qint64(size));
    languages.close();
    LoadBonusPack();
    LoadLanguages();
    return 0;
}
