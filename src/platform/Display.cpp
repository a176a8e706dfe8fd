#include "Display.h"

#include <QGuiApplication>
#include <QScreen>

namespace kavori {

namespace {
int& depthOverride()
{
    static int bits = 0;
    return bits;
}
} // namespace

int DisplayColorDepth()
{
    if (depthOverride() > 0)
        return depthOverride();
    const QScreen* screen = qobject_cast<QGuiApplication*>(QCoreApplication::instance())
                                ? QGuiApplication::primaryScreen()
                                : nullptr;
    return screen ? screen->depth() : 32;
}

void SetDisplayColorDepthOverride(int bits)
{
    depthOverride() = bits > 0 ? bits : 0;
}

} // namespace kavori
