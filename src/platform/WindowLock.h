#pragma once

#include <QString>

#include <memory>

class QLockFile;

namespace kavori {

// Stands for finding a top-level window by its title, for the windows that must exist only
// once on the machine ("Screen Saver Main Form", the screen saver settings dialog): the window
// holds a named lock while it lives, and any process can ask whether that lock is held.
class WindowLock {
public:
    explicit WindowLock(const QString& title);
    ~WindowLock();
    WindowLock(const WindowLock&) = delete;
    WindowLock& operator=(const WindowLock&) = delete;

    // False when another window of the same title holds the lock already.
    bool isHeld() const;

    // Whether a window of this title exists anywhere (in this or another process).
    static bool Exists(const QString& title);

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_held = false;
};

} // namespace kavori
