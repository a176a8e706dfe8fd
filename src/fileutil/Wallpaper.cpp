#include "Wallpaper.h"

#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "runtime/MsgBox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace kavori {

namespace {

const QString kGnomeSchema = QStringLiteral("org.gnome.desktop.background");
const QString kCinnamonSchema = QStringLiteral("org.cinnamon.desktop.background");
const QString kMateSchema = QStringLiteral("org.mate.background");
const QString kXfceChannel = QStringLiteral("xfce4-desktop");

QList<QStringList> qdbusPrograms()
{
    return {{QStringLiteral("qdbus6")},
            {QStringLiteral("qdbus-qt6")},
            {QStringLiteral("qdbus")},
            {QStringLiteral("qdbus-qt5")}};
}

QList<QStringList> rootSetters()
{
    return {{QStringLiteral("feh")}, {QStringLiteral("hsetroot")}, {QStringLiteral("xwallpaper")}};
}

bool onPath(const char* program)
{
    return !FindDesktopProgram({{QString::fromLatin1(program)}}).isEmpty();
}

// The program name (no folder) of the first candidate on the PATH.
QString firstFound(const QList<QStringList>& candidates)
{
    const QStringList found = FindDesktopProgram(candidates);
    return found.isEmpty() ? QString() : QFileInfo(found.first()).fileName();
}

// A GVariant string literal, as gsettings reads its values.
QString variantString(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\\\"));
    escaped.replace(u'\'', QStringLiteral("\\'"));
    return u'\'' + escaped + u'\'';
}

// The text of a GVariant string literal as gsettings prints it ('...' or "...").
QString fromVariantString(QString text)
{
    text = text.trimmed();
    if (text.size() >= 2 && (text.front() == u'\'' || text.front() == u'"') &&
        text.back() == text.front())
        text = text.mid(1, text.size() - 2);
    QString out;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size())
            ++i;
        out += text[i];
    }
    return out;
}

QString jsString(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\\\"));
    escaped.replace(u'"', QStringLiteral("\\\""));
    escaped.replace(u'\n', QStringLiteral("\\n"));
    return u'"' + escaped + u'"';
}

QString gnomeOption(WallpaperStyle style)
{
    switch (style) {
    case WallpaperStyle::Tiled:
        return QStringLiteral("'wallpaper'");
    case WallpaperStyle::Stretched:
        return QStringLiteral("'stretched'");
    case WallpaperStyle::Scaled:
        return QStringLiteral("'scaled'");
    case WallpaperStyle::Centered:
        break;
    }
    return QStringLiteral("'centered'");
}

// Plasma's image wallpaper fill modes.
int plasmaFillMode(WallpaperStyle style)
{
    switch (style) {
    case WallpaperStyle::Tiled:
        return 3;
    case WallpaperStyle::Stretched:
        return 0;
    case WallpaperStyle::Scaled:
        return 1;
    case WallpaperStyle::Centered:
        break;
    }
    return 6;
}

// Xfce's image-style values (0 is no picture).
int xfceStyle(WallpaperStyle style)
{
    switch (style) {
    case WallpaperStyle::Tiled:
        return 2;
    case WallpaperStyle::Stretched:
        return 3;
    case WallpaperStyle::Scaled:
        return 4;
    case WallpaperStyle::Centered:
        break;
    }
    return 1;
}

QStringList rootSetterCommand(const QString& setter, const QString& picture, WallpaperStyle style)
{
    static const QHash<QString, QStringList> flags = {
        // centred, tiled, stretched, scaled
        {QStringLiteral("feh"),
         {QStringLiteral("--bg-center"), QStringLiteral("--bg-tile"), QStringLiteral("--bg-scale"),
          QStringLiteral("--bg-max")}},
        {QStringLiteral("hsetroot"),
         {QStringLiteral("-center"), QStringLiteral("-tile"), QStringLiteral("-fill"),
          QStringLiteral("-full")}},
        {QStringLiteral("xwallpaper"),
         {QStringLiteral("--center"), QStringLiteral("--tile"), QStringLiteral("--stretch"),
          QStringLiteral("--maximize")}},
    };
    return {setter, flags.value(setter).value(static_cast<int>(style)), picture};
}

QStringList plasmaCommand(const QString& qdbus, const QString& script)
{
    return {qdbus, QStringLiteral("org.kde.plasmashell"), QStringLiteral("/PlasmaShell"),
            QStringLiteral("org.kde.PlasmaShell.evaluateScript"), script};
}

// Every desktop of every screen, as Plasma's script sees them.
QString plasmaEach(const QString& body)
{
    return QStringLiteral("var all = desktops();\n"
                          "for (var i = 0; i < all.length; i++) {\n"
                          "    var d = all[i];\n") +
           body + QStringLiteral("}\n");
}

// The Xfce properties of every monitor and workspace that name a picture; a fresh session
// that never had one gets the first monitor's.
QStringList xfceImageProperties()
{
    QString listing;
    RunDesktopCommand(
        {QStringLiteral("xfconf-query"), QStringLiteral("-c"), kXfceChannel, QStringLiteral("-l")},
        &listing);
    QStringList properties;
    for (const QString& line : listing.split(u'\n', Qt::SkipEmptyParts))
        if (line.trimmed().endsWith(QLatin1String("/last-image")))
            properties << line.trimmed();
    if (properties.isEmpty())
        properties << QStringLiteral("/backdrop/screen0/monitor0/workspace0/last-image");
    return properties;
}

bool xfceSet(const QString& property, const QString& type, const QString& value)
{
    // -n creates the property when the session never had it; -t is needed then.
    return RunDesktopCommand({QStringLiteral("xfconf-query"), QStringLiteral("-c"), kXfceChannel,
                              QStringLiteral("-p"), property, QStringLiteral("-n"),
                              QStringLiteral("-t"), type, QStringLiteral("-s"), value});
}

QString imageStyleProperty(const QString& lastImage)
{
    return lastImage.left(lastImage.lastIndexOf(u'/')) + QStringLiteral("/image-style");
}

WallpaperResult failed(WallpaperDesktop desktop)
{
    return {false,
            QStringLiteral("The ") + WallpaperDesktopName(desktop) +
                QStringLiteral(" wallpaper setting could not be changed.") + NewLine2() +
                QStringLiteral("The desktop's settings tool refused the change or did not answer, "
                               "use your desktop's own settings instead..."),
            {}};
}

WallpaperResult done(bool ok, WallpaperDesktop desktop)
{
    return ok ? WallpaperResult{true, {}, {}} : failed(desktop);
}

QString gsettingsSchema(WallpaperDesktop desktop)
{
    if (desktop == WallpaperDesktop::Cinnamon)
        return kCinnamonSchema;
    if (desktop == WallpaperDesktop::Mate)
        return kMateSchema;
    return kGnomeSchema;
}

QString gsettingsGet(const QString& schema, const QString& key, bool* ok = nullptr)
{
    QString out;
    const bool ran =
        RunDesktopCommand({QStringLiteral("gsettings"), QStringLiteral("get"), schema, key}, &out);
    if (ok)
        *ok = ran;
    return out.trimmed();
}

bool gsettingsSet(const QString& schema, const QString& key, const QString& value)
{
    return RunDesktopCommand(
        {QStringLiteral("gsettings"), QStringLiteral("set"), schema, key, value});
}

// The words of a shell command line: single quotes, double quotes and backslashes as sh reads
// them (feh writes 'Tom'\''s.jpg').
QStringList shellWords(const QString& line)
{
    QStringList words;
    QString word;
    bool inWord = false;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == u'\'') {
            const int end = line.indexOf(u'\'', i + 1);
            word += line.mid(i + 1, (end < 0 ? line.size() : end) - i - 1);
            i = end < 0 ? line.size() : end;
            inWord = true;
        } else if (c == u'"') {
            for (++i; i < line.size() && line[i] != u'"'; ++i) {
                if (line[i] == u'\\' && i + 1 < line.size())
                    ++i;
                word += line[i];
            }
            inWord = true;
        } else if (c == u'\\' && i + 1 < line.size()) {
            word += line[++i];
            inWord = true;
        } else if (c.isSpace()) {
            if (inWord)
                words << word;
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words << word;
    return words;
}

} // namespace

WallpaperDesktop CurrentWallpaperDesktop()
{
    QString session = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toUpper();
    if (session.isEmpty())
        session = qEnvironmentVariable("DESKTOP_SESSION").toUpper();
    const QStringList names = session.split(u':', Qt::SkipEmptyParts);
    const auto named = [&](std::initializer_list<const char*> words) {
        for (const char* word : words)
            for (const QString& name : names)
                if (name == QLatin1String(word) || name.startsWith(QLatin1String(word) + u'-'))
                    return true;
        return false;
    };
    // Cinnamon and MATE name GNOME too on some systems; the more particular name wins.
    if (named({"X-CINNAMON", "CINNAMON"}))
        return onPath("gsettings") ? WallpaperDesktop::Cinnamon : WallpaperDesktop::None;
    if (named({"MATE"}))
        return onPath("gsettings") ? WallpaperDesktop::Mate : WallpaperDesktop::None;
    if (named({"KDE", "PLASMA"}))
        return FindDesktopProgram(qdbusPrograms()).isEmpty() ? WallpaperDesktop::None
                                                             : WallpaperDesktop::Plasma;
    if (named({"XFCE"}))
        return onPath("xfconf-query") ? WallpaperDesktop::Xfce : WallpaperDesktop::None;
    if (named({"GNOME", "UNITY", "BUDGIE", "PANTHEON", "UBUNTU", "POP", "ZORIN"}))
        return onPath("gsettings") ? WallpaperDesktop::Gnome : WallpaperDesktop::None;
    // No desktop of those: a plain X session shows what is drawn on its root window. Under a
    // Wayland compositor the root window is never seen.
    if (!names.isEmpty() || qEnvironmentVariableIsEmpty("DISPLAY") ||
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return WallpaperDesktop::None;
    return FindDesktopProgram(rootSetters()).isEmpty() ? WallpaperDesktop::None
                                                       : WallpaperDesktop::RootWindow;
}

QString WallpaperDesktopName(WallpaperDesktop desktop)
{
    switch (desktop) {
    case WallpaperDesktop::Gnome:
        return QStringLiteral("GNOME");
    case WallpaperDesktop::Cinnamon:
        return QStringLiteral("Cinnamon");
    case WallpaperDesktop::Mate:
        return QStringLiteral("MATE");
    case WallpaperDesktop::Plasma:
        return QStringLiteral("KDE Plasma");
    case WallpaperDesktop::Xfce:
        return QStringLiteral("Xfce");
    case WallpaperDesktop::RootWindow:
        return QStringLiteral("X root window");
    case WallpaperDesktop::None:
        break;
    }
    return QString();
}

WallpaperStyle WallpaperStyleFor(bool stretch, bool keepAspect)
{
    if (!stretch)
        return WallpaperStyle::Centered;
    return keepAspect ? WallpaperStyle::Scaled : WallpaperStyle::Stretched;
}

QString NoWallpaperSettingMessage()
{
    return QStringLiteral("No desktop wallpaper setting was found on this system.") + NewLine2() +
           AppTitle() +
           QStringLiteral(" sets the wallpaper through GNOME, Cinnamon, MATE, KDE Plasma or Xfce, "
                          "and in a plain X session through feh, hsetroot or xwallpaper. Install "
                          "one of those or use your desktop's own settings...");
}

WallpaperResult SetWallpaper(const QString& picture, WallpaperStyle style)
{
    const WallpaperDesktop desktop = CurrentWallpaperDesktop();
    const QString uri = QUrl::fromLocalFile(picture).toString(QUrl::FullyEncoded);
    switch (desktop) {
    case WallpaperDesktop::Gnome: {
        bool ok = gsettingsSet(kGnomeSchema, QStringLiteral("picture-uri"), variantString(uri)) &&
                  gsettingsSet(kGnomeSchema, QStringLiteral("picture-options"), gnomeOption(style));
        // The dark style's picture exists since GNOME 42; older desktops have no such key.
        gsettingsSet(kGnomeSchema, QStringLiteral("picture-uri-dark"), variantString(uri));
        return done(ok, desktop);
    }
    case WallpaperDesktop::Cinnamon:
        return done(
            gsettingsSet(kCinnamonSchema, QStringLiteral("picture-uri"), variantString(uri)) &&
                gsettingsSet(kCinnamonSchema, QStringLiteral("picture-options"),
                             gnomeOption(style)),
            desktop);
    case WallpaperDesktop::Mate:
        return done(
            gsettingsSet(kMateSchema, QStringLiteral("picture-filename"), variantString(picture)) &&
                gsettingsSet(kMateSchema, QStringLiteral("picture-options"), gnomeOption(style)),
            desktop);
    case WallpaperDesktop::Plasma: {
        const QString script = plasmaEach(
            QStringLiteral(
                "    d.wallpaperPlugin = \"org.kde.image\";\n"
                "    d.currentConfigGroup = [\"Wallpaper\", \"org.kde.image\", \"General\"];\n"
                "    d.writeConfig(\"Image\", ") +
            jsString(uri) + QStringLiteral(");\n    d.writeConfig(\"FillMode\", ") +
            QString::number(plasmaFillMode(style)) + QStringLiteral(");\n"));
        return done(RunDesktopCommand(plasmaCommand(firstFound(qdbusPrograms()), script)), desktop);
    }
    case WallpaperDesktop::Xfce: {
        bool ok = true;
        for (const QString& property : xfceImageProperties()) {
            ok = xfceSet(property, QStringLiteral("string"), picture) && ok;
            ok = xfceSet(imageStyleProperty(property), QStringLiteral("int"),
                         QString::number(xfceStyle(style))) &&
                 ok;
        }
        return done(ok, desktop);
    }
    case WallpaperDesktop::RootWindow:
        return done(RunDesktopCommand(rootSetterCommand(firstFound(rootSetters()), picture, style)),
                    desktop);
    case WallpaperDesktop::None:
        break;
    }
    return {false, NoWallpaperSettingMessage(), {}};
}

WallpaperResult ClearWallpaper()
{
    const WallpaperDesktop desktop = CurrentWallpaperDesktop();
    switch (desktop) {
    case WallpaperDesktop::Gnome:
    case WallpaperDesktop::Cinnamon:
    case WallpaperDesktop::Mate:
        return done(gsettingsSet(gsettingsSchema(desktop), QStringLiteral("picture-options"),
                                 QStringLiteral("'none'")),
                    desktop);
    case WallpaperDesktop::Plasma:
        return done(
            RunDesktopCommand(plasmaCommand(
                firstFound(qdbusPrograms()),
                plasmaEach(QStringLiteral("    d.wallpaperPlugin = \"org.kde.color\";\n")))),
            desktop);
    case WallpaperDesktop::Xfce: {
        bool ok = true;
        for (const QString& property : xfceImageProperties())
            ok =
                xfceSet(imageStyleProperty(property), QStringLiteral("int"), QStringLiteral("0")) &&
                ok;
        return done(ok, desktop);
    }
    case WallpaperDesktop::RootWindow: {
        // A plain colour over the whole root window; feh alone cannot paint one.
        if (RunDesktopCommand({QStringLiteral("hsetroot"), QStringLiteral("-solid"),
                               QStringLiteral("#000000")}) ||
            RunDesktopCommand(
                {QStringLiteral("xsetroot"), QStringLiteral("-solid"), QStringLiteral("black")}))
            return {true, {}, {}};
        return {false,
                QStringLiteral("The wallpaper of this X session cannot be cleared without hsetroot "
                               "or xsetroot, install one of them..."),
                {}};
    }
    case WallpaperDesktop::None:
        break;
    }
    return {false, NoWallpaperSettingMessage(), {}};
}

WallpaperResult CurrentWallpaper()
{
    const WallpaperDesktop desktop = CurrentWallpaperDesktop();
    const WallpaperResult none{false,
                               QStringLiteral("The desktop does not show a wallpaper picture now, "
                                              "there is nothing to open..."),
                               {}};
    const WallpaperResult unknown{
        false,
        QStringLiteral("The picture shown on the desktop could not be found out, unable to open "
                       "the wallpaper..."),
        {}};
    QString picture;
    switch (desktop) {
    case WallpaperDesktop::Gnome:
    case WallpaperDesktop::Cinnamon:
    case WallpaperDesktop::Mate: {
        const QString schema = gsettingsSchema(desktop);
        bool ok = false;
        if (gsettingsGet(schema, QStringLiteral("picture-options"), &ok) == QLatin1String("'none'"))
            return none;
        const QString value = fromVariantString(
            gsettingsGet(schema,
                         desktop == WallpaperDesktop::Mate ? QStringLiteral("picture-filename")
                                                           : QStringLiteral("picture-uri"),
                         &ok));
        if (!ok)
            return unknown;
        picture = desktop == WallpaperDesktop::Mate ? value : QUrl(value).toLocalFile();
        break;
    }
    case WallpaperDesktop::Plasma: {
        QString out;
        const QString script = QStringLiteral(
            "var d = desktops()[0];\n"
            "if (d && d.wallpaperPlugin == \"org.kde.image\") {\n"
            "    d.currentConfigGroup = [\"Wallpaper\", \"org.kde.image\", \"General\"];\n"
            "    print(d.readConfig(\"Image\"));\n"
            "}\n");
        if (!RunDesktopCommand(plasmaCommand(firstFound(qdbusPrograms()), script), &out))
            return unknown;
        const QString value = out.trimmed();
        picture = value.startsWith(QLatin1String("file:")) ? QUrl(value).toLocalFile() : value;
        break;
    }
    case WallpaperDesktop::Xfce: {
        const QString property = xfceImageProperties().first();
        QString style;
        RunDesktopCommand({QStringLiteral("xfconf-query"), QStringLiteral("-c"), kXfceChannel,
                           QStringLiteral("-p"), imageStyleProperty(property)},
                          &style);
        if (style.trimmed() == QLatin1String("0"))
            return none;
        QString out;
        if (!RunDesktopCommand({QStringLiteral("xfconf-query"), QStringLiteral("-c"), kXfceChannel,
                                QStringLiteral("-p"), property},
                               &out))
            return unknown;
        picture = out.trimmed();
        break;
    }
    case WallpaperDesktop::RootWindow: {
        // Only feh remembers what it drew, in the script it writes to restore it at login.
        QFile script(QDir::homePath() + QStringLiteral("/.fehbg"));
        if (!script.open(QIODevice::ReadOnly))
            return unknown;
        // The picture is the last word of the feh line, quoted as a shell reads it.
        QStringList words;
        for (const QString& line : QString::fromLocal8Bit(script.readAll()).split(u'\n'))
            if (line.trimmed().startsWith(QLatin1String("feh ")))
                words = shellWords(line);
        if (words.size() < 2)
            return unknown;
        picture = words.last();
        break;
    }
    case WallpaperDesktop::None:
        return {false, NoWallpaperSettingMessage(), {}};
    }
    if (picture.isEmpty())
        return none;
    if (!QFileInfo(picture).isFile())
        return {false,
                QStringLiteral("The wallpaper picture could not be found:") + NewLine() + picture,
                picture};
    return {true, {}, picture};
}

QString WallpaperFile(const QString& source, const QImage& image, bool changed)
{
    const QString folder = PathNoCase(AppPath(), QStringLiteral("Wallpaper"));
    if (!QDir().mkpath(folder))
        return {};
    const QFileInfo info(source);
    const QString suffix = info.suffix().toUpper();
    const bool asIs = !changed && info.isFile() &&
                      (suffix == QLatin1String("JPG") || suffix == QLatin1String("JPEG") ||
                       suffix == QLatin1String("PNG"));
    QString base = info.completeBaseName();
    if (base.isEmpty())
        base = QStringLiteral("Wallpaper");
    // The picture keeps its name, so the desktop's settings say what it is; the folder holds
    // only the current wallpaper.
    const QString target =
        AddSlash(folder) + base + (asIs ? u'.' + info.suffix() : QStringLiteral(".png"));
    if (asIs && QFileInfo(target).canonicalFilePath() == info.canonicalFilePath())
        return target; // the wallpaper itself, opened and set again
    for (const QFileInfo& old : QDir(folder).entryInfoList(QDir::Files))
        QFile::remove(old.absoluteFilePath());
    if (asIs)
        return QFile::copy(source, target) ? target : QString();
    if (image.isNull())
        return {};
    return image.save(target, "PNG") ? target : QString();
}

} // namespace kavori
