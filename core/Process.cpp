#include "core/Process.h"

#include "core/Host.h"
#include "core/Screen.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vantrel {

ScreenRegistry& ScreenRegistry::instance() {
    static ScreenRegistry registry;
    return registry;
}

void ScreenRegistry::add(const QString& name, ScreenFactory factory) {
    m_factories[name.toUpper()] = std::move(factory);
}

bool ScreenRegistry::has(const QString& name) const {
    return m_factories.count(name.toUpper()) > 0;
}

std::unique_ptr<Screen> ScreenRegistry::create(const QString& name, Process& process) const {
    const auto it = m_factories.find(name.toUpper());
    return it == m_factories.end() ? nullptr : it->second(process);
}

QStringList ScreenRegistry::names() const {
    QStringList names;
    for (const auto& entry : m_factories)
        names.append(entry.first);
    return names;
}

bool IsHomeScreen(const QString& name) {
    for (const QString& home :
         {u"MainForm"_s, u"Slide"_s, u"OPDSlide"_s, u"Splash"_s, u"FrmAuthentication"_s}) {
        if (name.compare(home, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

Process::Process(Host& hostRef, Prompter& prompterRef) : host(hostRef), prompter(prompterRef) {}

Process::~Process() {
    m_closed.clear();
    m_open.clear();
}

Screen* Process::open(const QString& name, const std::function<void(Screen&)>& setup) {
    std::unique_ptr<Screen> screen = ScreenRegistry::instance().create(name, *this);
    if (!screen)
        return nullptr;
    Screen& ref = *screen;
    m_open.push_back(std::move(screen));
    if (setup)
        setup(ref);
    ref.load();
    if (ref.isClosed())
        return nullptr;
    host.show(ref);
    if (!ref.isClosed())
        ref.activated();
    return ref.isClosed() ? nullptr : &ref;
}

bool Process::openModal(const QString& name, const std::function<void(Screen&)>& setup,
                        const std::function<void(Screen&)>& done) {
    std::unique_ptr<Screen> screen = ScreenRegistry::instance().create(name, *this);
    if (!screen)
        return false;
    Screen& ref = *screen;
    ref.modal = true;
    m_open.push_back(std::move(screen));
    if (setup)
        setup(ref);
    ref.load();
    if (!ref.isClosed())
        host.runModal(ref);
    if (!ref.isClosed())
        closeScreen(ref);
    if (done)
        done(ref);
    return true;
}

void Process::closeScreen(Screen& screen) {
    if (screen.isClosed())
        return;
    screen.markClosed();
    screen.unload();
    host.remove(screen);
    for (auto it = m_open.begin(); it != m_open.end(); ++it) {
        if (it->get() == &screen) {
            m_closed.push_back(std::move(*it));
            m_open.erase(it);
            break;
        }
    }
    if (!screen.modal && !IsHomeScreen(screen.name()))
        resetLauncher();
}

void Process::resetLauncher() {
    if (state.Exiting)
        return;
    host.resetLauncher();
    // The launcher is in front again once no other screen of the main window is open over it.
    for (const auto& s : m_open) {
        if (!s->modal && !IsHomeScreen(s->name()))
            return;
    }
    if (Screen* launcher = find(state.RunMode == 2 ? u"OPDSlide"_s : u"Slide"_s))
        launcher->activated();
}

bool Process::requestClose(Screen& screen) {
    if (!screen.queryClose())
        return false;
    closeScreen(screen);
    return true;
}

bool Process::isOpen(const QString& name) const {
    return find(name) != nullptr;
}

Screen* Process::find(const QString& name) const {
    for (const auto& s : m_open) {
        if (s->name().compare(name, Qt::CaseInsensitive) == 0)
            return s.get();
    }
    return nullptr;
}

std::vector<Screen*> Process::openScreens() const {
    std::vector<Screen*> list;
    for (const auto& s : m_open)
        list.push_back(s.get());
    return list;
}

Screen* Process::top() const {
    return m_open.empty() ? nullptr : m_open.back().get();
}

void Process::purge() {
    m_closed.clear();
}

void Process::playSound(const QString& event) {
    if (!state.Params.has(u"SoundEffect"_s) || !state.Params.flag(u"SoundEffect"_s))
        return;
    static const std::map<QString, QString> files = {{u"START"_s, u"START.wav"_s},
                                                     {u"STOP"_s, u"STOP.wav"_s},
                                                     {u"CLICK"_s, u"CLICK.wav"_s},
                                                     {u"SELECT"_s, u"SELECTED.wav"_s},
                                                     {u"MOVE"_s, u"MOVE.wav"_s}};
    const auto it = files.find(event);
    if (it == files.end())
        return;
    const QString file = state.AppPath + u"Sound/"_s + it->second;
    if (QFileInfo::exists(file))
        host.playSound(event, file);
}

} // namespace vantrel
