#pragma once

#include <QString>

class QWidget;

namespace kavori {

// Reads a show file and plays it full screen until it ends. A show without pictures is
// refused with its message; a file that is not a show gets the reader's message.
void PlaySlideShowFile(const QString& path, QWidget* parent = nullptr);

// The folder the show pickers start in: the favourite folder, else the program's Slides folder.
QString SlideShowFolder();

// Brings the main window's play commands to life: "Open Slide Show", "Recent Slide Shows" and
// "Favorite Slide Shows" each pick a show and play it. The actions are found among the
// window's children by object name.
void ConnectPlaybackCommands(QWidget* window);

} // namespace kavori
