#pragma once

#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QString>

#include <memory>

class QTimer;
class QWidget;

namespace kavori {

class ShowMedia;

// A play button of the sound dialogs: plays a sound through the show's media layer and becomes
// "&Stop..." while it plays; a second click, or the sound ending, gives it back its caption.
class SoundPreview : public QObject {
    Q_OBJECT
public:
    SoundPreview(QWidget* owner, QPushButton* button);
    ~SoundPreview() override;

    // Stops the sound playing, or plays file (the MIDI refusal when there is no MIDI output).
    void toggle(const QString& file);
    void stop();
    bool playing() const { return m_playing; }
    // Looks whether the sound has ended (the watch timer's work, public for tests).
    void checkEnded();

private:
    std::unique_ptr<ShowMedia> m_media;
    QPointer<QPushButton> m_button;
    QString m_caption;
    QTimer* m_watch;
    bool m_playing = false;
};

} // namespace kavori
