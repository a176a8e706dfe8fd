#include "FullViewFrm.h"

#include "ClockPacer.h"
#include "DescriptionLabels.h"
#include "TransitionCanvas.h"
#include "TransitionEngine.h"
#include "imaging/ImageFit.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "media/ShowMedia.h"
#include "player/PlayerTexts.h"
#include "player/SlideLayout.h"
#include "player/SlideOrder.h"
#include "runtime/MsgBox.h"
#include "runtime/ScratchMemory.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "systemsaver/SystemSaver.h"

#include <QAction>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include <utility>

namespace kavori {

namespace {

// How often the screen saver looks at the mouse.
constexpr int kMouseCheckMs = 100;
// How long a passing note ("Resumed...", the slide count) stays on the file-name line.
constexpr int kNoteMs = 2000;

QTimer* makeTimer(QObject* owner, const char* name)
{
    auto* timer = new QTimer(owner);
    timer->setObjectName(QString::fromLatin1(name));
    return timer;
}

} // namespace

FullViewFrm::FullViewFrm(QWidget* parent) : QDialog(parent, Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("FullViewFrm"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    m_gif = new QLabel(this);
    m_gif->setObjectName(QStringLiteral("Gif89a1"));
    m_gif->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_gif->hide();

    m_descriptions = std::make_unique<DescriptionLabels>(this);
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("lblFileName"));
    m_info->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_info->setAlignment(Qt::AlignCenter);
    m_info->setStyleSheet(QStringLiteral("color: white; background: black; padding: 2px;"));
    m_info->hide();

    m_picMovie = new QWidget(this);
    m_picMovie->setObjectName(QStringLiteral("picMovie"));
    m_picMovie->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_picMovie->hide();
    m_media = std::make_unique<ShowMedia>(this, m_picMovie);
    // A failure message needs a pointer to answer it.
    connect(m_media.get(), &ShowMedia::cursorNeeded, this, [this] { setCursor(Qt::ArrowCursor); });

    m_slideTimer = makeTimer(this, "SlideTimer");
    m_slideTimer->setSingleShot(true);
    connect(m_slideTimer, &QTimer::timeout, this, &FullViewFrm::SlideTimer_Timer);
    m_timerDesc = makeTimer(this, "TimerDesc");
    m_timerDesc->setInterval(kDescriptionTickMs);
    connect(m_timerDesc, &QTimer::timeout, this, &FullViewFrm::TimerDesc_Timer);
    m_timerMouse = makeTimer(this, "TimerMouse");
    m_timerMouse->setInterval(kMouseCheckMs);
    connect(m_timerMouse, &QTimer::timeout, this, &FullViewFrm::TimerMouse_Timer);

    if (const QScreen* screen = QGuiApplication::primaryScreen())
        setGeometry(screen->geometry());
}

FullViewFrm::~FullViewFrm()
{
    if (m_playing)
        m_media->stopAll();
    if (m_saverHeld)
        CurrentSystemSaver().RestoreSaver(m_savedSaver);
}

void FullViewFrm::setImage(const QImage& image)
{
    m_image = image;
    update();
}

bool FullViewFrm::setAnimation(const QString& path)
{
    auto* movie = new QMovie(path, QByteArray(), this);
    if (!movie->isValid() || movie->frameCount() < 2 || !movie->jumpToFrame(0) ||
        movie->currentImage().isNull()) {
        delete movie;
        return false;
    }
    delete m_movie;
    m_movie = movie;
    m_gif->setMovie(m_movie);
    m_image = m_movie->currentImage();
    placeAnimation();
    m_gif->show();
    m_movie->start();
    return true;
}

bool FullViewFrm::isAnimating() const
{
    return m_movie && m_movie->state() == QMovie::Running;
}

void FullViewFrm::placeAnimation()
{
    if (!m_movie || m_playing)
        return;
    const Settings& s = CurrentSettings();
    const QRect target = FitImageRect(m_image.size(), size(), s.StretchImages, s.EnlargeImages);
    m_movie->setScaledSize(target.size());
    m_gif->setGeometry(target);
}

QSize FullViewFrm::screenPixels() const
{
    return size() * devicePixelRatioF();
}

void FullViewFrm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_playing) {
        // The screen pictures are in device pixels; the clip keeps the drawing to what changed.
        const QImage& shown = m_canvas ? m_canvas->destination() : m_screen;
        if (shown.isNull())
            painter.fillRect(rect(), Qt::black);
        else if (shown.size() == size())
            painter.drawImage(QPoint(0, 0), shown);
        else
            painter.drawImage(QRectF(rect()), shown);
        return;
    }
    painter.fillRect(rect(), Qt::black);
    if (m_image.isNull() || m_movie)
        return;
    const Settings& s = CurrentSettings();
    const QRect target = FitImageRect(m_image.size(), size(), s.StretchImages, s.EnlargeImages);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, m_image);
}

void FullViewFrm::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    placeAnimation();
    const int height = m_info->sizeHint().height();
    m_info->setGeometry(0, this->height() - height, width(), height);
    if (!m_infoText.isEmpty())
        setInfoLine(m_infoText);
    if (m_playing && !m_loading) {
        // The next slides are read for the new size; the one shown keeps its pixels.
        m_decoder.setScreen(screenPixels());
        QImage screen = ScratchImage(screenPixels(), QImage::Format_RGB32);
        screen.fill(Qt::black);
        if (!m_screen.isNull()) {
            QPainter painter(&screen);
            painter.drawImage(QPoint(0, 0), m_screen);
        }
        m_screen = screen;
        m_compose = QImage();
    }
}

bool FullViewFrm::ShowImageModal(const QString& path, bool animate, QWidget* parent)
{
    FullViewFrm view(parent);
    if (!(animate && view.setAnimation(path))) {
        // Decoded at screen size when it is to be fitted to the screen anyway.
        const QImage image =
            LoadPicture(path, CurrentSettings().StretchImages ? view.size() : QSize());
        if (image.isNull())
            return false;
        view.setImage(image);
    }
    view.setWindowState(Qt::WindowFullScreen);
    view.exec();
    return true;
}

void FullViewFrm::PlayShow(const PlayerStart& start)
{
    m_start = start;
    m_playing = true;
    m_ended = false;
    m_paused = false;
    m_index = IndexBefore(start.firstSlide);
    m_nextRandom = -1;
    m_firstTarget = start.firstSlide > 0 ? start.firstSlide : -1;
    m_decoder.setScreen(screenPixels());
    m_screen = ScratchImage(screenPixels(), QImage::Format_RGB32);
    m_screen.fill(Qt::black);
    Transitions().TransitionStop = false;
    Transitions().TransitionSkip = false;
    buildToolbar();
    if (start.screenSaver) {
        m_mouseStart = QCursor::pos();
        m_timerMouse->start();
    } else if (CurrentSettings().DisableScreenSaver && !m_saverHeld &&
               CurrentSystemSaver().SaverActive()) {
        m_savedSaver = CurrentSystemSaver().CurrentSaverValue();
        CurrentSystemSaver().DisableSaver();
        m_saverHeld = true;
    }
    readAhead();
    m_media->startShowSound();
    m_slideTimer->start(0);
}

int FullViewFrm::PlaySlideShowModal(const PlayerStart& start, QWidget* parent)
{
    FullViewFrm player(parent);
    QWindow* host = start.hostWindow ? QWindow::fromWinId(WId(start.hostWindow)) : nullptr;
    if (host) {
        // Inside the saver's own window, filling it; the saver ends us when it is done.
        player.setWindowFlags(Qt::FramelessWindowHint);
        player.winId();
        player.windowHandle()->setParent(host);
        const QSize size = host->size().isEmpty() ? player.screen()->size() : host->size();
        player.setGeometry(QRect(QPoint(0, 0), size));
    } else {
        player.setWindowState(Qt::WindowFullScreen);
    }
    player.PlayShow(start);
    player.exec();
    return 0;
}

void FullViewFrm::SlideTimer_Timer()
{
    // A show asked to start at a slide starts there, in random order too.
    showSlide(std::exchange(m_firstTarget, -1));
}

void FullViewFrm::showSlide(int target)
{
    if (!m_playing || m_ended)
        return;
    if (m_loading) {
        Transitions().TransitionSkip = true;
        return;
    }
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    const int count = int(show.slides.size());
    if (count == 0) {
        endShow();
        return;
    }
    m_slideTimer->stop();
    m_timerDesc->stop();
    m_loading = true;
    if (s.ShowFilenames)
        setInfoLine(LoadingNextSlideText());

    bool restarted = false; // the show came round to its start
    if (target >= 0) {
        m_index = std::min(target, count - 1);
    } else if (s.RandomSlides && m_nextRandom >= 0 && m_nextRandom < count) {
        m_index = m_nextRandom; // drawn when the slide before came up, and read since
    } else {
        const NextSlide next =
            ChooseNextSlide(m_index, count, s.RandomSlides, s.LoopSlideShow, m_start.screenSaver);
        if (next.ended) {
            m_loading = false;
            endShow();
            return;
        }
        restarted = !s.RandomSlides && next.index == 0 && m_index >= 0;
        m_index = next.index;
    }
    m_nextRandom = -1;
    Slide slide = show.slides.at(m_index);
    slide.SlideFile = SlidePicturePath(slide.SlideFile, show.path);

    // Where the show starts again next time, when the user asked for that.
    if (s.ResumeLastDisplayed && !m_start.screenSaver) {
        CurrentSettings().ImageLastDisplayed = qint16(m_index);
        WriteSettingsKeys({QStringLiteral("ImageLastDisplayed")});
    }
    stopAnimation();
    m_descriptions->hide();
    m_media->StopMovie();
    if (!m_soundOff)
        m_media->slideSound(slide, restarted);

    const bool movie = IsMovieFile(slide.SlideFile);
    QImage picture;
    if (!movie) {
        picture = m_decoder.take(slide);
        if (picture.isNull()) {
            slideFailed(slide.SlideFile);
            return;
        }
    }
    readAhead();

    if (SlideBack(slide.SlideBackMode) == SlideBack::Texture && !slide.SlideTexture.isEmpty() &&
        slide.SlideTexture != m_texturePath) {
        m_texturePath = slide.SlideTexture;
        m_texture = LoadPicture(m_texturePath);
    }
    if (m_compose.size() != m_screen.size()) {
        m_compose = ScratchImage(m_screen.size(), QImage::Format_RGB32);
    }
    const QRect rect = SlidePictureRect(picture.size(), m_compose.size(), slide);
    ComposeSlide(m_compose, picture, rect, slide,
                 slide.SlideTexture == m_texturePath ? m_texture : QImage());

    const bool random = s.RandomTransitions;
    const qint16 number = random ? RandomTransitionNumber() : slide.SlideTransition;
    const bool useEngine = s.EnableTransitions && !(slide.SlideTransition == 0 && !random);
    presentSlide(number, useEngine && !movie);
    if (Transitions().TransitionStop || m_ended)
        return;
    if (movie) {
        MoviePlacement placement;
        placement.screen = size();
        placement.SlideLocation = slide.SlideLocation;
        placement.SlidePosX = slide.SlidePosX;
        placement.SlidePosY = slide.SlidePosY;
        placement.SlideEnlarge = slide.SlideEnlarge;
        placement.SlideShrink = slide.SlideShrink;
        m_media->PlayMovie(slide.SlideFile, placement); // a failure has said so; the show goes on
        if (m_ended)
            return;
    } else if (s.AnimateGIF89 && IsAnimatedPicture(slide.SlideFile))
        startAnimation(slide.SlideFile, QRectF(QRectF(rect).topLeft() / devicePixelRatioF(),
                                               QRectF(rect).size() / devicePixelRatioF())
                                            .toRect());
    finishSlide();
}

void FullViewFrm::slideFailed(const QString& file)
{
    m_loading = false;
    ++m_failuresInRow;
    if (!CurrentSettings().SlideIgnoreError)
        MsgBox(UnableToViewSlideText(file), vbExclamation);
    if (m_ended)
        return;
    // When no slide of the show can be shown, going round again would only spin.
    if (m_failuresInRow >= CurrentShow().slides.size()) {
        endShow();
        return;
    }
    m_slideTimer->start(0);
}

void FullViewFrm::presentSlide(qint16 transition, bool useEngine)
{
    TransitionFlags& flags = Transitions();
    flags.TransitionStop = false;
    Q_EMIT slideReady();
    if (!useEngine) {
        // The plain path: the new picture replaces the old one at once.
        std::swap(m_screen, m_compose);
        repaint();
        return;
    }
    if (CurrentSettings().ClearTransition) {
        m_screen.fill(Qt::black);
        repaint();
    }
    // The canvas takes both pictures over for the effect and hands them back after, so no
    // screen-sized buffer is copied or made anew from slide to slide.
    PaintingCanvas canvas(std::move(m_compose), std::move(m_screen));
    m_canvas = &canvas;
    const qreal ratio = devicePixelRatioF();
    ClockPacer pacer([this, &canvas, ratio] {
        const QRegion changed = canvas.takeChanged();
        if (changed.isEmpty())
            return;
        if (ratio == 1.0) {
            repaint(changed);
        } else {
            const QRect box = changed.boundingRect();
            repaint(
                QRectF(QPointF(box.topLeft()) / ratio, QSizeF(box.size()) / ratio).toAlignedRect());
        }
    });
    ShowTransition(transition, canvas, pacer);
    pacer.finish();
    m_canvas = nullptr;
    m_screen = canvas.takeDestination();
    m_compose = canvas.takeSource();
}

void FullViewFrm::startAnimation(const QString& file, const QRect& rect)
{
    auto* movie = new QMovie(file, QByteArray(), this);
    if (!movie->isValid() || movie->frameCount() < 2) {
        delete movie;
        return;
    }
    m_movie = movie;
    m_movie->setScaledSize(rect.size());
    m_gif->setMovie(m_movie);
    m_gif->setGeometry(rect);
    m_gif->show();
    m_gif->lower();
    m_movie->start();
}

void FullViewFrm::stopAnimation()
{
    if (!m_movie)
        return;
    m_gif->hide();
    m_gif->setMovie(nullptr);
    delete m_movie;
    m_movie = nullptr;
}

void FullViewFrm::finishSlide()
{
    const Settings& s = CurrentSettings();
    const Slide& slide = CurrentShow().slides.at(m_index);
    m_failuresInRow = 0;
    refreshInfoLine();
    if (s.ShowDescription && !slide.SlideDescription.isEmpty()) {
        const DescriptionLook look = slide.SlideDescProps.isEmpty()
                                         ? DefaultDescriptionLook()
                                         : ParseDescProps(slide.SlideDescProps);
        m_descriptions->show(slide.SlideDescription, look);
        if (m_descriptions->moving())
            m_timerDesc->start();
    }
    m_loading = false;
    armSlideTimer();
}

int FullViewFrm::slideInterval() const
{
    const SlideShow& show = CurrentShow();
    if (show.UseSlideIntervals && m_index >= 0 && m_index < show.slides.size())
        return show.slides.at(m_index).SlideDelay;
    return CurrentSettings().SlideInterval;
}

void FullViewFrm::armSlideTimer()
{
    const int seconds = slideInterval();
    if (m_paused || m_ended || seconds <= 0)
        return; // a slide without an interval waits for the user
    m_slideTimer->start(seconds * 1000);
}

void FullViewFrm::readAhead()
{
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    const int count = int(show.slides.size());
    if (count == 0)
        return;
    // In order the next two slides are read; at random the next pick is drawn now (each tick
    // still draws afresh, only earlier) so that it can be read too.
    QVector<int> next;
    if (s.RandomSlides) {
        m_nextRandom = ChooseNextSlide(m_index, count, true, true, true).index;
        next << m_nextRandom;
    } else {
        for (int step = 1; step <= 2 && step < count + 1; ++step) {
            int index = m_index + step;
            if (index >= count) {
                if (!s.LoopSlideShow && !m_start.screenSaver)
                    break;
                index -= count;
            }
            next << index;
        }
    }
    QVector<Slide> ahead;
    for (int index : std::as_const(next)) {
        Slide slide = show.slides.at(index);
        slide.SlideFile = SlidePicturePath(slide.SlideFile, show.path);
        if (!IsMovieFile(slide.SlideFile))
            ahead.append(slide);
    }
    m_decoder.prefetch(ahead);
}

void FullViewFrm::TimerDesc_Timer()
{
    if (!m_descriptions->tick() && !m_descriptions->moving())
        m_timerDesc->stop();
}

QString FullViewFrm::infoLine() const
{
    return m_info->isVisibleTo(this) ? m_info->text() : QString();
}

void FullViewFrm::setInfoLine(const QString& text)
{
    m_infoText = text;
    if (text.isEmpty()) {
        m_info->hide();
        return;
    }
    m_info->setText(FitInfoLine(text, m_info->fontMetrics(), std::max(0, width() - 8)));
    m_info->show();
    m_info->raise();
}

void FullViewFrm::refreshInfoLine()
{
    const SlideShow& show = CurrentShow();
    if (m_index < 0 || m_index >= show.slides.size()) {
        setInfoLine(QString());
        return;
    }
    const Settings& s = CurrentSettings();
    const Slide& slide = show.slides.at(m_index);
    if (m_paused) {
        setInfoLine(PauseHint(true));
        return;
    }
    setInfoLine(
        SlideInfoLine(slide.SlideFile, slide.SlideDescription, s.ShowFilenames, s.ShowDescription));
}

void FullViewFrm::runAction(PlayerAction action)
{
    if (!m_playing || m_ended)
        return;
    if (action == PlayerAction::Close) {
        endShow();
        return;
    }
    if (m_loading) {
        // While a slide is being prepared only the transition is hurried.
        if (IsNavigation(action))
            Transitions().TransitionSkip = true;
        return;
    }
    const int count = int(CurrentShow().slides.size());
    switch (action) {
    case PlayerAction::Next:
        showSlide(-1);
        break;
    case PlayerAction::Previous:
        showSlide(PreviousSlideIndex(m_index, count));
        break;
    case PlayerAction::First:
        showSlide(0);
        break;
    case PlayerAction::Last:
        showSlide(count - 1);
        break;
    case PlayerAction::PageBack:
        showSlide(SlideIndexMovedBy(m_index, -kSlidePageStep, count));
        break;
    case PlayerAction::PageForward:
        showSlide(SlideIndexMovedBy(m_index, kSlidePageStep, count));
        break;
    case PlayerAction::Remove:
        removeSlide();
        break;
    case PlayerAction::Pause:
        togglePause();
        break;
    case PlayerAction::GoTo:
        goToSlide();
        break;
    case PlayerAction::SlideNumber:
        setInfoLine(SlidePositionText(m_index, count));
        QTimer::singleShot(kNoteMs, this, &FullViewFrm::refreshInfoLine);
        break;
    // F and D switch the show's own options, as the playback options would.
    case PlayerAction::ToggleFileNames:
        CurrentSettings().ShowFilenames = !CurrentSettings().ShowFilenames;
        refreshInfoLine();
        break;
    case PlayerAction::ToggleDescriptions: {
        Settings& s = CurrentSettings();
        s.ShowDescription = !s.ShowDescription;
        m_timerDesc->stop();
        m_descriptions->hide();
        refreshInfoLine();
        const Slide& slide = CurrentShow().slides.at(m_index);
        if (s.ShowDescription && !slide.SlideDescription.isEmpty()) {
            m_descriptions->show(slide.SlideDescription,
                                 slide.SlideDescProps.isEmpty()
                                     ? DefaultDescriptionLook()
                                     : ParseDescProps(slide.SlideDescProps));
            if (m_descriptions->moving())
                m_timerDesc->start();
        }
        break;
    }
    // S silences the show's sound and brings it back.
    case PlayerAction::ToggleSound:
        m_soundOff = !m_soundOff;
        if (m_soundOff) {
            m_media->StopPlayingSound();
            m_media->StopPlayingCD();
        } else {
            m_media->startShowSound();
        }
        break;
    case PlayerAction::Close:
    case PlayerAction::None:
        break;
    }
}

void FullViewFrm::togglePause()
{
    if (!m_start.pauseAllowed) {
        MsgBox(QStringLiteral("Pause key has been disabled."), vbInformation);
        return;
    }
    if (!m_paused && slideInterval() <= 0) {
        MsgBox(QStringLiteral("This slide does not have a time interval, next slide will need to "
                              "be selected manually..."),
               vbInformation);
        return;
    }
    m_paused = !m_paused;
    if (m_pauseButton)
        m_pauseButton->setToolTip(PauseHint(m_paused));
    m_media->pauseSound(m_paused);
    if (m_paused) {
        m_slideTimer->stop();
        refreshInfoLine();
        return;
    }
    setInfoLine(QStringLiteral("Resumed..."));
    QTimer::singleShot(kNoteMs, this, [this] {
        if (!m_paused && !m_loading)
            refreshInfoLine();
    });
    armSlideTimer();
}

void FullViewFrm::removeSlide()
{
    SlideShow& show = CurrentShow();
    const int count = int(show.slides.size());
    if (count <= 1) {
        MsgBox(LastSlideRefusal(), vbExclamation);
        return;
    }
    const QString file = show.slides.at(m_index).SlideFile;
    if (MsgBox(RemoveSlideQuestion(file), vbYesNo + vbQuestion) != vbYes)
        return;
    show.slides.remove(m_index);
    show.changed = true;
    // The slide that followed comes up in its place.
    showSlide(m_index < count - 1 ? m_index : 0);
    setInfoLine(SlideCountText(count - 1));
    QTimer::singleShot(kNoteMs, this, &FullViewFrm::refreshInfoLine);
}

void FullViewFrm::goToSlide()
{
    const int count = int(CurrentShow().slides.size());
    const QString answer =
        InputBox(SlideCountText(count) + NewLine2() + QStringLiteral("Go to slide number:"));
    bool ok = false;
    const int number = answer.trimmed().toInt(&ok);
    if (ok && number >= 1 && number <= count)
        showSlide(number - 1);
}

void FullViewFrm::endShow()
{
    if (m_ended)
        return;
    m_ended = true;
    Transitions().TransitionStop = true;
    m_slideTimer->stop();
    m_timerDesc->stop();
    m_timerMouse->stop();
    stopAnimation();
    m_descriptions->hide();
    m_media->stopAll();
    if (std::exchange(m_saverHeld, false))
        CurrentSystemSaver().RestoreSaver(m_savedSaver);
    done(0);
}

void FullViewFrm::reject()
{
    if (m_playing)
        endShow();
    else
        QDialog::reject();
}

void FullViewFrm::closeEvent(QCloseEvent* event)
{
    if (m_playing && !m_ended) {
        endShow();
    }
    QDialog::closeEvent(event);
}

void FullViewFrm::TimerMouse_Timer()
{
    const QPoint moved = QCursor::pos() - m_mouseStart;
    if (moved.manhattanLength() > MouseMoveThreshold(CurrentSettings().MouseSensitivity))
        endShow();
}

void FullViewFrm::keyPressEvent(QKeyEvent* event)
{
    if (!m_playing) {
        accept();
        return;
    }
    if (m_start.screenSaver) {
        endShow();
        return;
    }
    runAction(ActionForKey(event->key(), event->modifiers()));
}

void FullViewFrm::mousePressEvent(QMouseEvent* event)
{
    if (!m_playing)
        return;
    if (m_start.screenSaver) {
        endShow();
        return;
    }
    if (m_loading) {
        Transitions().TransitionSkip = true;
        return;
    }
    const Settings& s = CurrentSettings();
    runAction(ActionForButton(event->button(), s.LMousePrev, s.RMouseNext));
}

void FullViewFrm::mouseReleaseEvent(QMouseEvent*)
{
    if (!m_playing)
        accept();
}

void FullViewFrm::buildToolbar()
{
    if (!CurrentSettings().ShowToolbar || m_toolbar)
        return;
    m_toolbar = new QToolBar(this);
    m_toolbar->setObjectName(QStringLiteral("NavigationToolbar"));
    QStyle* style = this->style();
    auto add = [&](QStyle::StandardPixmap icon, const QString& tip, PlayerAction action) {
        QAction* button = m_toolbar->addAction(style->standardIcon(icon), tip);
        button->setToolTip(tip);
        connect(button, &QAction::triggered, this, [this, action] { runAction(action); });
        return button;
    };
    add(QStyle::SP_MediaSkipBackward, QStringLiteral("First slide.  (Home Key)"),
        PlayerAction::First);
    add(QStyle::SP_MediaSeekBackward, QStringLiteral("Previous slide.  (Left Arrow Key)"),
        PlayerAction::Previous);
    m_pauseButton = add(QStyle::SP_MediaPause, PauseHint(false), PlayerAction::Pause);
    m_pauseButton->setObjectName(QStringLiteral("btnPause"));
    add(QStyle::SP_MediaSeekForward, QStringLiteral("Next slide.  (Right Arrow Key)"),
        PlayerAction::Next);
    add(QStyle::SP_MediaSkipForward, QStringLiteral("Last slide.  (End Key)"), PlayerAction::Last);
    add(QStyle::SP_MediaStop, QStringLiteral("End slide show.  (Esc Key)"), PlayerAction::Close);
    m_toolbar->adjustSize();
    m_toolbar->move(width() - m_toolbar->width() - 8, 8);
    m_toolbar->show();
    setCursor(Qt::ArrowCursor); // the toolbar needs a pointer to be used
}

} // namespace kavori
