#include "PlaybackOptions.h"

#include "SlideShow.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QFileInfo>

#include <algorithm>

namespace kavori {

PlaybackOptions CurrentPlaybackOptions()
{
    const Settings& s = CurrentSettings();
    PlaybackOptions o;
    o.useSlideIntervals = CurrentShow().UseSlideIntervals;
    o.interval = s.SlideInterval;
    o.random = s.RandomSlides;
    o.loop = s.LoopSlideShow;
    o.toolbar = s.ShowToolbar;
    o.fileNames = s.ShowFilenames;
    o.ignoreErrors = s.SlideIgnoreError;
    o.animate = s.AnimateGIF89;
    o.leftBack = s.LMousePrev;
    o.rightNext = s.RMouseNext;
    o.enableTransitions = s.EnableTransitions;
    o.clearTransition = s.ClearTransition;
    o.randomTransitions = s.RandomTransitions;
    o.speed = s.TransitionSpeed;
    o.soundMode = s.SoundMode;
    o.soundFile = s.SoundFile;
    o.cdTrack = s.CDTrack;
    o.soundLoop = s.SoundLoop;
    o.dontRestart = s.DontRestartSound;
    o.showDescription = s.ShowDescription;
    o.look = DefaultDescriptionLook();
    return o;
}

QString PlaybackOptionsRefusal(const PlaybackOptions& o)
{
    if (o.soundMode == 1 && !o.soundFile.isEmpty() && !QFileInfo(o.soundFile).isFile())
        return QStringLiteral("The specified sound file could not be found.") + NewLine2() +
               QStringLiteral("Correct the filename and then try again...");
    return {};
}

void ApplyPlaybackOptions(const PlaybackOptions& o)
{
    Settings& s = CurrentSettings();
    SlideShow& show = CurrentShow();
    show.UseSlideIntervals = o.useSlideIntervals;
    // The same ranges the settings file keeps them in.
    s.SlideInterval = qint16(std::clamp<int>(o.interval, 0, 60));
    s.RandomSlides = o.random;
    s.LoopSlideShow = o.loop;
    s.ShowToolbar = o.toolbar;
    s.ShowFilenames = o.fileNames;
    s.SlideIgnoreError = o.ignoreErrors;
    s.AnimateGIF89 = o.animate;
    s.LMousePrev = o.leftBack;
    s.RMouseNext = o.rightNext;
    s.EnableTransitions = o.enableTransitions;
    s.ClearTransition = o.clearTransition;
    s.RandomTransitions = o.randomTransitions;
    s.TransitionSpeed = qint16(std::clamp<int>(o.speed, 0, 6));
    s.SoundMode = qint16(std::clamp<int>(o.soundMode, 0, 3));
    s.SoundFile = o.soundFile;
    s.CDTrack = qint16(std::max<int>(0, o.cdTrack));
    s.SoundLoop = o.soundLoop;
    s.DontRestartSound = o.dontRestart;
    s.ShowDescription = o.showDescription;
    SetDefaultDescriptionLook(o.look);
    show.changed = true;
    WriteSlideShowOptions();
    WriteDescriptionLook();
}

} // namespace kavori
