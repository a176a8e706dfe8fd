#include "ShowFrames.h"

#include "AnimationFrames.h"
#include "MovieFrames.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "platform/Twips.h"
#include "playback/DescriptionLabels.h"
#include "playback/TransitionCanvas.h"
#include "playback/TransitionEngine.h"
#include "playback/media/MoviePlacement.h"
#include "playback/player/DescriptionOverlay.h"
#include "playback/player/PlayerTexts.h"
#include "playback/player/SlideDecoder.h"
#include "playback/player/SlideLayout.h"
#include "playback/player/SlideOrder.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/ShowSounds.h"

#include <QFontMetrics>
#include <QPainter>

#include <cmath>
#include <cstring>
#include <utility>

namespace kavori {

namespace {

constexpr qint64 kDescriptionTick = qint64(kDescriptionTickMs) * 1000;

// A canvas that draws nothing: the plan runs the effects only for their length.
class NoCanvas final : public TransitionCanvas {
public:
    explicit NoCanvas(const QSize& size) : m_size(size) {}
    QSize size() const override { return m_size; }
    void copy(const QRect&) override {}
    void copyTo(const QRect&, const QPoint&) override {}

private:
    QSize m_size;
};

// The file-name line as the player's label shows it: white on black across the bottom.
void PaintInfoLine(QPainter& painter, const QString& text, const QSize& screen)
{
    const QFont font;
    const QFontMetrics metrics(font);
    const int height = metrics.height() + 4;
    const QRect line(0, screen.height() - height, screen.width(), height);
    painter.fillRect(line, Qt::black);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(line, Qt::AlignCenter,
                     FitInfoLine(text, metrics, std::max(0, screen.width() - 8)));
}

} // namespace

// Turns the engine's pauses into time on the video's clock, showing the canvas as drawn so
// far for the frames the pause covers.
class ShowFrames::Pacer final : public kavori::Pacer {
public:
    Pacer(ShowFrames& frames, PaintingCanvas* canvas) : m_frames(frames), m_canvas(canvas) {}
    void pump() override {}
    void pause(int passes) override
    {
        const qint64 end = m_frames.m_time + std::llround(passes * kPassMicroseconds);
        if (m_canvas)
            m_frames.m_base = &m_canvas->destination();
        if (!m_frames.emitUntil(end))
            Transitions().TransitionStop = true;
    }

private:
    ShowFrames& m_frames;
    PaintingCanvas* m_canvas;
};

ShowFrames::ShowFrames(const QSize& size, int fps, quint32 seed)
    : m_size(size.expandedTo(QSize(2, 2))), m_fps(std::max(1, fps)), m_seed(seed)
{}

ShowFrames::~ShowFrames() = default;

void ShowFrames::reset()
{
    m_time = 0;
    m_frame = 0;
    m_stopped = false;
    m_spans.clear();
    m_sounds.clear();
    m_unreadable.clear();
    m_unplayable.clear();
    m_moving.reset();
    m_infoLine.clear();
    m_description.clear();
    m_motion.reset();
    m_nextRandom = -1;
    m_playListOn = false;
    m_texturePath.clear();
    m_texture = QImage();
    m_screen = QImage();
    m_compose = QImage();
    m_base = nullptr;
    m_drawnValid = false;
    if (m_drawing) {
        m_screen = QImage(m_size, QImage::Format_RGB32);
        m_screen.fill(Qt::black);
        m_compose = QImage(m_size, QImage::Format_RGB32);
        m_decoder = std::make_unique<SlideDecoder>(m_size);
    }
}

bool ShowFrames::walk(const Sink& sink)
{
    m_sink = sink ? &sink : nullptr;
    m_drawing = m_sink != nullptr;
    reset();
    Randomize(m_seed);
    // The display's own flag stays; the run flags start clear.
    const TransitionFlags kept = Transitions();
    Transitions() = {};
    Transitions().Colors256 = false;
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    const int count = int(show.slides.size());
    // The show's own sound starts with it.
    if (s.SoundMode == 1) {
        if (s.UsePlayList && !show.PlayList.isEmpty()) {
            m_sounds.append({0, QString(), true, false});
            m_playListOn = true;
        } else if (!s.SoundFile.isEmpty()) {
            m_sounds.append({0, s.SoundFile, false, s.SoundLoop});
        }
    }
    // Once through: in order every slide, at random as many picks as there are slides.
    int index = -1;
    for (int shown = 0; shown < count && !m_stopped; ++shown) {
        if (s.RandomSlides) {
            index = m_nextRandom >= 0 ? m_nextRandom
                                      : ChooseNextSlide(index, count, true, true, true).index;
            m_nextRandom = -1;
        } else {
            index = shown;
        }
        showSlide(index);
    }
    m_decoder.reset();
    Transitions() = kept;
    // The program's later random choices are its own again, not the export's sequence.
    Randomize();
    m_sink = nullptr;
    return !m_stopped;
}

void ShowFrames::cueSound(const Slide& slide)
{
    const Settings& s = CurrentSettings();
    if (s.SoundMode != 3)
        return;
    if (s.UsePlayList && !CurrentShow().PlayList.isEmpty()) {
        if (!m_playListOn)
            m_sounds.append({m_time, QString(), true, false});
        m_playListOn = true;
        return;
    }
    // A slide without a sound lets the one playing go on; CD tracks have no place in a file.
    if (slide.SlideSound.isEmpty() || IsCDTrackSound(slide.SlideSound))
        return;
    m_sounds.append({m_time, slide.SlideSound, false, s.SoundLoop});
}

void ShowFrames::showSlide(int index)
{
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    const int count = int(show.slides.size());
    Slide slide = show.slides.at(index);
    slide.SlideFile = SlidePicturePath(slide.SlideFile, show.path);
    const bool movie = IsMovieFile(slide.SlideFile);
    // A picture that cannot be read is left out, as the player goes on past it.
    QSize drawn;
    if (!movie) {
        const QSize natural = IsImageFile(slide.SlideFile) ? PictureSize(slide.SlideFile) : QSize();
        if (!natural.isValid()) {
            m_unreadable.append(slide.SlideFile);
            if (s.RandomSlides)
                m_nextRandom = ChooseNextSlide(index, count, true, true, true).index;
            return;
        }
        drawn = SlidePictureSize(natural, m_size, slide.SlideEnlarge != 0, slide.SlideShrink != 0);
    }

    SlideSpan span;
    span.index = index;
    span.file = slide.SlideFile;
    span.start = m_time;
    span.movie = movie;
    if (s.ShowFilenames)
        m_infoLine = LoadingNextSlideText();
    m_description.clear();
    m_motion.reset();
    cueSound(slide);

    QImage picture;
    if (m_drawing && !movie) {
        picture = m_decoder->take(slide);
        // The plan placed the picture at the size its header gives; the decode keeps to it so
        // that both walks draw the same random numbers.
        if (!picture.isNull() && picture.size() != drawn)
            picture = picture.scaled(drawn, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    // Read ahead, as the player does: at random the next pick is drawn now.
    QVector<int> next;
    if (s.RandomSlides) {
        m_nextRandom = ChooseNextSlide(index, count, true, true, true).index;
        next << m_nextRandom;
    } else {
        for (int step = 1; step <= 2 && index + step < count; ++step)
            next << index + step;
    }
    if (m_drawing) {
        QVector<Slide> ahead;
        for (int i : std::as_const(next)) {
            Slide other = show.slides.at(i);
            other.SlideFile = SlidePicturePath(other.SlideFile, show.path);
            if (!IsMovieFile(other.SlideFile))
                ahead.append(other);
        }
        m_decoder->prefetch(ahead);
    }

    const QRect rect = SlidePictureRect(movie ? QSize() : drawn, m_size, slide);
    if (m_drawing) {
        if (SlideBack(slide.SlideBackMode) == SlideBack::Texture && !slide.SlideTexture.isEmpty() &&
            slide.SlideTexture != m_texturePath) {
            m_texturePath = slide.SlideTexture;
            m_texture = LoadPicture(m_texturePath);
        }
        ComposeSlide(m_compose, picture, rect, slide,
                     slide.SlideTexture == m_texturePath ? m_texture : QImage());
    }

    const bool random = s.RandomTransitions;
    const qint16 number = random ? RandomTransitionNumber() : slide.SlideTransition;
    const bool useEngine = s.EnableTransitions && !(slide.SlideTransition == 0 && !random);
    present(number, useEngine && !movie);
    span.transition = m_time - span.start;
    if (movie) {
        // The movie plays over the slide's background, placed as a picture is.
        MoviePlacement placement;
        placement.screen = m_size;
        placement.SlideLocation = slide.SlideLocation;
        placement.SlidePosX = slide.SlidePosX;
        placement.SlidePosY = slide.SlidePosY;
        placement.SlideEnlarge = slide.SlideEnlarge;
        placement.SlideShrink = slide.SlideShrink;
        const MovieInfo info = ReadMovieInfo(slide.SlideFile);
        span.movieRect = info.size.isValid() ? MovieRect(info.size, placement) : QRect();
        if (span.movieRect.isEmpty()) {
            m_unplayable.append(slide.SlideFile);
        } else if (m_drawing) {
            auto frames = std::make_unique<MovieFrames>();
            if (frames->open(slide.SlideFile, span.movieRect.size()))
                play(std::move(frames), span.movieRect);
        }
    } else if (m_drawing && s.AnimateGIF89 && IsAnimatedPicture(slide.SlideFile)) {
        // An animated picture moves where the slide's picture stands, its first picture
        // beneath it as the player's is.
        auto frames = std::make_unique<AnimationFrames>();
        if (frames->open(slide.SlideFile, rect.size()))
            play(std::move(frames), rect);
    }

    // The slide is up: its line and description, then its interval.
    m_infoLine =
        SlideInfoLine(slide.SlideFile, slide.SlideDescription, s.ShowFilenames, s.ShowDescription);
    if (s.ShowDescription && !slide.SlideDescription.isEmpty()) {
        m_look = slide.SlideDescProps.isEmpty() ? DefaultDescriptionLook()
                                                : ParseDescProps(slide.SlideDescProps);
        m_description = slide.SlideDescription;
        m_descSize = DescriptionTextSize(m_description, m_look, m_size.width());
        m_motion = std::make_unique<DescriptionMotion>(
            m_look.location, m_look.speed,
            QSize(PixelsToTwips(m_size.width()), PixelsToTwips(m_size.height())),
            QSize(PixelsToTwips(m_descSize.width()), PixelsToTwips(m_descSize.height())));
        m_descStart = m_time;
        m_descTicks = 0;
    }
    const int seconds = show.UseSlideIntervals ? slide.SlideDelay : s.SlideInterval;
    span.hold = qint64(seconds > 0 ? seconds : kWaitingSlideSeconds) * 1000000;
    m_spans.append(span);
    m_base = &m_screen;
    emitUntil(span.end());
    m_description.clear();
    m_motion.reset();
    m_moving.reset();
}

void ShowFrames::present(qint16 number, bool useEngine)
{
    Transitions().TransitionStop = false;
    if (!useEngine) {
        std::swap(m_screen, m_compose);
        return;
    }
    if (!m_drawing) {
        NoCanvas canvas(m_size);
        Pacer pacer(*this, nullptr);
        ShowTransition(number, canvas, pacer);
        return;
    }
    if (CurrentSettings().ClearTransition)
        m_screen.fill(Qt::black);
    PaintingCanvas canvas(std::move(m_compose), std::move(m_screen));
    Pacer pacer(*this, &canvas);
    ShowTransition(number, canvas, pacer);
    m_screen = canvas.takeDestination();
    m_compose = canvas.takeSource();
    m_base = &m_screen;
}

bool ShowFrames::emitUntil(qint64 end)
{
    // Frame n shows the screen as it stands at n / fps seconds.
    while (!m_stopped && m_frame * 1000000 < end * m_fps) {
        if (m_sink) {
            const qint64 time = frameTime(m_frame);
            if (!(*m_sink)(drawFrame(*m_base, time), m_frame))
                m_stopped = true;
        }
        ++m_frame;
    }
    if (!m_stopped)
        m_time = end;
    return !m_stopped;
}

void ShowFrames::play(std::unique_ptr<MovingPicture> moving, const QRect& rect)
{
    m_moving = std::move(moving);
    m_movingRect = rect;
    m_movingStart = m_time;
}

const QImage& ShowFrames::drawFrame(const QImage& base, qint64 time)
{
    if (m_motion && m_motion->moves()) {
        // The description's clock ticks every 50 ms from the moment it came up.
        const qint64 due = (time - m_descStart) / kDescriptionTick;
        while (m_descTicks < due) {
            m_motion->tick();
            ++m_descTicks;
        }
    }
    if (m_infoLine.isEmpty() && m_description.isEmpty() && !m_moving)
        return base;
    // Lines standing still over a screen standing still: the frame drawn before, untouched, so
    // its key tells the writer that nothing changed.
    const QPoint descAt = m_motion ? m_motion->position() : QPoint();
    if (!m_moving && m_drawnValid && base.cacheKey() == m_drawnBase && m_infoLine == m_drawnInfo &&
        m_description == m_drawnDescription && descAt == m_drawnAt)
        return m_frame_;
    m_drawnValid = !m_moving;
    m_drawnBase = base.cacheKey();
    m_drawnInfo = m_infoLine;
    m_drawnDescription = m_description;
    m_drawnAt = descAt;
    if (m_frame_.size() != base.size() || m_frame_.format() != base.format())
        m_frame_ = QImage(base.size(), base.format());
    std::memcpy(m_frame_.bits(), base.constBits(), size_t(base.sizeInBytes()));
    QPainter painter(&m_frame_);
    // The movie's or animation's box lies over the screen, under the description and the
    // file-name line.
    if (m_moving) {
        const QImage& picture = m_moving->frameAt(time - m_movingStart);
        if (!picture.isNull())
            painter.drawImage(m_movingRect.topLeft(), picture);
    }
    if (!m_description.isEmpty() && m_motion) {
        const QPoint at(TwipsToPixels(m_motion->position().x()),
                        TwipsToPixels(m_motion->position().y()));
        PaintDescription(painter, m_description, m_look, at, m_descSize);
    }
    if (!m_infoLine.isEmpty())
        PaintInfoLine(painter, m_infoLine, m_size);
    return m_frame_;
}

} // namespace kavori
