#include "TransitionCanvas.h"

#include "runtime/ScratchMemory.h"

#include <QPainter>

#include <cstring>

namespace kavori {

PaintingCanvas::PaintingCanvas(QImage source, QImage destination)
    : m_source(std::move(source)), m_destination(std::move(destination))
{
    // Both pictures in one 32-bit format so that a copy is a plain row copy.
    if (m_destination.format() != QImage::Format_RGB32)
        m_destination = m_destination.convertToFormat(QImage::Format_RGB32);
    if (m_source.size() != m_destination.size())
        m_source = m_source.scaled(m_destination.size());
    if (m_source.format() != QImage::Format_RGB32)
        m_source = m_source.convertToFormat(QImage::Format_RGB32);
    // The picture on the screen usually shares its pixels with ours; making our own copy now
    // keeps that (33 MB at 3840 x 2160) out of the effect's first frame, and making it in the
    // picture stock keeps it from paying for fresh pages.
    if (!m_destination.isDetached())
        m_destination = ScratchCopy(m_destination, QImage::Format_RGB32);
}

void PaintingCanvas::copy(const QRect& rect)
{
    const QRect r = rect.intersected(m_destination.rect());
    if (!r.isEmpty())
        defer({r, r.topLeft()});
}

void PaintingCanvas::copyTo(const QRect& source, const QPoint& destination)
{
    // Clip the move to both pictures.
    QRect src = source.intersected(m_source.rect());
    const QRect dst(destination + (src.topLeft() - source.topLeft()), src.size());
    const QRect visible = dst.intersected(m_destination.rect());
    if (visible.isEmpty())
        return;
    src.translate(visible.topLeft() - dst.topLeft());
    src.setSize(visible.size());
    defer({src, visible.topLeft()});
}

void PaintingCanvas::defer(const Copy& copy)
{
    if (m_pending.size() >= kPendingCopies)
        flush();
    m_pending.append(copy);
    m_pendingMoves += copy.from.topLeft() != copy.to;
}

void PaintingCanvas::flush()
{
    // Copies that leave each pixel in its place can be applied in any order and over each
    // other, so they go as one region: the slats of a blind, a column or row each copy, then
    // join into wide rectangles and are copied row by row instead of pixel by pixel.
    if (m_pendingMoves == 0) {
        QRegion region;
        for (const Copy& c : std::as_const(m_pending))
            region += c.from;
        for (const QRect& part : region) {
            apply(part.topLeft(), part);
            noteChanged(part);
        }
        m_pending.clear();
        return;
    }
    // Every copy reads only the source picture, so a copy whose target a later one of the same
    // frame paints over shows nothing: applied from the last back, each copy fills only what
    // no later one covers, and no pixel is written twice in a frame.
    QRegion covered;
    for (qsizetype i = m_pending.size() - 1; i >= 0; --i) {
        const Copy& c = m_pending.at(i);
        const QRect target(c.to, c.from.size());
        const QRegion fresh = QRegion(target) - covered;
        for (const QRect& part : fresh) {
            apply(c.from.translated(part.topLeft() - target.topLeft()).topLeft(), part);
            noteChanged(part);
        }
        if (i > 0)
            covered += target;
    }
    m_pending.clear();
    m_pendingMoves = 0;
}

void PaintingCanvas::apply(const QPoint& from, const QRect& to)
{
    const qsizetype bytes = qsizetype(to.width()) * 4;
    const qsizetype toStride = m_destination.bytesPerLine();
    const qsizetype fromStride = m_source.bytesPerLine();
    uchar* out = m_destination.scanLine(to.top()) + qsizetype(to.left()) * 4;
    const uchar* in = m_source.constScanLine(from.y()) + qsizetype(from.x()) * 4;
    for (int row = 0; row < to.height(); ++row, out += toStride, in += fromStride)
        std::memcpy(out, in, size_t(bytes));
}

void PaintingCanvas::noteChanged(const QRect& rect)
{
    // Region arithmetic on every small copy would cost more than the copies: a frame keeps a
    // few rectangles, and past that only their bounds.
    if (m_changedCount < kChangedRects)
        m_changedRects[m_changedCount] = rect;
    ++m_changedCount;
    m_changedBounds |= rect;
}

const QImage& PaintingCanvas::destination()
{
    flush();
    return m_destination;
}

QImage PaintingCanvas::takeDestination()
{
    flush();
    return std::move(m_destination);
}

QRegion PaintingCanvas::takeChanged()
{
    flush();
    QRegion region;
    if (m_changedCount > kChangedRects) {
        region = m_changedBounds;
    } else {
        for (int i = 0; i < m_changedCount; ++i)
            region += m_changedRects[i];
    }
    m_changedCount = 0;
    m_changedBounds = QRect();
    return region;
}

int RecordingCanvas::copies() const
{
    int n = 0;
    for (const Op& op : ops)
        n += op.kind != Op::Pause;
    return n;
}

int RecordingCanvas::pauses() const
{
    return int(ops.size()) - copies();
}

qint64 RecordingCanvas::passes() const
{
    qint64 n = 0;
    for (const Op& op : ops)
        n += op.passes;
    return n;
}

QRegion RecordingCanvas::covered() const
{
    QRegion region;
    const QRect bounds(QPoint(0, 0), m_size);
    for (const Op& op : ops) {
        if (op.kind == Op::Pause)
            continue;
        region += QRect(op.to, op.rect.size()).intersected(bounds);
    }
    return region;
}

} // namespace kavori
