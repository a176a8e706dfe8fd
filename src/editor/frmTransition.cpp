#include "frmTransition.h"

#include "SlideLoadFrm.h"
#include "imaging/PictureLoader.h"
#include "platform/HelpFile.h"
#include "playback/TransitionEngine.h"
#include "playback/TransitionPreview.h"
#include "playback/player/SlideLayout.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideTransitions.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace kavori {

namespace {

QString emptyPreviewText()
{
    return QStringLiteral("Click the Preview button to view the currently selected image here.");
}

// The screen the show plays on, in the player's pixels.
QSize playerScreen(const QWidget* widget)
{
    const QScreen* screen = widget->screen();
    return (QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize();
}

} // namespace

frmTransition::frmTransition(int line, QWidget* parent) : SlideEditDialog(line, parent)
{
    setObjectName(QStringLiteral("frmTransition"));
    InstallHelpKey(this, QStringLiteral("slides#frmTransition"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("ListTrans"));
    m_list->addItems(TransitionNames());
    m_list->setMinimumWidth(300);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && !slides().isEmpty())
            current().SlideTransition = qint16(row);
    });
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { preview(); });

    m_preview = new TransitionPreviewBox(this);
    m_preview->setLines({emptyPreviewText()});

    auto* commands = new QGridLayout;
    auto add = [&](const char* name, const QString& text, int row, int column, auto&& slot) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, slot);
        commands->addWidget(button, row, column);
    };
    add("CmdPreview", QStringLiteral("Pre&view"), 0, 0, [this] { preview(); });
    add("CmdFullPreview", QStringLiteral("&Full Screen..."), 0, 1, [this] { previewFullScreen(); });
    add("CmdNoTrans", QStringLiteral("N&o Transition"), 1, 0, [this] { noTransition(); });
    add("CmdRandomSelect", QStringLiteral("Pick R&andom"), 1, 1, [this] { randomSelect(); });
    add("CmdSetAll", QStringLiteral("&Set All"), 2, 0, [this] { setAll(); });
    add("CmdClearAll", QStringLiteral("&Clear All"), 2, 1, [this] { clearAll(); });
    add("CmdRandomize", QStringLiteral("&Randomize All"), 3, 0, [this] { randomizeAll(); });

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    auto* right = new QVBoxLayout;
    right->addWidget(m_preview, 1);
    right->addWidget(m_status);
    right->addLayout(commands);
    auto* top = new QHBoxLayout;
    top->addWidget(m_list, 1);
    top->addLayout(right);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    finishLayout(layout);
    resize(640, 420);
}

QString frmTransition::caption(int line) const
{
    return TransitionCaption(line);
}

int frmTransition::selectedTransition() const
{
    return m_list->currentRow();
}

void frmTransition::selectTransition(int number)
{
    m_list->setCurrentRow(qBound(0, number, m_list->count() - 1));
}

void frmTransition::loadSlide()
{
    selectTransition(current().SlideTransition);
    m_list->scrollToItem(m_list->currentItem());
    if (!m_preview->isPlaying())
        m_preview->setLines({emptyPreviewText()});
}

void frmTransition::storeSlide()
{
    current().SlideTransition = qint16(qMax(0, selectedTransition()));
}

void frmTransition::noTransition()
{
    if (current().SlideTransition == 0) {
        MsgBox(AlreadyNoTransitionText(), vbInformation, AppTitle());
        return;
    }
    selectTransition(0);
}

void frmTransition::clearAll()
{
    const ClearTransitionsPrompt prompt = ClearAllTransitionsPrompt(slides());
    if (!prompt.alreadySet.isEmpty()) {
        MsgBox(prompt.alreadySet, vbInformation, AppTitle());
        return;
    }
    if (MsgBox(prompt.question, vbYesNo | vbQuestion | vbDefaultButton2, AppTitle()) != vbYes)
        return;
    for (Slide& slide : editedSlides())
        slide.SlideTransition = 0;
    reload();
}

void frmTransition::setAll()
{
    const int number = qMax(0, selectedTransition());
    if (MsgBox(SetAllTransitionsQuestion(m_list->item(number)->text()), vbYesNo | vbQuestion,
               AppTitle()) != vbYes)
        return;
    for (Slide& slide : editedSlides())
        slide.SlideTransition = qint16(number);
}

void frmTransition::randomizeAll()
{
    if (MsgBox(RandomizeTransitionsQuestion(), vbYesNo | vbQuestion, AppTitle()) != vbYes)
        return;
    Randomize();
    RandomizeTransitions(editedSlides(), m_list->count());
    reload();
}

void frmTransition::randomSelect()
{
    selectTransition(RandomSelectIndex(m_list->count(), selectedTransition()));
    m_list->scrollToItem(m_list->currentItem());
}

void frmTransition::preview()
{
    if (m_preview->isPlaying())
        return;
    const Slide& slide = current();
    if (IsPreviewMovie(slide.SlideFile)) {
        m_preview->setLines(MoviePreviewLines());
        return;
    }
    m_status->setText(QStringLiteral("Generating preview..."));
    m_status->repaint();
    QImage texture;
    if (slide.SlideBackMode == 2 && !slide.SlideTexture.isEmpty())
        texture = LoadPicture(SlideFullPath(CurrentShow(), slide.SlideTexture));
    QImage picture = SlidePreview(slide, CurrentShow().path, playerScreen(this),
                                  m_preview->pixelSize(), texture);
    // The box shows the screen's proportions, letterboxed in black.
    QImage boxed(m_preview->pixelSize(), QImage::Format_RGB32);
    boxed.fill(Qt::black);
    {
        QPainter painter(&boxed);
        painter.drawImage((boxed.width() - picture.width()) / 2,
                          (boxed.height() - picture.height()) / 2, picture);
    }
    m_status->setText(QStringLiteral("Showing transition..."));
    m_preview->play(qint16(qMax(0, selectedTransition())), boxed);
    m_status->clear();
}

void frmTransition::previewFullScreen()
{
    if (m_preview->isPlaying())
        return;
    PreviewTransitionFullScreen(current(), qint16(qMax(0, selectedTransition())), this);
}

void frmTransition::reject()
{
    // An effect running in the box is stopped first; the dialog closes once it has ended.
    if (m_preview->isPlaying()) {
        m_preview->stop();
        QTimer::singleShot(0, this, &frmTransition::reject);
        return;
    }
    SlideEditDialog::reject();
}

bool frmTransition::Edit(QWidget* parent, int line)
{
    if (CurrentShow().slides.isEmpty())
        return false;
    frmTransition dialog(line, parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace kavori
