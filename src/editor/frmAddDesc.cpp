#include "frmAddDesc.h"

#include "runtime/MsgBox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

frmAddDesc::frmAddDesc(const QStringList& files, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAddDesc"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Add Description]"));
    m_files = new QListWidget(this);
    m_files->setObjectName(QStringLiteral("lstFiles"));
    m_files->addItems(files);
    connect(m_files, &QListWidget::itemDoubleClicked, this, &frmAddDesc::confirm);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmAddDesc::confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Files without a description:"), this));
    layout->addWidget(m_files, 1);
    layout->addWidget(buttons);
    resize(360, 320);
}

QString frmAddDesc::chosen() const
{
    const QListWidgetItem* item = m_files->currentItem();
    return item && item->isSelected() ? item->text() : QString();
}

void frmAddDesc::confirm()
{
    if (chosen().isEmpty()) {
        MsgBox(QStringLiteral("Select a file to create a description for and then try again..."),
               vbExclamation, windowTitle());
        return;
    }
    accept();
}

QString frmAddDesc::Choose(const QStringList& files, QWidget* parent)
{
    frmAddDesc dialog(files, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.chosen() : QString();
}

} // namespace kavori
