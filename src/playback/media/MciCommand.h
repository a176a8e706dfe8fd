#pragma once

#include "MciDevice.h"

#include <QString>
#include <QStringList>

namespace kavori {

// The multimedia command-string interface: "open "file" type MPEGVideo alias Movie",
// "play Movie from 0", "status Movie mode" ... Understands the commands the program sends:
//   open <element> type MPEGVideo|AVIVideo|sequencer|cdaudio alias <alias>
//   set <alias> time format frames|tmsf|milliseconds
//   window <alias> handle <number>          (a number from MediaWindowHandle)
//   play <alias> [from <n>] [to <n>]
//   stop|pause|close <alias>
//   status <alias> mode                     ("playing", "stopped", "paused", "not ready")
//   status <alias> current track
//   put <alias> source|destination
//   where <alias> source|destination        ("left top width height")
//   realize <alias> normal
// Keywords and aliases are compared without case. Everything runs on the UI thread.

// Runs one command; the reply (if any) goes to reply. 0 on success, else an MciError.
quint32 mciSendString(const QString& command, QString* reply = nullptr);

// The text that explains a result code.
QString mciGetErrorString(quint32 code);

// The result of the last command sent, kept program-wide.
quint32 LastMciResult();

// Every command sent, exactly as given, oldest first.
QStringList MciCommandLog();
void ClearMciCommandLog();

// Closes every open device (end of the program, and between tests).
void CloseAllMciDevices();

// Which devices "open" creates. An empty factory goes back to the system's devices.
void SetMciDeviceFactory(MciDeviceFactory factory);

} // namespace kavori
