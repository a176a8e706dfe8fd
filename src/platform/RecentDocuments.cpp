#include "RecentDocuments.h"

#include "AppPaths.h"
#include "platform/SafeFiles.h"

#include <QDateTime>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QUrl>

namespace kavori {

namespace {
const QString kBookmarkNs =
    QStringLiteral("http://www.freedesktop.org/standards/desktop-bookmarks");
const QString kMimeNs = QStringLiteral("http://www.freedesktop.org/standards/shared-mime-info");

QDomElement child(QDomElement parent, const QString& name)
{
    QDomElement e = parent.firstChildElement(name);
    if (e.isNull()) {
        e = parent.ownerDocument().createElement(name);
        parent.appendChild(e);
    }
    return e;
}
} // namespace

QString RecentDocumentsPath()
{
    return AddSlash(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) +
           QStringLiteral("recently-used.xbel");
}

bool AddToRecentDocuments(const QString& path)
{
    if (!IsFullPath(path))
        return false;
    const QString file = RecentDocumentsPath();
    QDomDocument doc;
    {
        QFile in(file);
        // Read without namespace processing, so prefixes and declarations are written back as they
        // were.
        if (!in.open(QIODevice::ReadOnly) || !doc.setContent(&in, false))
            doc = QDomDocument();
    }
    QDomElement xbel = doc.documentElement();
    if (xbel.isNull() || xbel.tagName() != QLatin1String("xbel")) {
        doc = QDomDocument();
        doc.appendChild(doc.createProcessingInstruction(
            QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
        xbel = doc.createElement(QStringLiteral("xbel"));
        xbel.setAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        xbel.setAttribute(QStringLiteral("xmlns:bookmark"), kBookmarkNs);
        xbel.setAttribute(QStringLiteral("xmlns:mime"), kMimeNs);
        doc.appendChild(xbel);
    }

    const QString href = QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded());
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    QDomElement bookmark;
    for (QDomElement b = xbel.firstChildElement(QStringLiteral("bookmark")); !b.isNull();
         b = b.nextSiblingElement(QStringLiteral("bookmark"))) {
        if (b.attribute(QStringLiteral("href")) == href) {
            bookmark = b;
            break;
        }
    }
    if (bookmark.isNull()) {
        bookmark = doc.createElement(QStringLiteral("bookmark"));
        bookmark.setAttribute(QStringLiteral("href"), href);
        bookmark.setAttribute(QStringLiteral("added"), now);
        xbel.appendChild(bookmark);
    }
    bookmark.setAttribute(QStringLiteral("modified"), now);
    bookmark.setAttribute(QStringLiteral("visited"), now);

    QDomElement metadata =
        child(child(bookmark, QStringLiteral("info")), QStringLiteral("metadata"));
    metadata.setAttribute(QStringLiteral("owner"), QStringLiteral("http://freedesktop.org"));
    QDomElement mime = child(metadata, QStringLiteral("mime:mime-type"));
    mime.setAttribute(QStringLiteral("type"), QMimeDatabase().mimeTypeForFile(path).name());
    QDomElement apps = child(metadata, QStringLiteral("bookmark:applications"));
    QDomElement app;
    for (QDomElement a = apps.firstChildElement(QStringLiteral("bookmark:application"));
         !a.isNull(); a = a.nextSiblingElement(QStringLiteral("bookmark:application"))) {
        if (a.attribute(QStringLiteral("name")) == QLatin1String("Kavori"))
            app = a;
    }
    if (app.isNull()) {
        app = doc.createElement(QStringLiteral("bookmark:application"));
        app.setAttribute(QStringLiteral("name"), QStringLiteral("Kavori"));
        app.setAttribute(QStringLiteral("exec"), QStringLiteral("'kavori %u'"));
        app.setAttribute(QStringLiteral("count"), 0);
        apps.appendChild(app);
    }
    app.setAttribute(QStringLiteral("modified"), now);
    app.setAttribute(QStringLiteral("count"), app.attribute(QStringLiteral("count")).toInt() + 1);

    QDir().mkpath(FolderOf(file));
    return WriteFileWhole(file, doc.toByteArray(2), false);
}

} // namespace kavori
