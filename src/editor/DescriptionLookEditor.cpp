#include "DescriptionLookEditor.h"

#include "playback/DescriptionLabels.h"
#include "runtime/Prompts.h"
#include "runtime/VbColor.h"
#include "slideshow/SlideDescriptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace kavori {

namespace {

template <typename W> W* named(W* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

void paintSwatch(QPushButton* button, qint32 vb)
{
    const QColor c = FromVbColor(vb);
    // The caption stays readable on any colour: dark on bright swatches, light on dark ones.
    const bool bright = c.red() * 299 + c.green() * 587 + c.blue() * 114 > 140000;
    button->setStyleSheet(
        QStringLiteral("background: %1; color: %2;")
            .arg(c.name(), bright ? QStringLiteral("black") : QStringLiteral("white")));
}

} // namespace

DescriptionLookEditor::DescriptionLookEditor(QWidget* parent) : QWidget(parent)
{
    m_textGroup = named(new QGroupBox(QStringLiteral("Text"), this), "fraText");
    m_location = named(new QComboBox(m_textGroup), "cboLocation");
    m_location->addItems(DescriptionLocations());
    m_speed = named(new QSpinBox(m_textGroup), "spnDescSpeed");
    m_speed->setRange(1, 9);
    m_font = named(new QPushButton(m_textGroup), "CmdFont");
    m_fontInfo = named(new QLabel(m_textGroup), "lblFontInfo");
    m_foreColor = named(new QPushButton(QStringLiteral("Text"), m_textGroup), "CmdForeColor");
    auto* textForm = new QFormLayout(m_textGroup);
    textForm->addRow(QStringLiteral("Place:"), m_location);
    textForm->addRow(QStringLiteral("Speed of moving text:"), m_speed);
    textForm->addRow(QStringLiteral("Font:"), m_font);
    textForm->addRow(QString(), m_fontInfo);
    textForm->addRow(QStringLiteral("Text colour:"), m_foreColor);

    m_backGroup = named(new QGroupBox(QStringLiteral("Background"), this), "fraBackground");
    m_useBack = named(new QCheckBox(QStringLiteral("Draw a box behind the text"), m_backGroup),
                      "chkUseBack");
    m_backColor = named(new QPushButton(QStringLiteral("Box"), m_backGroup), "CmdBackColor");
    m_border = named(new QComboBox(m_backGroup), "cboBorder");
    m_border->addItems(
        {QStringLiteral("None"), QStringLiteral("Frame"), QStringLiteral("Raised frame")});
    auto* backForm = new QFormLayout(m_backGroup);
    backForm->addRow(m_useBack);
    backForm->addRow(QStringLiteral("Box colour:"), m_backColor);
    backForm->addRow(QStringLiteral("Border:"), m_border);

    m_shadowGroup = named(new QGroupBox(QStringLiteral("Drop Shadow"), this), "fraShadow");
    m_shadow = named(new QCheckBox(QStringLiteral("Drop shadow"), m_shadowGroup), "chkShadow");
    m_shadowDistance = named(new QSpinBox(m_shadowGroup), "spnShadowDistance");
    m_shadowDistance->setRange(0, 49);
    m_shadowDirection = named(new QComboBox(m_shadowGroup), "cboShadowDirection");
    m_shadowDirection->addItems({QStringLiteral("Up and left"), QStringLiteral("Up and right"),
                                 QStringLiteral("Down and left"),
                                 QStringLiteral("Down and right")});
    m_shadowColor =
        named(new QPushButton(QStringLiteral("Shadow"), m_shadowGroup), "CmdShadowColor");
    auto* shadowForm = new QFormLayout(m_shadowGroup);
    shadowForm->addRow(m_shadow);
    shadowForm->addRow(QStringLiteral("Shadow distance:"), m_shadowDistance);
    shadowForm->addRow(QStringLiteral("Shadow direction:"), m_shadowDirection);
    shadowForm->addRow(QStringLiteral("Shadow colour:"), m_shadowColor);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_textGroup);
    layout->addWidget(m_backGroup);
    layout->addWidget(m_shadowGroup);

    connect(m_font, &QPushButton::clicked, this, [this] {
        if (const auto font = CurrentPrompts().chooseFont(DescriptionFont(m_look))) {
            m_look.font = font->family();
            m_look.size = qint16(std::max(8, font->pointSize()));
            m_look.style = qint16((font->bold() ? 1 : 0) + (font->italic() ? 2 : 0));
            showChoices();
            Q_EMIT changed();
        }
    });
    auto colour = [this](QPushButton* button, qint32 DescriptionLook::*field) {
        connect(button, &QPushButton::clicked, this, [this, field] {
            if (const auto c = CurrentPrompts().chooseColor(FromVbColor(m_look.*field))) {
                m_look.*field = ToVbColor(*c);
                showChoices();
                Q_EMIT changed();
            }
        });
    };
    colour(m_foreColor, &DescriptionLook::foreColor);
    colour(m_backColor, &DescriptionLook::backColor);
    colour(m_shadowColor, &DescriptionLook::shadowColor);
    auto notify = [this] {
        if (!m_loading)
            Q_EMIT changed();
    };
    for (QComboBox* box : {m_location, m_border, m_shadowDirection})
        connect(box, &QComboBox::currentIndexChanged, this, notify);
    for (QSpinBox* box : {m_speed, m_shadowDistance})
        connect(box, &QSpinBox::valueChanged, this, notify);
    for (QCheckBox* box : {m_useBack, m_shadow})
        connect(box, &QCheckBox::toggled, this, notify);
}

void DescriptionLookEditor::setLook(const DescriptionLook& look)
{
    m_loading = true;
    m_look = look;
    m_location->setCurrentIndex(std::clamp<int>(look.location, 0, 21));
    m_speed->setValue(std::clamp<int>(look.speed, 1, 9));
    m_useBack->setChecked(look.useBack != 0);
    m_border->setCurrentIndex(std::clamp<int>(look.border, 0, 2));
    m_shadow->setChecked(look.shadow != 0);
    m_shadowDistance->setValue(std::clamp<int>(look.shadowDistance, 0, 49));
    m_shadowDirection->setCurrentIndex(std::clamp<int>(look.shadowDirection, 0, 3));
    showChoices();
    m_loading = false;
}

DescriptionLook DescriptionLookEditor::look() const
{
    DescriptionLook l = m_look;
    l.location = qint16(m_location->currentIndex());
    l.speed = qint16(m_speed->value());
    l.useBack = m_useBack->isChecked() ? 1 : 0;
    l.border = qint16(m_border->currentIndex());
    l.shadow = m_shadow->isChecked() ? 1 : 0;
    l.shadowDistance = qint16(m_shadowDistance->value());
    l.shadowDirection = qint16(m_shadowDirection->currentIndex());
    return l;
}

void DescriptionLookEditor::showChoices()
{
    m_font->setText(QStringLiteral("%1, %2 pt").arg(m_look.font).arg(m_look.size));
    m_fontInfo->setText(FontSummary(m_look).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    paintSwatch(m_foreColor, m_look.foreColor);
    paintSwatch(m_backColor, m_look.backColor);
    paintSwatch(m_shadowColor, m_look.shadowColor);
}

} // namespace kavori
