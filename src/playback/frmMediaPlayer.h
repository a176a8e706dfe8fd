#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QTimer;

namespace kavori {

// A small player for one sound or movie file the user picks, through the program's multimedia
// command strings under the alias "Player" (so it never stops a slide's movie or sound): Open,
// Play/Pause, Stop, and the state it is in. Closing the window closes the file.
class frmMediaPlayer : public QDialog {
    Q_OBJECT
public:
    explicit frmMediaPlayer(QWidget* parent = nullptr);
    ~frmMediaPlayer() override;

    // Asks for a file and plays it.
    void chooseFile();
    // Opens and plays file; false (after its message) when it cannot be played.
    bool playFile(const QString& file);
    void playPause();
    void stop();
    // Reads the device's state into the window (the status timer's work, public for tests).
    void updateStatus();
    QString file() const { return m_file; }

    // The picker's filter: every sound and movie type the program plays.
    static QString MediaFilter();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void closeFile();

    QWidget* m_surface = nullptr;
    QLabel* m_name = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_play = nullptr;
    QPushButton* m_stop = nullptr;
    QTimer* m_timer = nullptr;
    QString m_file;
    bool m_open = false;
};

} // namespace kavori
