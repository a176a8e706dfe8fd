#include "frmPlaybackOptions.h"

#include "DescriptionLookEditor.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "slideshow/SlideWizard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kavori {

namespace {

// The interval list ends with the choice of each slide's own interval.
constexpr int kSlideIntervals = -1;

template <typename W> W* named(W* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QCheckBox* check(QWidget* parent, const char* name, const QString& text)
{
    return named(new QCheckBox(text, parent), name);
}

} // namespace

frmPlaybackOptions::frmPlaybackOptions(QWidget* parent, Page page) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmPlaybackOptions"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Playback Options]"));
    m_tabs = named(new QTabWidget(this), "tabOptions");

    auto* playing = new QWidget(m_tabs);
    auto* playingForm = new QFormLayout(playing);
    m_interval = named(new QComboBox(playing), "cboInterval");
    for (int seconds : IntervalChoices())
        m_interval->addItem(IntervalText(seconds), seconds);
    m_interval->addItem(QStringLiteral("Slide Properties"), kSlideIntervals);
    playingForm->addRow(QStringLiteral("Time between slides:"), m_interval);
    m_random = check(playing, "chkRandom", QStringLiteral("Show the slides in random order"));
    m_loop = check(playing, "chkLoop", QStringLiteral("Start again after the last slide"));
    m_toolbar = check(playing, "chkToolbar", QStringLiteral("Show the navigation toolbar"));
    m_fileNames =
        check(playing, "chkFileNames", QStringLiteral("Show the file name of each slide"));
    m_ignoreErrors =
        check(playing, "chkIgnoreErrors", QStringLiteral("Pass over slides that cannot be shown"));
    m_animate = check(playing, "chkAnimate", QStringLiteral("Animate animated GIF slides"));
    m_leftBack = check(playing, "chkLeftBack", QStringLiteral("Left mouse button: previous slide"));
    m_rightNext = check(playing, "chkRightNext", QStringLiteral("Right mouse button: next slide"));
    for (QCheckBox* box : {m_random, m_loop, m_toolbar, m_fileNames, m_ignoreErrors, m_animate,
                           m_leftBack, m_rightNext})
        playingForm->addRow(box);
    m_tabs->addTab(playing, QStringLiteral("Playing"));

    auto* transitions = new QWidget(m_tabs);
    auto* transitionsForm = new QFormLayout(transitions);
    m_enable = check(transitions, "chkEnableTransitions", QStringLiteral("Use slide transitions"));
    m_clear = check(transitions, "chkClearTransition",
                    QStringLiteral("Clear the screen before each transition"));
    m_randomTransitions = check(transitions, "chkRandomTransitions",
                                QStringLiteral("Choose a transition at random for each slide"));
    m_speed = named(new QSlider(Qt::Horizontal, transitions), "sldSpeed");
    m_speed->setRange(0, 6);
    m_speed->setTickPosition(QSlider::TicksBelow);
    transitionsForm->addRow(m_enable);
    transitionsForm->addRow(m_clear);
    transitionsForm->addRow(m_randomTransitions);
    transitionsForm->addRow(QStringLiteral("Slow - Speed - Fast:"), m_speed);
    m_tabs->addTab(transitions, QStringLiteral("Transitions"));

    auto* sound = new QWidget(m_tabs);
    auto* soundForm = new QFormLayout(sound);
    m_soundMode = named(new QComboBox(sound), "cboSoundMode");
    m_soundMode->addItems({QStringLiteral("None"), QStringLiteral("One sound for the whole show"),
                           QStringLiteral("CD Audio"), QStringLiteral("Each slide's own sound")});
    m_soundFile = named(new QLineEdit(sound), "txtSoundFile");
    auto* browse = named(new QPushButton(QStringLiteral("&Browse..."), sound), "CmdBrowseSound");
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_soundFile, 1);
    fileRow->addWidget(browse);
    m_cdTrack = named(new QSpinBox(sound), "spnCDTrack");
    m_cdTrack->setRange(0, 99);
    m_cdTrack->setSpecialValueText(QStringLiteral("All Tracks"));
    m_soundLoop = check(sound, "chkSoundLoop", QStringLiteral("Repeat the sound when it ends"));
    m_dontRestart = check(sound, "chkDontRestart",
                          QStringLiteral("Keep the sound playing when the show starts again"));
    soundForm->addRow(QStringLiteral("Sound:"), m_soundMode);
    soundForm->addRow(QStringLiteral("Sound file:"), fileRow);
    soundForm->addRow(QStringLiteral("CD track:"), m_cdTrack);
    soundForm->addRow(m_soundLoop);
    soundForm->addRow(m_dontRestart);
    m_tabs->addTab(sound, QStringLiteral("Sound"));
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString file = CurrentPrompts().openFile(
            QStringLiteral("Sound File"), m_soundFile->text(),
            QStringLiteral("Sounds (*.wav *.mid *.rmi *.mp3 *.au *.snd *.aif *.aiff *.aifc);;"
                           "All files (*)"));
        if (!file.isEmpty())
            m_soundFile->setText(file);
    });

    auto* desc = new QWidget(m_tabs);
    auto* descForm = new QFormLayout(desc);
    m_showDescription =
        check(desc, "chkShowDescription", QStringLiteral("Show the description of each slide"));
    m_look = new DescriptionLookEditor(desc);
    descForm->addRow(m_showDescription);
    descForm->addRow(m_look);
    m_tabs->addTab(desc, QStringLiteral("Descriptions"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPlaybackOptions::apply);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(buttons);

    load(CurrentPlaybackOptions());
    m_tabs->setCurrentIndex(page);
}

void frmPlaybackOptions::load(const PlaybackOptions& o)
{
    const int interval = o.useSlideIntervals ? kSlideIntervals : o.interval;
    int row = m_interval->findData(interval);
    if (row < 0) { // a value of the file that the list does not offer
        m_interval->insertItem(m_interval->count() - 1, IntervalText(interval), interval);
        row = m_interval->findData(interval);
    }
    m_interval->setCurrentIndex(row);
    m_random->setChecked(o.random);
    m_loop->setChecked(o.loop);
    m_toolbar->setChecked(o.toolbar);
    m_fileNames->setChecked(o.fileNames);
    m_ignoreErrors->setChecked(o.ignoreErrors);
    m_animate->setChecked(o.animate);
    m_leftBack->setChecked(o.leftBack);
    m_rightNext->setChecked(o.rightNext);
    m_enable->setChecked(o.enableTransitions);
    m_clear->setChecked(o.clearTransition);
    m_randomTransitions->setChecked(o.randomTransitions);
    m_speed->setValue(o.speed);
    m_soundMode->setCurrentIndex(std::clamp<int>(o.soundMode, 0, 3));
    m_soundFile->setText(o.soundFile);
    m_cdTrack->setValue(o.cdTrack);
    m_soundLoop->setChecked(o.soundLoop);
    m_dontRestart->setChecked(o.dontRestart);
    m_showDescription->setChecked(o.showDescription);
    m_look->setLook(o.look);
}

PlaybackOptions frmPlaybackOptions::options() const
{
    PlaybackOptions o;
    const int interval = m_interval->currentData().toInt();
    o.useSlideIntervals = interval == kSlideIntervals;
    o.interval = qint16(o.useSlideIntervals ? CurrentPlaybackOptions().interval : interval);
    o.random = m_random->isChecked();
    o.loop = m_loop->isChecked();
    o.toolbar = m_toolbar->isChecked();
    o.fileNames = m_fileNames->isChecked();
    o.ignoreErrors = m_ignoreErrors->isChecked();
    o.animate = m_animate->isChecked();
    o.leftBack = m_leftBack->isChecked();
    o.rightNext = m_rightNext->isChecked();
    o.enableTransitions = m_enable->isChecked();
    o.clearTransition = m_clear->isChecked();
    o.randomTransitions = m_randomTransitions->isChecked();
    o.speed = qint16(m_speed->value());
    o.soundMode = qint16(m_soundMode->currentIndex());
    o.soundFile = m_soundFile->text().trimmed();
    o.cdTrack = qint16(m_cdTrack->value());
    o.soundLoop = m_soundLoop->isChecked();
    o.dontRestart = m_dontRestart->isChecked();
    o.showDescription = m_showDescription->isChecked();
    o.look = m_look->look();
    return o;
}

bool frmPlaybackOptions::apply()
{
    const PlaybackOptions o = options();
    const QString refusal = PlaybackOptionsRefusal(o);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, windowTitle());
        return false;
    }
    ApplyPlaybackOptions(o);
    accept();
    return true;
}

bool frmPlaybackOptions::Edit(QWidget* parent, Page page)
{
    frmPlaybackOptions dialog(parent, page);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace kavori
