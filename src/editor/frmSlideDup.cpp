#include "frmSlideDup.h"

#include "SlideLoadFrm.h"
#include "platform/HelpFile.h"
#include "runtime/Format.h"
#include "slideshow/SlideShow.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

frmSlideDup::frmSlideDup(const QVector<int>& lines, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSlideDup"));
    InstallHelpKey(this, QStringLiteral("editor#mnuViewList"));
    setWindowTitle(SlideLoadFrm::Title(QStringLiteral("Check For Duplicate Slides")));
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("lstDuplicates"));
    const SlideShow& show = CurrentShow();
    for (int line : lines)
        list->addItem(QStringLiteral("%1: %2").arg(Format(line + 1, QStringLiteral("###,##0")),
                                                   show.slides.at(line).SlideFile));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* remove =
        buttons->addButton(QStringLiteral("&Remove Duplicates"), QDialogButtonBox::ActionRole);
    remove->setObjectName(QStringLiteral("CmdRemove"));
    connect(remove, &QPushButton::clicked, this, [this] {
        m_remove = true;
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Slides that repeat an earlier slide:"), this));
    layout->addWidget(list);
    layout->addWidget(buttons);
    resize(520, 320);
}

} // namespace kavori
