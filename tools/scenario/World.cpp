#include "tools/scenario/World.h"

#include "core/Screen.h"
#include "core/Startup.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace vantrel::scenario {

namespace {

const QDateTime kDefaultNow(QDate(2026, 1, 15), QTime(10, 0, 0));

bool copyFolder(const QString& from, const QString& to) {
    QDir source(from);
    if (!source.exists())
        return true;
    QDir().mkpath(to);
    for (const QFileInfo& entry : source.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString target = to + u"/"_s + entry.fileName();
        if (entry.isDir() ? !copyFolder(entry.filePath(), target) : !QFile::copy(entry.filePath(), target))
            return false;
    }
    return true;
}

} // namespace

void RecordingPrompter::info(const QString& text) {
    pending.push_back({u"info"_s, text});
}

void RecordingPrompter::stop(const QString& text) {
    pending.push_back({u"stop"_s, text});
}

bool RecordingPrompter::ask(const QString& text) {
    pending.push_back({u"ask"_s, text});
    if (answers.empty())
        m_world.fail(u"a question with no queued answer: \"%1\""_s.arg(text));
    const bool yes = answers.front();
    answers.pop_front();
    return yes;
}

void RecordingHost::show(Screen& screen) {
    m_world.shown.insert(screen.name().toUpper());
}

void RecordingHost::showHelp(const QString& file, int command) {
    help.append(u"%1 %2"_s.arg(file).arg(command));
}

void RecordingHost::runModal(Screen& screen) {
    const QString key = screen.name().toUpper();
    m_world.shown.insert(key);
    screen.activated();
    if (screen.isClosed())
        return;
    auto it = m_world.modalSteps.find(key);
    if (it == m_world.modalSteps.end() || it->second.empty()) {
        m_world.process().closeScreen(screen);
        m_world.fail(u"the modal screen %1 opened with nothing registered"_s.arg(screen.name()));
    }
    const Step block = it->second.front();
    it->second.pop_front();
    const bool cancel = block.words.size() == 3 && block.words.at(2) == u"cancel"_s;
    if (!cancel) {
        ++modalDepth;
        struct Leave {
            int& depth;
            ~Leave() { --depth; }
        } leave{modalDepth};
        m_world.run(block.block);
    }
    if (!screen.isClosed() && !m_world.process().requestClose(screen))
        m_world.process().closeScreen(screen);
}

World::World(const QString& deliveredFolder, bool verbose)
    : host(*this), prompter(*this), m_delivered(deliveredFolder), m_verbose(verbose) {
    m_process = std::make_unique<Process>(host, prompter);
    m_process->state.clock.fix(kDefaultNow);
    if (!m_dir.isValid())
        return;
    QDir().mkpath(folder() + u"Data"_s);
    copyFolder(m_delivered + u"/Sound"_s, folder() + u"Sound"_s);
    QString error;
    useDatabase(u"delivered"_s, &error);
}

World::~World() {
    m_process.reset();
}

bool World::useDatabase(const QString& kind, QString* error) {
    const QString source =
        m_delivered + (kind == u"schema"_s ? u"/delivered/Schema.db"_s : u"/delivered/Vantrel.db"_s);
    const QString target = folder() + u"Data/Vantrel.db"_s;
    QFile::remove(target);
    QFile::remove(target + u"-wal"_s);
    QFile::remove(target + u"-shm"_s);
    if (!QFile::copy(source, target)) {
        *error = u"the database %1 could not be copied"_s.arg(source);
        return false;
    }
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return true;
}

void World::fail(const QString& what) const {
    const QString where = currentStep ? u"%1:%2"_s.arg(currentStep->file).arg(currentStep->line) : QString();
    throw Failure{where, what};
}

void World::ensureSession() {
    if (!started)
        startSession(1, false);
}

void World::startSession(int runMode, bool admin) {
    Process& p = *m_process;
    ProcessState& s = p.state;
    s.RunMode = runMode;
    SetPaths(s, folder());
    QString error;
    if (!OpenDatabase(p, &error))
        fail(u"the database did not open: %1"_s.arg(error));
    LoadControlParameters(p);
    if (s.ClinicPrescriberCode <= 0)
        fail(u"the clinic user's prescriber row is missing"_s);
    PrepareImageFolders(s);
    s.AdminLogin = admin;
    started = true;
    p.open(u"MainForm"_s);
}

void World::run(const std::vector<Step>& steps) {
    for (const Step& step : steps)
        run(step);
}

} // namespace vantrel::scenario
