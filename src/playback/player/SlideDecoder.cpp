#include "SlideDecoder.h"

#include "SlideLayout.h"

#include <QtConcurrent/QtConcurrentRun>

namespace kavori {

SlideDecoder::SlideDecoder(const QSize& screen) : m_screen(screen) {}

SlideDecoder::~SlideDecoder()
{
    // Reads still running hold only their own copies; wait so none outlives its pool slot.
    for (auto& future : m_entries)
        future.waitForFinished();
}

void SlideDecoder::setScreen(const QSize& screen)
{
    if (screen == m_screen)
        return;
    m_screen = screen;
    m_entries.clear(); // pictures of the old size are of no use
}

QString SlideDecoder::keyOf(const Slide& slide)
{
    return slide.SlideFile + u'\n' + QString::number(slide.SlideEnlarge) + u'|' +
           QString::number(slide.SlideShrink);
}

void SlideDecoder::prefetch(const QVector<Slide>& slides)
{
    QHash<QString, QFuture<QImage>> kept;
    for (const Slide& slide : slides) {
        const QString key = keyOf(slide);
        if (kept.contains(key))
            continue;
        auto found = m_entries.find(key);
        if (found != m_entries.end()) {
            kept.insert(key, *found);
            continue;
        }
        const QSize screen = m_screen;
        kept.insert(key, QtConcurrent::run([slide, screen] {
                        return DecodeSlidePicture(slide.SlideFile, screen, slide);
                    }));
    }
    m_entries.swap(kept);
}

QImage SlideDecoder::take(const Slide& slide)
{
    const auto found = m_entries.constFind(keyOf(slide));
    if (found != m_entries.constEnd())
        return found->result();
    return DecodeSlidePicture(slide.SlideFile, m_screen, slide);
}

} // namespace kavori
