#include "Languages.h"

#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "runtime/ListInput.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/TextCodec.h"

#include <QFileInfo>

namespace kavori {

LanguageState& CurrentLanguages()
{
    static LanguageState state;
    return state;
}

QString LanguageFilePath()
{
    return PathNoCase(AppPath(), QStringLiteral("LangFile.DAT"));
}

void LoadLanguages()
{
    LanguageState& lang = CurrentLanguages();
    lang = LanguageState();
    ListInput in;
    if (!in.open(LanguageFilePath()))
        return;
    lang.LangCurrent = ToInt16(in.next()).value_or(-1);
    while (!in.atEnd() && lang.LangCount < kMaxLanguages) {
        const QString file = in.next();
        const QString name = in.next();
        if (file.isEmpty() || name.isEmpty())
            break;
        lang.LangFile << file;
        lang.LangName << name;
        ++lang.LangCount;
    }
    if (lang.LangCurrent >= lang.LangCount || lang.LangCurrent < -1)
        lang.LangCurrent = -1;
}

void SaveLanguages()
{
    const LanguageState& lang = CurrentLanguages();
    QByteArray bytes = QByteArray::number(lang.LangCurrent) + "\r\n";
    bool warned = false;
    for (qsizetype i = 0; i < lang.LangFile.size(); ++i) {
        const QString program = AppPath() + lang.LangFile[i];
        if (QFileInfo(program).isFile()) {
            bytes +=
                EncodeText(lang.LangFile[i] + QStringLiteral(", ") + lang.LangName[i]) + "\r\n";
        } else if (!warned) {
            warned = true;
            MsgBox(
                QStringLiteral("At least one of your installed language files could not be found "
                               "and will need to be re-installed:") +
                    NewLine2() + program,
                vbInformation);
        }
    }
    WriteFileWhole(LanguageFilePath(), bytes, true);
}

} // namespace kavori
