#pragma once

#include "imaging/ImageFit.h"

#include <QAbstractScrollArea>
#include <QFutureWatcher>
#include <QImage>
#include <QPixmap>

class QPainter;
class QRubberBand;

namespace kavori {

// The main window's image area: the current image drawn as the stretch, enlarge and halftone
// settings say, over the background colour or texture, with scroll bars (hsbPict, vsbPict)
// when it does not fit, and a rubber-band selection in image coordinates for crop and paste.
class ImageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit ImageView(QWidget* parent = nullptr);

    // Shows image. shown, when not null, is that same picture already made as an area of
    // shownFit draws it (FittedPicture), so the paint only has to draw. The same picture given
    // again keeps what was made of it.
    void setImage(const QImage& image, const QImage& shown = QImage(),
                  const ViewFit& shownFit = ViewFit());
    const QImage& image() const { return m_image; }

    void setFit(bool stretch, bool enlarge, bool smooth);
    // How the area shows pictures now, at its present size.
    ViewFit fit() const;
    // The picture as the last paint drew it, or as made since to be drawn.
    const QImage& shownPicture() const { return m_scaled; }
    void setBackground(const QColor& color, const QImage& texture = QImage());

    // A few lines drawn in the middle of the area while no image is shown, so an empty window
    // tells a new user what to do.
    void setHint(const QString& text);
    const QString& hint() const { return m_hint; }

    // The selected area in image pixels; empty when nothing is selected.
    QRect selection() const { return m_selection; }
    void clearSelection();

    // Where the image is drawn, in viewport coordinates.
    QRect drawnRect() const;

Q_SIGNALS:
    void clicked();
    void selectionChanged(const QRect& selection);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void updateScrollBars();
    void paintHint(QPainter& painter);
    QRect imageToView(const QRect& r) const;
    QRect viewToImage(const QRect& r) const;
    bool scaledFits(const QSize& size) const;
    void makeScaledAside();

    QImage m_image;
    QImage m_scaled; // the image at its drawn size, made once per size
    bool m_scaledSmooth = false;
    // A new size of the same picture is made on a worker while the old one is drawn stretched.
    QFutureWatcher<QImage>* m_making = nullptr;
    qint64 m_makingFor = 0; // the cacheKey of the picture being made
    bool m_makingSmooth = false;
    QColor m_background = Qt::black;
    QImage m_texture;
    QString m_hint;
    bool m_stretch = true;
    bool m_enlarge = false;
    bool m_smooth = false;
    QRect m_selection;
    QPoint m_dragStart;
    bool m_dragging = false;
    QRubberBand* m_band = nullptr;
};

} // namespace kavori
