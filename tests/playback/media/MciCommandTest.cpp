#include "FakeMedia.h"

#include "playback/media/CdAudioDevice.h"
#include "playback/media/MciCommand.h"
#include "playback/media/MediaWindows.h"

#include "support/KavoriTest.h"

#include <QSet>

namespace kavori::test {

namespace {

class MciCommandTest : public KavoriTest {
protected:
    void TearDown() override
    {
        CloseAllMciDevices();
        SetCdDriveCandidates({});
        KavoriTest::TearDown();
    }

    static quint32 send(const QString& command, QString* reply = nullptr)
    {
        return mciSendString(command, reply);
    }
};

TEST_F(MciCommandTest, RunsTheMovieSequenceOnTheDeviceAndLogsEveryCommand)
{
    FakeMedia media;
    media.movieSize = QSize(352, 288);
    const QString file = writeFile(QStringLiteral("my movies/Clip One.avi"), "AVI");
    QWidget window;
    const qint64 handle = MediaWindowHandle(&window);
    EXPECT_EQ(MediaWindowHandle(&window), handle);

    const QStringList commands = {
        QStringLiteral("open \"") + file + QStringLiteral("\" type AVIVideo alias Movie"),
        QStringLiteral("set Movie time format frames"),
        QStringLiteral("window Movie handle ") + QString::number(handle),
        QStringLiteral("put Movie source"),
        QStringLiteral("where Movie source"),
        QStringLiteral("put Movie destination"),
        QStringLiteral("realize Movie normal"),
        QStringLiteral("play Movie from 0"),
    };
    QString reply;
    for (const QString& command : commands) {
        EXPECT_EQ(send(command, &reply), 0u) << command.toStdString();
        if (command.startsWith(QLatin1String("where"))) {
            EXPECT_EQ(reply, QStringLiteral("0 0 352 288"));
        }
    }
    EXPECT_EQ(MciCommandLog(), commands);

    const auto movie = media.last(MciDeviceType::AVIVideo);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->element, file);
    EXPECT_EQ(movie->window, &window);
    EXPECT_EQ(movie->from, 0);
    EXPECT_FALSE(movie->to);

    // Keywords and aliases are not case-sensitive; modes read as words.
    EXPECT_EQ(send(QStringLiteral("STATUS movie MODE"), &reply), 0u);
    EXPECT_EQ(reply, QStringLiteral("playing"));
    EXPECT_EQ(send(QStringLiteral("pause Movie")), 0u);
    send(QStringLiteral("status Movie mode"), &reply);
    EXPECT_EQ(reply, QStringLiteral("paused"));
    EXPECT_EQ(send(QStringLiteral("stop Movie")), 0u);
    send(QStringLiteral("status Movie mode"), &reply);
    EXPECT_EQ(reply, QStringLiteral("stopped"));

    EXPECT_EQ(send(QStringLiteral("close Movie")), 0u);
    EXPECT_TRUE(movie->closed);
    EXPECT_EQ(send(QStringLiteral("status Movie mode"), &reply),
              quint32(MCIERR_INVALID_DEVICE_NAME));
    EXPECT_TRUE(reply.isEmpty());
    EXPECT_EQ(LastMciResult(), quint32(MCIERR_INVALID_DEVICE_NAME));

    ClearMciCommandLog();
    EXPECT_TRUE(MciCommandLog().isEmpty());
}

TEST_F(MciCommandTest, AnswersWrongCommandsWithTheirErrors)
{
    FakeMedia media;
    const QString song = writeFile(QStringLiteral("song.mid"), MakeMidi());
    const QString open =
        QStringLiteral("open \"") + song + QStringLiteral("\" type sequencer alias MIDIFile");
    ASSERT_EQ(send(open), 0u);

    struct Case {
        const char* command;
        quint32 result;
    };
    const Case cases[] = {
        {"", MCIERR_MISSING_COMMAND_STRING},
        {"   ", MCIERR_MISSING_COMMAND_STRING},
        {"jump MIDIFile", MCIERR_UNRECOGNIZED_COMMAND},
        {"play Nothing", MCIERR_INVALID_DEVICE_NAME},
        {"play MIDIFile from", MCIERR_MISSING_PARAMETER},
        {"play MIDIFile from abc", MCIERR_BAD_INTEGER},
        {"play MIDIFile from -3", MCIERR_BAD_INTEGER},
        {"play MIDIFile from 6 to 5", MCIERR_OUTOFRANGE},
        {"play MIDIFile fast", MCIERR_UNRECOGNIZED_KEYWORD},
        {"set MIDIFile time format hours", MCIERR_BAD_TIME_FORMAT},
        {"set MIDIFile speed 2", MCIERR_UNRECOGNIZED_KEYWORD},
        {"status MIDIFile", MCIERR_MISSING_PARAMETER},
        {"status MIDIFile length", MCIERR_UNRECOGNIZED_KEYWORD},
        {"status MIDIFile current track", MCIERR_UNSUPPORTED_FUNCTION},
        {"window MIDIFile handle 1", MCIERR_UNSUPPORTED_FUNCTION},
        {"window MIDIFile handle 99999", MCIERR_NO_WINDOW},
        {"window MIDIFile handle x", MCIERR_BAD_INTEGER},
        {"where MIDIFile source", MCIERR_UNSUPPORTED_FUNCTION},
        {"stop MIDIFile now", MCIERR_UNRECOGNIZED_KEYWORD},
        {"open \"x.mid type sequencer alias M2", MCIERR_NO_CLOSING_QUOTE},
        {"open \"/no/such/file.mid\" type sequencer alias M2", MCIERR_FILE_NOT_FOUND},
        {"open \"/no/such/file.mid\" type waveaudio alias M2", MCIERR_INVALID_DEVICE_NAME},
        {"open \"/no/such/file.mid\" alias M2", MCIERR_DEVICE_TYPE_REQUIRED},
        {"open  type sequencer alias M2", MCIERR_MISSING_PARAMETER},
    };
    // The window test needs a window that exists.
    QWidget window;
    MediaWindowHandle(&window);
    for (const Case& c : cases) {
        QString command = QString::fromLatin1(c.command);
        if (command == QLatin1String("window MIDIFile handle 1"))
            command = QStringLiteral("window MIDIFile handle ") +
                      QString::number(MediaWindowHandle(&window));
        QString reply = QStringLiteral("old");
        EXPECT_EQ(send(command, &reply), c.result) << c.command;
        EXPECT_TRUE(reply.isEmpty()) << c.command;
    }
    // The same alias twice, case aside.
    EXPECT_EQ(
        send(QStringLiteral("open \"") + song + QStringLiteral("\" type sequencer alias midifile")),
        quint32(MCIERR_DUPLICATE_ALIAS));
    // Only the first open made a device: the failed ones left nothing behind.
    EXPECT_EQ(media.devices.size(), 1u);

    // A device that refuses to open leaves the alias free.
    media.openResult[MciDeviceType::MPEGVideo] = MCIERR_INVALID_FILE;
    const QString tune = writeFile(QStringLiteral("tune.mp3"), "ID3");
    const QString openTune =
        QStringLiteral("open \"") + tune + QStringLiteral("\" type MPEGVideo alias MPEGAudio");
    EXPECT_EQ(send(openTune), quint32(MCIERR_INVALID_FILE));
    media.openResult.clear();
    EXPECT_EQ(send(openTune), 0u);

    // Every code the program can meet has its own text, short enough for the error buffer.
    QSet<QString> texts;
    for (const Case& c : cases) {
        const QString text = mciGetErrorString(c.result);
        EXPECT_LT(text.size(), 128);
        texts.insert(text);
    }
    texts.insert(mciGetErrorString(MCIERR_DUPLICATE_ALIAS));
    texts.insert(mciGetErrorString(MCIERR_DEVICE_NOT_INSTALLED));
    texts.insert(mciGetErrorString(MCIERR_INVALID_FILE));
    texts.insert(mciGetErrorString(MCIERR_HARDWARE));
    EXPECT_EQ(texts.size(), 17);
    EXPECT_FALSE(mciGetErrorString(12345).isEmpty());
}

TEST_F(MciCommandTest, SystemDevicesRefuseWhatTheyCannotPlay)
{
    // No CD drive: the open names the missing device.
    SetCdDriveCandidates({root() + QStringLiteral("no-drive")});
    EXPECT_EQ(send(QStringLiteral("open  type cdaudio alias CDTrack")),
              quint32(MCIERR_DEVICE_NOT_INSTALLED));
    EXPECT_EQ(send(QStringLiteral("open D: type cdaudio alias CDTrack")),
              quint32(MCIERR_DEVICE_NOT_INSTALLED));
    EXPECT_EQ(send(QStringLiteral("play CDTrack from 1")), quint32(MCIERR_INVALID_DEVICE_NAME));

    // A drive there: the disc opens, takes tmsf, and reports the track asked for.
    const QString drive = writeFile(QStringLiteral("sr0"), QByteArray());
    SetCdDriveCandidates({drive});
    EXPECT_EQ(FindCdDrive(), drive);
    ASSERT_EQ(send(QStringLiteral("open D: type cdaudio alias CDTrack")), 0u);
    EXPECT_EQ(send(QStringLiteral("set CDTrack time format frames")),
              quint32(MCIERR_BAD_TIME_FORMAT));
    EXPECT_EQ(send(QStringLiteral("play CDTrack from 5 to 6")),
              quint32(MCIERR_UNSUPPORTED_FUNCTION));
    EXPECT_EQ(send(QStringLiteral("set CDTrack time format tmsf")), 0u);
    EXPECT_EQ(send(QStringLiteral("play CDTrack from 0")), quint32(MCIERR_OUTOFRANGE));
    EXPECT_EQ(send(QStringLiteral("stop CDTrack")), 0u);
    EXPECT_EQ(send(QStringLiteral("close CDTrack")), 0u);

    // A damaged MIDI file is not taken for music.
    const QString damaged = writeFile(QStringLiteral("broken.mid"), "this is not music");
    EXPECT_EQ(send(QStringLiteral("open \"") + damaged +
                   QStringLiteral("\" type sequencer alias MIDIFile")),
              quint32(MCIERR_INVALID_FILE));
    EXPECT_EQ(send(QStringLiteral("close MIDIFile")), quint32(MCIERR_INVALID_DEVICE_NAME));
}

} // namespace

} // namespace kavori::test
