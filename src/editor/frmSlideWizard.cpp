#include "frmSlideWizard.h"

#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kavori {

namespace {

QString title()
{
    return AppTitle() + QStringLiteral(" - [Slide Show Wizard]");
}

QPushButton* button(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

// A page: a heading, a line of help, and its fields.
QWidget* makePage(QWidget* parent, const QString& heading, const QString& help, QLayout* fields)
{
    auto* w = new QWidget(parent);
    auto* layout = new QVBoxLayout(w);
    auto* h = new QLabel(QStringLiteral("<b>") + heading + QStringLiteral("</b>"), w);
    layout->addWidget(h);
    auto* text = new QLabel(help, w);
    text->setWordWrap(true);
    layout->addWidget(text);
    layout->addLayout(fields);
    layout->addStretch();
    return w;
}

QHBoxLayout* folderRow(QWidget* parent, QLineEdit* edit, QPushButton* browse)
{
    auto* row = new QHBoxLayout;
    row->addWidget(edit, 1);
    row->addWidget(browse);
    Q_UNUSED(parent);
    return row;
}

} // namespace

frmSlideWizard::frmSlideWizard(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSlideWizard"));
    InstallHelpKey(this, QStringLiteral("wizard"));
    setWindowTitle(title());
    const Settings& s = CurrentSettings();
    m_pages = new QStackedWidget(this);

    m_name = new QLineEdit(s.LastWizardName, this);
    m_name->setObjectName(QStringLiteral("txtName"));
    auto* nameFields = new QFormLayout;
    nameFields->addRow(QStringLiteral("Slide show name:"), m_name);
    m_pages->addWidget(makePage(this, QStringLiteral("Name your slide show"),
                                QStringLiteral("The wizard makes a slide show of every picture in "
                                               "one folder. First, give the show a name."),
                                nameFields));

    m_pictureFolder = new QLineEdit(this);
    m_pictureFolder->setObjectName(QStringLiteral("txtImagePath"));
    m_pictureCount = new QLabel(this);
    m_pictureCount->setObjectName(QStringLiteral("lblImageCount"));
    QPushButton* browsePictures = button(this, "CmdBrowseImages", QStringLiteral("&Browse..."));
    auto* pictureFields = new QVBoxLayout;
    pictureFields->addWidget(new QLabel(QStringLiteral("Path to image directory:"), this));
    pictureFields->addLayout(folderRow(this, m_pictureFolder, browsePictures));
    pictureFields->addWidget(m_pictureCount);
    m_pages->addWidget(makePage(this, QStringLiteral("Choose the pictures"),
                                QStringLiteral("Every picture of this folder becomes a slide, in "
                                               "the order of the folder's list."),
                                pictureFields));
    connect(m_pictureFolder, &QLineEdit::textChanged, this, &frmSlideWizard::updateFolderCount);
    connect(browsePictures, &QPushButton::clicked, this, [this] {
        const QString folder = CurrentPrompts().chooseFolder(
            QStringLiteral("Path to image directory:"), m_pictureFolder->text());
        if (!folder.isEmpty())
            m_pictureFolder->setText(folder);
    });

    m_showFolder = new QLineEdit(PathNoCase(AppPath(), QStringLiteral("Slides")), this);
    m_showFolder->setObjectName(QStringLiteral("txtShowPath"));
    QPushButton* browseShow = button(this, "CmdBrowseShow", QStringLiteral("B&rowse..."));
    auto* showFields = new QVBoxLayout;
    showFields->addWidget(new QLabel(QStringLiteral("Path to slide show file:"), this));
    showFields->addLayout(folderRow(this, m_showFolder, browseShow));
    m_pages->addWidget(makePage(this, QStringLiteral("Where the show is kept"),
                                QStringLiteral("The slide show file is written into this folder."),
                                showFields));
    connect(browseShow, &QPushButton::clicked, this, [this] {
        const QString folder = CurrentPrompts().chooseFolder(
            QStringLiteral("Path to slide show file:"), m_showFolder->text());
        if (!folder.isEmpty())
            m_showFolder->setText(folder);
    });

    m_interval = new QComboBox(this);
    m_interval->setObjectName(QStringLiteral("cboInterval"));
    for (int seconds : IntervalChoices())
        m_interval->addItem(IntervalText(seconds), seconds);
    m_interval->setCurrentIndex(std::max(0, m_interval->findData(int(s.SlideInterval))));
    m_random = new QCheckBox(QStringLiteral("Show the slides in random order"), this);
    m_random->setObjectName(QStringLiteral("chkRandom"));
    m_toolbar = new QCheckBox(QStringLiteral("Show the navigation toolbar"), this);
    m_toolbar->setObjectName(QStringLiteral("chkToolbar"));
    auto* optionFields = new QFormLayout;
    optionFields->addRow(QStringLiteral("Time between slides:"), m_interval);
    optionFields->addRow(m_random);
    optionFields->addRow(m_toolbar);
    m_pages->addWidget(makePage(this, QStringLiteral("How the show plays"),
                                QStringLiteral("Choose how long each slide stays, the order of the "
                                               "slides and whether the toolbar shows."),
                                optionFields));

    m_back = button(this, "CmdBack", QStringLiteral("< &Back"));
    m_next = button(this, "CmdNext", QStringLiteral("&Next >"));
    m_finish = button(this, "CmdFinish", QStringLiteral("&Finish"));
    QPushButton* cancel = button(this, "CmdCancel", QStringLiteral("Cancel"));
    connect(m_back, &QPushButton::clicked, this, &frmSlideWizard::back);
    connect(m_next, &QPushButton::clicked, this, &frmSlideWizard::next);
    connect(m_finish, &QPushButton::clicked, this, &frmSlideWizard::finish);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* b : {m_back, m_next, m_finish, cancel})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages, 1);
    layout->addLayout(buttons);
    resize(520, 300);
    showPage(0);
}

int frmSlideWizard::page() const
{
    return m_pages->currentIndex();
}

void frmSlideWizard::showPage(int index)
{
    m_pages->setCurrentIndex(index);
    m_back->setEnabled(index > 0);
    m_next->setEnabled(index < m_pages->count() - 1);
    m_finish->setEnabled(index == m_pages->count() - 1);
    m_next->setDefault(index < m_pages->count() - 1);
    m_finish->setDefault(index == m_pages->count() - 1);
}

void frmSlideWizard::updateFolderCount()
{
    const QString folder = m_pictureFolder->text();
    m_pictures = QFileInfo(folder).isDir() ? int(WizardPictures(folder).size()) : 0;
    m_pictureCount->setText(WizardFolderText(m_pictures));
}

bool frmSlideWizard::next()
{
    QString refusal;
    switch (page()) {
    case 0:
        refusal = WizardNameRefusal(m_name->text());
        break;
    case 1:
        updateFolderCount();
        refusal = WizardFolderRefusal(m_pictures);
        break;
    case 2:
        if (!QFileInfo(m_showFolder->text()).isDir())
            refusal = QStringLiteral("The folder for the slide show file does not exist.") +
                      NewLine2() + QStringLiteral("Choose another directory and then try again...");
        break;
    default:
        return false;
    }
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, title());
        return false;
    }
    showPage(page() + 1);
    return true;
}

void frmSlideWizard::back()
{
    if (page() > 0)
        showPage(page() - 1);
}

WizardChoices frmSlideWizard::choices() const
{
    WizardChoices c;
    c.name = m_name->text().trimmed();
    c.pictureFolder = m_pictureFolder->text();
    c.showFolder = m_showFolder->text();
    c.interval = m_interval->currentData().toInt();
    c.random = m_random->isChecked();
    c.toolbar = m_toolbar->isChecked();
    return c;
}

bool frmSlideWizard::finish()
{
    const WizardChoices c = choices();
    const QString note = WizardManualNote(c.toolbar, c.interval);
    if (!note.isEmpty())
        MsgBox(note, vbInformation, title());
    const QString path = WizardShowPath(c.showFolder, c.name);
    if (QFileInfo::exists(path) &&
        MsgBox(QStringLiteral("The specified slide show file already exists:") + NewLine2() + path +
                   NewLine2() + QStringLiteral("Replace this file?"),
               vbYesNo + vbQuestion, title()) != vbYes)
        return false;
    bool written = false;
    {
        WaitDialog wait(title());
        wait.setCaption(QStringLiteral("Please wait, creating slide show..."));
        written = CreateWizardShow(c);
    }
    if (!written) {
        MsgBox(QStringLiteral("Unable to write the slide show file:") + NewLine2() + path +
                   NewLine2() + QStringLiteral("..."),
               vbCritical, title());
        return false;
    }
    MsgBox(QStringLiteral("Your new slide show has been created!") + NewLine2() +
               QStringLiteral("Click the \"View Show\" button on the next screen to start your "
                              "slide show..."),
           vbInformation, title());
    accept();
    return true;
}

} // namespace kavori
