#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace kavori {

// The user's ~/.xscreensaver as XScreenSaver writes it: "name: value" resources, a value going
// on over lines that end in "\", and "programs:" holding one saver per "\n". Changes touch only
// the lines they must; every other line is given back byte for byte.
class XScreenSaverFile {
public:
    static XScreenSaverFile Parse(const QByteArray& text);
    QByteArray text() const;

    // A one-line resource's value, trimmed; a null string when it is not there.
    QString value(const QString& name) const;
    // Replaces the resource's line, or adds it at the end.
    void setValue(const QString& name, const QString& value);

    // The entries of "programs:" as written ("- GL:  pulsar --root"), in order.
    QStringList programs() const;
    // The index of the entry with this quoted name, or -1.
    int findProgram(const QString& name) const;
    // Adds an entry at the end of the list (the list is made when missing); its index.
    int addProgram(const QString& entry);
    // Replaces an entry that sits on a line of its own (as ours always does).
    bool replaceProgram(int index, const QString& entry);

    // What an entry shows the user: its quoted name, else its command's program name.
    static QString ProgramName(const QString& entry);
    // Whether the entry is switched off (a leading "-").
    static bool IsDisabled(const QString& entry);

private:
    struct Block {
        int first = -1; // line of "name:"
        int last = -1;  // last continuation line
    };
    Block find(const QString& name) const;

    QList<QByteArray> m_lines;
    QByteArray m_eol = "\n";
    bool m_finalEol = true;
};

} // namespace kavori
