#pragma once

#include "runtime/WaitDialog.h"

#include <QStringList>

#include <memory>

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

    // A progress of its own that reports to this one, for code that makes and ends its progress
    // itself.
    std::unique_ptr<Progress> share()
    {
        struct Shared final : Progress {
            FakeProgress* to;
            explicit Shared(FakeProgress* p) : to(p) {}
            void setCaption(const QString& text) override { to->setCaption(text); }
            void setMaximum(int m) override { to->setMaximum(m); }
            void setValue(int v) override { to->setValue(v); }
            bool cancelled() override { return to->cancelled(); }
        };
        return std::make_unique<Shared>(this);
    }
};

} // namespace kavori::test
