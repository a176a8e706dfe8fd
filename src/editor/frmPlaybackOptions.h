#pragma once

#include "slideshow/PlaybackOptions.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QSpinBox;
class QTabWidget;

namespace kavori {

class DescriptionLookEditor;

// The playback options of the show in memory, on four pages: playing, transitions, sound and
// descriptions. OK applies them to the show and keeps them as the user's defaults.
class frmPlaybackOptions : public QDialog {
    Q_OBJECT
public:
    enum Page { Playing, Transitions, Sound, Descriptions };
    explicit frmPlaybackOptions(QWidget* parent = nullptr, Page page = Playing);

    // What the controls say now.
    PlaybackOptions options() const;
    // OK: refused with a message, or applied and closed.
    bool apply();

    // Opens the dialog on a page; true when the options were applied.
    static bool Edit(QWidget* parent, Page page = Playing);

private:
    void load(const PlaybackOptions& o);

    QTabWidget* m_tabs = nullptr;
    QComboBox* m_interval = nullptr;
    QCheckBox* m_random = nullptr;
    QCheckBox* m_loop = nullptr;
    QCheckBox* m_toolbar = nullptr;
    QCheckBox* m_fileNames = nullptr;
    QCheckBox* m_ignoreErrors = nullptr;
    QCheckBox* m_animate = nullptr;
    QCheckBox* m_leftBack = nullptr;
    QCheckBox* m_rightNext = nullptr;
    QCheckBox* m_enable = nullptr;
    QCheckBox* m_clear = nullptr;
    QCheckBox* m_randomTransitions = nullptr;
    QSlider* m_speed = nullptr;
    QComboBox* m_soundMode = nullptr;
    QLineEdit* m_soundFile = nullptr;
    QSpinBox* m_cdTrack = nullptr;
    QCheckBox* m_soundLoop = nullptr;
    QCheckBox* m_dontRestart = nullptr;
    QCheckBox* m_showDescription = nullptr;
    DescriptionLookEditor* m_look = nullptr;
};

} // namespace kavori
