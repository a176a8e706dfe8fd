#pragma once

#include <QDialog>
#include <QImage>

class QLabel;
class QMovie;

namespace kavori {

// The full-screen window. In its single-image use it shows one picture on black, fitted as the
// stretch and enlarge settings say (an animated GIF plays), and closes on a key or a click.
class FullViewFrm : public QDialog {
    Q_OBJECT
public:
    explicit FullViewFrm(QWidget* parent = nullptr);
    ~FullViewFrm() override;

    // Shows a picture already loaded.
    void setImage(const QImage& image);
    // Plays an animated GIF instead of a still picture.
    bool setAnimation(const QString& path);

    const QImage& image() const { return m_image; }
    bool isAnimating() const;

    // Shows the image at path full screen until the user closes it. False when it could not be
    // loaded (nothing is shown then).
    static bool ShowImageModal(const QString& path, bool animate, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeAnimation();

    QImage m_image;
    QMovie* m_movie = nullptr;
    QLabel* m_gif = nullptr; // Gif89a1
};

} // namespace kavori
