#pragma once

#include "core/Host.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "tools/scenario/Script.h"

#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace vantrel::scenario {

// A difference between what a scenario expects and what happened.
struct Failure {
    QString where;
    QString what;
};

class World;

struct Message {
    QString kind; // info, stop, ask
    QString text;
};

class RecordingPrompter : public Prompter {
public:
    explicit RecordingPrompter(World& world) : m_world(world) {}
    void info(const QString& text) override;
    void stop(const QString& text) override;
    bool ask(const QString& text) override;
    void beep() override { ++beeps; }

    std::deque<Message> pending;
    std::deque<bool> answers;
    int beeps = 0;

private:
    World& m_world;
};

class RecordingHost : public Host {
public:
    explicit RecordingHost(World& world) : m_world(world) {}
    bool anotherInstanceRunning() override { return instanceRunning; }
    QSize screenSize() override { return size; }
    void show(Screen& screen) override;
    void runModal(Screen& screen) override;
    void remove(Screen&) override {}
    void setMainTitle(const QString& text) override { title = text; }
    QString mainTitle() const override { return title; }
    void resetLauncher() override { ++launcherResets; }
    void hourglass(bool on) override { hourglassOn = on; }
    void processEvents() override {}
    void waitUntil(const QDateTime&, int) override {}
    void playSound(const QString& event, const QString&) override { sounds.append(event); }
    void showHelp(const QString& file, int command) override;
    void quit() override { quitCalled = true; }

    bool instanceRunning = false;
    QSize size{1024, 768};
    QString title;
    int launcherResets = 0;
    bool hourglassOn = false;
    QStringList sounds;
    QStringList help;
    bool quitCalled = false;
    int modalDepth = 0;

private:
    World& m_world;
};

// A fresh program folder, database and clock for one scenario.
class World {
public:
    World(const QString& deliveredFolder, bool verbose);
    ~World();

    bool ready() const { return m_dir.isValid(); }
    QString folder() const { return m_dir.path() + QStringLiteral("/"); }
    bool useDatabase(const QString& kind, QString* error);

    Process& process() { return *m_process; }
    RecordingHost host;
    RecordingPrompter prompter;
    bool scannerPresent = true;
    std::set<QString> shown;
    std::map<QString, std::deque<Step>> modalSteps; // upper-cased screen name -> `on` blocks
    bool started = false;

    // Runs steps; a difference throws a Failure.
    void run(const std::vector<Step>& steps);
    void run(const Step& step);
    [[noreturn]] void fail(const QString& what) const;
    const Step* currentStep = nullptr;
    // Starts `session main` when no application runs yet.
    void ensureSession();
    void startSession(int runMode, bool admin);
    bool verbose() const { return m_verbose; }
    // Destroys closed screens, once no modal screen's code is running.
    void purge() {
        if (host.modalDepth == 0)
            m_process->purge();
    }

private:
    QString m_delivered;
    bool m_verbose;
    QTemporaryDir m_dir;
    std::unique_ptr<Process> m_process;
};

} // namespace vantrel::scenario
