#pragma once

#include "player/PlayerKeys.h"
#include "player/SlideDecoder.h"

#include <QDialog>
#include <QImage>
#include <QPoint>

#include <memory>

class QLabel;
class QMovie;
class QTimer;
class QToolBar;
class QAction;

namespace kavori {

class DescriptionLabels;
class PaintingCanvas;
class ShowMedia;

// How a show is played.
struct PlayerStart {
    bool screenSaver = false; // ends on a key or mouse movement, never by itself
    int firstSlide = 0;
    bool pauseAllowed = true;
    quintptr hostWindow = 0; // a window of another program to play inside (the system's saver)
};

// The full-screen window. It plays the slide show in memory (each slide with its transition,
// placement, background, description and file-name line, stepped by the slide clock, keys and
// mouse), and in its single-image use shows one picture on black, fitted as the stretch and
// enlarge settings say (an animated GIF plays), closing on a key or a click.
class FullViewFrm : public QDialog {
    Q_OBJECT
public:
    explicit FullViewFrm(QWidget* parent = nullptr);
    ~FullViewFrm() override;

    // Single picture.
    void setImage(const QImage& image);
    bool setAnimation(const QString& path);
    const QImage& image() const { return m_image; }
    bool isAnimating() const;
    // Shows the image at path full screen until the user closes it. False when it could not be
    // loaded (nothing is shown then).
    static bool ShowImageModal(const QString& path, bool animate, QWidget* parent = nullptr);

    // Slide show. Starts playing the show in memory; the first slide comes up once events run.
    void PlayShow(const PlayerStart& start = {});
    // Plays the show in memory full screen until it ends; the exit code of a show run.
    static int PlaySlideShowModal(const PlayerStart& start = {}, QWidget* parent = nullptr);

    // One tick of the slide clock: the next slide (or the one asked for) comes up.
    void SlideTimer_Timer();
    // One step of the description's movement.
    void TimerDesc_Timer();
    // The screen saver's look at the mouse: moved far enough, the show ends.
    void TimerMouse_Timer();
    // What a key or click does.
    void runAction(PlayerAction action);
    // Ends the show: stops transitions, sounds and movies, and closes.
    void endShow();
    // Escape and the window's close end a show the same way.
    void reject() override;

    int currentSlide() const { return m_index; }
    bool isLoading() const { return m_loading; }
    bool isPaused() const { return m_paused; }
    bool isPlaying() const { return m_playing; }
    bool isInTransition() const { return m_canvas != nullptr; }
    // The file-name and description line as shown (empty when hidden).
    QString infoLine() const;
    // The picture on the screen, in device pixels.
    const QImage& screenImage() const { return m_screen; }
    DescriptionLabels& descriptions() { return *m_descriptions; }
    ShowMedia& media() { return *m_media; }
    SlideDecoder& decoder() { return m_decoder; }

Q_SIGNALS:
    // The next slide is ready and is about to go on the screen, by its transition or at once.
    void slideReady();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void placeAnimation();
    QSize screenPixels() const;
    void showSlide(int target);
    void slideFailed(const QString& file);
    void presentSlide(qint16 transition, bool useEngine);
    void startAnimation(const QString& file, const QRect& rect);
    void stopAnimation();
    void finishSlide();
    void armSlideTimer();
    int slideInterval() const;
    void readAhead();
    void setInfoLine(const QString& text);
    void refreshInfoLine();
    void togglePause();
    void removeSlide();
    void goToSlide();
    void buildToolbar();

    QImage m_image;
    QMovie* m_movie = nullptr;
    QLabel* m_gif = nullptr; // Gif89a1

    bool m_playing = false;
    PlayerStart m_start;
    // The system saver's setting taken away while the show plays, given back at its end.
    bool m_saverHeld = false;
    QString m_savedSaver;
    int m_index = -1;
    int m_nextRandom = -1;  // the random pick of the next tick, read ahead
    int m_firstTarget = -1; // the slide the show was asked to start at
    bool m_loading = false;
    bool m_paused = false;
    bool m_ended = false;
    int m_failuresInRow = 0;
    QImage m_screen;                    // picTranDest: what is on the screen
    QImage m_compose;                   // picTranSource: the next slide, reused from slide to slide
    PaintingCanvas* m_canvas = nullptr; // while a transition runs
    SlideDecoder m_decoder;
    QImage m_texture;
    QString m_texturePath;
    QString m_infoText; // the whole line, before it is cut to fit
    QLabel* m_info = nullptr;
    std::unique_ptr<DescriptionLabels> m_descriptions;
    QTimer* m_slideTimer = nullptr; // SlideTimer
    QTimer* m_timerDesc = nullptr;  // TimerDesc
    QTimer* m_timerMouse = nullptr; // TimerMouse
    QPoint m_mouseStart;
    QWidget* m_picMovie = nullptr; // picMovie
    std::unique_ptr<ShowMedia> m_media;
    bool m_soundOff = false; // the S key's choice
    QToolBar* m_toolbar = nullptr;
    QAction* m_pauseButton = nullptr;
};

} // namespace kavori
