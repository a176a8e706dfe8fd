#pragma once

#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideDescriptions.h"
#include "slideshow/SlideShow.h"

#include <QDialog>

#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kavori {

class DescriptionLabels;
class DescriptionLookEditor;

// The slide description dialog: one slide's text and look at a time, stepping through the
// show, with a preview and the commands over all slides. It works on a copy of the show; OK
// stores the texts and looks (marking the show changed when they differ), keeps the default
// look and ShowDescription in the settings file. A look that is not the slide's own edits the
// defaults that every such slide uses.
class frmDescription : public QDialog {
    Q_OBJECT
public:
    explicit frmDescription(int slide = 0, QWidget* parent = nullptr);
    ~frmDescription() override;

    int currentSlide() const { return m_index; }
    // After OK: whether the show changed.
    bool changedShow() const { return m_changed; }
    // The show as edited so far (the current slide's controls included).
    const SlideShow& edited();
    void showSlide(int index);

    // The commands, as the buttons run them.
    void clearOne();
    void clearAll();
    void insertOne();
    void insertAll();
    void applyToAll(LookPart part);
    void fileInformation();
    void saveAsDefault();
    // OK: stores everything and closes.
    void store();

    // Cancel: the default look as it was.
    void reject() override;

    // Opens the dialog on a slide of the show in memory; true when OK changed the show.
    static bool Edit(int slide, QWidget* parent);

    static QString Title();

private:
    void keepControls();
    void loadControls();
    void updatePreview();

    SlideShow m_show;
    DescriptionLook m_originalDefaults; // restored on Cancel
    int m_index = 0;
    bool m_loading = false;
    bool m_changed = false;
    QLabel* m_caption = nullptr;
    QLabel* m_file = nullptr;
    QLineEdit* m_text = nullptr;
    QCheckBox* m_custom = nullptr;
    DescriptionLookEditor* m_look = nullptr;
    QLabel* m_preview = nullptr;
    std::unique_ptr<DescriptionLabels> m_previewLabels;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QCheckBox* m_showDescription = nullptr;
};

} // namespace kavori
