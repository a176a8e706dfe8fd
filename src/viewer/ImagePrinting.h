#pragma once

#include <QDialog>
#include <QImage>
#include <QRect>

class QCheckBox;
class QPrinter;

namespace kavori {

// Where a picture goes on the printed page: at its size (96 pixels to the inch), shrunk to the
// page when too large and asked to, enlarged to fill it when asked to, centred when asked to
// (else at the top left). Proportions are always kept.
QRect PrintPlacement(const QSize& image, const QRect& page, int printerDpi, bool enlarge,
                     bool shrink, bool center);

// Prints the picture on one page with the print settings.
bool PrintImage(QPrinter& printer, const QImage& image);

// The print options: enlarge, shrink and centre (PrintEnlargeFit, PrintShrinkFit, PrintCenterFit).
class frmPrintOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmPrintOptions(QWidget* parent = nullptr);
    // Stores the choices in the settings and the settings file.
    void remember() const;

private:
    QCheckBox* m_enlarge;
    QCheckBox* m_shrink;
    QCheckBox* m_center;
};

} // namespace kavori
