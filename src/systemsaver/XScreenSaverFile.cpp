#include "XScreenSaverFile.h"

#include <QRegularExpression>

namespace kavori {

namespace {

const QByteArray kNewLineMark = "\\n";

bool continues(const QByteArray& line)
{
    return line.endsWith('\\');
}

// The resource name a line starts, or an empty string ("timeout:" gives "timeout").
QByteArray resourceName(const QByteArray& line)
{
    if (line.isEmpty() || line.front() == '#' || line.front() == '!' || line.front() == ' ' ||
        line.front() == '\t')
        return {};
    const qsizetype colon = line.indexOf(':');
    if (colon <= 0)
        return {};
    const QByteArray name = line.left(colon).trimmed();
    return name.contains(' ') || name.contains('\t') ? QByteArray() : name;
}

// The text an entry's line holds: without the trailing "\" and "\n" marks.
QString entryText(QByteArray piece)
{
    return QString::fromUtf8(piece.trimmed());
}

} // namespace

XScreenSaverFile XScreenSaverFile::Parse(const QByteArray& text)
{
    XScreenSaverFile file;
    file.m_eol = text.contains("\r\n") ? QByteArray("\r\n") : QByteArray("\n");
    file.m_finalEol = text.isEmpty() || text.endsWith('\n');
    file.m_lines = text.split('\n');
    if (text.endsWith('\n') || text.isEmpty())
        file.m_lines.removeLast();
    if (file.m_eol == "\r\n") {
        for (QByteArray& line : file.m_lines) {
            if (line.endsWith('\r'))
                line.chop(1);
        }
    }
    return file;
}

QByteArray XScreenSaverFile::text() const
{
    QByteArray out;
    for (int i = 0; i < m_lines.size(); ++i) {
        out += m_lines[i];
        if (i + 1 < m_lines.size() || m_finalEol)
            out += m_eol;
    }
    return out;
}

XScreenSaverFile::Block XScreenSaverFile::find(const QString& name) const
{
    const QByteArray wanted = name.toUtf8();
    for (int i = 0; i < m_lines.size(); ++i) {
        if (resourceName(m_lines[i]) != wanted)
            continue;
        Block b{i, i};
        while (continues(m_lines[b.last]) && b.last + 1 < m_lines.size())
            ++b.last;
        return b;
    }
    return {};
}

QString XScreenSaverFile::value(const QString& name) const
{
    const Block b = find(name);
    if (b.first < 0)
        return {};
    const QByteArray& line = m_lines[b.first];
    return QString::fromUtf8(line.mid(line.indexOf(':') + 1).trimmed());
}

void XScreenSaverFile::setValue(const QString& name, const QString& value)
{
    const QByteArray line = name.toUtf8() + ":\t" + (name.size() < 7 ? "\t" : "") + value.toUtf8();
    const Block b = find(name);
    if (b.first < 0) {
        m_lines.append(line);
        return;
    }
    m_lines[b.first] = line;
    for (int i = b.last; i > b.first; --i)
        m_lines.removeAt(i);
}

QStringList XScreenSaverFile::programs() const
{
    const Block b = find(QStringLiteral("programs"));
    if (b.first < 0)
        return {};
    QByteArray joined;
    for (int i = b.first; i <= b.last; ++i) {
        QByteArray line = m_lines[i];
        if (i == b.first)
            line = line.mid(line.indexOf(':') + 1);
        if (continues(line))
            line.chop(1);
        joined += line;
    }
    QStringList out;
    // Entries are separated by the two characters "\n", not by line ends.
    qsizetype from = 0;
    while (from <= joined.size()) {
        qsizetype at = joined.indexOf(kNewLineMark, from);
        if (at < 0)
            at = joined.size();
        const QString entry = entryText(joined.mid(from, at - from));
        if (!entry.isEmpty())
            out.append(entry);
        from = at + kNewLineMark.size();
    }
    return out;
}

QString XScreenSaverFile::ProgramName(const QString& entry)
{
    QString rest = entry.trimmed();
    if (rest.startsWith(u'-'))
        rest = rest.mid(1).trimmed();
    static const QRegularExpression visual(QStringLiteral("^[A-Za-z0-9_]+:"));
    const QRegularExpressionMatch m = visual.match(rest);
    if (m.hasMatch())
        rest = rest.mid(m.capturedLength()).trimmed();
    if (rest.startsWith(u'"')) {
        const qsizetype end = rest.indexOf(u'"', 1);
        if (end > 0)
            return rest.mid(1, end - 1);
    }
    QString program = rest.section(QRegularExpression(QStringLiteral("\\s+")), 0, 0);
    program.remove(u'\'');
    return program.mid(program.lastIndexOf(u'/') + 1);
}

bool XScreenSaverFile::IsDisabled(const QString& entry)
{
    return entry.trimmed().startsWith(u'-');
}

int XScreenSaverFile::findProgram(const QString& name) const
{
    const QStringList list = programs();
    for (int i = 0; i < list.size(); ++i) {
        const QString e = list[i];
        if (e.contains(u'"') && ProgramName(e) == name)
            return i;
    }
    return -1;
}

int XScreenSaverFile::addProgram(const QString& entry)
{
    const int index = int(programs().size());
    const QByteArray line = "  " + entry.toUtf8() + "\t\t\t    " + kNewLineMark;
    Block b = find(QStringLiteral("programs"));
    if (b.first < 0) {
        m_lines.append(QByteArray("programs:\t\t\t\t\t\t\t\t      \\"));
        m_lines.append(line);
        return index;
    }
    QByteArray& last = m_lines[b.last];
    if (!continues(last)) {
        // The last entry gets its separator and the line its continuation.
        const QByteArray content = b.last == b.first ? last.mid(last.indexOf(':') + 1) : last;
        if (!content.trimmed().isEmpty() && !content.trimmed().endsWith(kNewLineMark))
            last += kNewLineMark;
        last += '\\';
    }
    m_lines.insert(b.last + 1, line);
    return index;
}

bool XScreenSaverFile::replaceProgram(int index, const QString& entry)
{
    const Block b = find(QStringLiteral("programs"));
    if (b.first < 0 || index < 0)
        return false;
    const QString old = programs().value(index);
    if (old.isEmpty())
        return false;
    for (int i = b.first + 1; i <= b.last; ++i) {
        QByteArray line = m_lines[i];
        const bool more = continues(line);
        if (more)
            line.chop(1);
        QByteArray body = line.trimmed();
        if (body.endsWith(kNewLineMark))
            body.chop(kNewLineMark.size());
        if (QString::fromUtf8(body.trimmed()) != old || body.contains(kNewLineMark))
            continue;
        m_lines[i] = "  " + entry.toUtf8() + "\t\t\t    " + kNewLineMark + (more ? "\\" : "");
        return true;
    }
    return false;
}

} // namespace kavori
