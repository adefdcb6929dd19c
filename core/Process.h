#pragma once

#include "core/ClinicParameters.h"
#include "core/Clock.h"
#include "store/Database.h"

#include <QString>
#include <QVariantList>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace vantrel {

class Host;
class Process;
class Prompter;
class Screen;

// One entry of the list of physical examinations held in memory.
struct PhysicalEntry {
    qint64 Code = 0;
    QString Name;
    QString Observation;
};

// A statement handed from one screen to another, with its values.
struct Statement {
    QString sql;
    QVariantList params;
};

// The state of the process: paths, the open database, the clinic's parameters, the flags of start-up and
// the values screens hand to each other. One object per running program (or per test world).
struct ProcessState {
    int RunMode = 1;
    QString AppPath;
    QString DataPath;
    QString DbPath;
    QString DocumentPath;
    QString TopicPath;
    QString ChartPath;
    QString ImagePath;
    QString SnapShotPath;
    QString ImageExt;
    QString HelpFile;
    Database OpenDb;
    ClinicParameters Params;
    qint64 ClinicPrescriberCode = 0;
    QString AppTitle;
    bool LoginCancelled = false;
    bool AdminLogin = false;
    bool RestoreOnly = false;
    bool Exiting = false;
    int CurrentYear = 0;
    int CurrentMonth = 0;
    std::vector<PhysicalEntry> PhysicalList;

    // Hand-over values between screens.
    qint64 SelectedCode = 0;
    Statement ScratchSql;
    bool QueryMode = false;
    QString SelectedCardNo;
    QString SelectedVisitNo;
    qint64 CurrentPatientCode = 0;
    qint64 CurrentPresCode = 0;
    qint64 CurrentPharmaCode = 0;
    qint64 CurrentBrandCode = 0;
    qint64 CurrentDsgFmCode = 0;

    Clock clock;
};

using ScreenFactory = std::function<std::unique_ptr<Screen>(Process&)>;

// The screens the program knows, by name. A screen joins with one registration line.
class ScreenRegistry {
public:
    static ScreenRegistry& instance();
    void add(const QString& name, ScreenFactory factory);
    bool has(const QString& name) const;
    std::unique_ptr<Screen> create(const QString& name, Process& process) const;
    QStringList names() const;

private:
    std::map<QString, ScreenFactory> m_factories;
};

// Registers a screen class under its name at program start: `VANTREL_SCREEN(FrmAuthentication)`.
#define VANTREL_SCREEN(Class)                                                                                \
    static const bool registered_##Class = [] {                                                              \
        ::vantrel::ScreenRegistry::instance().add(QStringLiteral(#Class), [](::vantrel::Process& process) {  \
            return std::unique_ptr<::vantrel::Screen>(new Class(process));                                   \
        });                                                                                                  \
        return true;                                                                                         \
    }()

// The main window, its launcher and the screens of start-up: closing them gives nothing back to the launcher.
bool IsHomeScreen(const QString& name);

// The running program: its state, the desktop around it and the list of open screens.
class Process {
public:
    Process(Host& host, Prompter& prompter);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    ProcessState state;
    Host& host;
    Prompter& prompter;

    // Opens a screen beside the others; nullptr when the program has no screen of that name.
    Screen* open(const QString& name, const std::function<void(Screen&)>& setup = {});
    // Opens a screen as a modal dialog. `setup` runs before it loads, `done` after it closed, before it
    // is destroyed. Returns false when the program has no screen of that name.
    bool openModal(const QString& name, const std::function<void(Screen&)>& setup = {},
                   const std::function<void(Screen&)>& done = {});
    // Unloads and takes away an open screen; it is destroyed once its code has returned.
    void closeScreen(Screen& screen);
    // A close request from outside: the screen may refuse it.
    bool requestClose(Screen& screen);
    // The launcher shows again as it was left. closeScreen calls it for every screen of the main window.
    void resetLauncher();

    bool isOpen(const QString& name) const;
    Screen* find(const QString& name) const;
    std::vector<Screen*> openScreens() const;
    // The screen that has the person's attention: the last modal one, else the last opened.
    Screen* top() const;
    // Destroys the screens closed since the last call.
    void purge();

    // Plays one of the system's sounds when the sound effects are on and its file exists.
    void playSound(const QString& event);

private:
    std::vector<std::unique_ptr<Screen>> m_open;
    std::vector<std::unique_ptr<Screen>> m_closed;
};

} // namespace vantrel
