#include "ListInput.h"

#include "TextCodec.h"

#include <QFile>
#include <QFileInfo>

namespace kavori {

namespace {
bool isBreak(QChar c)
{
    return c == u'\r' || c == u'\n';
}
} // namespace

ListInput::ListInput(QString text) : m_text(std::move(text)) {}

bool ListInput::open(const QString& path)
{
    m_text.clear();
    m_pos = 0;
    if (path.isEmpty() || QFileInfo(path).isDir())
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    m_text = DecodeText(file.readAll());
    return true;
}

void ListInput::skipBlanks()
{
    while (m_pos < m_text.size() && (m_text[m_pos] == u' ' || m_text[m_pos] == u'\t'))
        ++m_pos;
}

// Consumes the delimiter that ends a field: one comma, or one line break (CR LF counts once).
void ListInput::endField()
{
    if (m_pos >= m_text.size())
        return;
    const QChar c = m_text[m_pos];
    if (c == u',') {
        ++m_pos;
        return;
    }
    if (c == u'\r') {
        ++m_pos;
        if (m_pos < m_text.size() && m_text[m_pos] == u'\n')
            ++m_pos;
        return;
    }
    if (c == u'\n')
        ++m_pos;
}

QString ListInput::next()
{
    return nextView().toString();
}

QStringView ListInput::nextView()
{
    skipBlanks();
    if (m_pos >= m_text.size())
        return {};

    const QStringView text(m_text);
    if (text[m_pos] == u'"') {
        const qsizetype start = m_pos + 1;
        qsizetype close = m_text.indexOf(u'"', start);
        if (close < 0)
            close = m_text.size();
        const QStringView field = text.mid(start, close - start);
        m_pos = qMin(close + 1, m_text.size());
        while (m_pos < m_text.size() && text[m_pos] != u',' && !isBreak(text[m_pos]))
            ++m_pos;
        endField();
        return field;
    }

    const qsizetype start = m_pos;
    while (m_pos < m_text.size() && text[m_pos] != u',' && !isBreak(text[m_pos]))
        ++m_pos;
    qsizetype end = m_pos;
    while (end > start && (text[end - 1] == u' ' || text[end - 1] == u'\t'))
        --end;
    const QStringView field = text.mid(start, end - start);
    endField();
    return field;
}

QString ListInput::nextLine()
{
    if (m_pos >= m_text.size())
        return {};
    const qsizetype start = m_pos;
    while (m_pos < m_text.size() && !isBreak(m_text[m_pos]))
        ++m_pos;
    QString line = m_text.mid(start, m_pos - start);
    if (m_pos < m_text.size() && m_text[m_pos] == u'\r')
        ++m_pos;
    if (m_pos < m_text.size() && m_text[m_pos] == u'\n')
        ++m_pos;
    return line;
}

} // namespace kavori
