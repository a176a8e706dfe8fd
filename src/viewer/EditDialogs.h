#pragma once

#include <QDialog>

class QCheckBox;
class QRadioButton;
class QSpinBox;

namespace kavori {

// Rotate by any angle: the angle, the direction and whether the picture keeps its size,
// remembered in RotateAngle, RotateDirection and RotatePreserve.
class frmRotateImg : public QDialog {
    Q_OBJECT
public:
    explicit frmRotateImg(QWidget* parent = nullptr);
    int angle() const;
    bool clockwise() const;
    bool preserveSize() const;
    // Stores the choices in the settings (on OK).
    void remember() const;

private:
    QSpinBox* m_angle;
    QRadioButton* m_clockwise;
    QCheckBox* m_preserve;
};

// A new pixel size, optionally keeping the proportions (ImageSizeAspect).
class frmImageSize : public QDialog {
    Q_OBJECT
public:
    frmImageSize(const QSize& current, QWidget* parent = nullptr);
    QSize chosenSize() const;
    void remember() const;

private:
    QSize m_current;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QCheckBox* m_aspect;
};

} // namespace kavori
