#include "FullViewFrm.h"

#include "imaging/PictureLoader.h"
#include "settings/Settings.h"
#include "imaging/ImageFit.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QScreen>

namespace kavori {

FullViewFrm::FullViewFrm(QWidget* parent) : QDialog(parent, Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("FullViewFrm"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    m_gif = new QLabel(this);
    m_gif->setObjectName(QStringLiteral("Gif89a1"));
    m_gif->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_gif->hide();
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        setGeometry(screen->geometry());
}

FullViewFrm::~FullViewFrm() = default;

void FullViewFrm::setImage(const QImage& image)
{
    m_image = image;
    update();
}

bool FullViewFrm::setAnimation(const QString& path)
{
    auto* movie = new QMovie(path, QByteArray(), this);
    if (!movie->isValid() || movie->frameCount() < 2 || !movie->jumpToFrame(0) ||
        movie->currentImage().isNull()) {
        delete movie;
        return false;
    }
    delete m_movie;
    m_movie = movie;
    m_gif->setMovie(m_movie);
    m_image = m_movie->currentImage();
    placeAnimation();
    m_gif->show();
    m_movie->start();
    return true;
}

bool FullViewFrm::isAnimating() const
{
    return m_movie && m_movie->state() == QMovie::Running;
}

void FullViewFrm::placeAnimation()
{
    if (!m_movie)
        return;
    const Settings& s = CurrentSettings();
    const QRect target = FitImageRect(m_image.size(), size(), s.StretchImages, s.EnlargeImages);
    m_movie->setScaledSize(target.size());
    m_gif->setGeometry(target);
}

void FullViewFrm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (m_image.isNull() || m_movie)
        return;
    const Settings& s = CurrentSettings();
    const QRect target = FitImageRect(m_image.size(), size(), s.StretchImages, s.EnlargeImages);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, m_image);
}

void FullViewFrm::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    placeAnimation();
}

void FullViewFrm::keyPressEvent(QKeyEvent*)
{
    accept();
}

void FullViewFrm::mouseReleaseEvent(QMouseEvent*)
{
    accept();
}

bool FullViewFrm::ShowImageModal(const QString& path, bool animate, QWidget* parent)
{
    FullViewFrm view(parent);
    if (!(animate && view.setAnimation(path))) {
        // Decoded at screen size when it is to be fitted to the screen anyway.
        const QImage image =
            LoadPicture(path, CurrentSettings().StretchImages ? view.size() : QSize());
        if (image.isNull())
            return false;
        view.setImage(image);
    }
    view.setWindowState(Qt::WindowFullScreen);
    view.exec();
    return true;
}

} // namespace kavori
