#include "frmSlideInfo.h"

#include "platform/HelpFile.h"
#include "runtime/MsgBox.h"
#include "slideshow/ShowInformation.h"
#include "slideshow/SlideShow.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kavori {

frmSlideInfo::frmSlideInfo(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSlideInfo"));
    InstallHelpKey(this, QStringLiteral("editor#mnuFile"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Slide Show Information]"));
    const SlideShow& show = CurrentShow();
    const ShowInformation info = DescribeShow(show);
    auto* form = new QFormLayout;
    auto row = [&](const char* name, const QString& caption, const QString& text) {
        auto* label = new QLabel(text, this);
        label->setObjectName(QString::fromLatin1(name));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(caption, label);
    };
    row("lblFile", QStringLiteral("Slide show:"),
        show.path.isEmpty() ? QStringLiteral("Untitled.KAV") : show.path);
    row("lblFileSize", QStringLiteral("File size:"), info.fileSize);
    row("lblSlides", QStringLiteral("Slides:"),
        info.missing.isEmpty() ? info.slides : info.slides + u' ' + info.missing);
    row("lblSound", QStringLiteral("Sound:"), info.sound);
    row("lblTextures", QStringLiteral("Textures:"), info.textures);
    row("lblTime", QStringLiteral("Total time:"), info.totalTime);
    m_notes = new QPlainTextEdit(show.ShowInfo, this);
    m_notes->setObjectName(QStringLiteral("txtShowInfo"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        apply();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(new QLabel(QStringLiteral("Information about this slide show:"), this));
    layout->addWidget(m_notes, 1);
    layout->addWidget(buttons);
    resize(520, 360);
}

void frmSlideInfo::apply()
{
    SlideShow& show = CurrentShow();
    // The file keeps the text on one line.
    const QString notes = m_notes->toPlainText().replace(u'\n', u' ').replace(u'"', u'\'');
    if (notes != show.ShowInfo) {
        show.ShowInfo = notes;
        show.changed = true;
    }
}

} // namespace kavori
