#include "MediaWindows.h"

#include <QHash>
#include <QPointer>
#include <QVariant>
#include <QWidget>

namespace kavori {

namespace {

constexpr char kHandleProperty[] = "kavoriMediaHandle";

struct Registry {
    QHash<qint64, QPointer<QWidget>> widgets;
    qint64 next = 1;
};

Registry& registry()
{
    static Registry r;
    return r;
}

} // namespace

qint64 MediaWindowHandle(QWidget* widget)
{
    if (!widget)
        return 0;
    const QVariant known = widget->property(kHandleProperty);
    if (known.isValid())
        return known.toLongLong();
    Registry& r = registry();
    const qint64 handle = r.next++;
    r.widgets.insert(handle, widget);
    widget->setProperty(kHandleProperty, handle);
    QObject::connect(widget, &QObject::destroyed, [handle] { registry().widgets.remove(handle); });
    return handle;
}

QWidget* MediaWindowFromHandle(qint64 handle)
{
    return registry().widgets.value(handle).data();
}

} // namespace kavori
