#include "frmFavorites.h"

#include "fileutil/Favorites.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "viewer/MainViewFrm.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

frmFavorites::frmFavorites(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmFavorites"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Favorite Files]"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstFavorites"));
    for (const QString& entry : FavoriteFiles())
        addEntry(entry);
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] {
        m_chosen = m_list->currentItem()->data(Qt::UserRole).toString();
        save();
        accept();
    });

    auto* side = new QVBoxLayout;
    auto add = [this, side](const char* name, const QString& caption, auto slot) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QString::fromLatin1(name));
        connect(b, &QPushButton::clicked, this, slot);
        side->addWidget(b);
    };
    add("CmdOpen", QStringLiteral("&Open"), [this] {
        if (!m_list->currentItem()) {
            MsgBox(QStringLiteral("Select a favorite to open and then try again..."),
                   vbInformation);
            return;
        }
        m_chosen = m_list->currentItem()->data(Qt::UserRole).toString();
        save();
        accept();
    });
    add("CmdAddFile", QStringLiteral("Add &Image..."), [this] { addFile(); });
    add("CmdAddFolder", QStringLiteral("Add &Folder..."), [this] { addFolder(); });
    add("CmdRemove", QStringLiteral("&Remove"), [this] { removeSelected(); });
    add("CmdUp", QStringLiteral("Move &Up"), [this] { moveSelected(-1); });
    add("CmdDown", QStringLiteral("Move &Down"), [this] { moveSelected(1); });
    side->addStretch(1);

    m_favoriteFolder = CurrentSettings().FavoriteFolder;
    m_folder = new QLabel(m_favoriteFolder.isEmpty() ? QStringLiteral("(not set)")
                                                     : QDir::toNativeSeparators(m_favoriteFolder),
                          this);
    m_folder->setObjectName(QStringLiteral("lblFavoriteFolder"));
    auto* changeFolder = new QPushButton(QStringLiteral("&Change..."), this);
    changeFolder->setObjectName(QStringLiteral("CmdFavoriteFolder"));
    connect(changeFolder, &QPushButton::clicked, this, &frmFavorites::chooseFavoriteFolder);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        save();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* top = new QHBoxLayout;
    top->addWidget(m_list, 1);
    top->addLayout(side);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(new QLabel(QStringLiteral("Favorite folder:"), this));
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(changeFolder);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(QStringLiteral("Your favorite images and folders (up to 20):"), this));
    layout->addLayout(top, 1);
    layout->addLayout(folderRow);
    layout->addWidget(buttons);
    resize(560, 420);
}

void frmFavorites::addEntry(const QString& path)
{
    auto* item =
        new QListWidgetItem(QDir::toNativeSeparators(path) +
                                (IsFavoriteFolder(path) ? QStringLiteral("  [Folder]") : QString()),
                            m_list);
    item->setData(Qt::UserRole, path);
}

QStringList frmFavorites::entries() const
{
    QStringList all;
    for (int row = 0; row < m_list->count(); ++row)
        all << m_list->item(row)->data(Qt::UserRole).toString();
    return all;
}

void frmFavorites::addFile()
{
    const QString path = CurrentPrompts().openFile(QStringLiteral("Add a Favorite Image"),
                                                   m_favoriteFolder, OpenImageFilter());
    if (!path.isEmpty())
        addEntry(path);
}

void frmFavorites::addFolder()
{
    const QString folder =
        CurrentPrompts().chooseFolder(QStringLiteral("Add a Favorite Folder"), m_favoriteFolder);
    if (!folder.isEmpty())
        addEntry(AddSlash(folder));
}

void frmFavorites::removeSelected()
{
    if (!m_list->currentItem()) {
        MsgBox(QStringLiteral("Select a favorite to remove and then try again..."), vbInformation);
        return;
    }
    delete m_list->takeItem(m_list->currentRow());
}

void frmFavorites::moveSelected(int by)
{
    const int row = m_list->currentRow();
    const int to = row + by;
    if (row < 0 || to < 0 || to >= m_list->count())
        return;
    m_list->insertItem(to, m_list->takeItem(row));
    m_list->setCurrentRow(to);
}

void frmFavorites::chooseFavoriteFolder()
{
    const QString folder = CurrentPrompts().chooseFolder(
        QStringLiteral("Choose the Favorite Folder"), m_favoriteFolder);
    if (folder.isEmpty())
        return;
    m_favoriteFolder = AddSlash(folder);
    m_folder->setText(QDir::toNativeSeparators(m_favoriteFolder));
}

void frmFavorites::save()
{
    QStringList all = entries();
    if (all.size() > kMaxFavoriteFiles) {
        MsgBox(QStringLiteral("Only the first 20 favorites are kept..."), vbInformation);
        all = all.mid(0, kMaxFavoriteFiles);
    }
    SetFavoriteFiles(all);
    if (m_favoriteFolder != CurrentSettings().FavoriteFolder) {
        CurrentSettings().FavoriteFolder = m_favoriteFolder;
        WriteSettingsKeys({QStringLiteral("FavoriteFolder")});
    }
}

} // namespace kavori
