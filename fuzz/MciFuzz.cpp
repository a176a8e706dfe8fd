// The multimedia command interpreter: each line of the input is one command string. Devices
// are stand-ins that always succeed, so what is fuzzed is the parsing and the bookkeeping of
// aliases, not the sound hardware.
#include "FuzzSupport.h"

#include "playback/media/MciCommand.h"

namespace {

class NullDevice : public kavori::MciDevice {
public:
    quint32 open(const QString&) override { return 0; }
    quint32 play(std::optional<qint64>, std::optional<qint64>) override
    {
        m_mode = kavori::MciMode::Playing;
        return 0;
    }
    quint32 stop() override
    {
        m_mode = kavori::MciMode::Stopped;
        return 0;
    }
    quint32 pause() override
    {
        m_mode = kavori::MciMode::Paused;
        return 0;
    }
    kavori::MciMode mode() override { return m_mode; }
    quint32 setTimeFormat(kavori::MciTimeFormat) override { return 0; }
    quint32 putSource() override { return 0; }
    std::optional<QSize> sourceSize() override { return QSize(320, 240); }
    quint32 putDestination() override { return 0; }
    std::optional<int> currentTrack() override { return 1; }

private:
    kavori::MciMode m_mode = kavori::MciMode::Stopped;
};

} // namespace

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    static const bool installed = [] {
        SetMciDeviceFactory([](MciDeviceType) { return std::make_unique<NullDevice>(); });
        return true;
    }();
    (void)installed;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    QString reply;
    for (const QString& command : text.split(QLatin1Char('\n'))) {
        mciSendString(command, &reply);
        (void)mciGetErrorString(LastMciResult());
    }
    CloseAllMciDevices();
    ClearMciCommandLog();
    return 0;
}
