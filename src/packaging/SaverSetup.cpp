#include "SaverSetup.h"

#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "platform/WindowLock.h"
#include "runtime/Prompts.h"
#include "slideshow/SlideShowFile.h"
#include "systemsaver/SystemSaver.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kavori {

namespace {

template <class W> W* named(W* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// An option with its explanation underneath, as the sound frame shows them.
QWidget* explained(QRadioButton* option, const QString& note)
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(option);
    auto* label = new QLabel(note);
    label->setContentsMargins(22, 0, 0, 0);
    label->setEnabled(false);
    layout->addWidget(label);
    return box;
}

} // namespace

QString SaverSetup::WindowTitle()
{
    return QStringLiteral("Kavori - [Screen Saver Settings]");
}

SaverSetup::SaverSetup(QWidget* parent)
    : QDialog(parent), m_lock(std::make_unique<WindowLock>(WindowTitle()))
{
    setObjectName(QStringLiteral("SaverSetup"));
    setWindowTitle(WindowTitle());

    m_tabs = named(new QTabWidget, "SSTab1");
    m_tabs->setUsesScrollButtons(false); // every tab caption in full, the long one too

    // The show and how it plays.
    auto* showPage = new QWidget;
    auto* show = new QGridLayout(showPage);
    auto* select =
        named(new QPushButton(QStringLiteral("Select Screen Saver &File")), "CmdSelectFile");
    auto* edit = named(new QPushButton(QStringLiteral("&Edit Screen Saver")), "CmdEditShow");
    m_nameOnly = named(new QLabel, "lblNameOnly");
    QFont bold = m_nameOnly->font();
    bold.setBold(true);
    m_nameOnly->setFont(bold);
    m_currentFile = named(new QLabel, "lblCurrentFile");
    m_currentFile->setCursor(Qt::PointingHandCursor);
    m_currentFile->setWordWrap(true);
    m_currentFile->installEventFilter(this);
    m_interval = named(new QComboBox, "ComboInterval");
    m_interval->addItems(SaverIntervalItems());
    m_keepInterval =
        named(new QCheckBox(QStringLiteral("Keep interv&al settings stored in screen saver file.")),
              "CheckKeepInt");
    m_random = named(new QCheckBox(QStringLiteral("Choose &random image order.")), "CheckRandom");
    m_startLast =
        named(new QCheckBox(QStringLiteral("Start at last i&mage displayed.")), "CheckStartLast");
    show->addWidget(select, 0, 0);
    show->addWidget(edit, 0, 1);
    show->addWidget(m_nameOnly, 1, 0, 1, 2);
    show->addWidget(m_currentFile, 2, 0, 1, 2);
    auto* intervalRow = new QHBoxLayout;
    intervalRow->addWidget(new QLabel(QStringLiteral("Interval:")));
    intervalRow->addWidget(m_interval);
    intervalRow->addStretch();
    show->addLayout(intervalRow, 3, 0, 1, 2);
    show->addWidget(m_keepInterval, 4, 0, 1, 2);
    show->addWidget(m_random, 5, 0, 1, 2);
    show->addWidget(m_startLast, 6, 0, 1, 2);

    auto* soundFrame = named(new QGroupBox(QStringLiteral("Sound")), "FrameSound");
    auto* sound = new QVBoxLayout(soundFrame);
    m_yesSound = named(new QRadioButton(QStringLiteral("Enable &Sound.")), "OptionYesSound");
    m_noSound = named(new QRadioButton(QStringLiteral("&No sound.")), "OptionNoSound");
    sound->addWidget(
        explained(m_yesSound, QStringLiteral("Use the sound settings in screen saver file.")));
    sound->addWidget(explained(m_noSound, QStringLiteral("Don't play any sound.")));
    m_soundFile = named(new QLabel, "lblSoundFile");
    m_soundFile->setCursor(Qt::PointingHandCursor);
    m_soundFile->setWordWrap(true);
    m_soundFile->installEventFilter(this);
    sound->addWidget(m_soundFile);
    show->addWidget(soundFrame, 7, 0, 1, 2);
    show->setRowStretch(8, 1);
    m_tabs->addTab(showPage, QStringLiteral("Screen Saver"));

    // The background every slide gets.
    auto* colorPage = new QWidget;
    auto* colorLayout = new QVBoxLayout(colorPage);
    auto* colorFrame = named(new QGroupBox(QStringLiteral("Background Color")), "FrameColor");
    auto* colors = new QGridLayout(colorFrame);
    m_colors = new QButtonGroup(this);
    auto addColor = [&](const char* name, const QString& caption, int id, int row, int col,
                        int span = 1) {
        auto* option = named(new QRadioButton(caption), name);
        m_colors->addButton(option, id);
        colors->addWidget(option, row, col, 1, span);
        return option;
    };
    addColor("OptionKeepBC", QStringLiteral("Keep the colors stored in screen sa&ver file."),
             kSaverKeepColors, 0, 0, 3);
    addColor("Option1", QStringLiteral("&Black"), kSaverBlack, 1, 0);
    addColor("Option2", QStringLiteral("&White"), kSaverWhite, 1, 1);
    addColor("Option3", QStringLiteral("S&ystem"), kSaverSystem, 1, 2);
    addColor("Option4", QStringLiteral("Dark B&lue"), kSaverDarkBlue, 2, 0);
    addColor("Option5", QStringLiteral("Dark R&ed"), kSaverDarkRed, 2, 1);
    addColor("Option6", QStringLiteral("Dark Bro&wn"), kSaverDarkBrown, 2, 2);
    addColor("OptionCustomColor", QStringLiteral("&Use a custom background color."), kSaverCustom,
             3, 0, 2);
    auto* background = named(new QPushButton(QStringLiteral("...")), "CmdBackground");
    background->setFixedWidth(32);
    m_colorSample = named(new QLabel, "lblColor");
    m_colorSample->setFixedSize(48, 22);
    m_colorSample->setAutoFillBackground(true);
    m_colorSample->setFrameShape(QFrame::Box);
    auto* custom = new QHBoxLayout;
    custom->addWidget(background);
    custom->addWidget(m_colorSample);
    custom->addStretch();
    colors->addLayout(custom, 3, 2);
    colorLayout->addWidget(colorFrame);
    colorLayout->addStretch();
    m_tabs->addTab(colorPage, QStringLiteral("Background"));

    // The password belongs to the system's locker here, as on Windows NT.
    auto* passPage = new QWidget;
    auto* pass = new QGridLayout(passPage);
    m_passDelay = named(new QComboBox, "ComboPassDelay");
    m_passDelay->addItems(SaverPasswordDelayItems());
    auto* change = named(new QPushButton(QStringLiteral("C&hange")), "CmdPassChange");
    auto* passMsg = named(new QLabel, "lblPassMsg");
    passMsg->setWordWrap(true);
    pass->addWidget(new QLabel(QStringLiteral("Delay:")), 0, 0);
    pass->addWidget(m_passDelay, 0, 1);
    pass->addWidget(change, 1, 0);
    pass->addWidget(passMsg, 2, 0, 1, 2);
    pass->setRowStretch(3, 1);
    pass->setColumnStretch(2, 1);
    m_passDelay->setEnabled(false);
    change->setEnabled(false);
    passMsg->setEnabled(false);
    m_tabs->addTab(passPage, QStringLiteral("Password (Use Windows NT to change your password)"));

    auto* ok = named(new QPushButton(QStringLiteral("OK")), "CmdOK");
    auto* cancel = named(new QPushButton(QStringLiteral("Cancel")), "CmdCancel");
    auto* help = named(new QPushButton(QStringLiteral("Help")), "CmdHelp");
    ok->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    buttons->addWidget(help);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addLayout(buttons);

    connect(ok, &QPushButton::clicked, this, &SaverSetup::CmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [] { ShowHelp(); });
    connect(edit, &QPushButton::clicked, this, &SaverSetup::CmdEditShow_Click);
    connect(select, &QPushButton::clicked, this, &SaverSetup::CmdSelectFile_Click);
    connect(background, &QPushButton::clicked, this, &SaverSetup::CmdBackground_Click);

    setChoices(LoadSaverChoices());
}

SaverSetup::~SaverSetup() = default;

bool SaverSetup::Edit(QWidget* parent)
{
    SaverSetup dialog(parent);
    return dialog.exec() == QDialog::Accepted;
}

SaverChoices SaverSetup::choices() const
{
    SaverChoices c = m_choices;
    c.intervalIndex = m_interval->currentIndex();
    c.keepIntervals = m_keepInterval->isChecked();
    c.randomOrder = m_random->isChecked();
    c.startAtLast = m_startLast->isChecked();
    c.sound = m_yesSound->isChecked();
    c.color = m_colors->checkedId() < 0 ? kSaverKeepColors : m_colors->checkedId();
    c.passwordDelay = m_passDelay->currentIndex();
    return c;
}

void SaverSetup::setChoices(const SaverChoices& c)
{
    m_choices = c;
    m_currentFile->setText(c.showPath);
    m_nameOnly->setText(SaverNameOnly(c.showPath));
    m_interval->setCurrentIndex(c.intervalIndex);
    m_keepInterval->setChecked(c.keepIntervals);
    m_random->setChecked(c.randomOrder);
    m_startLast->setChecked(c.startAtLast);
    (c.sound ? m_yesSound : m_noSound)->setChecked(true);
    m_soundFile->setText(c.soundNote);
    if (QAbstractButton* option = m_colors->button(c.color))
        option->setChecked(true);
    m_passDelay->setCurrentIndex(c.passwordDelay);
    showColor();
}

void SaverSetup::showColor()
{
    QPalette palette = m_colorSample->palette();
    palette.setColor(QPalette::Window, m_choices.customColor);
    m_colorSample->setPalette(palette);
}

void SaverSetup::CmdOK_Click()
{
    if (SaveSaverChoices(choices(), CurrentSystemSaver()))
        accept();
}

void SaverSetup::CmdEditShow_Click()
{
    const auto start = [](const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
    };
    if (EditSaverShow(choices(), CurrentSystemSaver(), start))
        accept();
}

void SaverSetup::CmdSelectFile_Click()
{
    const QString folder = m_choices.showPath.isEmpty() ? QString() : FolderOf(m_choices.showPath);
    const QString path = CurrentPrompts().openFile(QStringLiteral("Select Screen Saver File"),
                                                   folder, SlideShowFilter());
    SaverChoices c = choices();
    if (SelectSaverShow(path, c))
        setChoices(c);
}

void SaverSetup::CmdBackground_Click()
{
    const std::optional<QColor> color = CurrentPrompts().chooseColor(m_choices.customColor);
    if (!color)
        return;
    m_choices.customColor = *color;
    m_colors->button(kSaverCustom)->setChecked(true);
    showColor();
}

bool SaverSetup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        if (watched == m_currentFile)
            ShowSaverFileInfo(choices());
        else if (watched == m_soundFile)
            ShowSaverSoundInfo(choices());
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace kavori
