#include "MovieSurface.h"

#include "imaging/ImageFit.h"

#include <QPainter>
#include <QVideoSink>

namespace kavori {

MovieSurface::MovieSurface(QWidget* parent) : QWidget(parent), m_sink(new QVideoSink(this))
{
    setObjectName(QStringLiteral("MovieSurface"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // Frames may come from the decoder's thread; the context object queues them to this one.
    // Only the newest is kept, and it is turned into a picture only when painted, so frames
    // that come faster than the screen takes them cost nothing.
    connect(m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame& frame) {
        m_frame = frame;
        m_stale = true;
        update();
    });
}

void MovieSurface::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (m_stale) {
        m_image = m_frame.isValid() ? m_frame.toImage() : QImage();
        m_stale = false;
    }
    if (m_image.isNull())
        return;
    // The whole picture, as large as fits, in its own proportions.
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(FitImageRect(m_image.size(), size(), true, true), m_image);
}

} // namespace kavori
