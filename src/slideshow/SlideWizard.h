#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// What the slide show wizard decides, without a window: its checks and texts, and making the
// show from one folder of pictures.

// The interval choices offered for a show, in seconds (0 is "No Timer"), and their texts.
QVector<int> IntervalChoices();
QString IntervalText(int seconds);

// The refusal of a show name, or empty when it will do.
QString WizardNameRefusal(const QString& name);
// The pictures of a folder, in the order the folder lists them.
QStringList WizardPictures(const QString& folder);
// "There are no images in this folder...", "This folder contains one image..." or the count.
QString WizardFolderText(int pictures);
// The refusal of a picture folder by its count, or empty.
QString WizardFolderRefusal(int pictures);
// The note for a show that can only be stepped by the keys, or empty.
QString WizardManualNote(bool toolbar, int interval);
// The show file for a name in a folder: ".KAV" added when missing.
QString WizardShowPath(const QString& folder, const QString& name);

struct WizardChoices {
    QString name;
    QString pictureFolder;
    QString showFolder;
    int interval = 5;
    bool random = false;
    bool toolbar = false;
};

// Makes the show: the wizard's fixed playback values, every picture of the folder (at most
// 30,000) as a slide, written to its file, made the current show and added to the favourite
// shows. False when the file could not be written (the show in memory is made all the same).
bool CreateWizardShow(const WizardChoices& choices);

} // namespace kavori
