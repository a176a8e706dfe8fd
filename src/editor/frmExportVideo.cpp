#include "frmExportVideo.h"

#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShow.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <climits>

namespace kavori {

namespace {

QString Title()
{
    return QStringLiteral("Export to Video");
}

} // namespace

frmExportVideo::frmExportVideo(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmExportVideo"));
    setWindowTitle(Title());
    const Settings& s = CurrentSettings();

    m_format = new QComboBox(this);
    m_format->setObjectName(QStringLiteral("cboFormat"));
    m_format->addItems({QStringLiteral("MP4 (H.264 video, AAC sound)"),
                        QStringLiteral("WebM (VP9 video, Opus sound)")});
    m_format->setCurrentIndex(s.ExportFormat == 1 ? 1 : 0);
    m_size = new QComboBox(this);
    m_size->setObjectName(QStringLiteral("cboSize"));
    m_size->addItems(ExportSizeNames());
    m_size->setCurrentIndex(qBound(0, int(s.ExportSize), 2));
    m_rate = new QComboBox(this);
    m_rate->setObjectName(QStringLiteral("cboFrameRate"));
    for (int rate : ExportFrameRates())
        m_rate->addItem(QStringLiteral("%1 frames a second").arg(rate), rate);
    m_rate->setCurrentIndex(std::max(0, m_rate->findData(int(s.ExportFrameRate))));
    m_seed = new QSpinBox(this);
    m_seed->setObjectName(QStringLiteral("txtSeed"));
    m_seed->setRange(0, INT_MAX);
    m_seed->setValue(s.ExportSeed);
    m_seed->setToolTip(QStringLiteral("Random order and transitions come out the same for the "
                                      "same number."));
    m_file = new QLineEdit(this);
    m_file->setObjectName(QStringLiteral("txtFile"));
    m_file->setMinimumWidth(320);
    m_file->setText(SuggestedVideoFile(s.ExportFile, CurrentShow().path,
                                       VideoFormat(m_format->currentIndex())));
    m_browse = new QPushButton(QStringLiteral("&Browse..."), this);
    m_browse->setObjectName(QStringLiteral("CmdBrowse"));
    connect(m_browse, &QPushButton::clicked, this, &frmExportVideo::browse);
    connect(m_format, &QComboBox::currentIndexChanged, this, &frmExportVideo::formatChanged);

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(m_browse);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Format:"), m_format);
    form->addRow(QStringLiteral("&Size:"), m_size);
    form->addRow(QStringLiteral("Frame &rate:"), m_rate);
    form->addRow(QStringLiteral("Random &number:"), m_seed);
    auto* fileLabel = new QLabel(QStringLiteral("&File:"), this);
    fileLabel->setBuddy(m_file);
    form->addRow(fileLabel, fileRow);

    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("prgExport"));
    m_progress->setRange(0, 1);
    m_progress->setValue(0);
    m_progress->setTextVisible(false); // the line below tells the frames and the time
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblProgress"));
    m_export = new QPushButton(QStringLiteral("&Export"), this);
    m_export->setObjectName(QStringLiteral("CmdExport"));
    m_export->setDefault(true);
    m_cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("CmdCancel"));
    connect(m_export, &QPushButton::clicked, this, [this] {
        if (exportVideo())
            accept();
    });
    connect(m_cancel, &QPushButton::clicked, this, &frmExportVideo::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_export);
    buttons->addWidget(m_cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(8);
    layout->addWidget(m_progress);
    layout->addWidget(m_status);
    layout->addLayout(buttons);
}

ExportOptions frmExportVideo::options() const
{
    ExportOptions o;
    o.format = VideoFormat(m_format->currentIndex());
    o.size = ExportSizeAt(m_size->currentIndex());
    o.fps = m_rate->currentData().toInt();
    o.seed = quint32(m_seed->value());
    o.output = m_file->text().trimmed();
    return o;
}

void frmExportVideo::formatChanged()
{
    m_file->setText(
        WithVideoExtension(m_file->text().trimmed(), VideoFormat(m_format->currentIndex())));
}

void frmExportVideo::browse()
{
    const VideoFormat format = VideoFormat(m_format->currentIndex());
    const QString filter = format == VideoFormat::WebM ? QStringLiteral("WebM video (*.webm)")
                                                       : QStringLiteral("MP4 video (*.mp4)");
    const QString file = CurrentPrompts().saveFile(Title(), m_file->text(), filter);
    if (!file.isEmpty())
        m_file->setText(WithVideoExtension(file, format));
}

QString frmExportVideo::progressText() const
{
    return m_status->text();
}

void frmExportVideo::setBusy(bool busy)
{
    m_exporting = busy;
    for (QWidget* w : {static_cast<QWidget*>(m_format), static_cast<QWidget*>(m_size),
                       static_cast<QWidget*>(m_rate), static_cast<QWidget*>(m_seed),
                       static_cast<QWidget*>(m_file), static_cast<QWidget*>(m_browse),
                       static_cast<QWidget*>(m_export)})
        w->setEnabled(!busy);
}

bool frmExportVideo::exportVideo()
{
    if (m_exporting)
        return false;
    const ExportOptions o = options();
    const QString refusal = CheckExportOptions(o);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return false;
    }
    if (QFileInfo::exists(o.output) &&
        MsgBox(QStringLiteral("The following file already exists:") + NewLine2() + o.output +
                   NewLine2() + QStringLiteral("Replace it?"),
               vbYesNo + vbQuestion, Title()) != vbYes)
        return false;

    Settings& s = CurrentSettings();
    s.ExportFormat = qint16(m_format->currentIndex());
    s.ExportSize = qint16(m_size->currentIndex());
    s.ExportFrameRate = qint16(o.fps);
    s.ExportSeed = qint32(o.seed);
    s.ExportFile = o.output;
    WriteExportSettings();

    setBusy(true);
    m_cancelRequested = false;
    m_status->setText(QStringLiteral("Preparing..."));
    QElapsedTimer clock;
    clock.start();
    const ExportResult result = ExportShowToVideo(o, [&](qint64 done, qint64 total) {
        if (m_progress->maximum() != total)
            m_progress->setRange(0, int(std::min<qint64>(total, INT_MAX)));
        m_progress->setValue(int(std::min<qint64>(done, INT_MAX)));
        m_status->setText(QStringLiteral("Frame %1 of %2, %3")
                              .arg(done)
                              .arg(total)
                              .arg(ExportTimeLeftText(done, total, clock.elapsed() / 1000.0)));
        QCoreApplication::processEvents();
        return !m_cancelRequested;
    });
    setBusy(false);
    if (result.cancelled) {
        m_progress->setValue(0);
        m_status->setText(QStringLiteral("Cancelled, no file was made."));
        return false;
    }
    if (!result.written) {
        m_status->clear();
        MsgBox(result.message, vbExclamation, Title());
        return false;
    }
    QString done = QStringLiteral("The video has been made:") + NewLine2() + o.output;
    if (!result.message.isEmpty())
        done += NewLine2() + result.message;
    MsgBox(done, vbInformation, Title());
    return true;
}

void frmExportVideo::reject()
{
    // While the video is being made, Cancel (and closing the window) stops it; the dialog
    // stays open so the user sees that nothing was made.
    if (m_exporting) {
        m_cancelRequested = true;
        return;
    }
    QDialog::reject();
}

void frmExportVideo::Edit(QWidget* parent)
{
    if (CurrentShow().slides.isEmpty()) {
        MsgBox(QStringLiteral("There are no slides in this slide show to export..."), vbExclamation,
               Title());
        return;
    }
    frmExportVideo dialog(parent);
    dialog.exec();
}

} // namespace kavori
