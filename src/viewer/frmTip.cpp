#include "frmTip.h"

#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/Random.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

namespace {
const QString kSection = QStringLiteral("Settings");
const QString kKey = QStringLiteral("Show Tips at Startup");
} // namespace

QStringList frmTip::Tips()
{
    return {
        QStringLiteral(
            "Drop a picture on the main window to open it, or a slide show file to play it."),
        QStringLiteral("Page Up and Page Down step through the pictures of the current folder."),
        QStringLiteral("Every size, rotate and flip command can be undone once with Ctrl+Z."),
        QStringLiteral(
            "F11 shows the current picture full screen; any key or click brings you back."),
        QStringLiteral(
            "PCX and TGA pictures are imported from the File menu and can then be saved as bitmaps or JPEG files."),
        QStringLiteral(
            "Select an area with the mouse, then Crop to Selection keeps just that part."),
        QStringLiteral("Paste with an area selected to put the clipboard's picture into it."),
    };
}

bool frmTip::ShowAtStartup()
{
    return ToInt32(GetSetting(kSection, kKey)).value_or(0) != 0;
}

frmTip::frmTip(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTip"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Tip of the Day]"));
    auto* heading = new QLabel(QStringLiteral("<b>Did you know...</b>"), this);
    m_tip = new QLabel(this);
    m_tip->setObjectName(QStringLiteral("lblTipText"));
    m_tip->setWordWrap(true);
    m_tip->setMinimumSize(360, 80);
    m_startup = new QCheckBox(QStringLiteral("&Show tips at startup"), this);
    m_startup->setObjectName(QStringLiteral("chkLoadTipsAtStartup"));
    m_startup->setChecked(ShowAtStartup());
    connect(m_startup, &QCheckBox::toggled, this, [](bool on) {
        SaveSetting(kSection, kKey, on ? QStringLiteral("1") : QStringLiteral("0"));
    });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* next =
        buttons->addButton(QStringLiteral("&Next Tip"), QDialogButtonBox::ActionRole);
    next->setObjectName(QStringLiteral("cmdNextTip"));
    connect(next, &QPushButton::clicked, this, [this] { showTip(m_index + 1); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(m_tip, 1);
    layout->addWidget(m_startup);
    layout->addWidget(buttons);
    showTip(RandomBetween(0, int(Tips().size()) - 1));
}

void frmTip::showTip(int index)
{
    const QStringList tips = Tips();
    m_index = index % int(tips.size());
    m_tip->setText(tips[m_index]);
}

} // namespace kavori
