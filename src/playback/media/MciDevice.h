#pragma once

#include <QSize>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace kavori {

// Result codes of the multimedia command interface; 0 is success. The numbers are the
// classic MCI ones, so the "Error code = " of a message means what it means elsewhere.
enum MciError : quint32 {
    MCIERR_NONE = 0,
    MCIERR_INVALID_DEVICE_ID = 257,
    MCIERR_UNRECOGNIZED_KEYWORD = 259,
    MCIERR_UNRECOGNIZED_COMMAND = 261,
    MCIERR_HARDWARE = 262,
    MCIERR_INVALID_DEVICE_NAME = 263,
    MCIERR_CANNOT_LOAD_DRIVER = 266,
    MCIERR_MISSING_COMMAND_STRING = 267,
    MCIERR_BAD_INTEGER = 270,
    MCIERR_MISSING_PARAMETER = 273,
    MCIERR_UNSUPPORTED_FUNCTION = 274,
    MCIERR_FILE_NOT_FOUND = 275,
    MCIERR_DEVICE_NOT_READY = 276,
    MCIERR_OUTOFRANGE = 282,
    MCIERR_DEVICE_TYPE_REQUIRED = 287,
    MCIERR_DUPLICATE_ALIAS = 289,
    MCIERR_BAD_TIME_FORMAT = 293,
    MCIERR_NO_CLOSING_QUOTE = 294,
    MCIERR_INVALID_FILE = 296,
    MCIERR_EXTRA_CHARACTERS = 305,
    MCIERR_DEVICE_NOT_INSTALLED = 306,
    MCIERR_NO_WINDOW = 346,
};

enum class MciDeviceType { MPEGVideo, AVIVideo, Sequencer, CdAudio };

enum class MciTimeFormat { Milliseconds, Frames, Tmsf };

enum class MciMode { NotReady, Stopped, Playing, Paused };

// One opened device behind an alias. The command interpreter parses and checks the strings;
// a device only does what they ask. Positions are in the device's current time format.
// Whatever a device does not support answers MCIERR_UNSUPPORTED_FUNCTION.
class MciDevice {
public:
    virtual ~MciDevice() = default;

    // The element is a file, or for a CD the drive (empty for the first one).
    virtual quint32 open(const QString& element) = 0;
    // No from: from where it stands; no to: to the end.
    virtual quint32 play(std::optional<qint64> from, std::optional<qint64> to) = 0;
    virtual quint32 stop() = 0;
    virtual quint32 pause() = 0;
    virtual MciMode mode() = 0;
    virtual quint32 setTimeFormat(MciTimeFormat format) = 0;

    // Video: the window the picture is drawn in.
    virtual quint32 setWindow(QWidget*) { return MCIERR_UNSUPPORTED_FUNCTION; }
    // Video: whole picture as source; the movie's own size; the picture fills the window.
    virtual quint32 putSource() { return MCIERR_UNSUPPORTED_FUNCTION; }
    virtual std::optional<QSize> sourceSize() { return std::nullopt; }
    virtual quint32 putDestination() { return MCIERR_UNSUPPORTED_FUNCTION; }
    virtual quint32 realize() { return MCIERR_UNSUPPORTED_FUNCTION; }
    // CD: the track playing (or about to play).
    virtual std::optional<int> currentTrack() { return std::nullopt; }
};

using MciDeviceFactory = std::function<std::unique_ptr<MciDevice>(MciDeviceType)>;

// The devices that really play: Qt Multimedia for video and audio, FluidSynth for MIDI, the
// CD drive for cdaudio.
std::unique_ptr<MciDevice> CreateSystemMciDevice(MciDeviceType type);

} // namespace kavori
