#pragma once

#include "DescriptionFile.h"
#include "SlideShow.h"

#include <QString>

namespace kavori {

// What the slide description dialog does to the slides of a show, without a window. The
// dialog works on a copy of the show and stores it back on OK.

// A slide's text as the show keeps it: at most 200 characters.
QString CutDescription(const QString& text);

// "Editing description for slide " + number + ":", slides counted from 1.
QString EditingCaption(int index);

// The result of a command: a message to show (empty when none) and whether slides changed.
struct DescriptionResult {
    QString message;
    bool changed = false;
};

// Blanks one slide's text, or says it is blank already.
DescriptionResult ClearSlideDescription(SlideShow& show, int index);
// Clearing every text: the refusal when there is nothing to clear, else empty; the question
// asked before; and the clearing itself.
QString ClearAllRefusal(const SlideShow& show);
QString ClearAllQuestion();
void ClearAllDescriptions(SlideShow& show);

// Copies the description the slide's file has in its folder's description file into the slide,
// or says it has none.
DescriptionResult InsertFolderDescription(SlideShow& show, int index);
// The same for every slide that has one; says so when none has. Each folder's file is read
// once.
DescriptionResult InsertAllFolderDescriptions(SlideShow& show);

// The parts of a look that can be given to every slide at once.
enum class LookPart { Properties, Shadow, Background };
QString ApplyToAllQuestion(LookPart part);
// Gives every slide that part of the look. The whole look is given as it is, so a look that is
// not custom makes every slide use the defaults; a part makes a slide custom only when the
// slide then differs from the defaults. Returns how many slides changed.
int ApplyLookToAll(SlideShow& show, const DescriptionLook& look, LookPart part);

// "File Date: ... - File Size: ... bytes. - File Path: ...", or the refusal for a missing file;
// found is false then.
struct SlideFileText {
    QString text;
    bool found = false;
};
SlideFileText SlideFileInformation(const SlideShow& show, int index);

// "Currently selected font:" and the look's name, size, bold and italic, a line each.
QString FontSummary(const DescriptionLook& look);

// Stores the texts and looks of edited into show; true (and the show marked changed) when any
// slide differed.
bool StoreSlideDescriptions(SlideShow& show, const SlideShow& edited);

} // namespace kavori
