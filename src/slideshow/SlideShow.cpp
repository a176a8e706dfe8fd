#include "SlideShow.h"

#include "settings/Settings.h"
#include "platform/StartupState.h"

namespace kavori {

SlideShow& CurrentShow()
{
    static SlideShow show;
    return show;
}

void ResetShow()
{
    CurrentShow() = SlideShow();
}

Slide NewSlide(const QString& file)
{
    const Settings& s = CurrentSettings();
    Slide slide;
    slide.SlideFile = file;
    slide.SlideEnlarge = s.EnlargeImages ? 1 : 0;
    slide.SlideShrink = s.StretchImages ? 1 : 0;
    slide.SlideDelay = s.SlideInterval;
    slide.SlideBackMode = s.BackgroundColor;
    slide.SlideBackColor = s.PreviewBackRGB;
    return slide;
}

QString ShowWord()
{
    return CurrentStartup().ScreenSaverMode ? QStringLiteral("Screen Saver")
                                            : QStringLiteral("Slide Show");
}

} // namespace kavori
