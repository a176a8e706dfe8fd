#include "Modes.h"

#include "CommandLine.h"
#include "packaging/SaverSetup.h"
#include "platform/StartupState.h"
#include "platform/WindowLock.h"
#include "playback/FullViewFrm.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"

namespace kavori {

namespace {

// Where a show starts: the slide shown last when the user asked to resume there.
int firstSlide()
{
    const Settings& s = CurrentSettings();
    const int count = int(CurrentShow().slides.size());
    if (s.ResumeLastDisplayed && s.ImageLastDisplayed > 0 && s.ImageLastDisplayed < count)
        return s.ImageLastDisplayed;
    return 0;
}

} // namespace

int RunSlideShowMode()
{
    PlayerStart start;
    start.firstSlide = firstSlide();
    return FullViewFrm::PlaySlideShowModal(start);
}

int RunScreenSaverMode()
{
    // Held while the saver runs, so a second start finds it and leaves at once.
    WindowLock lock(ScreenSaverWindowTitle());
    if (!lock.isHeld())
        return 0;
    PlayerStart start;
    start.screenSaver = true;
    start.hostWindow = CurrentStartup().SaverWindow;
    // The show's sound plays only when the saver settings allow it.
    if (!CurrentSettings().ScreenSaverSound)
        CurrentSettings().SoundMode = 0;
    return FullViewFrm::PlaySlideShowModal(start);
}

int RunScreenSaverSettingsMode()
{
    SaverSetup::Edit();
    return 0;
}

} // namespace kavori
