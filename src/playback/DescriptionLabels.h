#pragma once

#include "player/DescriptionOverlay.h"
#include "slideshow/DescriptionFile.h"

#include <QRect>
#include <QString>

#include <memory>

class QFont;
class QFrame;
class QPainter;
class QLabel;
class QWidget;

namespace kavori {

// The label stack that draws a slide's description over the picture: the text
// (lblDescription), its background box (lblDescBack), a plain or raised frame (lblDescBorder,
// lblDesc3D) and a drop shadow (lblDropShadow). The moving placements are stepped by tick().
class DescriptionLabels {
public:
    explicit DescriptionLabels(QWidget* form);
    ~DescriptionLabels();

    // Shows text with a look on a screen of the form's size; an empty text hides the stack.
    void show(const QString& text, const DescriptionLook& look);
    void hide();
    // One step of a moving placement (TimerDesc); false when nothing moves.
    bool tick();
    bool moving() const { return m_motion && m_motion->moves(); }

    // The text's box in pixels, and the motion (for tests).
    QRect textRect() const;
    const DescriptionMotion* motion() const { return m_motion.get(); }

private:
    void place();

    QWidget* m_form;
    QLabel* m_text;
    QLabel* m_shadow;
    QFrame* m_back;
    QFrame* m_border;
    QFrame* m_raised;
    DescriptionLook m_look;
    std::unique_ptr<DescriptionMotion> m_motion;
};

// The font of a look: its name, size and style code (0 regular, 1 bold, 2 italic,
// 3 bold italic).
QFont DescriptionFont(const DescriptionLook& look);

// The size of a description's text box on a screen of this width: long texts wrap at four
// fifths of it.
QSize DescriptionTextSize(const QString& text, const DescriptionLook& look, int screenWidth);

// Draws a description as the label stack shows it, its text box's top left at at (pixels):
// the background box, the plain or raised frame, the drop shadow, then the text. For pictures
// made without a window (the video export).
void PaintDescription(QPainter& painter, const QString& text, const DescriptionLook& look,
                      const QPoint& at, const QSize& textSize);

} // namespace kavori
