#include "SlideRangeFrm.h"

#include "SlideLoadFrm.h"
#include "platform/HelpFile.h"
#include "slideshow/SlideShow.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QStringListModel>
#include <QVBoxLayout>

namespace kavori {

SlideRangeFrm::SlideRangeFrm(const QString& prompt, int currentLine, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("SlideRangeFrm"));
    InstallHelpKey(this, QStringLiteral("editor#mnuViewList"));
    setWindowTitle(SlideLoadFrm::Title(QStringLiteral("Select Range")));
    QStringList lines;
    const QVector<Slide>& slides = CurrentShow().slides;
    lines.reserve(slides.size());
    for (int i = 0; i < slides.size(); ++i)
        lines << QString::number(i + 1) + QStringLiteral(" - ") +
                     QFileInfo(slides.at(i).SlideFile).fileName();
    // Both lists share one model: a show of 30,000 slides is listed once.
    auto* model = new QStringListModel(lines, this);
    m_first = new QComboBox(this);
    m_first->setObjectName(QStringLiteral("cboFirst"));
    m_last = new QComboBox(this);
    m_last->setObjectName(QStringLiteral("cboLast"));
    for (QComboBox* box : {m_first, m_last}) {
        box->setModel(model);
        box->setMaxVisibleItems(20);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(32);
    }
    connect(m_first, &QComboBox::currentIndexChanged, this, [this](int first) {
        if (m_last->currentIndex() < first)
            m_last->setCurrentIndex(first);
    });
    connect(m_last, &QComboBox::currentIndexChanged, this, [this](int last) {
        if (last >= 0 && m_first->currentIndex() > last)
            m_first->setCurrentIndex(last);
    });
    const int line = qBound(0, currentLine, qMax(0, int(slides.size()) - 1));
    setRange(line, int(slides.size()) - 1);

    auto* label = new QLabel(prompt, this);
    label->setObjectName(QStringLiteral("lblPrompt"));
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&From slide:"), m_first);
    form->addRow(QStringLiteral("&To slide:"), m_last);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

SlideRange SlideRangeFrm::range() const
{
    return {m_first->currentIndex(), m_last->currentIndex()};
}

void SlideRangeFrm::setRange(int first, int last)
{
    m_first->setCurrentIndex(first);
    m_last->setCurrentIndex(last);
}

std::optional<SlideRange> SlideRangeFrm::Pick(QWidget* parent, const QString& prompt,
                                              int currentLine)
{
    if (CurrentShow().slides.isEmpty())
        return std::nullopt;
    SlideRangeFrm dialog(prompt, currentLine, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const SlideRange chosen = dialog.range();
    if (chosen.first < 0 || chosen.last < chosen.first)
        return std::nullopt;
    return chosen;
}

} // namespace kavori
