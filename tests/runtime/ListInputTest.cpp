#include "runtime/ListInput.h"
#include "support/KavoriTest.h"

using namespace kavori;

namespace {
QStringList readAll(const QString& text)
{
    ListInput in(text);
    QStringList fields;
    while (!in.atEnd())
        fields << in.next();
    return fields;
}
} // namespace

TEST(ListInput, SplitsFieldsAsTheRunTimeDoes)
{
    // Unquoted fields end at a comma or a line break, and are trimmed.
    EXPECT_EQ(readAll(QStringLiteral("alpha,beta\r\ngamma\r\n")),
              QStringList({"alpha", "beta", "gamma"}));
    EXPECT_EQ(readAll(QStringLiteral("  key = value  ,  next\t\r\n")),
              QStringList({"key = value", "next"}));
    // Quoted fields keep commas and blanks and lose their quotes; text after the closing
    // quote up to the delimiter is dropped.
    EXPECT_EQ(readAll(QStringLiteral("\"a, b\",\"  c \"\r\n\"d\" tail,e\r\n")),
              QStringList({"a, b", "  c ", "d", "e"}));
    // A quote inside an unquoted field is kept as it stands.
    EXPECT_EQ(readAll(QStringLiteral("say \"hi\",x")), QStringList({"say \"hi\"", "x"}));
    // An unterminated quote runs to the end of the text.
    EXPECT_EQ(readAll(QStringLiteral("\"open, to the end\r\nmore")),
              QStringList({"open, to the end\r\nmore"}));
}

TEST(ListInput, EmptyLinesAndLineEnds)
{
    // An empty line is one empty field; so is the gap after a trailing comma.
    EXPECT_EQ(readAll(QStringLiteral("a\r\n\r\nb\r\n")), QStringList({"a", "", "b"}));
    EXPECT_EQ(readAll(QStringLiteral("a,\r\nb")), QStringList({"a", "", "b"}));
    EXPECT_EQ(readAll(QStringLiteral("a,,b")), QStringList({"a", "", "b"}));
    // LF-only and CR-only line ends count as line ends too; CR LF counts once.
    EXPECT_EQ(readAll(QStringLiteral("a\nb\rc\r\nd")), QStringList({"a", "b", "c", "d"}));
    // The last line needs no line break; an empty text has no fields.
    EXPECT_EQ(readAll(QStringLiteral("last")), QStringList({"last"}));
    EXPECT_EQ(readAll(QString()), QStringList());
    // Reading past the end gives empty strings, never a crash.
    ListInput in(QStringLiteral("x"));
    EXPECT_EQ(in.next(), "x");
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(in.next(), "");
    EXPECT_EQ(in.nextLine(), "");
}

TEST(ListInput, WholeLinesMixWithFields)
{
    ListInput in(QStringLiteral("\"quoted\", rest\r\nfirst,second\r\n\r\n"));
    EXPECT_EQ(in.nextLine(), "\"quoted\", rest");
    EXPECT_EQ(in.next(), "first");
    EXPECT_EQ(in.nextLine(), "second");
    EXPECT_EQ(in.nextLine(), "");
    EXPECT_TRUE(in.atEnd());
}

class ListInputFile : public kavori::test::KavoriTest {};

TEST_F(ListInputFile, OpensFilesAndRefusesWhatIsNoFile)
{
    ListInput in;
    // UTF-8 text and old single-byte text both read.
    const QString utf8 = writeFile(QStringLiteral("u.txt"), QByteArray("caf\xc3\xa9,x\r\n"));
    ASSERT_TRUE(in.open(utf8));
    EXPECT_EQ(in.next(), QString::fromUtf8("caf\xc3\xa9"));
    const QString latin = writeFile(QStringLiteral("l.txt"), QByteArray("caf\xe9\r\n"));
    ASSERT_TRUE(in.open(latin));
    EXPECT_EQ(in.next(), QString::fromUtf8("caf\xc3\xa9"));

    EXPECT_FALSE(in.open(root() + QStringLiteral("missing.txt")));
    EXPECT_TRUE(in.atEnd());
    EXPECT_FALSE(in.open(root()));
    EXPECT_FALSE(in.open(QString()));

    // Binary garbage reads as some fields and ends.
    QByteArray garbage;
    for (int i = 0; i < 4096; ++i)
        garbage.append(char((i * 7919) & 0xff));
    ASSERT_TRUE(in.open(writeFile(QStringLiteral("g.bin"), garbage)));
    int fields = 0;
    while (!in.atEnd() && fields < 100000) {
        in.next();
        ++fields;
    }
    EXPECT_TRUE(in.atEnd());
}
