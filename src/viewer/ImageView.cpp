#include "ImageView.h"

#include "imaging/ImageFit.h"
#include "imaging/formats/PictureReader.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QScrollBar>
#include <QTimer>

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
    m_settle = new QTimer(this);
    m_settle->setSingleShot(true);
    m_settle->setInterval(150);
    connect(m_settle, &QTimer::timeout, this, [this] {
        if (m_rough) {
            m_scaled = QImage();
            viewport()->update();
        }
    });
}

void ImageView::setImage(const QImage& image)
{
    m_image = image;
    m_scaled = QImage();
    clearSelection();
    updateScrollBars();
    viewport()->update();
}

void ImageView::setFit(bool stretch, bool enlarge, bool smooth)
{
    m_stretch = stretch;
    m_enlarge = enlarge;
    m_smooth = smooth;
    m_scaled = QImage();
    updateScrollBars();
    viewport()->update();
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
    if (m_scaled.size() != target.size()) {
        m_rough = m_settle->isActive() && m_smooth;
        const Qt::TransformationMode mode =
            m_smooth && !m_rough ? Qt::SmoothTransformation : Qt::FastTransformation;
        // Scaled into the picture stock: a new scaled picture on every resize would otherwise
        // pay for fresh pages each time.
        m_scaled = target.size() == m_image.size()
                       ? m_image
                       : ScaledPicture(m_image, target.size(), mode == Qt::SmoothTransformation);
    }
    painter.drawImage(target.topLeft(), m_scaled);
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
    m_settle->start();
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
