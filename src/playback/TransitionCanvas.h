#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QVector>

#include "TransitionEngine.h"

#include <array>
#include <functional>

namespace kavori {

// What the transition effects draw on: rectangles of the new picture (the source) copied onto
// the screen picture (the destination). copy() takes a rectangle to the same place; copyTo()
// takes one to another place (the sliding effects).
class TransitionCanvas {
public:
    virtual ~TransitionCanvas() = default;
    virtual QSize size() const = 0;
    virtual void copy(const QRect& rect) = 0;
    virtual void copyTo(const QRect& source, const QPoint& destination) = 0;
    // The whole new picture, at once.
    virtual void copyWhole() { copy(QRect(QPoint(0, 0), size())); }
    // A rectangle that grows step by step: only its fresh part differs from what is shown, so
    // a canvas may copy just that.
    virtual void copyGrown(const QRect& whole, const QRect& fresh)
    {
        Q_UNUSED(fresh);
        copy(whole);
    }
};

// Paints into a destination picture at screen size in device pixels, remembering which region
// changed since the last presentation. Copies are held until the picture is looked at (a
// presentation), so those that later copies of the same frame paint over cost nothing.
class PaintingCanvas final : public TransitionCanvas {
public:
    PaintingCanvas(QImage source, QImage destination);
    QSize size() const override { return m_destination.size(); }
    void copy(const QRect& rect) override;
    void copyTo(const QRect& source, const QPoint& destination) override;
    void copyGrown(const QRect& whole, const QRect& fresh) override
    {
        Q_UNUSED(whole);
        copy(fresh);
    }

    // The picture as drawn so far.
    const QImage& destination();
    const QImage& source() const { return m_source; }
    // Hands the pictures back once the effect is done, so their buffers serve the next one.
    QImage takeDestination();
    QImage takeSource() { return std::move(m_source); }
    // The region changed since the last call, and forgets it.
    QRegion takeChanged();

private:
    struct Copy {
        QRect from; // in the source
        QPoint to;  // its top left in the destination
    };
    void defer(const Copy& copy);
    void flush();
    void apply(const QPoint& from, const QRect& to);
    void noteChanged(const QRect& rect);

    QImage m_source;
    QImage m_destination;
    // Past this many held copies the region arithmetic would cost more than it saves.
    static constexpr int kPendingCopies = 64;
    QVector<Copy> m_pending;
    int m_pendingMoves = 0; // held copies whose pixels land elsewhere than they were
    static constexpr int kChangedRects = 16;
    std::array<QRect, kChangedRects> m_changedRects;
    int m_changedCount = 0;
    QRect m_changedBounds;
};

// Keeps every copy and pause in order, for tests and the timing tools; it is its own pacer.
class RecordingCanvas final : public TransitionCanvas, public Pacer {
public:
    struct Op {
        enum Kind { Copy, CopyTo, Pause } kind;
        QRect rect;     // the source rectangle
        QPoint to;      // where it went (CopyTo)
        int passes = 0; // Pause: message-pump passes
    };
    explicit RecordingCanvas(QSize size) : m_size(size) {}
    QSize size() const override { return m_size; }
    void copy(const QRect& rect) override { ops.append({Op::Copy, rect, rect.topLeft(), 0}); }
    void copyTo(const QRect& source, const QPoint& destination) override
    {
        ops.append({Op::CopyTo, source, destination, 0});
    }

    void pump() override {}
    void pause(int passes) override { ops.append({Op::Pause, QRect(), QPoint(), passes}); }

    QVector<Op> ops;
    int copies() const;
    int pauses() const;
    qint64 passes() const;
    // The destination area covered by all copies (clipped to the picture).
    QRegion covered() const;

private:
    QSize m_size;
};

} // namespace kavori
