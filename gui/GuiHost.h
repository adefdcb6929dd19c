#pragma once

#include "core/Host.h"
#include "gui/MainWindow.h"

#include <QObject>
#include <QPointer>
#include <map>
#include <memory>
#include <vector>

class QDialog;
class QLockFile;
class QSoundEffect;
class QWidget;

namespace vantrel {

class Binder;
class Process;

// The desktop of the real program: the main window with its stacked screens, modal dialogs, the splash,
// the single-instance lock, sounds and help.
class GuiHost : public QObject, public Host {
    Q_OBJECT
public:
    // `runMode` names the lock: the main and the OPD application may run side by side.
    explicit GuiHost(int runMode);
    ~GuiHost() override;

    // The program left through its exit routine.
    bool quitCalled() const { return m_quit; }
    bool mainWindowShown() const;
    MainWindow* mainWindow() const { return m_main; }

    bool anotherInstanceRunning() override;
    QSize screenSize() override;
    void show(Screen& screen) override;
    void runModal(Screen& screen) override;
    void remove(Screen& screen) override;
    void setMainTitle(const QString& title) override;
    QString mainTitle() const override { return m_title; }
    void resetLauncher() override;
    void hourglass(bool on) override;
    void processEvents() override;
    void waitUntil(const QDateTime& since, int seconds) override;
    void playSound(const QString& event, const QString& file) override;
    void showHelp(const QString& file, int command) override;
    void quit() override;

private:
    struct View {
        Screen* screen = nullptr;
        QPointer<QWidget> window;
        QPointer<Binder> binder;
        bool embedded = false;
    };
    MainWindow& ensureMainWindow();
    void focusFrontScreen();
    void schedulePurge(Process& process);

    int m_runMode;
    std::unique_ptr<QLockFile> m_lock;
    QPointer<MainWindow> m_main;
    Screen* m_mainScreen = nullptr;
    std::vector<View> m_views;
    QString m_title;
    bool m_quit = false;
    bool m_hourglass = false;
    int m_modalDepth = 0;
    bool m_purgeQueued = false;
    std::map<QString, QSoundEffect*> m_sounds;
};

} // namespace vantrel
