#pragma once

#include "SlideEditDialog.h"
#include "slideshow/SlideProperties.h"

#include <QImage>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QSpinBox;

namespace kavori {

// The placement, fit, interval and background of each slide, with a preview of the slide as
// the screen shows it, and commands that set one value on every slide.
class frmSlideProperties : public SlideEditDialog {
    Q_OBJECT
public:
    explicit frmSlideProperties(int line, QWidget* parent = nullptr);

    // Runs an "all" command: says so when every slide has the value already, else asks.
    void setAll(SetAllCommand command);
    // CmdSetRange: the chosen texture on a run of slides.
    void setTextureRange();
    // Shows the chosen texture tiled in the preview box.
    void previewTexture();
    // The folder the textures are listed from, and choosing one of them (by file name).
    void setTextureFolder(const QString& folder);
    QString textureFolder() const { return m_textureFolder; }
    void chooseTexture(const QString& fileName);
    void setBackColor(qint32 color);
    QImage previewImage() const { return m_previewImage; }

    static bool Edit(QWidget* parent, int line);

protected:
    void loadSlide() override;
    void storeSlide() override;
    QString caption(int line) const override;

private:
    // The slide as the controls describe it.
    Slide chosen() const;
    QString chosenTexture() const;
    // The refusal for using the chosen texture, or empty.
    bool textureUsable();
    void updatePreview();
    void updateControls();

    QComboBox* m_location = nullptr;
    QSpinBox* m_posX = nullptr;
    QSpinBox* m_posY = nullptr;
    QCheckBox* m_enlarge = nullptr;
    QCheckBox* m_shrink = nullptr;
    QComboBox* m_interval = nullptr;
    QRadioButton* m_backDefault = nullptr;
    QRadioButton* m_backColor = nullptr;
    QRadioButton* m_backTexture = nullptr;
    QLabel* m_colorSwatch = nullptr;
    qint32 m_color = 0;
    QLineEdit* m_folderText = nullptr;
    QListWidget* m_textures = nullptr;
    QString m_textureFolder;
    QLabel* m_preview = nullptr;
    QImage m_previewImage;
    QString m_texturePath; // the texture picture kept for previews
    QImage m_texture;
    bool m_loading = false;
};

} // namespace kavori
