#include "TransitionCanvas.h"

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
    // keeps that (33 MB at 3840 x 2160) out of the effect's first frame.
    m_destination.detach();
}

void PaintingCanvas::copy(const QRect& rect)
{
    const QRect r = rect.intersected(m_destination.rect());
    if (r.isEmpty())
        return;
    const qsizetype bytes = qsizetype(r.width()) * 4;
    for (int y = r.top(); y <= r.bottom(); ++y)
        std::memcpy(m_destination.scanLine(y) + qsizetype(r.left()) * 4,
                    m_source.constScanLine(y) + qsizetype(r.left()) * 4, size_t(bytes));
    m_changed += r;
}

void PaintingCanvas::copyTo(const QRect& source, const QPoint& destination)
{
    // Clip the move to both pictures, then copy row by row.
    QRect src = source.intersected(m_source.rect());
    QRect dst(destination + (src.topLeft() - source.topLeft()), src.size());
    const QRect visible = dst.intersected(m_destination.rect());
    if (visible.isEmpty())
        return;
    src.translate(visible.topLeft() - dst.topLeft());
    src.setSize(visible.size());
    const qsizetype bytes = qsizetype(visible.width()) * 4;
    for (int row = 0; row < visible.height(); ++row)
        std::memmove(m_destination.scanLine(visible.top() + row) + qsizetype(visible.left()) * 4,
                     m_source.constScanLine(src.top() + row) + qsizetype(src.left()) * 4,
                     size_t(bytes));
    m_changed += visible;
}

QRegion PaintingCanvas::takeChanged()
{
    QRegion r = m_changed;
    m_changed = QRegion();
    return r;
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
