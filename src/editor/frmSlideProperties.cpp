#include "frmSlideProperties.h"

#include "SlideRangeFrm.h"
#include "imaging/PictureLoader.h"
#include "platform/HelpFile.h"
#include "playback/player/SlideLayout.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/VbColor.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideWizard.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kavori {

namespace {

constexpr QSize kPreviewBox(288, 216);

QSize playerScreen(const QWidget* widget)
{
    const QScreen* screen = widget->screen();
    return (QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize();
}

} // namespace

frmSlideProperties::frmSlideProperties(int line, QWidget* parent) : SlideEditDialog(line, parent)
{
    setObjectName(QStringLiteral("frmSlideProperties"));
    InstallHelpKey(this, QStringLiteral("slides#frmSlideProperties"));
    auto button = [this](const char* name, const QString& text, auto&& slot) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto named = [](auto* widget, const char* name) {
        widget->setObjectName(QString::fromLatin1(name));
        return widget;
    };

    // Location.
    auto* place = new QGroupBox(QStringLiteral("Location"), this);
    auto* placeGrid = new QGridLayout(place);
    m_location = named(new QComboBox(place), "cboLocation");
    m_location->addItems(SlideLocationNames());
    const QSize screen = playerScreen(this);
    m_posX = named(new QSpinBox(place), "txtPosX");
    m_posY = named(new QSpinBox(place), "txtPosY");
    m_posX->setRange(-screen.width(), 32767);
    m_posY->setRange(-screen.height(), 32767);
    m_posX->setSuffix(QStringLiteral(" px"));
    m_posY->setSuffix(QStringLiteral(" px"));
    placeGrid->addWidget(m_location, 0, 0, 1, 4);
    placeGrid->addWidget(new QLabel(QStringLiteral("Left:"), place), 1, 0);
    placeGrid->addWidget(m_posX, 1, 1);
    placeGrid->addWidget(new QLabel(QStringLiteral("Top:"), place), 1, 2);
    placeGrid->addWidget(m_posY, 1, 3);
    placeGrid->addWidget(button("CmdCenterAll", QStringLiteral("Center All"),
                                [this] { setAll(SetAllCommand::Center); }),
                         2, 0, 1, 2);
    placeGrid->addWidget(button("CmdRandomAll", QStringLiteral("Random All"),
                                [this] { setAll(SetAllCommand::Random); }),
                         2, 2, 1, 2);
    placeGrid->addWidget(button("CmdRandomize", QStringLiteral("Randomize"),
                                [this] { setAll(SetAllCommand::Randomize); }),
                         3, 0, 1, 2);
    placeGrid->addWidget(button("CmdSetAllPos", QStringLiteral("Set All"),
                                [this] { setAll(SetAllCommand::Position); }),
                         3, 2, 1, 2);

    // Size and time.
    auto* size = new QGroupBox(QStringLiteral("Size"), this);
    auto* sizeGrid = new QGridLayout(size);
    m_enlarge =
        named(new QCheckBox(QStringLiteral("&Enlarge to fit the screen"), size), "chkEnlarge");
    m_shrink = named(new QCheckBox(QStringLiteral("S&hrink to fit the screen"), size), "chkShrink");
    sizeGrid->addWidget(m_enlarge, 0, 0, 1, 2);
    sizeGrid->addWidget(button("CmdEnlargeAll", QStringLiteral("Enlarge All"),
                               [this] { setAll(SetAllCommand::EnlargeAll); }),
                        1, 0);
    sizeGrid->addWidget(button("CmdEnlargeNone", QStringLiteral("Enlarge None"),
                               [this] { setAll(SetAllCommand::EnlargeNone); }),
                        1, 1);
    sizeGrid->addWidget(m_shrink, 2, 0, 1, 2);
    sizeGrid->addWidget(button("CmdShrinkAll", QStringLiteral("Shrink All"),
                               [this] { setAll(SetAllCommand::ShrinkAll); }),
                        3, 0);
    sizeGrid->addWidget(button("CmdShrinkNone", QStringLiteral("Shrink None"),
                               [this] { setAll(SetAllCommand::ShrinkNone); }),
                        3, 1);

    auto* time = new QGroupBox(QStringLiteral("Interval"), this);
    auto* timeRow = new QHBoxLayout(time);
    m_interval = named(new QComboBox(time), "cboInterval");
    for (int seconds : IntervalChoices())
        m_interval->addItem(IntervalText(seconds), seconds);
    timeRow->addWidget(m_interval, 1);
    timeRow->addWidget(button("CmdSetAllInt", QStringLiteral("Set All"),
                              [this] { setAll(SetAllCommand::Interval); }));

    // Background.
    auto* back = new QGroupBox(QStringLiteral("Background"), this);
    auto* backGrid = new QGridLayout(back);
    m_backDefault = named(new QRadioButton(QStringLiteral("&Default color"), back), "optDefault");
    m_backColor = named(new QRadioButton(QStringLiteral("C&olor:"), back), "optColor");
    m_backTexture = named(new QRadioButton(QStringLiteral("&Texture:"), back), "optTexture");
    auto* group = new QButtonGroup(this);
    for (QRadioButton* option : {m_backDefault, m_backColor, m_backTexture})
        group->addButton(option);
    m_colorSwatch = named(new QLabel(back), "picColor");
    m_colorSwatch->setFixedSize(40, 20);
    m_colorSwatch->setFrameShape(QFrame::Box);
    m_colorSwatch->setAutoFillBackground(true);
    backGrid->addWidget(m_backDefault, 0, 0);
    backGrid->addWidget(button("CmdColorDefault", QStringLiteral("Default All"),
                               [this] { setAll(SetAllCommand::ColorDefault); }),
                        0, 3);
    backGrid->addWidget(m_backColor, 1, 0);
    backGrid->addWidget(m_colorSwatch, 1, 1);
    backGrid->addWidget(button("CmdColor", QStringLiteral("Choose..."),
                               [this] {
                                   if (const auto color =
                                           CurrentPrompts().chooseColor(FromVbColor(m_color))) {
                                       setBackColor(ToVbColor(*color));
                                       m_backColor->setChecked(true);
                                   }
                               }),
                        1, 2);
    backGrid->addWidget(button("CmdSetAllColors", QStringLiteral("Set All"),
                               [this] { setAll(SetAllCommand::Colors); }),
                        1, 3);
    backGrid->addWidget(m_backTexture, 2, 0);
    m_folderText = named(new QLineEdit(back), "txtTextureFolder");
    m_folderText->setReadOnly(true);
    backGrid->addWidget(m_folderText, 2, 1, 1, 2);
    backGrid->addWidget(button("CmdTextureFolder", QStringLiteral("Folder..."),
                               [this] {
                                   const QString folder = CurrentPrompts().chooseFolder(
                                       QStringLiteral("Texture Folder"), m_textureFolder);
                                   if (!folder.isEmpty())
                                       setTextureFolder(folder);
                               }),
                        2, 3);
    m_textures = named(new QListWidget(back), "lstTextures");
    m_textures->setMinimumHeight(90);
    backGrid->addWidget(m_textures, 3, 0, 4, 3);
    backGrid->addWidget(
        button("CmdPreviewTexture", QStringLiteral("Pre&view"), [this] { previewTexture(); }), 3,
        3);
    backGrid->addWidget(button("CmdSetAllTextures", QStringLiteral("Set All"),
                               [this] { setAll(SetAllCommand::Textures); }),
                        4, 3);
    backGrid->addWidget(
        button("CmdSetRange", QStringLiteral("Set Range..."), [this] { setTextureRange(); }), 5, 3);
    backGrid->addWidget(button("CmdClearTextures", QStringLiteral("Clear All"),
                               [this] { setAll(SetAllCommand::ClearTextures); }),
                        6, 3);

    m_preview = named(new QLabel(this), "picPreview");
    m_preview->setFixedSize(kPreviewBox);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setStyleSheet(QStringLiteral("background: black"));

    auto* left = new QVBoxLayout;
    left->addWidget(m_preview);
    left->addWidget(place);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(size);
    right->addWidget(time);
    right->addWidget(back, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(left);
    top->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);

    setTextureFolder(DefaultTextureFolder());
    finishLayout(layout);

    const auto changed = [this] {
        if (m_loading)
            return;
        updateControls();
        updatePreview();
    };
    connect(m_location, &QComboBox::currentIndexChanged, this, changed);
    connect(m_posX, &QSpinBox::valueChanged, this, changed);
    connect(m_posY, &QSpinBox::valueChanged, this, changed);
    connect(m_enlarge, &QCheckBox::toggled, this, changed);
    connect(m_shrink, &QCheckBox::toggled, this, changed);
    connect(group, &QButtonGroup::buttonToggled, this, changed);
    connect(m_textures, &QListWidget::currentRowChanged, this, [this, changed] {
        if (!m_loading && m_textures->currentRow() >= 0)
            m_backTexture->setChecked(true);
        changed();
    });
}

QString frmSlideProperties::caption(int line) const
{
    return SlidePropertiesCaption(line);
}

void frmSlideProperties::setTextureFolder(const QString& folder)
{
    m_textureFolder = folder;
    m_folderText->setText(QDir::toNativeSeparators(folder));
    const bool loading = std::exchange(m_loading, true);
    m_textures->clear();
    for (const QString& file : TextureFiles(folder))
        m_textures->addItem(QFileInfo(file).fileName());
    m_loading = loading;
}

void frmSlideProperties::chooseTexture(const QString& fileName)
{
    const QList<QListWidgetItem*> found = m_textures->findItems(fileName, Qt::MatchFixedString);
    if (!found.isEmpty())
        m_textures->setCurrentItem(found.first());
}

void frmSlideProperties::setBackColor(qint32 color)
{
    m_color = color;
    QPalette palette = m_colorSwatch->palette();
    palette.setColor(QPalette::Window, FromVbColor(color));
    m_colorSwatch->setPalette(palette);
    updatePreview();
}

QString frmSlideProperties::chosenTexture() const
{
    const QListWidgetItem* item = m_textures->currentItem();
    return item ? QDir(m_textureFolder).filePath(item->text()) : QString();
}

Slide frmSlideProperties::chosen() const
{
    Slide slide = const_cast<frmSlideProperties*>(this)->current();
    slide.SlideLocation = qint16(m_location->currentIndex());
    slide.SlidePosX = qint16(m_posX->value());
    slide.SlidePosY = qint16(m_posY->value());
    slide.SlideEnlarge = m_enlarge->isChecked() ? 1 : 0;
    slide.SlideShrink = m_shrink->isChecked() ? 1 : 0;
    slide.SlideDelay = qint16(m_interval->currentData().toInt());
    slide.SlideBackColor = m_color;
    if (m_backTexture->isChecked() && !chosenTexture().isEmpty()) {
        slide.SlideBackMode = 2;
        slide.SlideTexture = chosenTexture();
    } else {
        slide.SlideBackMode = m_backColor->isChecked() ? 1 : 0;
        slide.SlideTexture.clear();
    }
    return slide;
}

void frmSlideProperties::loadSlide()
{
    m_loading = true;
    const Slide& slide = current();
    m_location->setCurrentIndex(qBound(0, int(slide.SlideLocation), m_location->count() - 1));
    m_posX->setValue(slide.SlidePosX);
    m_posY->setValue(slide.SlidePosY);
    m_enlarge->setChecked(slide.SlideEnlarge != 0);
    m_shrink->setChecked(slide.SlideShrink != 0);
    int row = m_interval->findData(int(slide.SlideDelay));
    if (row < 0) {
        // A value the list does not offer (set elsewhere) is shown as it is, in its place.
        int at = 0;
        while (at < m_interval->count() && m_interval->itemData(at).toInt() < slide.SlideDelay)
            ++at;
        m_interval->insertItem(at, IntervalText(slide.SlideDelay), int(slide.SlideDelay));
        row = at;
    }
    m_interval->setCurrentIndex(row);
    setBackColor(slide.SlideBackColor);
    m_textures->setCurrentRow(-1);
    bool textureMissing = false;
    if (slide.SlideBackMode == 2 && !slide.SlideTexture.isEmpty()) {
        const QFileInfo texture(SlideFullPath(CurrentShow(), slide.SlideTexture));
        if (texture.isFile()) {
            if (QDir(texture.absolutePath()) != QDir(m_textureFolder))
                setTextureFolder(texture.absolutePath());
            chooseTexture(texture.fileName());
        } else {
            textureMissing = true;
        }
    }
    if (slide.SlideBackMode == 2 && m_textures->currentRow() >= 0)
        m_backTexture->setChecked(true);
    else if (slide.SlideBackMode == 1)
        m_backColor->setChecked(true);
    else
        m_backDefault->setChecked(true);
    updateControls();
    m_loading = false;
    updatePreview();
    if (textureMissing)
        MsgBox(TextureNotFoundText(), vbExclamation, AppTitle());
}

void frmSlideProperties::storeSlide()
{
    Slide& slide = current();
    const Slide values = chosen();
    // A texture that could not be found stays recorded until the user picks another.
    const bool keepMissing = slide.SlideBackMode == 2 && !m_backColor->isChecked() &&
                             !m_backDefault->isChecked() && m_textures->currentRow() < 0;
    if (keepMissing) {
        Slide kept = values;
        kept.SlideBackMode = 2;
        kept.SlideTexture = slide.SlideTexture;
        slide = kept;
        return;
    }
    slide = values;
}

void frmSlideProperties::updateControls()
{
    const bool custom = m_location->currentIndex() == kLocationCustom;
    m_posX->setEnabled(custom);
    m_posY->setEnabled(custom);
}

void frmSlideProperties::updatePreview()
{
    if (m_loading || slides().isEmpty())
        return;
    const Slide slide = chosen();
    QImage texture;
    if (slide.SlideBackMode == 2) {
        if (slide.SlideTexture != m_texturePath) {
            m_texturePath = slide.SlideTexture;
            m_texture = LoadPicture(m_texturePath);
        }
        texture = m_texture;
    }
    m_previewImage =
        SlidePreview(slide, CurrentShow().path, playerScreen(this), kPreviewBox, texture);
    m_preview->setPixmap(QPixmap::fromImage(m_previewImage));
}

bool frmSlideProperties::textureUsable()
{
    if (m_textures->count() == 0) {
        MsgBox(NoTexturesInFolderText(), vbExclamation, AppTitle());
        return false;
    }
    if (m_textures->currentRow() < 0) {
        MsgBox(SelectTextureText(), vbExclamation, AppTitle());
        return false;
    }
    if (!PictureSize(chosenTexture()).isValid()) {
        MsgBox(UnableToSetTexturesText(), vbExclamation, AppTitle());
        return false;
    }
    return true;
}

void frmSlideProperties::setAll(SetAllCommand command)
{
    if (slides().isEmpty())
        return;
    if (command == SetAllCommand::Textures && !textureUsable())
        return;
    storeSlide();
    Slide values = chosen();
    if (command == SetAllCommand::Textures)
        values.SlideTexture = chosenTexture();
    const SetAllPrompt prompt = SetAllPromptFor(command, slides(), values);
    if (!prompt.alreadySet.isEmpty()) {
        MsgBox(prompt.alreadySet, vbInformation, AppTitle());
        return;
    }
    if (MsgBox(prompt.question, vbYesNo | vbQuestion, AppTitle()) != vbYes)
        return;
    ApplySetAll(command, editedSlides(), values);
    reload();
}

void frmSlideProperties::setTextureRange()
{
    if (slides().isEmpty() || !textureUsable())
        return;
    storeSlide();
    const auto range = SlideRangeFrm::Pick(this, TextureRangePrompt(), line());
    if (!range)
        return;
    Slide values = chosen();
    values.SlideTexture = chosenTexture();
    ApplySetAll(SetAllCommand::Textures, editedSlides(), values, range->first, range->last);
    reload();
}

void frmSlideProperties::previewTexture()
{
    if (m_textures->count() == 0) {
        MsgBox(NoFilesToPreviewText(), vbExclamation, AppTitle());
        return;
    }
    if (m_textures->currentRow() < 0) {
        MsgBox(SelectTextureToPreviewText(), vbExclamation, AppTitle());
        return;
    }
    const QImage texture = LoadPicture(chosenTexture());
    if (texture.isNull()) {
        MsgBox(UnableToSetTexturesText(), vbExclamation, AppTitle());
        return;
    }
    QImage tiled(kPreviewBox, QImage::Format_RGB32);
    QPainter painter(&tiled);
    painter.drawTiledPixmap(tiled.rect(), QPixmap::fromImage(texture));
    painter.end();
    m_previewImage = tiled;
    m_preview->setPixmap(QPixmap::fromImage(tiled));
}

bool frmSlideProperties::Edit(QWidget* parent, int line)
{
    if (CurrentShow().slides.isEmpty())
        return false;
    frmSlideProperties dialog(line, parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace kavori
