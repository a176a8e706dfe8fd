#pragma once

#include <QList>
#include <QPointer>
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

    // Hides the window for as long as it lives, so a question asked during start-up is never
    // behind it (the loading window stays on top); the window comes back afterwards.
    class StepAside {
    public:
        StepAside();
        ~StepAside();
        StepAside(const StepAside&) = delete;
        StepAside& operator=(const StepAside&) = delete;

    private:
        QList<QPointer<QWidget>> m_hidden;
    };
};

} // namespace kavori
