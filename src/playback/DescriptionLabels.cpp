#include "DescriptionLabels.h"

#include "platform/Twips.h"
#include "runtime/VbColor.h"

#include <QFont>
#include <QFontMetrics>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QWidget>
#include <qdrawutil.h>

#include <algorithm>

namespace kavori {

namespace {

// Room between the text and its box or frame, in pixels.
constexpr int kPadding = 6;

QLabel* makeLabel(QWidget* form, const char* name)
{
    auto* label = new QLabel(form);
    label->setObjectName(QString::fromLatin1(name));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->hide();
    return label;
}

QFrame* makeFrame(QWidget* form, const char* name, int shape)
{
    auto* frame = new QFrame(form);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    frame->setFrameStyle(shape);
    frame->hide();
    return frame;
}

QString colorSheet(qint32 vb)
{
    return QStringLiteral("color: %1; background: transparent;").arg(FromVbColor(vb).name());
}

QSize toTwips(const QSize& pixels)
{
    return {PixelsToTwips(pixels.width()), PixelsToTwips(pixels.height())};
}

} // namespace

QFont DescriptionFont(const DescriptionLook& look)
{
    QFont font(look.font.isEmpty() ? QStringLiteral("MS Sans Serif") : look.font);
    font.setPointSize(std::max<int>(1, look.size));
    font.setBold(look.style == 1 || look.style == 3);
    font.setItalic(look.style == 2 || look.style == 3);
    return font;
}

QSize DescriptionTextSize(const QString& text, const DescriptionLook& look, int screenWidth)
{
    const int widest = std::max(1, screenWidth * 4 / 5);
    const QRect needed =
        QFontMetrics(DescriptionFont(look))
            .boundingRect(QRect(0, 0, widest, 100000), Qt::AlignCenter | Qt::TextWordWrap, text);
    return needed.size() + QSize(4, 2);
}

void PaintDescription(QPainter& painter, const QString& text, const DescriptionLook& look,
                      const QPoint& at, const QSize& textSize)
{
    if (text.isEmpty())
        return;
    painter.save();
    const QRect textRect(at, textSize);
    const QRect box = textRect.adjusted(-kPadding, -kPadding, kPadding, kPadding);
    const QColor fore = FromVbColor(look.foreColor);
    if (look.useBack != 0)
        painter.fillRect(box, FromVbColor(look.backColor));
    if (look.border == 1) {
        painter.setPen(QPen(fore, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(box.adjusted(0, 0, -1, -1));
    } else if (look.border == 2) {
        QPalette palette;
        palette.setColor(QPalette::Window, FromVbColor(look.backColor));
        qDrawShadePanel(&painter, box, palette, false, 3);
    }
    painter.setFont(DescriptionFont(look));
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    if (look.shadow != 0) {
        const QPoint offset = ShadowOffset(look.shadowDirection, look.shadowDistance);
        painter.setPen(FromVbColor(look.shadowColor));
        painter.drawText(textRect.translated(TwipsToPixels(offset.x()), TwipsToPixels(offset.y())),
                         flags, text);
    }
    painter.setPen(fore);
    painter.drawText(textRect, flags, text);
    painter.restore();
}

DescriptionLabels::DescriptionLabels(QWidget* form) : m_form(form)
{
    // Created from the bottom up, so the text lies on top.
    m_back = makeFrame(form, "lblDescBack", QFrame::NoFrame);
    m_back->setAutoFillBackground(true);
    m_border = makeFrame(form, "lblDescBorder", QFrame::Box | QFrame::Plain);
    m_border->setLineWidth(1);
    m_raised = makeFrame(form, "lblDesc3D", QFrame::Panel | QFrame::Raised);
    m_raised->setLineWidth(3);
    m_shadow = makeLabel(form, "lblDropShadow");
    m_text = makeLabel(form, "lblDescription");
}

DescriptionLabels::~DescriptionLabels() = default;

void DescriptionLabels::show(const QString& text, const DescriptionLook& look)
{
    hide();
    if (text.isEmpty())
        return;
    m_look = look;
    const QFont font = DescriptionFont(look);
    for (QLabel* label : {m_text, m_shadow}) {
        label->setFont(font);
        label->setText(text);
    }
    m_text->setStyleSheet(colorSheet(look.foreColor));
    m_shadow->setStyleSheet(colorSheet(look.shadowColor));
    QPalette palette = m_back->palette();
    palette.setColor(QPalette::Window, FromVbColor(look.backColor));
    m_back->setPalette(palette);
    const QColor frameColor = FromVbColor(look.foreColor);
    palette = m_border->palette();
    palette.setColor(QPalette::WindowText, frameColor);
    m_border->setPalette(palette);

    // The label is as big as its text.
    const QSize size = DescriptionTextSize(text, look, m_form->width());
    m_text->resize(size);
    m_shadow->resize(size);
    m_motion = std::make_unique<DescriptionMotion>(look.location, look.speed,
                                                   toTwips(m_form->size()), toTwips(size));
    place();
    m_back->setVisible(look.useBack != 0);
    m_border->setVisible(look.border == 1);
    m_raised->setVisible(look.border == 2);
    m_shadow->setVisible(look.shadow != 0);
    m_text->show();
    m_back->raise();
    m_border->raise();
    m_raised->raise();
    m_shadow->raise();
    m_text->raise();
}

void DescriptionLabels::hide()
{
    m_motion.reset();
    for (QWidget* w : {static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_shadow),
                       static_cast<QWidget*>(m_back), static_cast<QWidget*>(m_border),
                       static_cast<QWidget*>(m_raised)})
        w->hide();
}

bool DescriptionLabels::tick()
{
    if (!m_motion || !m_motion->tick())
        return false;
    place();
    return true;
}

QRect DescriptionLabels::textRect() const
{
    return m_text->geometry();
}

void DescriptionLabels::place()
{
    // The text moves; its companions follow with one move each, their sizes kept.
    const QPoint at(TwipsToPixels(m_motion->position().x()),
                    TwipsToPixels(m_motion->position().y()));
    m_text->move(at);
    const QRect box = m_text->geometry().adjusted(-kPadding, -kPadding, kPadding, kPadding);
    for (QFrame* frame : {m_back, m_border, m_raised}) {
        if (frame->size() != box.size())
            frame->resize(box.size());
        frame->move(box.topLeft());
    }
    const QPoint offset = ShadowOffset(m_look.shadowDirection, m_look.shadowDistance);
    m_shadow->move(at + QPoint(TwipsToPixels(offset.x()), TwipsToPixels(offset.y())));
}

} // namespace kavori
