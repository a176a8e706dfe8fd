#pragma once

#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace kavori::test {

// Triggers a main-window command by its object name; it must be enabled.
inline void run(MainViewFrm& w, const char* action)
{
    QAction* a = w.menus().action(QString::fromLatin1(action));
    ASSERT_TRUE(a && a->isEnabled()) << action;
    a->trigger();
}

// Runs a main-window command whose dialog is then worked by drive (and closed after).
inline void runWithDialog(MainViewFrm& w, const char* action,
                          const std::function<void(QDialog*)>& drive)
{
    bool driven = false;
    QTimer::singleShot(0, qApp, [&, action] {
        // The command may do some work before its dialog opens; a dialog that never opens
        // fails here rather than leaving the test waiting.
        QDialog* dialog = nullptr;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return (dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()));
            },
            3000))
            << action;
        drive(dialog);
        driven = true;
        if (dialog->isVisible())
            dialog->reject();
    });
    run(w, action);
    EXPECT_TRUE(driven) << action;
}

} // namespace kavori::test
