#include "ImagePrinting.h"

#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPainter>
#include <QPrinter>
#include <QVBoxLayout>

namespace kavori {

QRect PrintPlacement(const QSize& image, const QRect& page, int printerDpi, bool enlarge,
                     bool shrink, bool center)
{
    if (image.isEmpty() || page.isEmpty())
        return {};
    QSize size = image * (double(printerDpi) / 96.0);
    const bool tooLarge = size.width() > page.width() || size.height() > page.height();
    if ((tooLarge && shrink) || (!tooLarge && enlarge))
        size = size.scaled(page.size(), Qt::KeepAspectRatio);
    QPoint at = page.topLeft();
    if (center)
        at += QPoint((page.width() - size.width()) / 2, (page.height() - size.height()) / 2);
    return QRect(at, size.expandedTo(QSize(1, 1)));
}

bool PrintImage(QPrinter& printer, const QImage& image)
{
    QPainter painter;
    if (image.isNull() || !painter.begin(&printer))
        return false;
    const Settings& s = CurrentSettings();
    const QRect page = printer.pageLayout().paintRectPixels(printer.resolution());
    const QRect target =
        PrintPlacement(image.size(), QRect(QPoint(0, 0), page.size()), printer.resolution(),
                       s.PrintEnlargeFit, s.PrintShrinkFit, s.PrintCenterFit);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
    return painter.end();
}

frmPrintOptions::frmPrintOptions(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmPrintOptions"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Print Options]"));
    const Settings& s = CurrentSettings();
    m_enlarge = new QCheckBox(QStringLiteral("&Enlarge small images to fit the page"), this);
    m_enlarge->setObjectName(QStringLiteral("chkEnlarge"));
    m_enlarge->setChecked(s.PrintEnlargeFit);
    m_shrink = new QCheckBox(QStringLiteral("&Shrink large images to fit the page"), this);
    m_shrink->setObjectName(QStringLiteral("chkShrink"));
    m_shrink->setChecked(s.PrintShrinkFit);
    m_center = new QCheckBox(QStringLiteral("&Center the image on the page"), this);
    m_center->setObjectName(QStringLiteral("chkCenter"));
    m_center->setChecked(s.PrintCenterFit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        remember();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    for (QCheckBox* box : {m_enlarge, m_shrink, m_center})
        layout->addWidget(box);
    layout->addWidget(buttons);
}

void frmPrintOptions::remember() const
{
    Settings& s = CurrentSettings();
    s.PrintEnlargeFit = m_enlarge->isChecked();
    s.PrintShrinkFit = m_shrink->isChecked();
    s.PrintCenterFit = m_center->isChecked();
    WriteSettingsKeys({QStringLiteral("PrintEnlargeFit"), QStringLiteral("PrintShrinkFit"),
                       QStringLiteral("PrintCenterFit")});
}

} // namespace kavori
