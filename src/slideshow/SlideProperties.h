#pragma once

#include "SlideShow.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// What the slide properties dialog decides, without a window: the commands that set one
// value on many slides, their messages and questions, and the background textures offered.

// SlideLocation codes whose meaning the properties dialog and the player share.
constexpr qint16 kLocationCenter = 0;
constexpr qint16 kLocationRandom = 9;
constexpr qint16 kLocationCustom = 10;

// The placement list, position = SlideLocation.
QStringList SlideLocationNames();

// The caption of the dialog for a line of the View List.
QString SlidePropertiesCaption(int line);

// The commands that set a value on every slide (or a range of them).
enum class SetAllCommand {
    Center,
    Random,
    Randomize,
    Position,
    EnlargeAll,
    EnlargeNone,
    ShrinkAll,
    ShrinkNone,
    Interval,
    Colors,
    ColorDefault,
    Textures,
    ClearTextures,
};

// Before a command runs: either every slide has the value already (then that is said and
// nothing changes) or the question to ask.
struct SetAllPrompt {
    QString alreadySet;
    QString question;
};

// chosen holds the dialog's values for the current slide: the location (and custom place),
// the interval, the colour and the texture that the command spreads.
SetAllPrompt SetAllPromptFor(SetAllCommand command, const QVector<Slide>& slides,
                             const Slide& chosen);
// Sets the value on the slides first to last (inclusive; -1 for last means to the end). A
// slide's background is one of the default colour, its own colour or a texture, so setting one
// kind puts the others aside. Randomize draws each slide's place from the one random source.
void ApplySetAll(SetAllCommand command, QVector<Slide>& slides, const Slide& chosen, int first = 0,
                 int last = -1);

// The folder textures are offered from first: the bonus pack's textures.
QString DefaultTextureFolder();
// The pictures of a folder that can serve as textures, sorted by name (full paths).
QStringList TextureFiles(const QString& folder);

// Texture messages.
QString NoTexturesInFolderText();     // setting from a folder without pictures
QString NoFilesToPreviewText();       // previewing a texture from an empty folder
QString TextureNotFoundText();        // the slide's texture is gone
QString SelectTextureText();          // setting with nothing chosen
QString SelectTextureToPreviewText(); // previewing with nothing chosen
QString UnableToSetTexturesText();    // the chosen file is not a picture
QString TextureRangePrompt();

} // namespace kavori
