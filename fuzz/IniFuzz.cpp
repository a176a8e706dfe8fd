// The settings store: KAVORI.INI and the other INI files the program reads and rewrites.
#include "FuzzSupport.h"

#include "settings/IniStore.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    LoadIniFile(fuzz::WriteScratch(QStringLiteral("FUZZ.INI"), data, size));
    (void)GetIniValue(QStringLiteral("Options"), QStringLiteral("SlideInterval"));
    SetIniValue(QStringLiteral("Options"), QStringLiteral("Fuzz"), QStringLiteral("1"));
    SaveIniFile(fuzz::ScratchFolder() + QStringLiteral("OUT.INI"));
    WriteProfileString(fuzz::ScratchFolder() + QStringLiteral("FUZZ.INI"), QStringLiteral("boot"),
                       QStringLiteral("SCRNSAVE.EXE"), QStringLiteral("x"));
    ClearIni();
    return 0;
}
