#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include <ostream>

// Readable failure messages for the Qt types tests compare most.
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& list, std::ostream* os)
{
    *os << '{';
    for (qsizetype i = 0; i < list.size(); ++i)
        *os << (i ? ", \"" : "\"") << list[i].toStdString() << '"';
    *os << '}';
}
inline void PrintTo(const QRect& r, std::ostream* os)
{
    *os << "QRect(" << r.x() << ", " << r.y() << ", " << r.width() << "x" << r.height() << ')';
}
inline void PrintTo(const QSize& s, std::ostream* os)
{
    *os << "QSize(" << s.width() << "x" << s.height() << ')';
}
