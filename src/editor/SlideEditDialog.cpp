#include "SlideEditDialog.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QPushButton>

namespace kavori {

SlideEditDialog::SlideEditDialog(int line, QWidget* parent)
    : QDialog(parent), m_slides(CurrentShow().slides)
{
    m_line = qBound(0, line, qMax(0, int(m_slides.size()) - 1));
}

void SlideEditDialog::finishLayout(QBoxLayout* layout)
{
    auto* row = new QHBoxLayout;
    m_previous = new QPushButton(QStringLiteral("<< &Previous"), this);
    m_previous->setObjectName(QStringLiteral("CmdPrevious"));
    m_next = new QPushButton(QStringLiteral("&Next >>"), this);
    m_next->setObjectName(QStringLiteral("CmdNext"));
    connect(m_previous, &QPushButton::clicked, this, [this] { previous(); });
    connect(m_next, &QPushButton::clicked, this, [this] { next(); });
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    row->addWidget(buttons);
    layout->addLayout(row);
    if (!m_slides.isEmpty())
        loadSlide();
    updateStepping();
}

void SlideEditDialog::stepTo(int line)
{
    if (m_slides.isEmpty() || line < 0 || line >= m_slides.size() || line == m_line)
        return;
    storeSlide();
    m_line = line;
    loadSlide();
    updateStepping();
}

void SlideEditDialog::updateStepping()
{
    setWindowTitle(caption(m_line));
    m_previous->setEnabled(m_line > 0);
    m_next->setEnabled(m_line + 1 < m_slides.size());
}

void SlideEditDialog::accept()
{
    if (!m_slides.isEmpty())
        storeSlide();
    SlideShow& show = CurrentShow();
    // The show may not have changed size meanwhile: the dialog is modal over the editor.
    if (show.slides.size() == m_slides.size() && show.slides != m_slides) {
        show.slides = m_slides;
        show.changed = true;
    }
    QDialog::accept();
}

} // namespace kavori
