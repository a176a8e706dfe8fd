#include "WaitDialog.h"

#include "DoEvents.h"

#include <QApplication>
#include <QProgressDialog>

namespace kavori {

WaitDialog::WaitDialog(const QString& title)
    : m_dialog(std::make_unique<QProgressDialog>(QApplication::activeWindow()))
{
    m_dialog->setObjectName(QStringLiteral("frmWait"));
    m_dialog->setWindowTitle(title);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setCancelButtonText(QStringLiteral("Cancel"));
    m_dialog->setMinimumWidth(420);
    m_dialog->show();
    DoEvents();
}

WaitDialog::~WaitDialog() = default;

void WaitDialog::setCaption(const QString& text)
{
    m_dialog->setLabelText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
}

void WaitDialog::setMaximum(int maximum)
{
    m_dialog->setMaximum(maximum);
}

void WaitDialog::setValue(int value)
{
    m_dialog->setValue(value);
}

bool WaitDialog::cancelled()
{
    DoEvents();
    return m_dialog->wasCanceled();
}

} // namespace kavori
