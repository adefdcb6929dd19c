#include "core/Screen.h"
#include "tools/scenario/World.h"

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace vantrel;
using namespace vantrel::scenario;

namespace {

QTextStream& out() {
    static QTextStream stream(stdout);
    return stream;
}

// Runs one scenario in a fresh world; returns the failure text, or an empty text when it passed.
QString runScenario(const Scenario& scenario, const QString& programFolder, bool verbose) {
    World world(programFolder, verbose);
    if (!world.ready())
        return u"no temporary folder could be made"_s;
    try {
        world.run(scenario.steps);
        world.currentStep = nullptr;
        if (!world.prompter.pending.empty()) {
            const Message& m = world.prompter.pending.front();
            return u"%1: a message was left unexpected: %2 \"%3\""_s.arg(scenario.file, m.kind, m.text);
        }
    } catch (const Failure& failure) {
        return failure.where + u": "_s + failure.what;
    }
    return {};
}

int listControls(const QString& screenName, const QString& programFolder) {
    World world(programFolder, false);
    try {
        world.ensureSession();
        if (!ScreenRegistry::instance().has(screenName)) {
            out() << "the program has no screen " << screenName << Qt::endl;
            return 1;
        }
        world.process().open(screenName);
        Screen* screen = world.process().find(screenName);
        if (!screen) {
            out() << screenName << " closed itself on opening" << Qt::endl;
            return 1;
        }
        for (Control* c : screen->controls())
            out() << c->fullName() << Qt::endl;
    } catch (const Failure& failure) {
        out() << failure.what << Qt::endl;
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QString programFolder = QCoreApplication::applicationDirPath();
    QStringList args = app.arguments().mid(1);
    bool verbose = false;
    if (args.removeAll(u"--verbose"_s) > 0)
        verbose = true;
    if (args.size() == 2 && args.first() == u"--controls"_s)
        return listControls(args.at(1), programFolder);
    if (args.isEmpty()) {
        out() << "usage: vantrel-scenario [--verbose] FILE...\n       vantrel-scenario --controls SCREEN"
              << Qt::endl;
        return 2;
    }
    int passed = 0;
    int failed = 0;
    for (const QString& file : args) {
        std::vector<Scenario> scenarios;
        QString error;
        if (!parseFile(file, &scenarios, &error)) {
            out() << "FAIL " << file << ": " << error << Qt::endl;
            ++failed;
            continue;
        }
        for (const Scenario& scenario : scenarios) {
            const QString failure = runScenario(scenario, programFolder, verbose);
            if (failure.isEmpty()) {
                out() << "PASS " << scenario.name << Qt::endl;
                ++passed;
            } else {
                out() << "FAIL " << scenario.name << ": " << failure << Qt::endl;
                ++failed;
            }
        }
    }
    out() << passed << " passed, " << failed << " failed" << Qt::endl;
    return failed == 0 ? 0 : 1;
}
