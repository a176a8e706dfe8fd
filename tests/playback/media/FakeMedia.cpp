#include "FakeMedia.h"

#include "playback/media/MciCommand.h"

#include <QtEndian>

namespace kavori::test {

namespace {

class FakeDevice final : public MciDevice {
public:
    FakeDevice(FakeMedia& media, std::shared_ptr<FakeDeviceState> state)
        : m_media(media), m_state(std::move(state))
    {}
    ~FakeDevice() override { m_state->closed = true; }

    quint32 open(const QString& element) override
    {
        m_state->element = element;
        return m_media.openResult.value(m_state->type, MCIERR_NONE);
    }
    quint32 play(std::optional<qint64> from, std::optional<qint64> to) override
    {
        const quint32 rc = m_media.playResult.value(m_state->type, MCIERR_NONE);
        if (rc == MCIERR_NONE) {
            m_state->from = from;
            m_state->to = to;
            m_state->mode = MciMode::Playing;
            ++m_state->plays;
        }
        return rc;
    }
    quint32 stop() override
    {
        m_state->mode = MciMode::Stopped;
        return MCIERR_NONE;
    }
    quint32 pause() override
    {
        m_state->mode = MciMode::Paused;
        return MCIERR_NONE;
    }
    MciMode mode() override { return m_state->mode; }
    quint32 setTimeFormat(MciTimeFormat) override { return MCIERR_NONE; }
    quint32 setWindow(QWidget* window) override
    {
        if (!video())
            return MCIERR_UNSUPPORTED_FUNCTION;
        m_state->window = window;
        return MCIERR_NONE;
    }
    quint32 putSource() override { return video() ? MCIERR_NONE : MCIERR_UNSUPPORTED_FUNCTION; }
    std::optional<QSize> sourceSize() override
    {
        if (!video())
            return std::nullopt;
        return m_state->size;
    }
    quint32 putDestination() override
    {
        if (!video())
            return MCIERR_UNSUPPORTED_FUNCTION;
        return m_state->window ? MCIERR_NONE : MCIERR_NO_WINDOW;
    }
    quint32 realize() override { return video() ? MCIERR_NONE : MCIERR_UNSUPPORTED_FUNCTION; }
    std::optional<int> currentTrack() override
    {
        if (m_state->type != MciDeviceType::CdAudio)
            return std::nullopt;
        return int(m_state->from.value_or(1) & 0xFF);
    }

private:
    bool video() const
    {
        return m_state->type == MciDeviceType::MPEGVideo ||
               m_state->type == MciDeviceType::AVIVideo;
    }

    FakeMedia& m_media;
    std::shared_ptr<FakeDeviceState> m_state;
};

class FakeWaveOutput final : public WaveOutput {
public:
    explicit FakeWaveOutput(FakeMedia& media) : m_media(media) {}
    bool start(const QString& file, bool loop) override
    {
        m_media.waveFile = file;
        m_media.waveLoops = loop;
        m_media.wavePlaying = loop || m_media.holdWaves;
        return true;
    }
    void stop() override { m_media.wavePlaying = false; }
    bool isPlaying() override { return m_media.wavePlaying; }

private:
    FakeMedia& m_media;
};

} // namespace

FakeMedia::FakeMedia()
{
    SetMciDeviceFactory([this](MciDeviceType type) -> std::unique_ptr<MciDevice> {
        auto state = std::make_shared<FakeDeviceState>();
        state->type = type;
        state->size = movieSize;
        devices.push_back(state);
        return std::make_unique<FakeDevice>(*this, state);
    });
    SetWaveOutput(std::make_unique<FakeWaveOutput>(*this));
    ClearMciCommandLog();
    ClearWaveSoundLog();
}

FakeMedia::~FakeMedia()
{
    CloseAllMciDevices();
    SetMciDeviceFactory({});
    SetWaveOutput(nullptr);
    ClearMciCommandLog();
    ClearWaveSoundLog();
}

std::shared_ptr<FakeDeviceState> FakeMedia::last(MciDeviceType type) const
{
    for (auto it = devices.rbegin(); it != devices.rend(); ++it) {
        if ((*it)->type == type)
            return *it;
    }
    return nullptr;
}

QByteArray MakeMidi()
{
    // Note on middle C, half a second later (240 ticks at 120 bpm, 480 per beat) note off.
    const QByteArray track = QByteArray::fromHex("00903C64"
                                                 "8170803C00"
                                                 "00FF2F00");
    QByteArray midi = QByteArray::fromHex("4D546864000000060000000101E0");
    midi.append("MTrk");
    char size[4];
    qToBigEndian(quint32(track.size()), size);
    midi.append(size, 4);
    midi.append(track);
    return midi;
}

} // namespace kavori::test
