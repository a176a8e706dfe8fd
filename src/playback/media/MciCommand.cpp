#include "MciCommand.h"

#include "MediaWindows.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMap>

#include <map>

namespace kavori {

namespace {

struct Token {
    QString text;
    bool quoted = false;
};

struct OpenDevice {
    MciDeviceType type;
    std::unique_ptr<MciDevice> device;
};

struct Interpreter {
    std::map<QString, OpenDevice> devices; // by alias in lower case
    QStringList log;
    quint32 last = 0;
    MciDeviceFactory factory;
};

Interpreter& interpreter()
{
    static Interpreter i;
    return i;
}

// Devices hold players and windows, which must go before the application object does.
void CloseWithApplication()
{
    static bool registered = false;
    if (!registered) {
        registered = true;
        qAddPostRoutine(CloseAllMciDevices);
    }
}

bool Is(const Token& token, const char* keyword)
{
    return !token.quoted && token.text.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0;
}

// Blank-separated words; a double-quoted part is one word, blanks and all.
quint32 Tokenize(const QString& command, QVector<Token>& tokens)
{
    qsizetype i = 0;
    const qsizetype n = command.size();
    while (i < n) {
        if (command.at(i).isSpace()) {
            ++i;
            continue;
        }
        Token token;
        if (command.at(i) == u'"') {
            const qsizetype close = command.indexOf(u'"', i + 1);
            if (close < 0)
                return MCIERR_NO_CLOSING_QUOTE;
            token.text = command.mid(i + 1, close - i - 1);
            token.quoted = true;
            i = close + 1;
        } else {
            const qsizetype start = i;
            while (i < n && !command.at(i).isSpace())
                ++i;
            token.text = command.mid(start, i - start);
        }
        tokens.append(token);
    }
    return tokens.isEmpty() ? MCIERR_MISSING_COMMAND_STRING : MCIERR_NONE;
}

std::optional<MciDeviceType> DeviceTypeNamed(const QString& name)
{
    static const QMap<QString, MciDeviceType> types = {
        {QStringLiteral("mpegvideo"), MciDeviceType::MPEGVideo},
        {QStringLiteral("avivideo"), MciDeviceType::AVIVideo},
        {QStringLiteral("sequencer"), MciDeviceType::Sequencer},
        {QStringLiteral("cdaudio"), MciDeviceType::CdAudio},
    };
    const auto it = types.constFind(name.toLower());
    if (it == types.constEnd())
        return std::nullopt;
    return *it;
}

quint32 ParseInteger(const Token& token, qint64& value)
{
    bool ok = false;
    value = token.text.toLongLong(&ok);
    return ok && value >= 0 ? MCIERR_NONE : MCIERR_BAD_INTEGER;
}

quint32 Open(const QVector<Token>& t)
{
    QString element;
    bool hasElement = false;
    QString typeName;
    QString alias;
    for (qsizetype i = 1; i < t.size(); ++i) {
        if (Is(t[i], "type") || Is(t[i], "alias")) {
            if (i + 1 >= t.size())
                return MCIERR_MISSING_PARAMETER;
            (Is(t[i], "type") ? typeName : alias) = t[i + 1].text;
            ++i;
        } else if (!hasElement) {
            element = t[i].text;
            hasElement = true;
        } else {
            return MCIERR_UNRECOGNIZED_KEYWORD;
        }
    }
    if (typeName.isEmpty())
        return MCIERR_DEVICE_TYPE_REQUIRED;
    const std::optional<MciDeviceType> type = DeviceTypeNamed(typeName);
    if (!type)
        return MCIERR_INVALID_DEVICE_NAME;
    if (alias.isEmpty())
        return MCIERR_MISSING_PARAMETER;
    Interpreter& in = interpreter();
    if (in.devices.count(alias.toLower()))
        return MCIERR_DUPLICATE_ALIAS;
    if (*type != MciDeviceType::CdAudio) {
        if (element.isEmpty())
            return MCIERR_MISSING_PARAMETER;
        if (!QFileInfo(element).isFile())
            return MCIERR_FILE_NOT_FOUND;
    }
    CloseWithApplication();
    std::unique_ptr<MciDevice> device =
        in.factory ? in.factory(*type) : CreateSystemMciDevice(*type);
    if (!device)
        return MCIERR_CANNOT_LOAD_DRIVER;
    if (const quint32 rc = device->open(element))
        return rc;
    in.devices.emplace(alias.toLower(), OpenDevice{*type, std::move(device)});
    return MCIERR_NONE;
}

QString ModeText(MciMode mode)
{
    switch (mode) {
    case MciMode::Playing:
        return QStringLiteral("playing");
    case MciMode::Paused:
        return QStringLiteral("paused");
    case MciMode::Stopped:
        return QStringLiteral("stopped");
    case MciMode::NotReady:
        break;
    }
    return QStringLiteral("not ready");
}

quint32 Play(MciDevice& device, const QVector<Token>& t)
{
    std::optional<qint64> from;
    std::optional<qint64> to;
    for (qsizetype i = 2; i < t.size(); i += 2) {
        const bool isFrom = Is(t[i], "from");
        if (!isFrom && !Is(t[i], "to"))
            return MCIERR_UNRECOGNIZED_KEYWORD;
        if (i + 1 >= t.size())
            return MCIERR_MISSING_PARAMETER;
        qint64 value = 0;
        if (const quint32 rc = ParseInteger(t[i + 1], value))
            return rc;
        (isFrom ? from : to) = value;
    }
    if (from && to && *from > *to)
        return MCIERR_OUTOFRANGE;
    return device.play(from, to);
}

quint32 Run(const QVector<Token>& t, QString& reply)
{
    Interpreter& in = interpreter();
    if (Is(t[0], "open"))
        return Open(t);
    const bool known = Is(t[0], "set") || Is(t[0], "window") || Is(t[0], "play") ||
                       Is(t[0], "stop") || Is(t[0], "pause") || Is(t[0], "close") ||
                       Is(t[0], "status") || Is(t[0], "put") || Is(t[0], "where") ||
                       Is(t[0], "realize");
    if (!known)
        return MCIERR_UNRECOGNIZED_COMMAND;
    if (t.size() < 2)
        return MCIERR_MISSING_PARAMETER;
    const auto found = in.devices.find(t[1].text.toLower());
    if (found == in.devices.end())
        return MCIERR_INVALID_DEVICE_NAME;
    MciDevice& device = *found->second.device;
    const qsizetype n = t.size();

    if (Is(t[0], "play"))
        return Play(device, t);
    if (Is(t[0], "stop") || Is(t[0], "pause") || Is(t[0], "close")) {
        if (n != 2)
            return MCIERR_UNRECOGNIZED_KEYWORD;
        if (Is(t[0], "stop"))
            return device.stop();
        if (Is(t[0], "pause"))
            return device.pause();
        in.devices.erase(found);
        return MCIERR_NONE;
    }
    if (Is(t[0], "set")) {
        if ((n > 2 && !Is(t[2], "time")) || (n > 3 && !Is(t[3], "format")) || n > 5)
            return MCIERR_UNRECOGNIZED_KEYWORD;
        if (n < 5)
            return MCIERR_MISSING_PARAMETER;
        if (Is(t[4], "frames"))
            return device.setTimeFormat(MciTimeFormat::Frames);
        if (Is(t[4], "tmsf"))
            return device.setTimeFormat(MciTimeFormat::Tmsf);
        if (Is(t[4], "milliseconds") || Is(t[4], "ms"))
            return device.setTimeFormat(MciTimeFormat::Milliseconds);
        return MCIERR_BAD_TIME_FORMAT;
    }
    if (Is(t[0], "window")) {
        if (n < 4)
            return MCIERR_MISSING_PARAMETER;
        if (n > 4 || !Is(t[2], "handle"))
            return MCIERR_UNRECOGNIZED_KEYWORD;
        qint64 handle = 0;
        if (const quint32 rc = ParseInteger(t[3], handle))
            return rc;
        QWidget* window = MediaWindowFromHandle(handle);
        return window ? device.setWindow(window) : MCIERR_NO_WINDOW;
    }
    if (Is(t[0], "status")) {
        if (n == 3 && Is(t[2], "mode")) {
            reply = ModeText(device.mode());
            return MCIERR_NONE;
        }
        if (n == 4 && Is(t[2], "current") && Is(t[3], "track")) {
            const std::optional<int> track = device.currentTrack();
            if (!track)
                return MCIERR_UNSUPPORTED_FUNCTION;
            reply = QString::number(*track);
            return MCIERR_NONE;
        }
        return n < 3 ? MCIERR_MISSING_PARAMETER : MCIERR_UNRECOGNIZED_KEYWORD;
    }
    if (Is(t[0], "put") || Is(t[0], "where")) {
        if (n != 3)
            return n < 3 ? MCIERR_MISSING_PARAMETER : MCIERR_UNRECOGNIZED_KEYWORD;
        if (Is(t[0], "put")) {
            if (Is(t[2], "source"))
                return device.putSource();
            if (Is(t[2], "destination"))
                return device.putDestination();
            return MCIERR_UNRECOGNIZED_KEYWORD;
        }
        if (!Is(t[2], "source"))
            return MCIERR_UNRECOGNIZED_KEYWORD;
        const std::optional<QSize> size = device.sourceSize();
        if (!size)
            return MCIERR_UNSUPPORTED_FUNCTION;
        reply = QStringLiteral("0 0 %1 %2").arg(size->width()).arg(size->height());
        return MCIERR_NONE;
    }
    // realize
    if (n != 3 || !Is(t[2], "normal"))
        return n < 3 ? MCIERR_MISSING_PARAMETER : MCIERR_UNRECOGNIZED_KEYWORD;
    return device.realize();
}

} // namespace

quint32 mciSendString(const QString& command, QString* reply)
{
    Interpreter& in = interpreter();
    in.log.append(command);
    QString answer;
    QVector<Token> tokens;
    quint32 rc = Tokenize(command, tokens);
    if (rc == MCIERR_NONE)
        rc = Run(tokens, answer);
    if (reply)
        *reply = rc == MCIERR_NONE ? answer : QString();
    in.last = rc;
    return rc;
}

QString mciGetErrorString(quint32 code)
{
    switch (code) {
    case MCIERR_NONE:
        return QStringLiteral("The command completed successfully.");
    case MCIERR_INVALID_DEVICE_ID:
        return QStringLiteral("The device identifier is not valid.");
    case MCIERR_UNRECOGNIZED_KEYWORD:
        return QStringLiteral("The command contains a word the device does not understand.");
    case MCIERR_UNRECOGNIZED_COMMAND:
        return QStringLiteral("The command is not a multimedia command.");
    case MCIERR_HARDWARE:
        return QStringLiteral("The sound or video hardware could not be used. Make sure it "
                              "is working and not in use by another program.");
    case MCIERR_INVALID_DEVICE_NAME:
        return QStringLiteral("The device is not open or its name is not known.");
    case MCIERR_CANNOT_LOAD_DRIVER:
        return QStringLiteral("The driver of the device could not be loaded.");
    case MCIERR_MISSING_COMMAND_STRING:
        return QStringLiteral("No command was given.");
    case MCIERR_BAD_INTEGER:
        return QStringLiteral("A number in the command is not valid.");
    case MCIERR_MISSING_PARAMETER:
        return QStringLiteral("The command needs a value that was not given.");
    case MCIERR_UNSUPPORTED_FUNCTION:
        return QStringLiteral("The device cannot carry out this command.");
    case MCIERR_FILE_NOT_FOUND:
        return QStringLiteral("The file cannot be found. Check that the path and file name "
                              "are correct.");
    case MCIERR_DEVICE_NOT_READY:
        return QStringLiteral("The device is not ready.");
    case MCIERR_OUTOFRANGE:
        return QStringLiteral("A position in the command is outside the media.");
    case MCIERR_DEVICE_TYPE_REQUIRED:
        return QStringLiteral("The device cannot be found. Check that it is installed and "
                              "that its name is spelled correctly.");
    case MCIERR_DUPLICATE_ALIAS:
        return QStringLiteral("The alias is already in use by an open device.");
    case MCIERR_BAD_TIME_FORMAT:
        return QStringLiteral("The time format is not valid for this device.");
    case MCIERR_NO_CLOSING_QUOTE:
        return QStringLiteral("A closing double quotation mark is missing.");
    case MCIERR_INVALID_FILE:
        return QStringLiteral("The file cannot be played: it is damaged or of a kind the "
                              "device does not know.");
    case MCIERR_EXTRA_CHARACTERS:
        return QStringLiteral("The command has extra characters after its end.");
    case MCIERR_DEVICE_NOT_INSTALLED:
        return QStringLiteral("The device is not installed on this system.");
    case MCIERR_NO_WINDOW:
        return QStringLiteral("There is no window to show the video in.");
    default:
        break;
    }
    return QStringLiteral("Unknown multimedia error.");
}

quint32 LastMciResult()
{
    return interpreter().last;
}

QStringList MciCommandLog()
{
    return interpreter().log;
}

void ClearMciCommandLog()
{
    interpreter().log.clear();
}

void CloseAllMciDevices()
{
    interpreter().devices.clear();
}

void SetMciDeviceFactory(MciDeviceFactory factory)
{
    interpreter().factory = std::move(factory);
}

} // namespace kavori
