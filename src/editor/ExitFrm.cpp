#include "ExitFrm.h"

#include "platform/HelpFile.h"
#include "runtime/MsgBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace kavori {

ExitFrm::ExitFrm(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ExitFrm"));
    InstallHelpKey(this, QStringLiteral("editor#ExitFrm"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Changes Made]"));
    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(32, 32));
    auto* text = new QLabel(QStringLiteral("The current slide show has changed.") + NewLine2() +
                                QStringLiteral("Do you want to save your changes?"),
                            this);
    text->setObjectName(QStringLiteral("lblMessage"));
    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addWidget(text, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto add = [&](const char* name, const QString& caption, Choice choice) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, [this, choice] {
            m_choice = choice;
            choice == Cancel ? reject() : accept();
        });
        buttons->addWidget(button);
        return button;
    };
    add("CmdSave", QStringLiteral("&Save"), Save)->setDefault(true);
    add("CmdDiscard", QStringLiteral("&Discard"), Discard);
    add("CmdCancel", QStringLiteral("Cancel"), Cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
}

ExitFrm::Choice ExitFrm::Ask(QWidget* parent)
{
    ExitFrm dialog(parent);
    dialog.exec();
    return dialog.choice();
}

} // namespace kavori
