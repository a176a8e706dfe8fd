#pragma once

#include <QWidget>

namespace kavori {

// The small window that says the program is loading, shown while start-up works.
class WaitFrm : public QWidget {
    Q_OBJECT
public:
    explicit WaitFrm(QWidget* parent = nullptr);

    // Shows the window and lets it paint.
    static void Open();
    // Closes it wherever it is (any path that ends start-up calls this).
    static void CloseAll();
};

} // namespace kavori
