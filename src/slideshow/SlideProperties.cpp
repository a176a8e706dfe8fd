#include "SlideProperties.h"

#include "SlideWizard.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Random.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <functional>

namespace kavori {

namespace {

bool all(const QVector<Slide>& slides, const std::function<bool(const Slide&)>& has)
{
    return std::all_of(slides.begin(), slides.end(), has);
}

bool samePlace(const Slide& slide, const Slide& chosen)
{
    if (slide.SlideLocation != chosen.SlideLocation)
        return false;
    return chosen.SlideLocation != kLocationCustom ||
           (slide.SlidePosX == chosen.SlidePosX && slide.SlidePosY == chosen.SlidePosY);
}

void setBackground(Slide& slide, qint16 mode, qint32 color, const QString& texture)
{
    slide.SlideBackMode = mode;
    slide.SlideBackColor = color;
    slide.SlideTexture = texture;
}

} // namespace

QStringList SlideLocationNames()
{
    return {QStringLiteral("<Center Screen>"),
            QStringLiteral("Top-Left"),
            QStringLiteral("Top"),
            QStringLiteral("Top-Right"),
            QStringLiteral("Left"),
            QStringLiteral("Right"),
            QStringLiteral("Bottom-Left"),
            QStringLiteral("Bottom"),
            QStringLiteral("Bottom-Right"),
            QStringLiteral("<Random>"),
            QStringLiteral("<Custom>")};
}

QString SlidePropertiesCaption(int line)
{
    return QStringLiteral("Editing properties for slide") + u' ' + QString::number(line + 1);
}

SetAllPrompt SetAllPromptFor(SetAllCommand command, const QVector<Slide>& slides,
                             const Slide& chosen)
{
    auto prompt = [&](bool already, const char* alreadyText, const char* question) {
        if (already && alreadyText)
            return SetAllPrompt{QString::fromLatin1(alreadyText), QString()};
        return SetAllPrompt{QString(), QString::fromLatin1(question)};
    };
    switch (command) {
    case SetAllCommand::Center:
        return prompt(
            all(slides, [](const Slide& s) { return s.SlideLocation == kLocationCenter; }),
            "All slides are already set to display in the center of the screen...",
            "Show all of the slides in the center of the screen?");
    case SetAllCommand::Random:
        return prompt(
            all(slides, [](const Slide& s) { return s.SlideLocation == kLocationRandom; }),
            "All slides are already set to the random location setting...",
            "Set all slides to the random location setting?");
    case SetAllCommand::Randomize:
        return prompt(false, nullptr, "Pick a random location to display all of the slides?");
    case SetAllCommand::Position:
        return prompt(all(slides, [&](const Slide& s) { return samePlace(s, chosen); }),
                      "All slides are already set to use the currently selected location...",
                      "Set all of the slides to use the currently selected location?");
    case SetAllCommand::EnlargeAll:
        return prompt(all(slides, [](const Slide& s) { return s.SlideEnlarge != 0; }),
                      "All slides are already set to enlarge to fit the screen...",
                      "Enlarge all of the slides to fit the screen?");
    case SetAllCommand::EnlargeNone:
        return prompt(all(slides, [](const Slide& s) { return s.SlideEnlarge == 0; }),
                      "All slides are already set to not enlarge to fit the screen...",
                      "Enlarge none of the slides to fit the screen?");
    case SetAllCommand::ShrinkAll:
        return prompt(all(slides, [](const Slide& s) { return s.SlideShrink != 0; }),
                      "All slides are already set to shrink to fit the screen...",
                      "Shrink all of the slides to fit the screen?");
    case SetAllCommand::ShrinkNone:
        return prompt(all(slides, [](const Slide& s) { return s.SlideShrink == 0; }),
                      "All slides are already set not to shrink to fit the screen...",
                      "Shrink none of the slides to fit the screen?");
    case SetAllCommand::Interval:
        return {QString(), QStringLiteral("Set all of the slides to the ") +
                               IntervalText(chosen.SlideDelay) +
                               QStringLiteral(" interval setting?")};
    case SetAllCommand::Colors:
        return prompt(false, nullptr,
                      "Set the background color of all slides to the currently selected color?");
    case SetAllCommand::ColorDefault:
        return prompt(false, nullptr,
                      "Set the background color of all slides to the default color?");
    case SetAllCommand::Textures:
        return prompt(false, nullptr,
                      "Set the background textures on all slides to the currently selected "
                      "image?");
    case SetAllCommand::ClearTextures:
        return prompt(false, nullptr,
                      "Clear the background texture settings on all of the slides?");
    }
    return {};
}

void ApplySetAll(SetAllCommand command, QVector<Slide>& slides, const Slide& chosen, int first,
                 int last)
{
    if (last < 0 || last >= slides.size())
        last = int(slides.size()) - 1;
    for (int i = qMax(0, first); i <= last; ++i) {
        Slide& slide = slides[i];
        switch (command) {
        case SetAllCommand::Center:
            slide.SlideLocation = kLocationCenter;
            break;
        case SetAllCommand::Random:
            slide.SlideLocation = kLocationRandom;
            break;
        case SetAllCommand::Randomize:
            // One fixed place per slide, drawn now; the random setting draws at every showing.
            slide.SlideLocation = qint16(RandomBetween(0, kLocationRandom - 1));
            break;
        case SetAllCommand::Position:
            slide.SlideLocation = chosen.SlideLocation;
            if (chosen.SlideLocation == kLocationCustom) {
                slide.SlidePosX = chosen.SlidePosX;
                slide.SlidePosY = chosen.SlidePosY;
            }
            break;
        case SetAllCommand::EnlargeAll:
        case SetAllCommand::EnlargeNone:
            slide.SlideEnlarge = command == SetAllCommand::EnlargeAll ? 1 : 0;
            break;
        case SetAllCommand::ShrinkAll:
        case SetAllCommand::ShrinkNone:
            slide.SlideShrink = command == SetAllCommand::ShrinkAll ? 1 : 0;
            break;
        case SetAllCommand::Interval:
            slide.SlideDelay = chosen.SlideDelay;
            break;
        case SetAllCommand::Colors:
            setBackground(slide, 1, chosen.SlideBackColor, QString());
            break;
        case SetAllCommand::ColorDefault:
            setBackground(slide, 0, slide.SlideBackColor, QString());
            break;
        case SetAllCommand::Textures:
            setBackground(slide, 2, slide.SlideBackColor, chosen.SlideTexture);
            break;
        case SetAllCommand::ClearTextures:
            if (slide.SlideBackMode == 2 || !slide.SlideTexture.isEmpty())
                setBackground(slide, slide.SlideBackMode == 2 ? 0 : slide.SlideBackMode,
                              slide.SlideBackColor, QString());
            break;
        }
    }
}

QString DefaultTextureFolder()
{
    return PathNoCase(AppPath(), QStringLiteral("Bonus/Textures"));
}

QStringList TextureFiles(const QString& folder)
{
    QStringList files;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::Readable);
    for (const QFileInfo& entry : entries)
        if (IsImageFile(entry.fileName()))
            files << entry.absoluteFilePath();
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(files.begin(), files.end(), collator);
    return files;
}

QString NoTexturesInFolderText()
{
    return QStringLiteral(
        "There are no image files in the selected folder to use as a background texture.");
}
QString NoFilesToPreviewText()
{
    return QStringLiteral(
        "There are no files in the selected directory, unable to view background texture...");
}
QString TextureNotFoundText()
{
    return QStringLiteral("The background texture specified for this slide could not be found...");
}
QString SelectTextureText()
{
    return QStringLiteral("Select the image file that you would like to use as a background "
                          "texture and then try again.");
}
QString SelectTextureToPreviewText()
{
    return QStringLiteral(
        "Select the file to preview as a background texture and then try again...");
}
QString UnableToSetTexturesText()
{
    return QStringLiteral("Unable to set textures...");
}
QString TextureRangePrompt()
{
    return QStringLiteral("Select range of files to set background texture:");
}

} // namespace kavori
