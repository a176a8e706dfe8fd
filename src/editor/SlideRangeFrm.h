#pragma once

#include <QDialog>

#include <optional>

class QComboBox;

namespace kavori {

// A run of slides, first to last line inclusive.
struct SlideRange {
    int first = 0;
    int last = 0;
};

// Picks a run of slides of the show in memory: the first and the last, each chosen from the
// slides by number and file name. The last can never come before the first.
class SlideRangeFrm : public QDialog {
    Q_OBJECT
public:
    SlideRangeFrm(const QString& prompt, int currentLine, QWidget* parent = nullptr);
    SlideRange range() const;
    void setRange(int first, int last);

    // Asks for a range; nothing when the user cancels or the show is empty.
    static std::optional<SlideRange> Pick(QWidget* parent, const QString& prompt, int currentLine);

private:
    QComboBox* m_first = nullptr;
    QComboBox* m_last = nullptr;
};

} // namespace kavori
