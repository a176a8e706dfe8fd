#include "SlideWizard.h"

#include "SlideList.h"
#include "SlideShow.h"
#include "SlideShowFile.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/RecentShows.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>

namespace kavori {

QVector<int> IntervalChoices()
{
    // Short steps where they matter, longer ones up to the longest interval a show keeps.
    return {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 15, 20, 25, 30, 40, 45, 50, 60};
}

QString IntervalText(int seconds)
{
    if (seconds <= 0)
        return QStringLiteral("No Timer");
    if (seconds == 1)
        return QStringLiteral("1 second");
    return QString::number(seconds) + QStringLiteral(" seconds");
}

QString WizardNameRefusal(const QString& name)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("You need to name your slide show first...");
    if (name.contains(QRegularExpression(QStringLiteral("[\\\\/:*?\"<>|]"))))
        return QStringLiteral("The slide show name may not contain any of the following "
                              "characters:") +
               NewLine2() + QStringLiteral("\\ / : * ? \" < > |") + NewLine2() +
               QStringLiteral("Enter a new name and then try again...");
    // Only the exact word: "untitled" or "Untitled trip" are fine.
    if (name == QLatin1String("Untitled"))
        return QStringLiteral("You should give your slide show a name instead of using the word "
                              "Untitled.") +
               NewLine2() + QStringLiteral("Enter a new name and then try again...");
    return {};
}

QStringList WizardPictures(const QString& folder)
{
    // The order of the folder's file list: by name, without regard to case.
    const QDir dir(folder);
    const QStringList names =
        dir.entryList(QDir::Files | QDir::Readable, QDir::Name | QDir::IgnoreCase);
    QStringList pictures;
    for (const QString& name : std::as_const(names)) {
        const QString path = dir.filePath(name);
        if (IsImageFile(path))
            pictures << path;
    }
    return pictures;
}

QString WizardFolderText(int pictures)
{
    if (pictures == 0)
        return QStringLiteral("There are no images in this folder...");
    if (pictures == 1)
        return QStringLiteral("This folder contains one image...");
    return QStringLiteral("This folder contains ") + Format(pictures, QStringLiteral("###,##0")) +
           QStringLiteral(" images...");
}

QString WizardFolderRefusal(int pictures)
{
    if (pictures == 0)
        return QStringLiteral("The selected directory does not have any image files in it.") +
               NewLine2() + QStringLiteral("Choose another directory and then try again...");
    if (pictures > kMaxEditorSlides)
        return QStringLiteral("The selected folder contains too many files, a slide show may "
                              "contain a maximum of ") +
               Format(kMaxEditorSlides, QStringLiteral("###,##0")) + QStringLiteral(" slides.");
    return {};
}

QString WizardManualNote(bool toolbar, int interval)
{
    if (toolbar || interval > 0)
        return {};
    return QStringLiteral("NOTE:") + NewLine2() +
           QStringLiteral("Since you are not using the navigation toolbar and have not specified "
                          "a timer interval, you will need to manually navigate the slide show "
                          "with the arrow keys.");
}

QString WizardShowPath(const QString& folder, const QString& name)
{
    QString file = name.trimmed();
    if (!HasExtension(file, QStringLiteral(".KAV")))
        file += QStringLiteral(".KAV");
    return AddSlash(folder) + file;
}

bool CreateWizardShow(const WizardChoices& choices)
{
    Settings& s = CurrentSettings();
    ResetShow();
    SlideShow& show = CurrentShow();
    show.UseSlideIntervals = false;
    s.SaveSlides = false;
    s.SoundMode = 0;
    s.SoundFile.clear();
    s.CDTrack = 0;
    s.SoundLoop = true;
    s.ShowFilenames = true;
    s.ShowDescription = false;
    s.LoopSlideShow = true;
    s.AnimateGIF89 = true;
    s.SlideIgnoreError = false;
    s.LMousePrev = false;
    s.RMouseNext = true;
    s.DontRestartSound = true;
    s.SlideInterval = qint16(choices.interval);
    s.RandomSlides = choices.random;
    s.ShowToolbar = choices.toolbar;

    QStringList pictures = WizardPictures(choices.pictureFolder);
    if (pictures.size() > kMaxEditorSlides)
        pictures = pictures.mid(0, kMaxEditorSlides);
    show.slides.reserve(pictures.size());
    for (const QString& picture : std::as_const(pictures))
        show.slides.append(NewSlide(picture));

    const QString path = WizardShowPath(choices.showFolder, choices.name);
    if (!WriteSlideShow(path))
        return false;
    show.path = path;
    show.changed = false;
    AddRecentShow(path);
    AddFavoriteShow(path);
    s.LastWizardName = choices.name;
    WriteSettingsKeys({QStringLiteral("LastWizardName")});
    return true;
}

} // namespace kavori
