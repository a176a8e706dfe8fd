#include "LoadSlideFile.h"

#include "SlideLoadFrm.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/ShowInformation.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

LoadSlideFile::LoadSlideFile(const QString& folder, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("LoadSlideFile"));
    setWindowTitle(SlideLoadFrm::Title(QStringLiteral("Load Slide Show")));
    m_source = new QComboBox(this);
    m_source->setObjectName(QStringLiteral("cboSource"));
    m_source->addItems({QStringLiteral("Slide shows in a folder"),
                        QStringLiteral("Recent slide shows"),
                        QStringLiteral("Favorite slide shows")});
    m_folder = new QLineEdit(folder, this);
    m_folder->setObjectName(QStringLiteral("txtFolder"));
    auto* browse = new QPushButton(QStringLiteral("&Browse..."), this);
    browse->setObjectName(QStringLiteral("CmdBrowse"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstShows"));
    m_size = new QLabel(this);
    m_size->setObjectName(QStringLiteral("lblSize"));
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("lblInfo"));
    m_info->setWordWrap(true);

    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(browse);
    auto* details = new QFormLayout;
    details->addRow(QStringLiteral("File size:"), m_size);
    details->addRow(QStringLiteral("Comments:"), m_info);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton* load = buttons->addButton(QStringLiteral("&Load"), QDialogButtonBox::AcceptRole);
    load->setObjectName(QStringLiteral("CmdOK"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_source);
    layout->addLayout(folderRow);
    layout->addWidget(m_list, 1);
    layout->addLayout(details);
    layout->addWidget(buttons);
    resize(520, 420);

    connect(m_source, &QComboBox::currentIndexChanged, this, [this] { fill(); });
    connect(m_folder, &QLineEdit::editingFinished, this, [this] { fill(); });
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString folder =
            CurrentPrompts().chooseFolder(QStringLiteral("Load Slide Show"), m_folder->text());
        if (!folder.isEmpty())
            setFolder(folder);
    });
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { showDetails(); });
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { accept(&m_chosen); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(&m_chosen); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    fill();
}

void LoadSlideFile::setSource(Source source)
{
    m_source->setCurrentIndex(source);
    fill();
}

void LoadSlideFile::setFolder(const QString& folder)
{
    m_folder->setText(folder);
    fill();
}

QStringList LoadSlideFile::shows() const
{
    QStringList all;
    for (int i = 0; i < m_list->count(); ++i)
        all << m_list->item(i)->text();
    return all;
}

void LoadSlideFile::choose(int row)
{
    m_list->setCurrentRow(row);
}

void LoadSlideFile::fill()
{
    QStringList shows;
    const Settings& s = CurrentSettings();
    const bool folder = m_source->currentIndex() == Folder;
    m_folder->setEnabled(folder);
    if (folder) {
        shows = ShowFilesIn(m_folder->text());
    } else {
        const auto& list = m_source->currentIndex() == Recent ? s.RecentShow : s.FavoriteShow;
        for (const QString& path : list)
            if (!path.isEmpty())
                shows << path;
    }
    m_list->clear();
    m_list->addItems(shows);
    showDetails();
}

void LoadSlideFile::showDetails()
{
    QListWidgetItem* item = m_list->currentItem();
    if (!item) {
        m_size->clear();
        m_info->clear();
        return;
    }
    const ShowFileDetails details = DescribeShowFile(item->text());
    m_size->setText(details.size);
    m_info->setText(details.info);
}

bool LoadSlideFile::accept(QString* path)
{
    QString empty;
    switch (m_source->currentIndex()) {
    case Recent:
        empty = QStringLiteral("There are no slide shows in the recent files list to load...");
        break;
    case Favorites:
        empty = QStringLiteral("There are no slide shows in your favorite shows list to load...");
        break;
    default:
        empty =
            QStringLiteral("There are no slide show files in the selected directory to load...");
        break;
    }
    if (m_list->count() == 0) {
        MsgBox(empty, vbInformation, windowTitle());
        return false;
    }
    if (!m_list->currentItem()) {
        MsgBox(QStringLiteral("Select a slide show file to load first..."), vbExclamation,
               windowTitle());
        return false;
    }
    *path = m_list->currentItem()->text();
    QDialog::accept();
    return true;
}

QString LoadSlideFile::Choose(const QString& folder, QWidget* parent)
{
    LoadSlideFile dialog(folder, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.m_chosen : QString();
}

} // namespace kavori
