#include "SlideShow.h"

#include "platform/StartupState.h"
#include "settings/Settings.h"

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

bool operator==(const Slide& a, const Slide& b)
{
    return a.SlideFile == b.SlideFile && a.SlideDescription == b.SlideDescription &&
           a.SlideTransition == b.SlideTransition && a.SlideSound == b.SlideSound &&
           a.SlideLocation == b.SlideLocation && a.SlidePosX == b.SlidePosX &&
           a.SlidePosY == b.SlidePosY && a.SlideEnlarge == b.SlideEnlarge &&
           a.SlideShrink == b.SlideShrink && a.SlideDelay == b.SlideDelay &&
           a.SlideBackMode == b.SlideBackMode && a.SlideBackColor == b.SlideBackColor &&
           a.SlideTexture == b.SlideTexture && a.SlideDescProps == b.SlideDescProps;
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
