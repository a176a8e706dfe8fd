#include "UnattendedPrompts.h"

#include "MsgBox.h"

namespace kavori {

namespace {

class UnattendedPrompts final : public Prompts {
public:
    explicit UnattendedPrompts(std::function<void(const QString&)> tell) : m_tell(std::move(tell))
    {}
    int msgBox(const QString& text, int style, const QString&) override
    {
        if (m_tell)
            m_tell(text);
        return DefaultAnswer(style);
    }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override
    {
        return std::nullopt;
    }
    QString openFile(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFile(const QString&, const QString&, const QString&) override { return {}; }
    QString chooseFolder(const QString&, const QString&) override { return {}; }
    std::optional<QString> chooseItem(const QString&, const QString&, const QStringList&) override
    {
        return std::nullopt;
    }
    std::optional<QColor> chooseColor(const QColor&) override { return std::nullopt; }
    std::optional<QFont> chooseFont(const QFont&) override { return std::nullopt; }

private:
    std::function<void(const QString&)> m_tell;
};

} // namespace

std::unique_ptr<Prompts> MakeUnattendedPrompts(std::function<void(const QString&)> tell)
{
    return std::make_unique<UnattendedPrompts>(std::move(tell));
}

} // namespace kavori
