#include "WaitFrm.h"

#include "runtime/DoEvents.h"
#include "runtime/MsgBox.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace kavori {

WaitFrm::WaitFrm(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("WaitFrm"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(AppTitle());
    auto* label = new QLabel(QStringLiteral("Loading Kavori, please wait..."), this);
    label->setObjectName(QStringLiteral("lblWait"));
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.2);
    label->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->addWidget(label);
    setStyleSheet(QStringLiteral("kavori--WaitFrm { border: 1px solid palette(mid); }"));
}

void WaitFrm::Open()
{
    auto* window = new WaitFrm;
    window->adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        window->move(screen->availableGeometry().center() - window->rect().center());
    window->show();
    DoEvents();
}

void WaitFrm::CloseAll()
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() == QLatin1String("WaitFrm"))
            w->close();
    }
}

WaitFrm::StepAside::StepAside()
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() == QLatin1String("WaitFrm") && w->isVisible()) {
            w->hide();
            m_hidden << w;
        }
    }
}

WaitFrm::StepAside::~StepAside()
{
    for (const QPointer<QWidget>& w : std::as_const(m_hidden)) {
        if (w)
            w->show();
    }
}

} // namespace kavori
