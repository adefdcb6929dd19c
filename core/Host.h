#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>

namespace vantrel {

class Screen;

// What the screens need from the desktop around them. The program's window system implements it; the
// scenario runner and the tests implement it without widgets.
class Host {
public:
    virtual ~Host() = default;

    // The platform, as start-up asks it.
    virtual bool anotherInstanceRunning() = 0;
    virtual QSize screenSize() = 0;

    // Shows a screen that stays open beside the others (the main window, the launcher, a launcher screen).
    virtual void show(Screen& screen) = 0;
    // Shows a screen as a modal dialog, calls its activated() once it shows, and returns when it has closed.
    virtual void runModal(Screen& screen) = 0;
    // Takes a closed screen off the desktop.
    virtual void remove(Screen& screen) = 0;

    virtual void setMainTitle(const QString& title) = 0;
    virtual QString mainTitle() const = 0;
    virtual void resetLauncher() = 0;
    virtual void hourglass(bool on) = 0;
    // Lets pending events run, so that what was just shown is painted.
    virtual void processEvents() = 0;
    // Keeps the program waiting, events running, until the whole seconds since `since` reach `seconds`.
    virtual void waitUntil(const QDateTime& since, int seconds) = 0;
    // Plays a sound file without waiting; `event` is the system's name of the sound.
    virtual void playSound(const QString& event, const QString& file) = 0;
    // Opens the help file on its contents (command 1) or its index (command 2).
    virtual void showHelp(const QString& file, int command) = 0;
    // The program has left through its exit routine: the event loop ends.
    virtual void quit() = 0;
};

} // namespace vantrel
