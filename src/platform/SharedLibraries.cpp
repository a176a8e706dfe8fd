#include "SharedLibraries.h"

#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace kavori {

bool IsSystemOwnedLibrary(const QString& fileName)
{
    // glibc must match the loader of the machine that runs the program, and the GL family must
    // match its graphics driver; everything else may travel.
    static const QStringList owned = {
        QStringLiteral("linux-vdso"),    QStringLiteral("ld-linux"),   QStringLiteral("libc.so"),
        QStringLiteral("libm.so"),       QStringLiteral("libpthread"), QStringLiteral("libdl.so"),
        QStringLiteral("librt.so"),      QStringLiteral("libresolv"),  QStringLiteral("libutil.so"),
        QStringLiteral("libanl.so"),     QStringLiteral("libnsl.so"),  QStringLiteral("libmvec"),
        QStringLiteral("libGL.so"),      QStringLiteral("libGLX"),     QStringLiteral("libEGL"),
        QStringLiteral("libGLdispatch"), QStringLiteral("libOpenGL"),  QStringLiteral("libgbm"),
        QStringLiteral("libdrm.so")};
    for (const QString& prefix : owned) {
        if (fileName.startsWith(prefix))
            return true;
    }
    return false;
}

QStringList ParseLoaderListing(const QString& listing)
{
    static const QRegularExpression resolved(QStringLiteral("^\\s*(\\S+)\\s+=>\\s+(/\\S+)"));
    QStringList paths;
    for (const QString& line : listing.split(u'\n')) {
        const QRegularExpressionMatch m = resolved.match(line);
        if (m.hasMatch() && !IsSystemOwnedLibrary(m.captured(1)))
            paths << m.captured(2);
    }
    return paths;
}

QStringList SharedLibraryDependencies(const QStringList& files)
{
    QStringList libraries;
    QSet<QString> seen;
    for (const QString& file : files) {
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), {file});
        if (!ldd.waitForFinished(30000) || ldd.exitStatus() != QProcess::NormalExit ||
            ldd.exitCode() != 0)
            continue;
        for (const QString& path :
             ParseLoaderListing(QString::fromLocal8Bit(ldd.readAllStandardOutput()))) {
            const QString name = QFileInfo(path).fileName();
            if (!seen.contains(name)) {
                seen.insert(name);
                libraries << path;
            }
        }
    }
    return libraries;
}

QString QtPluginFolder()
{
    return QDir(QLibraryInfo::path(QLibraryInfo::PluginsPath)).absolutePath() + u'/';
}

QStringList PlayerPluginFiles()
{
    const QString root = QtPluginFolder();
    QStringList files;
    auto add = [&](const QString& folder, const QStringList& names) {
        const QDir dir(root + folder);
        for (const QString& name : dir.entryList(names, QDir::Files, QDir::Name))
            files << folder + u'/' + name;
    };
    add(QStringLiteral("platforms"),
        {QStringLiteral("libqxcb.so"), QStringLiteral("libqoffscreen.so")});
    add(QStringLiteral("xcbglintegrations"), {QStringLiteral("*.so")});
    add(QStringLiteral("imageformats"), {QStringLiteral("*.so")});
    add(QStringLiteral("iconengines"), {QStringLiteral("*.so")});
    // The back end Qt picks on Linux first; the FFmpeg one would bring its whole codec set.
    add(QStringLiteral("multimedia"), {QStringLiteral("libgstreamermediaplugin.so")});
    return files;
}

} // namespace kavori
