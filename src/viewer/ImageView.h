#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPixmap>

class QPainter;
class QRubberBand;
class QTimer;

namespace kavori {

// The main window's image area: the current image drawn as the stretch, enlarge and halftone
// settings say, over the background colour or texture, with scroll bars (hsbPict, vsbPict)
// when it does not fit, and a rubber-band selection in image coordinates for crop and paste.
class ImageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit ImageView(QWidget* parent = nullptr);

    void setImage(const QImage& image);
    const QImage& image() const { return m_image; }

    void setFit(bool stretch, bool enlarge, bool smooth);
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

    QImage m_image;
    QImage m_scaled; // the image at its drawn size, made once per size
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
    // While the size keeps changing the picture is scaled quickly; once it settles, smoothly.
    QTimer* m_settle = nullptr;
    bool m_rough = false;
};

} // namespace kavori
