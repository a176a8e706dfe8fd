#pragma once

#include <QByteArray>
#include <QString>

namespace kavori {

class Progress;

// The .KAV slide show file: show-wide values, 14 lines per slide, and an optional play list,
// one value per CR LF line, strings quoted, numbers bare. Reading accepts the layouts
// "Version 1.X", "Version 1.5", "Version 2.0" and "Version 3.0"; writing is always "Version 3.0".

// Replaces the show in memory by the file's contents, with the program's messages for
// refusals and notes. False when nothing was loaded.
bool ReadSlideShow(const QString& path);

// The screen saver settings' reader: the same layouts, its own fixed texts, and the note on
// the show's sound (returned in soundNote).
bool ReadScreenSaverShow(const QString& path, QString* soundNote = nullptr);

// Writes the show with every name as it stands. False when the file cannot be written.
bool WriteSlideShow(const QString& path);

// Writes the show with names relative to its folder, copying referred files into that folder
// when SaveSlides is on (asking before replacing sounds and textures). The progress shows the
// work and may cancel it between slides. False when cancelled or not written.
bool SaveSlideShow(const QString& path, Progress* progress = nullptr);

// Whether the file starts as a show of the current layouts ("Version 2.0" or "Version 3.0").
bool IsCurrentSlideShow(const QString& path);

// The file type filter of every slide show picker.
QString SlideShowFilter();

// Where a file a show names is on this machine: a name relative to the show, or one whose
// folder is gone (another machine's, a Windows drive), is looked for beside the show file.
// Empty when it cannot be found.
QString FindShowFile(const QString& name, const QString& showFolder);

// The pieces of a show file, for writers that name the files otherwise (the package builder):
// a quoted text line, the show-wide header with the show's sound named soundFile, one slide's
// record with its three file names given, and the play list's head (its entries are text lines).
struct SlideShow;
struct Slide;
QByteArray ShowTextLine(const QString& text);
QByteArray ShowHeaderBytes(const SlideShow& show, const QString& soundFile);
QByteArray SlideRecordBytes(const Slide& slide, const QString& file, const QString& sound,
                            const QString& texture);
// The same record appended to out, for writers of many slides.
void AppendSlideRecord(QByteArray& out, const Slide& slide, QStringView file, QStringView sound,
                       QStringView texture);
bool ShowWritesPlayList(const SlideShow& show);
QByteArray PlayListHeadBytes(const SlideShow& show);

// The note on the sound a screen saver show plays.
QString ScreenSaverSoundNote();

} // namespace kavori
