#pragma once

#include <QProxyStyle>

namespace kavori {

// The program's look: the platform's style, with plain text dialog buttons (the desktop may
// lack an icon theme, and a stray icon on "Help" reads as a fault).
class AppStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr,
                  const QWidget* widget = nullptr, QStyleHintReturn* data = nullptr) const override;
};

} // namespace kavori
