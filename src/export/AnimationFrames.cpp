#include "AnimationFrames.h"

#include <QImageReader>

namespace kavori {

namespace {

// A frame that asks for 10 ms or less (most often 0, no delay set) stands 100 ms, as web
// browsers show it: such files are made for them, and an animation of frames without a delay
// would otherwise never move on in the video.
constexpr int kShortestDelay = 10;     // milliseconds
constexpr qint64 kUnsetDelay = 100000; // microseconds

} // namespace

AnimationFrames::AnimationFrames() = default;
AnimationFrames::~AnimationFrames() = default;

bool AnimationFrames::open(const QString& file, const QSize& size)
{
    m_file = file;
    m_size = size.expandedTo(QSize(1, 1));
    m_current = QImage();
    m_next = QImage();
    m_time = 0;
    m_nextTime = -1;
    if (!startRound())
        return false;
    // A file's own loop count: 0 plays once, -1 goes round for ever; more plays it that many
    // times again.
    const int loops = m_reader->loopCount();
    m_roundsLeft = loops < 0 ? -1 : loops;
    if (m_reader->imageCount() == 1 || !pull())
        return false;
    m_current = m_next;
    // The second picture: a file that has only one is a still picture.
    return pull();
}

bool AnimationFrames::startRound()
{
    m_reader = std::make_unique<QImageReader>(m_file);
    m_reader->setScaledSize(m_size);
    return m_reader->canRead() && m_reader->supportsAnimation();
}

bool AnimationFrames::pull()
{
    QImage picture;
    if (!m_reader->read(&picture))
        return false;
    m_next = std::move(picture);
    m_nextTime = m_time;
    const int delay = m_reader->nextImageDelay();
    m_time += delay > kShortestDelay ? qint64(delay) * 1000 : kUnsetDelay;
    return true;
}

const QImage& AnimationFrames::frameAt(qint64 time)
{
    while (m_nextTime >= 0 && m_nextTime <= time) {
        std::swap(m_current, m_next);
        if (pull())
            continue;
        // The round has ended: the next begins where this one's last picture ends.
        const bool again = m_roundsLeft != 0 && startRound() && pull();
        if (!again) {
            m_nextTime = -1;
            break;
        }
        if (m_roundsLeft > 0)
            --m_roundsLeft;
    }
    return m_current;
}

} // namespace kavori
