#include "SlideDescriptions.h"

#include "SlideList.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QLocale>

namespace kavori {

namespace {

bool validIndex(const SlideShow& show, int index)
{
    return index >= 0 && index < show.slides.size();
}

// One folder's descriptions by case-folded name, the first entry of a name winning as the
// lookup's does.
using FolderTable = QHash<QString, QString>;

FolderTable readFolder(const QString& folder)
{
    FolderTable names;
    DescriptionTable table;
    if (ReadDescriptionFile(folder, table) <= 0)
        return names;
    for (qsizetype i = 0; i < table.DescFileName.size(); ++i) {
        const QString key = table.DescFileName[i].toCaseFolded();
        if (!names.contains(key))
            names.insert(key, table.DescText.value(i));
    }
    return names;
}

void copyPart(DescriptionLook& to, const DescriptionLook& from, LookPart part)
{
    if (part == LookPart::Shadow) {
        to.shadow = from.shadow;
        to.shadowDistance = from.shadowDistance;
        to.shadowDirection = from.shadowDirection;
        to.shadowColor = from.shadowColor;
    } else {
        to.useBack = from.useBack;
        to.backColor = from.backColor;
        to.border = from.border;
    }
}

QString yesNo(bool on)
{
    return on ? QStringLiteral("Yes") : QStringLiteral("No");
}

} // namespace

QString CutDescription(const QString& text)
{
    return text.left(kMaxDescriptionLength);
}

QString EditingCaption(int index)
{
    return QStringLiteral("Editing description for slide ") + QString::number(index + 1) + u':';
}

DescriptionResult ClearSlideDescription(SlideShow& show, int index)
{
    if (!validIndex(show, index) || show.slides[index].SlideDescription.isEmpty())
        return {QStringLiteral("This description is already blank..."), false};
    show.slides[index].SlideDescription.clear();
    return {QString(), true};
}

QString ClearAllRefusal(const SlideShow& show)
{
    for (const Slide& slide : show.slides)
        if (!slide.SlideDescription.isEmpty())
            return {};
    return QStringLiteral("There are no descriptions to clear...");
}

QString ClearAllQuestion()
{
    return QStringLiteral(
               "You are about to clear ALL of the image descriptions for this slide show.") +
           NewLine2() + QStringLiteral("Are you sure?");
}

void ClearAllDescriptions(SlideShow& show)
{
    for (Slide& slide : show.slides)
        slide.SlideDescription.clear();
}

DescriptionResult InsertFolderDescription(SlideShow& show, int index)
{
    const QString text = validIndex(show, index)
                             ? GetDescription(SlideFullPath(show, show.slides[index].SlideFile))
                             : QString();
    if (text.isEmpty())
        return {
            QStringLiteral("The selected image does not have a description, nothing to insert..."),
            false};
    QString& description = show.slides[index].SlideDescription;
    const QString cut = CutDescription(text);
    const bool changed = description != cut;
    description = cut;
    return {QString(), changed};
}

DescriptionResult InsertAllFolderDescriptions(SlideShow& show)
{
    QHash<QString, FolderTable> folders;
    int found = 0;
    bool changed = false;
    for (Slide& slide : show.slides) {
        const QString path = SlideFullPath(show, slide.SlideFile);
        const QString folder = FolderOf(path);
        auto it = folders.find(folder);
        if (it == folders.end())
            it = folders.insert(folder, readFolder(folder));
        const QString text = it->value(FileNameOf(path).toCaseFolded());
        if (text.isEmpty())
            continue;
        ++found;
        const QString cut = CutDescription(text);
        changed = changed || slide.SlideDescription != cut;
        slide.SlideDescription = cut;
    }
    if (found == 0)
        return {QStringLiteral("None of the image and/or movie files in the slide show have "
                               "descriptions, nothing to insert into the slide show's "
                               "descriptions..."),
                false};
    return {QString(), changed};
}

QString ApplyToAllQuestion(LookPart part)
{
    switch (part) {
    case LookPart::Properties:
        return QStringLiteral(
            "Apply the selected description properties to all of the slides in the show?");
    case LookPart::Shadow:
        return QStringLiteral("Apply the selected drop shadow settings to all of the "
                              "descriptions in the slide show?");
    case LookPart::Background:
        return QStringLiteral("Apply the selected background settings to all of the "
                              "descriptions in the slide show?");
    }
    return {};
}

int ApplyLookToAll(SlideShow& show, const DescriptionLook& look, LookPart part)
{
    const DescriptionLook defaults = DefaultDescriptionLook();
    int changed = 0;
    for (Slide& slide : show.slides) {
        QString props;
        if (part == LookPart::Properties) {
            props = BuildDescProps(look);
        } else {
            DescriptionLook own = ParseDescProps(slide.SlideDescProps);
            const bool wasCustom = !slide.SlideDescProps.isEmpty() && own.custom != 0;
            copyPart(own, look, part);
            own.custom = wasCustom || !SameLook(own, defaults) ? 1 : 0;
            props = BuildDescProps(own);
        }
        if (props != slide.SlideDescProps) {
            slide.SlideDescProps = props;
            ++changed;
        }
    }
    return changed;
}

SlideFileText SlideFileInformation(const SlideShow& show, int index)
{
    const QFileInfo file(validIndex(show, index) ? SlideFullPath(show, show.slides[index].SlideFile)
                                                 : QString());
    if (!validIndex(show, index) || !file.isFile())
        return {QStringLiteral("Selected file could not be found, unable to get information..."),
                false};
    const QString date = QLocale().toString(file.lastModified(), QLocale::ShortFormat);
    return {QStringLiteral("File Date: ") + date + QStringLiteral(" - File Size: ") +
                Format(file.size(), QStringLiteral("###,###")) + QStringLiteral(" bytes.") +
                QStringLiteral(" - File Path: ") + file.absoluteFilePath(),
            true};
}

QString FontSummary(const DescriptionLook& look)
{
    return QStringLiteral("Currently selected font:") + NewLine() + QStringLiteral("Name: ") +
           look.font + NewLine() + QStringLiteral("Size: ") + QString::number(look.size) +
           NewLine() + QStringLiteral("Bold: ") + yesNo(look.style == 1 || look.style == 3) +
           NewLine() + QStringLiteral("Italic: ") + yesNo(look.style == 2 || look.style == 3);
}

bool StoreSlideDescriptions(SlideShow& show, const SlideShow& edited)
{
    bool changed = false;
    const qsizetype count = std::min(show.slides.size(), edited.slides.size());
    for (qsizetype i = 0; i < count; ++i) {
        Slide& slide = show.slides[i];
        const Slide& from = edited.slides[i];
        const QString text = CutDescription(from.SlideDescription);
        if (slide.SlideDescription != text || slide.SlideDescProps != from.SlideDescProps) {
            slide.SlideDescription = text;
            slide.SlideDescProps = from.SlideDescProps;
            changed = true;
        }
    }
    if (changed)
        show.changed = true;
    return changed;
}

} // namespace kavori
