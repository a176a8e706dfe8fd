#pragma once

#include <QIcon>
#include <QPixmap>

namespace kavori {

// The program's icon: a framed picture of hills under a sun, drawn at any size.
QPixmap KavoriPixmap(int size);
QIcon KavoriIcon();

} // namespace kavori
