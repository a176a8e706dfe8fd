#pragma once

#include "slideshow/DescriptionFile.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace kavori {

// The controls of a description's look, in three groups: the text (place, speed, font,
// colour), its background (box, colour, border) and its drop shadow. Shared by the playback
// options and the slide description dialog; the font and colour pickers go through the
// program's prompts.
class DescriptionLookEditor : public QWidget {
    Q_OBJECT
public:
    explicit DescriptionLookEditor(QWidget* parent = nullptr);

    void setLook(const DescriptionLook& look);
    // What the controls say now (the custom flag as last set).
    DescriptionLook look() const;

    QGroupBox* textGroup() const { return m_textGroup; }
    QGroupBox* backGroup() const { return m_backGroup; }
    QGroupBox* shadowGroup() const { return m_shadowGroup; }

Q_SIGNALS:
    // Any control changed the look.
    void changed();

private:
    void showChoices();

    QGroupBox* m_textGroup = nullptr;
    QGroupBox* m_backGroup = nullptr;
    QGroupBox* m_shadowGroup = nullptr;
    QComboBox* m_location = nullptr;
    QSpinBox* m_speed = nullptr;
    QPushButton* m_font = nullptr;
    QLabel* m_fontInfo = nullptr;
    QPushButton* m_foreColor = nullptr;
    QCheckBox* m_useBack = nullptr;
    QPushButton* m_backColor = nullptr;
    QComboBox* m_border = nullptr;
    QCheckBox* m_shadow = nullptr;
    QSpinBox* m_shadowDistance = nullptr;
    QComboBox* m_shadowDirection = nullptr;
    QPushButton* m_shadowColor = nullptr;
    DescriptionLook m_look; // font and colours chosen so far
    bool m_loading = false;
};

} // namespace kavori
