#include "frmPreferences.h"

#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace kavori {

namespace {

struct Switch {
    const char* key;
    bool Settings::*field;
    const char* label;
};

struct Group {
    const char* title;
    std::initializer_list<Switch> switches;
};

const Group kGroups[] = {
    {"Main window",
     {{"WindowMaximized", &Settings::WindowMaximized, "Start &maximised"},
      {"SaveWindowSize", &Settings::SaveWindowSize, "Remember the window's &position and size"},
      {"AutosizeWindow", &Settings::AutosizeWindow, "Fit the window to each &opened image"},
      {"ShowMainToolbar", &Settings::ShowMainToolbar, "Show the main &toolbar"},
      {"ShowQuickToolbar", &Settings::ShowQuickToolbar, "Show the &quick toolbar"},
      {"ShowStatusBar", &Settings::ShowStatusBar, "Show the status &bar"}}},
    {"Images",
     {{"StretchImages", &Settings::StretchImages, "&Shrink large images to the window"},
      {"EnlargeImages", &Settings::EnlargeImages, "&Enlarge small images to the window"},
      {"UseHalftoneMode", &Settings::UseHalftoneMode, "Smooth (&halftone) stretching"},
      {"ViewFullScreen", &Settings::ViewFullScreen, "Show opened images &full screen"},
      {"ClickScreenOpen", &Settings::ClickScreenOpen, "A &click on the image area opens a file"},
      {"DisplayLastOpened", &Settings::DisplayLastOpened, "Reopen the &last image at start"},
      {"ClassicTypesOnly", &Settings::ClassicTypesOnly,
       "Classic picture t&ypes only (no PNG, TIFF, WebP, AVIF, HEIF or JPEG XL)"}}},
    {"Command line and files",
     {{"StartFullScreen", &Settings::StartFullScreen,
       "Images named on the command line open full scree&n"},
      {"CmdLineExit", &Settings::CmdLineExit, "...and the program ends when they clos&e"},
      {"CmdLineAnimate", &Settings::CmdLineAnimate,
       "Animate GIF &89a images from the command line"},
      {"KeepRecent", &Settings::KeepRecent, "Keep the list of &recent files"},
      {"UseRecentDocuments", &Settings::UseRecentDocuments,
       "Add opened files to the desktop's recent &documents"},
      {"DeleteUntitled", &Settings::DeleteUntitled, "Delete the temporary &untitled image on exit"},
      {"ClearClipboard", &Settings::ClearClipboard,
       "Ask about an image left on the clip&board at exit"}}},
};

} // namespace

frmPreferences::frmPreferences(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmPreferences"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Preferences]"));
    const Settings& s = CurrentSettings();
    auto* layout = new QVBoxLayout(this);
    for (const Group& group : kGroups) {
        auto* box = new QGroupBox(QString::fromUtf8(group.title), this);
        auto* column = new QVBoxLayout(box);
        for (const Switch& sw : group.switches) {
            auto* check = new QCheckBox(QString::fromUtf8(sw.label), box);
            check->setObjectName(QStringLiteral("chk") + QString::fromLatin1(sw.key));
            check->setChecked(s.*(sw.field));
            column->addWidget(check);
            m_flags.insert(QString::fromLatin1(sw.key), check);
        }
        layout->addWidget(box);
    }
    m_startup = new QComboBox(this);
    m_startup->setObjectName(QStringLiteral("cboStartupDialog"));
    m_startup->addItems({QStringLiteral("Nothing"), QStringLiteral("The about box"),
                         QStringLiteral("The slide show editor"),
                         QStringLiteral("The Open Image dialog"),
                         QStringLiteral("The thumbnail browser")});
    m_startup->setCurrentIndex(qBound(0, int(s.StartupDialog), 4));
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("At start &show:"), m_startup);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        remember();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void frmPreferences::remember() const
{
    Settings& s = CurrentSettings();
    for (const Group& group : kGroups)
        for (const Switch& sw : group.switches)
            s.*(sw.field) = m_flags.value(QString::fromLatin1(sw.key))->isChecked();
    s.StartupDialog = qint16(m_startup->currentIndex());
    WritePreferences();
    WriteExtras();
}

} // namespace kavori
