#pragma once

#include "DescriptionFile.h"

#include <QString>

namespace kavori {

// Every show-wide value of the show in memory, as the playback options dialog edits it.
struct PlaybackOptions {
    bool useSlideIntervals = false; // each slide's own interval instead of the show's
    qint16 interval = 5;
    bool random = false;
    bool loop = true;
    bool toolbar = false;
    bool fileNames = false;
    bool ignoreErrors = false;
    bool animate = true;
    bool leftBack = false;
    bool rightNext = true;
    bool enableTransitions = false;
    bool clearTransition = false;
    bool randomTransitions = false;
    qint16 speed = 3;
    qint16 soundMode = 0;
    QString soundFile;
    qint16 cdTrack = 0;
    bool soundLoop = false;
    bool dontRestart = true;
    bool showDescription = false;
    DescriptionLook look; // the default look of descriptions
};

PlaybackOptions CurrentPlaybackOptions();
// The refusal of a choice, or empty: a show-wide sound file that cannot be found.
QString PlaybackOptionsRefusal(const PlaybackOptions& options);
// Makes the options the show's (values kept within their ranges), marks the show changed and
// writes them as the user's defaults.
void ApplyPlaybackOptions(const PlaybackOptions& options);

} // namespace kavori
