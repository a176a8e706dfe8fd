#include "frmMediaPlayer.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/StartupState.h"
#include "playback/media/MciCommand.h"
#include "playback/media/MediaKinds.h"
#include "playback/media/MediaWindows.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace kavori {

namespace {

const QString kAlias = QStringLiteral("Player");

quint32 send(const QString& command)
{
    return mciSendString(command + u' ' + kAlias);
}

} // namespace

QString frmMediaPlayer::MediaFilter()
{
    return QStringLiteral(
        "Sounds and Movies (*.wav *.mp3 *.au *.snd *.aif *.aiff *.aifc *.mid *.rmi *.avi *.mov "
        "*.qt *.mpeg *.mpe *.mpg *.mpa *.enc *.m1v *.mp2);;Sounds (*.wav *.mp3 *.au *.snd *.aif "
        "*.aiff *.aifc *.mid *.rmi);;Movies (*.avi *.mov *.qt *.mpeg *.mpe *.mpg *.mpa *.enc *.m1v "
        "*.mp2);;All Files (*)");
}

frmMediaPlayer::frmMediaPlayer(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmMediaPlayer"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Media Player]"));

    m_surface = new QWidget(this);
    m_surface->setObjectName(QStringLiteral("picPlayer"));
    m_surface->setMinimumSize(320, 180);
    m_surface->setAutoFillBackground(true);
    QPalette dark = m_surface->palette();
    dark.setColor(QPalette::Window, Qt::black);
    m_surface->setPalette(dark);

    m_name = new QLabel(QStringLiteral("No file is open."), this);
    m_name->setObjectName(QStringLiteral("lblFile"));
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));

    auto* open =
        new QPushButton(QIcon::fromTheme(QStringLiteral("document-open"),
                                         style()->standardIcon(QStyle::SP_DialogOpenButton)),
                        QStringLiteral("&Open..."), this);
    open->setObjectName(QStringLiteral("CmdOpen"));
    connect(open, &QPushButton::clicked, this, &frmMediaPlayer::chooseFile);
    m_play = new QPushButton(QStringLiteral("&Play"), this);
    m_play->setObjectName(QStringLiteral("CmdPlay"));
    connect(m_play, &QPushButton::clicked, this, &frmMediaPlayer::playPause);
    m_stop = new QPushButton(QIcon::fromTheme(QStringLiteral("media-playback-stop"),
                                              style()->standardIcon(QStyle::SP_MediaStop)),
                             QStringLiteral("&Stop"), this);
    m_stop->setObjectName(QStringLiteral("CmdStop"));
    connect(m_stop, &QPushButton::clicked, this, &frmMediaPlayer::stop);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("CmdClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(open);
    buttons->addWidget(m_play);
    buttons->addWidget(m_stop);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_surface, 1);
    layout->addWidget(m_name);
    layout->addWidget(m_status);
    layout->addLayout(buttons);
    resize(480, 400);

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("TimerStatus"));
    m_timer->setInterval(250);
    connect(m_timer, &QTimer::timeout, this, &frmMediaPlayer::updateStatus);
    updateStatus();
}

frmMediaPlayer::~frmMediaPlayer()
{
    closeFile();
}

void frmMediaPlayer::chooseFile()
{
    const QString folder = m_file.isEmpty() ? QDir::homePath() : FolderOf(m_file);
    const QString file =
        CurrentPrompts().openFile(QStringLiteral("Media Player"), folder, MediaFilter());
    if (!file.isEmpty())
        playFile(file);
}

bool frmMediaPlayer::playFile(const QString& file)
{
    closeFile();
    const SoundKind sound = SoundKindOf(file);
    const bool movie = IsMovieFile(file);
    QString refusal;
    if (!QFileInfo(file).isFile())
        refusal = QStringLiteral("The file could not be found:") + NewLine2() + file;
    else if (sound == SoundKind::None && !movie)
        refusal = QStringLiteral("The Media Player plays sounds and movies, it cannot play:") +
                  NewLine2() + file;
    else if (sound == SoundKind::Midi && !CurrentStartup().MidiDevices)
        refusal = QStringLiteral(
            "This computer does not have a MIDI capable sound card, unable to play file.");
    else if (sound != SoundKind::None && !CurrentStartup().WaveDevices)
        refusal = QStringLiteral("This computer has no sound output, unable to play the file:") +
                  NewLine2() + file;
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation);
        updateStatus();
        return false;
    }

    const QString type = sound == SoundKind::Midi ? QStringLiteral("sequencer")
                         : movie                  ? MovieDeviceType(file)
                                                  : QStringLiteral("MPEGVideo");
    quint32 rc = mciSendString(QStringLiteral("open \"") + file + QStringLiteral("\" type ") +
                               type + QStringLiteral(" alias ") + kAlias);
    m_open = rc == 0;
    // Sounds and movies alike draw into the window; a sound leaves it dark.
    if (rc == 0 && type != QLatin1String("sequencer"))
        rc = mciSendString(QStringLiteral("window ") + kAlias + QStringLiteral(" handle ") +
                           QString::number(MediaWindowHandle(m_surface)));
    if (rc == 0 && movie)
        rc = mciSendString(QStringLiteral("put ") + kAlias + QStringLiteral(" destination"));
    if (rc == 0)
        rc = mciSendString(QStringLiteral("play ") + kAlias + QStringLiteral(" from 0"));
    if (rc != 0) {
        closeFile();
        MsgBox(QStringLiteral("Unable to play the following file:") + NewLine2() + file +
                   NewLine2() + mciGetErrorString(rc),
               vbExclamation);
        updateStatus();
        return false;
    }
    m_file = file;
    m_name->setText(QDir::toNativeSeparators(file));
    m_timer->start();
    updateStatus();
    return true;
}

void frmMediaPlayer::playPause()
{
    if (!m_open) {
        chooseFile();
        return;
    }
    QString mode;
    mciSendString(QStringLiteral("status ") + kAlias + QStringLiteral(" mode"), &mode);
    if (mode == QLatin1String("playing"))
        send(QStringLiteral("pause"));
    else if (mode == QLatin1String("paused"))
        send(QStringLiteral("play"));
    else
        mciSendString(QStringLiteral("play ") + kAlias + QStringLiteral(" from 0"));
    updateStatus();
}

void frmMediaPlayer::stop()
{
    if (m_open)
        send(QStringLiteral("stop"));
    updateStatus();
}

void frmMediaPlayer::updateStatus()
{
    QString mode;
    if (m_open)
        mciSendString(QStringLiteral("status ") + kAlias + QStringLiteral(" mode"), &mode);
    const bool playing = mode == QLatin1String("playing");
    m_play->setText(playing ? QStringLiteral("&Pause") : QStringLiteral("&Play"));
    m_play->setIcon(QIcon::fromTheme(
        playing ? QStringLiteral("media-playback-pause") : QStringLiteral("media-playback-start"),
        style()->standardIcon(playing ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay)));
    m_stop->setEnabled(m_open && mode != QLatin1String("stopped"));
    if (!m_open)
        m_status->setText(QStringLiteral("Choose Open to pick a sound or movie file."));
    else if (playing)
        m_status->setText(QStringLiteral("Playing"));
    else if (mode == QLatin1String("paused"))
        m_status->setText(QStringLiteral("Paused"));
    else
        m_status->setText(QStringLiteral("Stopped"));
}

void frmMediaPlayer::closeFile()
{
    if (!m_open)
        return;
    m_timer->stop();
    mciSendString(QStringLiteral("stop ") + kAlias);
    mciSendString(QStringLiteral("close ") + kAlias);
    m_open = false;
    m_surface->update();
}

void frmMediaPlayer::closeEvent(QCloseEvent* event)
{
    closeFile();
    QDialog::closeEvent(event);
}

} // namespace kavori
