#include "ShowSoundtrack.h"

#include "DecodePipeline.h"
#include "VideoWriter.h"
#include "platform/SoundDevices.h"
#include "playback/media/MediaKinds.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"

#include <QFile>
#include <QFileInfo>

#include <fluidsynth.h>

#include <algorithm>
#include <cstring>

namespace kavori {

namespace {

void Append(QVector<qint16>& samples, const qint16* more, qsizetype count)
{
    const qsizetype at = samples.size();
    samples.resize(at + count);
    std::memcpy(samples.data() + at, more, size_t(count) * sizeof(qint16));
}

bool ReadMidi(const QString& file, QVector<qint16>& samples, qint64 maxFrames)
{
    const QString soundFont = SoundFontPath();
    if (soundFont.isEmpty() || !QFileInfo(file).isFile())
        return false;
    fluid_settings_t* settings = new_fluid_settings();
    fluid_settings_setnum(settings, "synth.sample-rate", kExportAudioRate);
    // The player's clock follows the samples made, not the wall clock: rendering runs as fast
    // as it can and the notes still fall where they belong.
    fluid_settings_setstr(settings, "player.timing-source", "sample");
    fluid_settings_setint(settings, "synth.lock-memory", 0);
    fluid_synth_t* synth = new_fluid_synth(settings);
    fluid_player_t* player = synth ? new_fluid_player(synth) : nullptr;
    bool ok = player && fluid_synth_sfload(synth, QFile::encodeName(soundFont).constData(), 1) !=
                            FLUID_FAILED;
    const QByteArray path = QFile::encodeName(file);
    ok = ok && fluid_is_midifile(path.constData()) &&
         fluid_player_add(player, path.constData()) == FLUID_OK &&
         fluid_player_play(player) == FLUID_OK;
    if (ok) {
        constexpr int kBlock = 1024;
        qint16 block[kBlock * 2];
        while (fluid_player_get_status(player) == FLUID_PLAYER_PLAYING &&
               (maxFrames < 0 || samples.size() / 2 < maxFrames)) {
            fluid_synth_write_s16(synth, kBlock, block, 0, 2, block, 1, 2);
            Append(samples, block, kBlock * 2);
        }
        if (maxFrames >= 0 && samples.size() / 2 > maxFrames)
            samples.resize(maxFrames * 2);
        // A file that ends before its first block (a damaged one, whose header alone was
        // read) holds no sound.
        ok = samples.size() > kBlock * 2 || maxFrames == 0;
    }
    if (player) {
        fluid_player_stop(player);
        delete_fluid_player(player);
    }
    if (synth)
        delete_fluid_synth(synth);
    delete_fluid_settings(settings);
    return ok;
}

bool ReadDecoded(const QString& file, QVector<qint16>& samples, qint64 maxFrames)
{
    DecodePipeline decoding;
    if (!decoding.open("filesrc name=src ! decodebin ! audioconvert ! audioresample ! "
                       "audio/x-raw,format=S16LE,rate=48000,channels=2,layout=interleaved ! "
                       "appsink name=sink sync=false",
                       file))
        return false;
    GstAppSink* sink = decoding.sink();
    GstBus* bus = gst_element_get_bus(decoding.pipeline());
    bool ok = true;
    // A decoder that neither ends nor fails nor gives sound for this long is given up on.
    int idle = 0;
    constexpr int kIdleLimit = 200;
    while (ok) {
        if (GstMessage* message = gst_bus_pop_filtered(bus, GST_MESSAGE_ERROR)) {
            gst_message_unref(message);
            ok = false;
            break;
        }
        GstSample* sample = gst_app_sink_try_pull_sample(sink, 50 * GST_MSECOND);
        if (!sample) {
            if (gst_app_sink_is_eos(sink))
                break;
            if (++idle >= kIdleLimit)
                ok = false;
            continue;
        }
        idle = 0;
        GstBuffer* buffer = gst_sample_get_buffer(sample);
        GstMapInfo map;
        if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
            Append(samples, reinterpret_cast<const qint16*>(map.data), qsizetype(map.size / 2));
            gst_buffer_unmap(buffer, &map);
        }
        gst_sample_unref(sample);
        if (maxFrames >= 0 && samples.size() / 2 >= maxFrames)
            break;
    }
    gst_object_unref(bus);
    decoding.close();
    if (maxFrames >= 0 && samples.size() / 2 > maxFrames)
        samples.resize(maxFrames * 2);
    return ok;
}

} // namespace

bool ReadSoundSamples(const QString& file, QVector<qint16>& samples, qint64 maxFrames)
{
    samples.clear();
    const bool ok = SoundKindOf(file) == SoundKind::Midi ? ReadMidi(file, samples, maxFrames)
                                                         : ReadDecoded(file, samples, maxFrames);
    if (!ok)
        samples.clear();
    return ok;
}

ShowSoundtrack::ShowSoundtrack(const QVector<SoundCue>& cues, qint64 duration, quint32 seed)
    : m_cues(cues), m_frames(SampleFrameAt(duration)), m_seed(seed)
{}

const QVector<qint16>* ShowSoundtrack::sound(const QString& file)
{
    auto it = m_sounds.find(file);
    if (it == m_sounds.end()) {
        QVector<qint16> samples;
        // No sound is ever heard past the end of the video.
        if (!ReadSoundSamples(file, samples, m_frames) || samples.isEmpty()) {
            m_failures.append(file);
            samples.clear();
        }
        it = m_sounds.insert(file, samples);
    }
    return it->isEmpty() ? nullptr : &*it;
}

void ShowSoundtrack::layFile(const QString& file, qint64 start, qint64 stop, bool loop)
{
    const QVector<qint16>* samples = sound(file);
    if (!samples || start >= stop)
        return;
    const qint64 length = samples->size() / 2;
    m_pieces.append({start, loop ? stop : std::min(stop, start + length), samples, file});
}

void ShowSoundtrack::layPlayList(qint64 start, qint64 stop)
{
    // Round and round for as long as the show runs; an entry that cannot be played is left out
    // from then on, and with none left the list ends.
    const QStringList& list = CurrentShow().PlayList;
    const bool random = CurrentSettings().PlayListRandom;
    int index = -1;
    qint64 at = start;
    while (at < stop) {
        QVector<int> left;
        for (int i = 0; i < list.size(); ++i) {
            if (!m_failures.contains(list.at(i)))
                left.append(i);
        }
        if (left.isEmpty())
            return;
        int pick = left.first();
        if (random) {
            pick = left.at(RandomBetween(0, int(left.size()) - 1));
        } else {
            for (int i : std::as_const(left)) {
                if (i > index) {
                    pick = i;
                    break;
                }
            }
        }
        index = pick;
        const QVector<qint16>* samples = sound(list.at(pick));
        if (!samples)
            continue;
        const qint64 end = std::min(stop, at + samples->size() / 2);
        m_pieces.append({at, end, samples, list.at(pick)});
        at = end;
    }
}

void ShowSoundtrack::prepare()
{
    m_pieces.clear();
    m_failures.clear();
    Randomize(m_seed ^ 0x5eed5u);
    for (int i = 0; i < m_cues.size(); ++i) {
        const SoundCue& cue = m_cues.at(i);
        const qint64 start = SampleFrameAt(cue.start);
        const qint64 stop =
            i + 1 < m_cues.size() ? SampleFrameAt(m_cues.at(i + 1).start) : m_frames;
        if (cue.playList)
            layPlayList(start, stop);
        else
            layFile(cue.file, start, stop, cue.loop);
    }
    Randomize();
    m_failures.removeDuplicates();
}

void ShowSoundtrack::mixIn(qint64 at, const QVector<qint16>& samples)
{
    if (!samples.isEmpty() && at < m_frames)
        m_overlays.append({at, samples});
}

void ShowSoundtrack::render(qint64 from, qint64 count, qint16* out) const
{
    std::memset(out, 0, size_t(count) * 2 * sizeof(qint16));
    const qint64 to = from + count;
    for (const Piece& piece : m_pieces) {
        const qint64 begin = std::max(from, piece.start);
        const qint64 end = std::min(to, piece.end);
        const qint64 length = piece.sound->size() / 2;
        for (qint64 f = begin; f < end; ++f) {
            const qint64 s = (f - piece.start) % length;
            out[(f - from) * 2] = (*piece.sound)[s * 2];
            out[(f - from) * 2 + 1] = (*piece.sound)[s * 2 + 1];
        }
    }
    for (const Overlay& overlay : m_overlays) {
        const qint64 begin = std::max(from, overlay.at);
        const qint64 end = std::min(to, overlay.at + overlay.samples.size() / 2);
        for (qint64 f = begin; f < end; ++f) {
            for (int c = 0; c < 2; ++c) {
                const int mixed =
                    out[(f - from) * 2 + c] + overlay.samples[(f - overlay.at) * 2 + c];
                out[(f - from) * 2 + c] = qint16(std::clamp(mixed, -32768, 32767));
            }
        }
    }
}

} // namespace kavori
