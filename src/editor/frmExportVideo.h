#pragma once

#include "export/ShowExport.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace kavori {

// Export to Video: the format, size, frame rate and seed of the video and its file; Export
// makes it with a progress bar of the frames done and the time left, and Cancel stops it
// leaving no file behind. The choices are kept in the settings' export group.
class frmExportVideo : public QDialog {
    Q_OBJECT
public:
    explicit frmExportVideo(QWidget* parent = nullptr);

    // The options the controls give.
    ExportOptions options() const;
    // Makes the video; true when it was written.
    bool exportVideo();
    bool isExporting() const { return m_exporting; }
    // What the progress line says now.
    QString progressText() const;

    static void Edit(QWidget* parent);

protected:
    void reject() override;

private:
    void browse();
    void formatChanged();
    void setBusy(bool busy);

    QComboBox* m_format = nullptr;
    QComboBox* m_size = nullptr;
    QComboBox* m_rate = nullptr;
    QSpinBox* m_seed = nullptr;
    QLineEdit* m_file = nullptr;
    QPushButton* m_browse = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_export = nullptr;
    QPushButton* m_cancel = nullptr;
    bool m_exporting = false;
    bool m_cancelRequested = false;
};

} // namespace kavori
