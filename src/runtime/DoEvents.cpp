#include "DoEvents.h"

#include <QCoreApplication>

namespace kavori {

void DoEvents()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}

} // namespace kavori
