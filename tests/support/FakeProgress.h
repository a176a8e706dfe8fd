#pragma once

#include "runtime/WaitDialog.h"

#include <QStringList>

namespace kavori::test {

// Stands for the wait dialog: records what it shows and cancels when told to.
class FakeProgress final : public Progress {
public:
    int cancelAfter = -1; // cancel at the check after this many; never when negative
    int checks = 0;
    QStringList captions;
    int maximum = 0;
    void setCaption(const QString& text) override { captions << text; }
    void setMaximum(int m) override { maximum = m; }
    void setValue(int) override {}
    bool cancelled() override { return cancelAfter >= 0 && ++checks > cancelAfter; }
};

} // namespace kavori::test
