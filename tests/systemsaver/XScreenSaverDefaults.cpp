#include "XScreenSaverDefaults.h"

#include <QFile>
#include <QList>
#include <QRegularExpression>

namespace kavori::test {

QByteArray FreshXScreenSaverFile()
{
    QFile program(QStringLiteral("/usr/bin/xscreensaver-settings"));
    if (!program.open(QIODevice::ReadOnly))
        return {};
    // The packaged defaults are the program's fallback resources: "*name:\tvalue" strings.
    static const QRegularExpression resource(
        QStringLiteral("^\\*([A-Za-z][A-Za-z0-9]*):[ \\t]*(.*)$"),
        QRegularExpression::DotMatchesEverythingOption);
    QList<QPair<QByteArray, QByteArray>> found;
    QByteArray programs;
    for (const QByteArray& chunk : program.readAll().split('\0')) {
        const QRegularExpressionMatch m = resource.match(QString::fromLatin1(chunk));
        if (!m.hasMatch())
            continue;
        const QByteArray name = m.captured(1).toLatin1();
        const QByteArray value = m.captured(2).toLatin1();
        if (name == "programs")
            programs = value;
        else if (std::none_of(found.begin(), found.end(), [&](auto& p) { return p.first == name; }))
            found.append({name, value.trimmed()});
    }
    if (programs.isEmpty())
        return {};

    QByteArray out = "# XScreenSaver Preferences File\n"
                     "# Written by xscreensaver-settings 6.06 for tester on testhost.\n"
                     "# https://www.jwz.org/xscreensaver/\n\n";
    for (const auto& [name, value] : found) {
        out += name + ":\t" + (name.size() < 7 ? "\t" : "") + value + '\n';
        if (name == "mode")
            out += "selected:\t-1\n";
    }
    out += "\nprograms:\t\t\t\t\t\t\t\t      \\\n";
    programs.replace("\\\n", "");
    QList<QByteArray> entries;
    for (const QByteArray& e : programs.split('\\')) {
        QByteArray entry = e.startsWith('n') ? e.mid(1) : e;
        if (!entry.trimmed().isEmpty())
            entries.append(entry.trimmed());
    }
    for (int i = 0; i < entries.size(); ++i) {
        QByteArray line = entries[i];
        // Visual names sit before the command, as the settings program lines them up.
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && colon < 8 && !line.left(colon).contains(' ') &&
            !line.left(colon).startsWith('-'))
            line = "  " + line.left(colon + 1) + " \t\t  " + line.mid(colon + 1).trimmed();
        else if (line.startsWith('-'))
            line = "-\t\t  " + line.mid(1).trimmed();
        else
            line = "\t\t  " + line;
        out += line + "\t\t\t    \\n" + (i + 1 < entries.size() ? "\\" : "\\n") + '\n';
    }
    out += '\n';
    return out;
}

} // namespace kavori::test
