#pragma once

#include "SlideEditDialog.h"

class QLabel;
class QListWidget;

namespace kavori {

class TransitionPreviewBox;

// The transition of each slide: the catalogue's effects in order (a slide's SlideTransition is
// the position of its entry), commands for every slide at once, and a preview of the chosen
// effect on the slide, in the box or full screen.
class frmTransition : public SlideEditDialog {
    Q_OBJECT
public:
    explicit frmTransition(int line, QWidget* parent = nullptr);

    int selectedTransition() const;
    void selectTransition(int number);

    void noTransition(); // CmdNoTrans
    void clearAll();     // CmdClearAll
    void setAll();       // CmdSetAll
    void randomizeAll(); // CmdRandomize
    void randomSelect(); // CmdRandomSelect
    void preview();      // CmdPreview
    void previewFullScreen();

    TransitionPreviewBox* previewBox() const { return m_preview; }

    // Opens the dialog on a line of the show; true when OK was chosen.
    static bool Edit(QWidget* parent, int line);

protected:
    void loadSlide() override;
    void storeSlide() override;
    QString caption(int line) const override;
    void reject() override;

private:
    QListWidget* m_list = nullptr; // ListTrans
    TransitionPreviewBox* m_preview = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace kavori
