#pragma once

#include "slideshow/SlideShow.h"

#include <QDialog>

class QBoxLayout;
class QPushButton;

namespace kavori {

// A dialog that edits the slides of the show one at a time, stepping back and forth, on a copy:
// OK puts the copy into the show (setting the editor's changed flag when anything differs),
// Cancel leaves the show as it was.
class SlideEditDialog : public QDialog {
    Q_OBJECT
public:
    int line() const { return m_line; }
    // The slides as edited so far.
    const QVector<Slide>& slides() const { return m_slides; }

    void stepTo(int line);
    void previous() { stepTo(m_line - 1); }
    void next() { stepTo(m_line + 1); }
    void accept() override;

protected:
    SlideEditDialog(int line, QWidget* parent);
    // Adds the stepping and OK/Cancel buttons under the dialog's own controls; call once the
    // controls are built. Loads the first slide.
    void finishLayout(QBoxLayout* layout);

    // The controls show the current slide, or write their values back into it.
    virtual void loadSlide() = 0;
    virtual void storeSlide() = 0;
    // The caption for a line.
    virtual QString caption(int line) const = 0;

    Slide& current() { return m_slides[m_line]; }
    QVector<Slide>& editedSlides() { return m_slides; }
    // Shows the current slide again after a command changed the copy.
    void reload() { loadSlide(); }

private:
    void updateStepping();

    QVector<Slide> m_slides;
    int m_line = 0;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
};

} // namespace kavori
