#include "EditDialogs.h"

#include "ImageEdits.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>

namespace kavori {

namespace {
QDialogButtonBox* okCancel(QDialog* dialog)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}
} // namespace

frmRotateImg::frmRotateImg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmRotateImg"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Rotate Image]"));
    const Settings& s = CurrentSettings();
    m_angle = new QSpinBox(this);
    m_angle->setObjectName(QStringLiteral("txtAngle"));
    m_angle->setRange(1, 180);
    m_angle->setSuffix(QStringLiteral("\u00b0"));
    m_angle->setValue(s.RotateAngle);
    m_clockwise = new QRadioButton(QStringLiteral("&Clockwise"), this);
    m_clockwise->setObjectName(QStringLiteral("optClockwise"));
    auto* counter = new QRadioButton(QStringLiteral("C&ounterclockwise"), this);
    counter->setObjectName(QStringLiteral("optCounterClockwise"));
    (s.RotateDirection == 1 ? counter : m_clockwise)->setChecked(true);
    m_preserve = new QCheckBox(QStringLiteral("&Keep the image size (corners are cut)"), this);
    m_preserve->setObjectName(QStringLiteral("chkPreserve"));
    m_preserve->setChecked(s.RotatePreserve);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Angle:"), m_angle);
    auto* direction = new QHBoxLayout;
    direction->addWidget(m_clockwise);
    direction->addWidget(counter);
    form->addRow(QStringLiteral("Direction:"), direction);
    form->addRow(m_preserve);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(okCancel(this));
}

int frmRotateImg::angle() const
{
    return m_angle->value();
}

bool frmRotateImg::clockwise() const
{
    return m_clockwise->isChecked();
}

bool frmRotateImg::preserveSize() const
{
    return m_preserve->isChecked();
}

void frmRotateImg::remember() const
{
    Settings& s = CurrentSettings();
    s.RotateAngle = qint16(angle());
    s.RotateDirection = clockwise() ? 0 : 1;
    s.RotatePreserve = preserveSize();
}

frmImageSize::frmImageSize(const QSize& current, QWidget* parent)
    : QDialog(parent), m_current(current)
{
    setObjectName(QStringLiteral("frmImageSize"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Image Size]"));
    m_width = new QSpinBox(this);
    m_width->setObjectName(QStringLiteral("txtWidth"));
    m_height = new QSpinBox(this);
    m_height->setObjectName(QStringLiteral("txtHeight"));
    for (QSpinBox* box : {m_width, m_height}) {
        box->setRange(kMinImageSide, kMaxImageSide);
        box->setSuffix(QStringLiteral(" pixels"));
    }
    m_width->setValue(current.width());
    m_height->setValue(current.height());
    m_aspect = new QCheckBox(QStringLiteral("Keep the &proportions"), this);
    m_aspect->setObjectName(QStringLiteral("chkAspect"));
    m_aspect->setChecked(CurrentSettings().ImageSizeAspect);
    // With the proportions kept, one side follows the other.
    connect(m_width, &QSpinBox::valueChanged, this, [this](int w) {
        if (m_aspect->isChecked() && m_current.width() > 0) {
            const QSignalBlocker block(m_height);
            m_height->setValue(
                int(std::lround(double(w) * m_current.height() / m_current.width())));
        }
    });
    connect(m_height, &QSpinBox::valueChanged, this, [this](int h) {
        if (m_aspect->isChecked() && m_current.height() > 0) {
            const QSignalBlocker block(m_width);
            m_width->setValue(int(std::lround(double(h) * m_current.width() / m_current.height())));
        }
    });
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Width:"), m_width);
    form->addRow(QStringLiteral("&Height:"), m_height);
    form->addRow(m_aspect);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(okCancel(this));
}

QSize frmImageSize::chosenSize() const
{
    return QSize(m_width->value(), m_height->value());
}

void frmImageSize::remember() const
{
    CurrentSettings().ImageSizeAspect = m_aspect->isChecked();
}

} // namespace kavori
