#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;

namespace kavori {

// Tip of the day: one tip at a time, the next on request, and the switch that shows the
// dialog at start (the per-user value "Show Tips at Startup").
class frmTip : public QDialog {
    Q_OBJECT
public:
    explicit frmTip(QWidget* parent = nullptr);

    static QStringList Tips();
    // Whether the tips are to be shown when the program starts.
    static bool ShowAtStartup();

private:
    void showTip(int index);

    QLabel* m_tip = nullptr;
    QCheckBox* m_startup = nullptr;
    int m_index = 0;
};

} // namespace kavori
