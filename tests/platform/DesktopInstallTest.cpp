#include "imaging/ImageTypes.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QMimeDatabase>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

using namespace kavori;

// What `cmake --install` puts under a prefix, and whether the desktop's own tools accept it.
class DesktopInstallTest : public kavori::test::KavoriTest {
protected:
    struct Run {
        int code = -1;
        QString out;
    };
    // Runs a program with extra environment, returning its exit code and its output (both
    // streams): the tools explain their refusals there.
    static Run run(const QString& program, const QStringList& arguments,
                   const QHash<QString, QString>& env = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (auto it = env.cbegin(); it != env.cend(); ++it)
            environment.insert(it.key(), it.value());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (!process.waitForFinished(120000))
            return {};
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromLocal8Bit(process.readAll())};
    }
    static QString tool(const char* name)
    {
        return QStandardPaths::findExecutable(QString::fromLatin1(name));
    }
};

TEST_F(DesktopInstallTest, InstallPutsProgramsEntryIconsAndShowTypeUnderThePrefix)
{
    const QString prefix = root() + QStringLiteral("prefix with space");
    const Run install = run(QStringLiteral(KAVORI_CMAKE_COMMAND),
                            {QStringLiteral("--install"), QStringLiteral(KAVORI_BUILD_DIR),
                             QStringLiteral("--prefix"), prefix});
    ASSERT_EQ(install.code, 0) << install.out.toStdString();

    for (const char* program : {"bin/Kavori", "bin/run-kav", "bin/kav-export"}) {
        const QFileInfo info(prefix + u'/' + QString::fromLatin1(program));
        EXPECT_TRUE(info.isFile() && info.isExecutable()) << program;
    }
    // Every size is a real drawing of its own size, not an empty square.
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString path =
            prefix + QStringLiteral("/share/icons/hicolor/%1x%1/apps/kavori.png").arg(size);
        const QImage icon(path);
        ASSERT_EQ(icon.size(), QSize(size, size)) << path.toStdString();
        EXPECT_GT(qAlpha(icon.pixel(size / 2, size / 2)), 200) << size;
        EXPECT_EQ(qAlpha(icon.pixel(0, 0)), 0) << size; // rounded corners stay see-through
    }
    EXPECT_TRUE(QFileInfo(prefix + QStringLiteral("/share/icons/hicolor/scalable/apps/kavori.svg"))
                    .isFile());
    // The files a program folder starts with, the demo show among them.
    EXPECT_TRUE(
        QFileInfo(prefix + QStringLiteral("/share/kavori/home/Slides/Demo/Demo.KAV")).isFile());
    EXPECT_TRUE(QFileInfo(prefix + QStringLiteral("/share/kavori/home/Help/index.html")).isFile());

    // The menu entry: valid for the desktop's validator, starting the installed program, and
    // offered for every picture type the program opens (PCX and TGA are imported, not opened).
    const QString entry = prefix + QStringLiteral("/share/applications/kavori.desktop");
    ASSERT_TRUE(QFileInfo(entry).isFile());
    const QString validator = tool("desktop-file-validate");
    ASSERT_FALSE(validator.isEmpty()) << "desktop-file-validate (desktop-file-utils) is missing";
    const Run valid = run(validator, {entry});
    EXPECT_EQ(valid.code, 0) << valid.out.toStdString();
    EXPECT_EQ(valid.out.trimmed(), QString());
    // Read as the desktop does: the program is the quoted full path of the installed one, so
    // a prefix whose bin/ is not on the PATH (and holds a space) still starts it.
    const QString text = QString::fromUtf8(readFile(entry));
    const auto value = [&](const char* key) {
        return text.section(u'\n' + QString::fromLatin1(key) + u'=', 1).section(u'\n', 0, 0);
    };
    const QString exec = value("Exec");
    EXPECT_EQ(exec, u'"' + prefix + QStringLiteral("/bin/Kavori\" %F"));
    EXPECT_EQ(value("Icon"), QStringLiteral("kavori"));
    const QStringList offered = value("MimeType").split(u';', Qt::SkipEmptyParts);
    EXPECT_TRUE(offered.contains(QStringLiteral("application/x-kavori-slideshow")));
    const QMimeDatabase types;
    for (const QString& extension : ImageExtensions()) {
        const QMimeType type = types.mimeTypeForFile(QStringLiteral("x") + extension.toLower(),
                                                     QMimeDatabase::MatchExtension);
        if (type.isDefault())
            continue; // a type the system's database does not know cannot be offered by name
        bool found = offered.contains(type.name());
        for (const QString& alias : type.aliases())
            found = found || offered.contains(alias);
        EXPECT_TRUE(found) << extension.toStdString() << " " << type.name().toStdString();
    }
    for (const char* imported : {".PCX", ".TGA"})
        EXPECT_FALSE(offered.contains(
            types
                .mimeTypeForFile(QStringLiteral("x") + QString::fromLatin1(imported),
                                 QMimeDatabase::MatchExtension)
                .name()))
            << imported;

    // The show type: the install refreshed the prefix's type database, so a desktop whose
    // data home is the prefix's share folder (a user's ~/.local install) knows shows by name
    // in either case and knows them as ours by content.
    const QString share = prefix + QStringLiteral("/share");
    EXPECT_TRUE(QFileInfo(share + QStringLiteral("/mime/mime.cache")).isFile());
    const QString xdgMime = tool("xdg-mime");
    ASSERT_FALSE(xdgMime.isEmpty()) << "xdg-mime (xdg-utils) is missing";
    const QString show = writeFile(QStringLiteral("shows/Holiday.KAV"),
                                   "\"Kavori Slide Show\"\r\n\"Version 3.0\"\r\n");
    const QString lower = writeFile(QStringLiteral("shows/lower case.kav"), "anything\r\n");
    const QString renamed = writeFile(QStringLiteral("shows/no extension"),
                                      "\"Kavori Slide Show\"\r\n\"Version 3.0\"\r\n");
    // xdg-mime asks the GNOME tools (shared-mime-info) there; in a bare session it asks
    // `file`, which does not read the freedesktop database at all.
    const QHash<QString, QString> env = {
        {QStringLiteral("XDG_DATA_HOME"), share},
        {QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("GNOME")}};
    for (const QString& file : {show, lower, renamed}) {
        const Run type =
            run(xdgMime, {QStringLiteral("query"), QStringLiteral("filetype"), file}, env);
        EXPECT_EQ(type.out.trimmed(), QStringLiteral("application/x-kavori-slideshow"))
            << file.toStdString();
    }
    // Opening a show from the file manager starts us: GLib's own choice (xdg-mime's query of
    // the default splits a data home holding a space).
    const QString gio = tool("gio");
    ASSERT_FALSE(gio.isEmpty()) << "gio (libglib2.0-bin) is missing";
    const Run handler =
        run(gio, {QStringLiteral("mime"), QStringLiteral("application/x-kavori-slideshow")}, env);
    EXPECT_TRUE(handler.out.section(u'\n', 0, 0).endsWith(QLatin1String(": kavori.desktop")))
        << handler.out.toStdString();
}

// The definition on its own, as a user adds it to an existing data home: update-mime-database
// accepts it and a picture keeps its own type.
TEST_F(DesktopInstallTest, ShowTypeDefinitionIsAcceptedInAnEmptyDataHome)
{
    const QString updater = tool("update-mime-database");
    ASSERT_FALSE(updater.isEmpty()) << "update-mime-database (shared-mime-info) is missing";
    const QString data = root() + QStringLiteral("xdg-data");
    QDir().mkpath(data + QStringLiteral("/mime/packages"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(KAVORI_SOURCE_DIR "/resources/desktop/kavori-mime.xml"),
                            data + QStringLiteral("/mime/packages/kavori.xml")));
    const Run update = run(updater, {QStringLiteral("-V"), data + QStringLiteral("/mime")});
    ASSERT_EQ(update.code, 0) << update.out.toStdString();
    EXPECT_FALSE(update.out.contains(QLatin1String("rror"))) << update.out.toStdString();
    EXPECT_TRUE(
        QFileInfo(data + QStringLiteral("/mime/application/x-kavori-slideshow.xml")).isFile());

    const QString xdgMime = tool("xdg-mime");
    ASSERT_FALSE(xdgMime.isEmpty());
    const QHash<QString, QString> env = {
        {QStringLiteral("XDG_DATA_HOME"), data},
        {QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("GNOME")}};
    const QString show = writeFile(QStringLiteral("Demo.KAV"), "\"Kavori Slide Show\"\r\n");
    EXPECT_EQ(run(xdgMime, {QStringLiteral("query"), QStringLiteral("filetype"), show}, env)
                  .out.trimmed(),
              QStringLiteral("application/x-kavori-slideshow"));
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString jpeg = root() + QStringLiteral("photo.jpg");
    ASSERT_TRUE(picture.save(jpeg, "JPEG"));
    EXPECT_EQ(run(xdgMime, {QStringLiteral("query"), QStringLiteral("filetype"), jpeg}, env)
                  .out.trimmed(),
              QStringLiteral("image/jpeg"));
}
