#include "MovieSequence.h"

#include "MciCommand.h"
#include "MediaKinds.h"
#include "MediaWindows.h"

#include "runtime/DoEvents.h"

#include <QPointer>
#include <QWidget>

namespace kavori {

quint32 StartMovie(const QString& file, QWidget* surface,
                   const std::function<QRect(const QSize&)>& place)
{
    // Pending events run on the way: the surface may go with its window meanwhile.
    const QPointer<QWidget> box(surface);
    if (!box)
        return MCIERR_NO_WINDOW;
    quint32 rc = mciSendString(QStringLiteral("open \"") + file + QStringLiteral("\" type ") +
                               MovieDeviceType(file) + QStringLiteral(" alias Movie"));
    if (rc != 0)
        return rc;
    rc = mciSendString(QStringLiteral("set Movie time format frames"));
    if (rc == 0)
        rc = mciSendString(QStringLiteral("window Movie handle ") +
                           QString::number(MediaWindowHandle(box)));
    if (rc == 0)
        rc = mciSendString(QStringLiteral("put Movie source"));
    QString where;
    if (rc == 0 && !box)
        rc = MCIERR_NO_WINDOW;
    if (rc == 0)
        rc = mciSendString(QStringLiteral("where Movie source"), &where);
    if (rc == 0) {
        // "left top width height"; anything else leaves the size unknown.
        const QStringList parts = where.trimmed().split(u' ', Qt::SkipEmptyParts);
        QSize size(0, 0);
        if (parts.size() == 4)
            size = QSize(qMax(0, parts[2].toInt()), qMax(0, parts[3].toInt()));
        box->setGeometry(place(size));
        rc = mciSendString(QStringLiteral("put Movie destination"));
    }
    if (rc == 0)
        rc = mciSendString(QStringLiteral("realize Movie normal"));
    if (rc == 0 && !box)
        rc = MCIERR_NO_WINDOW;
    if (rc == 0) {
        box->show();
        box->raise();
        DoEvents();
        rc = mciSendString(QStringLiteral("play Movie from 0"));
        DoEvents();
    }
    if (rc != 0) {
        mciSendString(QStringLiteral("close Movie"));
        if (box)
            box->hide();
    }
    return rc;
}

} // namespace kavori
