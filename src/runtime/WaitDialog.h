#pragma once

#include <QString>

#include <memory>

class QProgressDialog;

namespace kavori {

// Progress of a long job on the UI thread, with a way to cancel it. The job reports; the
// dialog (or a test's stand-in) shows and answers whether the user cancelled.
class Progress {
public:
    virtual ~Progress() = default;
    virtual void setCaption(const QString& text) = 0;
    virtual void setMaximum(int maximum) = 0;
    virtual void setValue(int value) = 0;
    // Lets pending events run and tells whether Cancel was pressed.
    virtual bool cancelled() = 0;
};

// The wait dialog: a small modal window with a caption, a progress bar and Cancel.
class WaitDialog final : public Progress {
public:
    explicit WaitDialog(const QString& title);
    ~WaitDialog() override;
    void setCaption(const QString& text) override;
    void setMaximum(int maximum) override;
    void setValue(int value) override;
    bool cancelled() override;

private:
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace kavori
