#include "TransitionPreview.h"

#include "ClockPacer.h"
#include "FullViewFrm.h"
#include "TransitionCanvas.h"
#include "TransitionEngine.h"
#include "settings/Settings.h"

#include <QPainter>

#include <utility>

namespace kavori {

TransitionPreviewBox::TransitionPreviewBox(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("picPreview"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(240, 180);
}

void TransitionPreviewBox::setLines(const QStringList& lines)
{
    m_lines = lines;
    update();
}

QSize TransitionPreviewBox::pixelSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void TransitionPreviewBox::play(qint16 number, const QImage& picture)
{
    if (m_canvas || picture.isNull())
        return;
    m_lines.clear();
    if (m_shown.size() != picture.size()) {
        m_shown = QImage(picture.size(), QImage::Format_RGB32);
        m_shown.fill(Qt::black);
    }
    Transitions().TransitionStop = false;
    Transitions().TransitionSkip = false;
    PaintingCanvas canvas(picture.convertToFormat(QImage::Format_RGB32), std::move(m_shown));
    m_canvas = &canvas;
    ClockPacer pacer([this, &canvas] {
        if (!canvas.takeChanged().isEmpty())
            repaint();
    });
    ShowTransition(number, canvas, pacer);
    pacer.finish();
    m_shown = canvas.takeDestination();
    m_canvas = nullptr;
    Transitions().TransitionStop = false;
    update();
}

void TransitionPreviewBox::stop()
{
    if (m_canvas)
        Transitions().TransitionStop = true;
}

void TransitionPreviewBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    const QImage& picture = m_canvas ? m_canvas->destination() : m_shown;
    if (m_lines.isEmpty() && !picture.isNull()) {
        painter.drawImage(QRectF(rect()), picture);
        return;
    }
    painter.setPen(Qt::white);
    painter.drawText(rect().adjusted(8, 8, -8, -8),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, m_lines.join(u'\n'));
}

void PreviewTransitionFullScreen(const Slide& slide, qint16 transition, QWidget* parent)
{
    SlideShow preview;
    preview.path = CurrentShow().path;
    preview.slides = {slide};
    preview.slides.first().SlideTransition = transition;
    preview.slides.first().SlideSound.clear();
    std::swap(CurrentShow(), preview);
    Settings& s = CurrentSettings();
    const Settings kept = s;
    s.EnableTransitions = true;
    s.RandomTransitions = false;
    s.ResumeLastDisplayed = false;
    s.SoundMode = 0;
    s.LoopSlideShow = false;
    PlayerStart start;
    start.pauseAllowed = false;
    FullViewFrm::PlaySlideShowModal(start, parent);
    s = kept;
    std::swap(CurrentShow(), preview);
}

} // namespace kavori
