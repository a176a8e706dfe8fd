#pragma once

#include <QByteArray>
#include <QString>

namespace kavori {

// The comma-separated "list input" reader that every file of the program's own formats is
// read with (settings, slide shows, descriptions, bonus pack and language lists).
//
// next() reads one field: leading spaces and tabs are skipped; a field that starts with a
// double quote runs to the closing quote, loses its quotes and ignores anything after it up
// to the next comma or line break; any other field ends at a comma or a line break and loses
// its trailing blanks. An empty line is one empty field. A line break is CR LF, LF or CR.
// nextLine() reads the rest of the current line whole, quotes and commas included.
class ListInput {
public:
    ListInput() = default;
    explicit ListInput(QString text);

    // Reads a whole file. Returns false (and an empty reader) when it cannot be opened.
    bool open(const QString& path);

    bool atEnd() const { return m_pos >= m_text.size(); }
    QString next();
    // The same field as a view into the text read (valid while the reader lives), for fields
    // that are parsed rather than kept.
    QStringView nextView();
    QString nextLine();

private:
    void skipBlanks();
    void endField();

    QString m_text;
    qsizetype m_pos = 0;
};

} // namespace kavori
