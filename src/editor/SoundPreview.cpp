#include "SoundPreview.h"

#include "platform/StartupState.h"
#include "playback/media/MciCommand.h"
#include "playback/media/ShowMedia.h"
#include "playback/media/WaveChannel.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QPushButton>
#include <QTimer>
#include <QWidget>

namespace kavori {

SoundPreview::SoundPreview(QWidget* owner, QPushButton* button)
    : QObject(owner), m_media(std::make_unique<ShowMedia>(owner, nullptr)), m_button(button),
      m_caption(button->text()), m_watch(new QTimer(this))
{
    m_watch->setInterval(ShowMedia::kLoopSoundMs);
    connect(m_watch, &QTimer::timeout, this, &SoundPreview::checkEnded);
}

SoundPreview::~SoundPreview()
{
    // The button may already be gone with the dialog: only the sound is stopped here.
    if (m_playing)
        m_media->StopPlayingSound();
}

void SoundPreview::toggle(const QString& file)
{
    if (m_playing) {
        stop();
        return;
    }
    if (SoundKindOf(file) == SoundKind::Midi && !CurrentStartup().MidiDevices) {
        MsgBox(QStringLiteral("This computer does not have a MIDI capable sound card, unable to "
                              "play file."),
               vbExclamation, AppTitle());
        return;
    }
    if (!m_media->PlayThisSoundFile(file))
        return;
    m_playing = true;
    m_button->setText(QStringLiteral("&Stop..."));
    m_watch->start();
}

void SoundPreview::stop()
{
    m_watch->stop();
    if (m_playing)
        m_media->StopPlayingSound();
    m_playing = false;
    if (m_button)
        m_button->setText(m_caption);
}

void SoundPreview::checkEnded()
{
    if (!m_playing)
        return;
    bool ended = false;
    switch (m_media->soundPlaying()) {
    case SoundKind::Wave:
        ended = !IsWavePlaying();
        break;
    case SoundKind::MciAudio:
    case SoundKind::Midi: {
        // A looping sound is started again by the media layer: it plays until stopped.
        if (CurrentSettings().SoundLoop)
            break;
        QString mode;
        const QString alias = m_media->soundPlaying() == SoundKind::Midi
                                  ? QStringLiteral("MIDIFile")
                                  : QStringLiteral("MPEGAudio");
        mciSendString(QStringLiteral("status ") + alias + QStringLiteral(" mode"), &mode);
        ended = mode.isEmpty() || mode == QLatin1String("stopped");
        break;
    }
    case SoundKind::None:
        ended = true;
        break;
    }
    if (ended)
        stop();
}

} // namespace kavori
