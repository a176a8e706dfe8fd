#include "ImageView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QScrollBar>
#include <QtConcurrent>

namespace kavori {

ImageView::ImageView(QWidget* parent) : QAbstractScrollArea(parent)
{
    setObjectName(QStringLiteral("picMain"));
    horizontalScrollBar()->setObjectName(QStringLiteral("hsbPict"));
    verticalScrollBar()->setObjectName(QStringLiteral("vsbPict"));
    setFrameShape(QFrame::NoFrame);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    m_band = new QRubberBand(QRubberBand::Rectangle, viewport());
    m_band->hide();
    m_making = new QFutureWatcher<QImage>(this);
    connect(m_making, &QFutureWatcher<QImage>::finished, this, [this] {
        const QImage made = m_making->result();
        if (made.isNull())
            return;
        // Made for a picture no longer shown: dropped. Made for a size no longer wanted: drawn
        // until the paint asks for the size it needs now.
        if (m_makingFor == m_image.cacheKey()) {
            m_scaled = made;
            m_scaledSmooth = m_makingSmooth;
        }
        viewport()->update();
    });
}

void ImageView::setImage(const QImage& image, const QImage& shown, const ViewFit& shownFit)
{
    if (image.isNull() || image.cacheKey() != m_image.cacheKey())
        m_scaled = QImage();
    m_image = image;
    if (!shown.isNull()) {
        m_scaled = shown;
        m_scaledSmooth = shownFit.smooth;
    }
    clearSelection();
    updateScrollBars();
    viewport()->update();
}

void ImageView::setFit(bool stretch, bool enlarge, bool smooth)
{
    m_stretch = stretch;
    m_enlarge = enlarge;
    m_smooth = smooth;
    updateScrollBars();
    viewport()->update();
}

ViewFit ImageView::fit() const
{
    return ViewFit{viewport()->size(), m_stretch, m_enlarge, m_smooth};
}

void ImageView::setBackground(const QColor& color, const QImage& texture)
{
    m_background = color;
    m_texture = texture;
    viewport()->update();
}

void ImageView::setHint(const QString& text)
{
    m_hint = text;
    viewport()->update();
}

void ImageView::clearSelection()
{
    m_selection = QRect();
    m_band->hide();
    Q_EMIT selectionChanged(m_selection);
}

QRect ImageView::drawnRect() const
{
    const QRect fit = FitImageRect(m_image.size(), viewport()->size(), m_stretch, m_enlarge);
    return fit.translated(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
}

void ImageView::updateScrollBars()
{
    const QSize area = viewport()->size();
    const QSize extent =
        ScrollExtent(FitImageRect(m_image.size(), area, m_stretch, m_enlarge), area);
    horizontalScrollBar()->setRange(0, extent.width());
    horizontalScrollBar()->setPageStep(area.width());
    verticalScrollBar()->setRange(0, extent.height());
    verticalScrollBar()->setPageStep(area.height());
}

void ImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    if (!m_texture.isNull())
        painter.drawTiledPixmap(viewport()->rect(), QPixmap::fromImage(m_texture));
    else
        painter.fillRect(viewport()->rect(), m_background);
    if (m_image.isNull()) {
        paintHint(painter);
        return;
    }
    const QRect target = drawnRect();
    if (!scaledFits(target.size())) {
        if (!m_scaled.isNull()) {
            // The same picture at another size (a resize, another fit): drawn stretched until
            // the right one is made.
            makeScaledAside();
            painter.setRenderHint(QPainter::SmoothPixmapTransform, m_smooth);
            painter.drawImage(target, m_scaled);
            return;
        }
        // A picture nothing was made of yet (an edit, a file read when asked) is shown at once
        // as it will stay.
        m_scaled = FittedPicture(m_image, fit());
        m_scaledSmooth = m_smooth;
    }
    painter.drawImage(target.topLeft(), m_scaled);
}

bool ImageView::scaledFits(const QSize& size) const
{
    if (m_scaled.isNull() || m_scaled.size() != size)
        return false;
    return m_scaled.cacheKey() == m_image.cacheKey() || m_scaledSmooth == m_smooth;
}

void ImageView::makeScaledAside()
{
    if (m_making->isRunning())
        return; // its end repaints, and the paint asks again for the size it needs then
    m_makingFor = m_image.cacheKey();
    m_makingSmooth = m_smooth;
    m_making->setFuture(
        QtConcurrent::run([image = m_image, fit = fit()] { return FittedPicture(image, fit); }));
}

// The hint sits on a rounded panel of the window's own colours, so it reads over any
// background colour or texture the user chose.
void ImageView::paintHint(QPainter& painter)
{
    if (m_hint.isEmpty())
        return;
    const QRect area = viewport()->rect().adjusted(16, 16, -16, -16);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    QRect text = painter.fontMetrics().boundingRect(area, flags, m_hint);
    const QRect panel = text.adjusted(-18, -14, 18, 14).intersected(viewport()->rect());
    QColor base = palette().color(QPalette::Window);
    base.setAlpha(225);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(base);
    painter.drawRoundedRect(panel, 8, 8);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(area, flags, m_hint);
}

void ImageView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
    if (!m_selection.isEmpty())
        m_band->setGeometry(imageToView(m_selection));
}

void ImageView::scrollContentsBy(int, int)
{
    if (!m_selection.isEmpty())
        m_band->setGeometry(imageToView(m_selection));
    viewport()->update();
}

QRect ImageView::imageToView(const QRect& r) const
{
    const QRect drawn = drawnRect();
    if (m_image.isNull() || drawn.isEmpty())
        return {};
    const double sx = double(drawn.width()) / m_image.width();
    const double sy = double(drawn.height()) / m_image.height();
    return QRect(QPoint(drawn.x() + int(r.x() * sx), drawn.y() + int(r.y() * sy)),
                 QSize(int(r.width() * sx + 0.5), int(r.height() * sy + 0.5)));
}

QRect ImageView::viewToImage(const QRect& r) const
{
    const QRect drawn = drawnRect();
    if (m_image.isNull() || drawn.isEmpty())
        return {};
    const double sx = double(m_image.width()) / drawn.width();
    const double sy = double(m_image.height()) / drawn.height();
    const QRect mapped(QPoint(int((r.left() - drawn.x()) * sx), int((r.top() - drawn.y()) * sy)),
                       QPoint(int((r.right() + 1 - drawn.x()) * sx) - 1,
                              int((r.bottom() + 1 - drawn.y()) * sy) - 1));
    return mapped.intersected(m_image.rect());
}

void ImageView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_image.isNull()) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    m_dragStart = event->position().toPoint();
    m_dragging = true;
    m_band->setGeometry(QRect(m_dragStart, QSize()));
    m_band->show();
}

void ImageView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging)
        return;
    m_band->setGeometry(QRect(m_dragStart, event->position().toPoint()).normalized());
}

void ImageView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    const QRect dragged = QRect(m_dragStart, event->position().toPoint()).normalized();
    if (dragged.width() < 3 && dragged.height() < 3) {
        clearSelection();
        Q_EMIT clicked();
        return;
    }
    m_selection = viewToImage(dragged);
    m_band->setGeometry(imageToView(m_selection));
    Q_EMIT selectionChanged(m_selection);
}

} // namespace kavori
