#include "AppIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace kavori {

QPixmap KavoriPixmap(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF frame(size * 0.06, size * 0.06, size * 0.88, size * 0.88);
    const qreal radius = size * 0.14;
    QLinearGradient sky(0, frame.top(), 0, frame.bottom());
    sky.setColorAt(0, QColor(255, 160, 90));
    sky.setColorAt(1, QColor(255, 225, 160));
    QPainterPath clip;
    clip.addRoundedRect(frame, radius, radius);
    p.setClipPath(clip);
    p.fillRect(frame, sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 248, 220));
    p.drawEllipse(QPointF(frame.center().x() + size * 0.16, frame.top() + size * 0.3), size * 0.12,
                  size * 0.12);
    const QColor hills[2] = {QColor(70, 120, 80), QColor(40, 80, 60)};
    for (int layer = 0; layer < 2; ++layer) {
        QPainterPath hill;
        const qreal base = frame.top() + size * (0.55 + 0.14 * layer);
        hill.moveTo(frame.left(), frame.bottom());
        hill.lineTo(frame.left(), base);
        hill.cubicTo(frame.left() + size * 0.3, base - size * 0.18, frame.left() + size * 0.5,
                     base + size * 0.1, frame.right(), base - size * 0.08);
        hill.lineTo(frame.right(), frame.bottom());
        p.fillPath(hill, hills[layer]);
    }
    p.setClipping(false);
    p.setPen(QPen(QColor(60, 50, 70), qMax(1.0, size * 0.04)));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(frame, radius, radius);
    return pixmap;
}

QIcon KavoriIcon()
{
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(KavoriPixmap(size));
    return icon;
}

} // namespace kavori
