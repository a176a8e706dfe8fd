#include "frmAdvDescEdit.h"

#include "runtime/MsgBox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

frmAdvDescEdit::frmAdvDescEdit(const QString& fileName, const QString& text, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAdvDescEdit"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Edit Description]"));
    auto* file = new QLabel(QStringLiteral("Description for ") + fileName + u':', this);
    file->setObjectName(QStringLiteral("lblFile"));
    m_text = new QLineEdit(text, this);
    m_text->setObjectName(QStringLiteral("txtDescription"));
    m_text->setMinimumWidth(420);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmAdvDescEdit::confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(file);
    layout->addWidget(m_text);
    layout->addWidget(buttons);
}

QString frmAdvDescEdit::text() const
{
    return m_text->text().trimmed();
}

void frmAdvDescEdit::confirm()
{
    if (text().isEmpty()) {
        MsgBox(QStringLiteral("A description was not entered.") + NewLine2() +
                   QStringLiteral("Use the \"Remove Description\" command to clear a "
                                  "description..."),
               vbExclamation, windowTitle());
        return;
    }
    accept();
}

std::optional<QString> frmAdvDescEdit::Ask(const QString& fileName, const QString& text,
                                           QWidget* parent)
{
    frmAdvDescEdit dialog(fileName, text, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.text();
}

} // namespace kavori
