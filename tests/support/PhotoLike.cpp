#include "PhotoLike.h"

#include <QPainter>
#include <QRandomGenerator>

namespace kavori::test {

QImage PhotoLike(int width, int height, int seed, bool flatTop)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, height);
    sky.setColorAt(0, QColor(70, 120, 200));
    sky.setColorAt(0.6, QColor(200, 210, 230));
    sky.setColorAt(1, QColor(60, 90, 40));
    painter.fillRect(image.rect(), sky);
    QRandomGenerator random{quint32(seed)};
    for (int i = 0; i < 400; ++i) {
        const int x = int(random.bounded(width));
        const int y = int(random.bounded(height));
        const int radius = 50 + int(random.bounded(400));
        QRadialGradient blob(x, y, radius);
        blob.setColorAt(0,
                        QColor(random.bounded(256), random.bounded(256), random.bounded(256), 120));
        blob.setColorAt(1, QColor(0, 0, 0, 0));
        // Outside its circle a shape is fully transparent: only its square is painted.
        painter.fillRect(QRect(x - radius, y - radius, 2 * radius + 1, 2 * radius + 1), blob);
    }
    painter.end();
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            if (flatTop && y < height / 2) {
                line[x] = qRgb(90, 140, 210);
                continue;
            }
            const int n = int(random.bounded(17)) - 8;
            const QRgb c = line[x];
            line[x] = qRgb(qBound(0, qRed(c) + n, 255), qBound(0, qGreen(c) + n, 255),
                           qBound(0, qBlue(c) + n, 255));
        }
    }
    return image;
}

} // namespace kavori::test
