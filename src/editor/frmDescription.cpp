#include "frmDescription.h"

#include "DescriptionLookEditor.h"
#include "frmAdvDescription.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "platform/AppPaths.h"
#include "playback/DescriptionLabels.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideList.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kavori {

namespace {

constexpr QSize kPreviewSize(360, 270);
// The preview stands for a screen this wide: its fonts shrink by the same ratio, but stay
// readable.
constexpr int kPreviewScreenWidth = 1024;
constexpr int kSmallestPreviewFont = 7;

QPushButton* button(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

} // namespace

QString frmDescription::Title()
{
    return AppTitle() + QStringLiteral(" - [Slide Descriptions]");
}

frmDescription::frmDescription(int slide, QWidget* parent)
    : QDialog(parent), m_show(CurrentShow()), m_originalDefaults(DefaultDescriptionLook())
{
    setObjectName(QStringLiteral("frmDescription"));
    setWindowTitle(Title());

    m_caption = new QLabel(this);
    m_caption->setObjectName(QStringLiteral("lblSlide"));
    m_file = new QLabel(this);
    m_file->setObjectName(QStringLiteral("lblFile"));
    m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("txtDescription"));
    m_text->setMaxLength(kMaxDescriptionLength);
    m_previous = button(this, "CmdPrevious", QStringLiteral("<< &Previous"));
    m_next = button(this, "CmdNext", QStringLiteral("&Next >>"));

    m_preview = new QLabel(this);
    m_preview->setObjectName(QStringLiteral("picPreview"));
    m_preview->setFixedSize(kPreviewSize);
    m_preview->setAlignment(Qt::AlignCenter);
    m_previewLabels = std::make_unique<DescriptionLabels>(m_preview);

    m_custom = new QCheckBox(QStringLiteral("&Use these properties for this slide only"), this);
    m_custom->setObjectName(QStringLiteral("chkCustom"));
    m_look = new DescriptionLookEditor(this);

    auto* commands = new QGroupBox(QStringLiteral("Descriptions"), this);
    auto* grid = new QGridLayout(commands);
    auto add = [&](const char* name, const QString& caption, int row, int column, auto&& slot) {
        QPushButton* b = button(commands, name, caption);
        connect(b, &QPushButton::clicked, this, slot);
        grid->addWidget(b, row, column);
    };
    add("CmdClear", QStringLiteral("&Clear"), 0, 0, [this] { clearOne(); });
    add("CmdClearAll", QStringLiteral("Clear &All"), 0, 1, [this] { clearAll(); });
    add("CmdInsert", QStringLiteral("&Insert from File"), 1, 0, [this] { insertOne(); });
    add("CmdInsertAll", QStringLiteral("Insert All &from Files"), 1, 1, [this] { insertAll(); });
    add("CmdApplyAll", QStringLiteral("Apply P&roperties to All"), 2, 0,
        [this] { applyToAll(LookPart::Properties); });
    add("CmdApplyShadow", QStringLiteral("Apply &Shadow to All"), 2, 1,
        [this] { applyToAll(LookPart::Shadow); });
    add("CmdApplyBack", QStringLiteral("Apply &Background to All"), 3, 0,
        [this] { applyToAll(LookPart::Background); });
    add("CmdSaveDefault", QStringLiteral("Save as &Default Look"), 3, 1,
        [this] { saveAsDefault(); });
    add("CmdFileInfo", QStringLiteral("File In&formation"), 4, 0, [this] { fileInformation(); });
    add("CmdAdvanced", QStringLiteral("Ad&vanced..."), 4, 1, [this] {
        keepControls();
        const QString file = SlideFullPath(m_show, m_show.slides.value(m_index).SlideFile);
        frmAdvDescription::Open(FolderOf(file), this);
    });

    m_showDescription =
        new QCheckBox(QStringLiteral("S&how descriptions during the slide show"), this);
    m_showDescription->setObjectName(QStringLiteral("chkShowDescription"));
    m_showDescription->setChecked(CurrentSettings().ShowDescription);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmDescription::store);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmDescription::reject);

    auto* steps = new QHBoxLayout;
    steps->addWidget(m_previous);
    steps->addStretch();
    steps->addWidget(m_next);
    auto* left = new QVBoxLayout;
    left->addWidget(m_caption);
    left->addWidget(m_file);
    left->addWidget(m_text);
    left->addLayout(steps);
    left->addWidget(m_preview, 0, Qt::AlignHCenter);
    left->addWidget(commands);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(m_custom);
    right->addWidget(m_look);
    right->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_showDescription);
    bottom->addStretch();
    bottom->addWidget(buttons);
    layout->addLayout(bottom);

    connect(m_previous, &QPushButton::clicked, this, [this] { showSlide(m_index - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] { showSlide(m_index + 1); });
    connect(m_text, &QLineEdit::textChanged, this, [this] {
        if (!m_loading)
            updatePreview();
    });
    connect(m_look, &DescriptionLookEditor::changed, this, [this] {
        if (m_loading)
            return;
        // A default look edits the defaults at once, so every slide that uses them follows.
        if (!m_custom->isChecked())
            SetDefaultDescriptionLook(m_look->look());
        updatePreview();
    });
    connect(m_custom, &QCheckBox::toggled, this, [this](bool own) {
        if (m_loading)
            return;
        if (!own)
            m_look->setLook(DefaultDescriptionLook());
        updatePreview();
    });

    m_index = std::clamp<int>(slide, 0, std::max<int>(0, int(m_show.slides.size()) - 1));
    loadControls();
}

frmDescription::~frmDescription() = default;

const SlideShow& frmDescription::edited()
{
    keepControls();
    return m_show;
}

void frmDescription::keepControls()
{
    if (m_index < 0 || m_index >= m_show.slides.size())
        return;
    Slide& slide = m_show.slides[m_index];
    slide.SlideDescription = CutDescription(m_text->text());
    DescriptionLook look = m_look->look();
    look.custom = m_custom->isChecked() ? 1 : 0;
    slide.SlideDescProps = BuildDescProps(look);
}

void frmDescription::loadControls()
{
    m_loading = true;
    const int count = int(m_show.slides.size());
    const bool any = count > 0;
    m_caption->setText(EditingCaption(m_index));
    const Slide slide = m_show.slides.value(m_index);
    m_file->setText(QDir::toNativeSeparators(SlideFullPath(m_show, slide.SlideFile)));
    m_text->setText(slide.SlideDescription);
    const DescriptionLook look = ParseDescProps(slide.SlideDescProps);
    m_custom->setChecked(!slide.SlideDescProps.isEmpty() && look.custom != 0);
    m_look->setLook(look);
    m_previous->setEnabled(any && m_index > 0);
    m_next->setEnabled(any && m_index < count - 1);
    m_text->setEnabled(any);

    // The slide's picture, small; a movie or a picture that cannot be read shows black.
    const QString path = SlideFullPath(m_show, slide.SlideFile);
    QPixmap picture(kPreviewSize);
    picture.fill(Qt::black);
    if (any && !IsMovieFile(path)) {
        const QImage image = LoadPicture(path, kPreviewSize);
        if (!image.isNull()) {
            const QImage fitted =
                image.scaled(kPreviewSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            QPainter painter(&picture);
            painter.drawImage((kPreviewSize.width() - fitted.width()) / 2,
                              (kPreviewSize.height() - fitted.height()) / 2, fitted);
        }
    }
    m_preview->setPixmap(picture);
    m_loading = false;
    updatePreview();
}

void frmDescription::updatePreview()
{
    DescriptionLook look = m_look->look();
    look.size = qint16(
        std::max(kSmallestPreviewFont, look.size * kPreviewSize.width() / kPreviewScreenWidth));
    // The moving places are shown where they start.
    m_previewLabels->show(m_text->text(), look);
}

void frmDescription::showSlide(int index)
{
    if (index < 0 || index >= m_show.slides.size())
        return;
    keepControls();
    m_index = index;
    loadControls();
}

void frmDescription::clearOne()
{
    keepControls();
    const DescriptionResult r = ClearSlideDescription(m_show, m_index);
    if (!r.message.isEmpty())
        MsgBox(r.message, vbExclamation, Title());
    loadControls();
}

void frmDescription::clearAll()
{
    keepControls();
    const QString refusal = ClearAllRefusal(m_show);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return;
    }
    if (MsgBox(ClearAllQuestion(), vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    ClearAllDescriptions(m_show);
    loadControls();
}

void frmDescription::insertOne()
{
    keepControls();
    const DescriptionResult r = InsertFolderDescription(m_show, m_index);
    if (!r.message.isEmpty())
        MsgBox(r.message, vbExclamation, Title());
    loadControls();
}

void frmDescription::insertAll()
{
    keepControls();
    const DescriptionResult r = InsertAllFolderDescriptions(m_show);
    if (!r.message.isEmpty())
        MsgBox(r.message, vbExclamation, Title());
    loadControls();
}

void frmDescription::applyToAll(LookPart part)
{
    keepControls();
    if (MsgBox(ApplyToAllQuestion(part), vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    DescriptionLook look = m_look->look();
    look.custom = m_custom->isChecked() ? 1 : 0;
    ApplyLookToAll(m_show, look, part);
    loadControls();
}

void frmDescription::fileInformation()
{
    const SlideFileText info = SlideFileInformation(m_show, m_index);
    MsgBox(info.text, info.found ? vbInformation : vbExclamation, Title());
}

void frmDescription::saveAsDefault()
{
    SetDefaultDescriptionLook(m_look->look());
    WriteDescriptionLook();
    m_originalDefaults = DefaultDescriptionLook();
}

void frmDescription::store()
{
    keepControls();
    bool changed = StoreSlideDescriptions(CurrentShow(), m_show);
    Settings& s = CurrentSettings();
    if (s.ShowDescription != m_showDescription->isChecked()) {
        s.ShowDescription = m_showDescription->isChecked();
        CurrentShow().changed = true; // the show file keeps it too
        changed = true;
    }
    WriteSettingsKeys({QStringLiteral("ShowDescription")});
    if (!SameLook(DefaultDescriptionLook(), m_originalDefaults))
        WriteDescriptionLook();
    m_changed = changed;
    accept();
}

void frmDescription::reject()
{
    SetDefaultDescriptionLook(m_originalDefaults);
    QDialog::reject();
}

bool frmDescription::Edit(int slide, QWidget* parent)
{
    frmDescription dialog(slide, parent);
    return dialog.exec() == QDialog::Accepted && dialog.changedShow();
}

} // namespace kavori
