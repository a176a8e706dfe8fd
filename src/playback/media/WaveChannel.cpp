#include "WaveChannel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>
#include <QtEndian>

namespace kavori {

namespace {

class SystemWaveOutput final : public WaveOutput {
public:
    bool start(const QString& file, bool loop) override
    {
        m_effect = std::make_unique<QSoundEffect>();
        m_effect->setSource(QUrl::fromLocalFile(file));
        m_effect->setLoopCount(loop ? QSoundEffect::Infinite : 1);
        // A sound still loading starts as soon as it is loaded.
        m_effect->play();
        return m_effect->status() != QSoundEffect::Error;
    }
    void stop() override
    {
        if (m_effect)
            m_effect->stop();
        m_effect.reset();
    }
    bool isPlaying() override
    {
        return m_effect && (m_effect->isPlaying() || m_effect->status() == QSoundEffect::Loading);
    }

private:
    std::unique_ptr<QSoundEffect> m_effect;
};

struct Channel {
    std::unique_ptr<WaveOutput> output;
    QVector<WaveCall> log;
};

Channel& channel()
{
    static Channel c;
    if (!c.output)
        c.output = std::make_unique<SystemWaveOutput>();
    return c;
}

// Waits for a synchronous sound, never longer than the sound itself and a second more.
void WaitWhilePlaying(WaveOutput& output, qint64 limitMs)
{
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(20);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (!output.isPlaying() || clock.elapsed() > limitMs)
            loop.quit();
    });
    if (!output.isPlaying())
        return;
    poll.start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

std::optional<qint64> WaveDuration(const QString& file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray head = f.read(12);
    if (head.size() < 12 || !head.startsWith("RIFF") || head.mid(8, 4) != "WAVE")
        return std::nullopt;
    quint32 byteRate = 0;
    std::optional<quint32> dataSize;
    while (!dataSize) {
        const QByteArray chunk = f.read(8);
        if (chunk.size() < 8)
            break;
        const quint32 size = qFromLittleEndian<quint32>(chunk.constData() + 4);
        if (chunk.startsWith("fmt ")) {
            const QByteArray fmt = f.read(qMin<quint32>(size, 16));
            if (fmt.size() < 12)
                return std::nullopt;
            byteRate = qFromLittleEndian<quint32>(fmt.constData() + 8);
            f.seek(f.pos() + size - fmt.size() + (size & 1));
        } else if (chunk.startsWith("data")) {
            dataSize = size;
        } else if (!f.seek(f.pos() + size + (size & 1))) {
            break;
        }
    }
    if (!dataSize || byteRate == 0)
        return std::nullopt;
    return qint64(*dataSize) * 1000 / byteRate;
}

bool PlayWaveSound(const QString& file, unsigned flags)
{
    Channel& c = channel();
    c.log.append({file, flags});
    c.output->stop();
    if (file.isEmpty())
        return true;
    const bool async = flags & SndAsync;
    if ((flags & SndLoop) && !async)
        return false;
    const std::optional<qint64> duration = WaveDuration(file);
    if (!duration || !c.output->start(file, flags & SndLoop)) {
        if (!(flags & SndNoDefault))
            QApplication::beep();
        return false;
    }
    if (!async)
        WaitWhilePlaying(*c.output, *duration + 1000);
    return true;
}

bool IsWavePlaying()
{
    return channel().output->isPlaying();
}

QVector<WaveCall> WaveSoundLog()
{
    return channel().log;
}

void ClearWaveSoundLog()
{
    channel().log.clear();
}

std::unique_ptr<WaveOutput> SetWaveOutput(std::unique_ptr<WaveOutput> output)
{
    Channel& c = channel();
    c.output->stop();
    std::unique_ptr<WaveOutput> previous = std::move(c.output);
    c.output = output ? std::move(output) : std::make_unique<SystemWaveOutput>();
    return previous;
}

} // namespace kavori
