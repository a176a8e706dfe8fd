#include "frmLanguage.h"

#include "Languages.h"
#include "platform/HelpFile.h"
#include "runtime/MsgBox.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace kavori {

namespace {
QString defaultEntry()
{
    return QStringLiteral("English        *Default*      - KAVORIX.EXE");
}
} // namespace

QStringList LanguageListEntries()
{
    const LanguageState& lang = CurrentLanguages();
    QStringList lines;
    if (lang.LangCurrent == -1)
        lines << defaultEntry();
    for (int i = 0; i < lang.LangCount; ++i)
        lines << lang.LangName[i] + u' ' + lang.LangFile[i];
    return lines;
}

QString SelectLanguageRow(int row)
{
    if (row < 0)
        return QStringLiteral("Select a file from the installed languages and then try again...");
    LanguageState& lang = CurrentLanguages();
    const int first = lang.LangCurrent == -1 ? 1 : 0; // the default line comes first
    lang.LangCurrent = qint16(row - first);
    SaveLanguages();
    return {};
}

std::function<void(const QString&)>& frmLanguage::WebOpener()
{
    static std::function<void(const QString&)> opener = [](const QString& url) {
        QDesktopServices::openUrl(QUrl(url));
    };
    return opener;
}

frmLanguage::frmLanguage(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmLanguage"));
    InstallHelpKey(this, QStringLiteral("languages"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Select Language]"));
    auto* label = new QLabel(QStringLiteral("Installed languages:"), this);
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("ListLang"));
    m_list->addItems(LanguageListEntries());
    m_list->setMinimumWidth(380);

    auto button = [this](const char* name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    QPushButton* select = button("CmdSelect", QStringLiteral("&Select"));
    QPushButton* add = button("CmdAddLanguage", QStringLiteral("&Add Language..."));
    QPushButton* remove = button("CmdRemove", QStringLiteral("&Remove"));
    QPushButton* web = button("CmdCheckWeb", QStringLiteral("Check the &Web..."));
    QPushButton* help = button("CmdHelp", QStringLiteral("&Help"));
    QPushButton* cancel = button("CmdCancel", QStringLiteral("Cancel"));
    select->setDefault(true);

    connect(select, &QPushButton::clicked, this, [this] {
        const QString refusal = SelectLanguageRow(m_list->currentRow());
        if (!refusal.isEmpty()) {
            MsgBox(refusal, vbInformation);
            return;
        }
        accept();
    });
    // Languages are added and removed by installing their program files.
    for (QPushButton* notDone : {add, remove})
        connect(notDone, &QPushButton::clicked, this,
                [] { MsgBox(QStringLiteral("Not done..."), vbInformation); });
    connect(web, &QPushButton::clicked, this, [] {
        WebOpener()(QUrl::fromLocalFile(HelpPagePath(QStringLiteral("languages"))).toString());
    });
    connect(help, &QPushButton::clicked, this, [this] { ShowWindowHelp(this); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QVBoxLayout;
    for (QPushButton* b : {select, add, remove, web, help, cancel})
        buttons->addWidget(b);
    buttons->addStretch();
    auto* listColumn = new QVBoxLayout;
    listColumn->addWidget(label);
    listColumn->addWidget(m_list);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(listColumn, 1);
    layout->addLayout(buttons);
}

} // namespace kavori
