#pragma once

#include "core/Host.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "store/Schema.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace vantrel::test {

using namespace Qt::StringLiterals;

// Records every message; questions take queued answers (No when none is queued).
class FakePrompter : public Prompter {
public:
    void info(const QString& text) override { messages.append(u"info: "_s + text); }
    void stop(const QString& text) override { messages.append(u"stop: "_s + text); }
    bool ask(const QString& text) override {
        messages.append(u"ask: "_s + text);
        if (answers.empty())
            return false;
        const bool yes = answers.front();
        answers.pop_front();
        return yes;
    }
    void beep() override { ++beeps; }

    QStringList messages;
    std::deque<bool> answers;
    int beeps = 0;
};

// A desktop without windows: modal screens run the steps registered for them, then close.
class FakeHost : public Host {
public:
    bool anotherInstanceRunning() override { return instanceRunning; }
    QSize screenSize() override { return size; }
    void show(Screen& screen) override { shown.append(screen.name()); }
    void runModal(Screen& screen) override {
        shown.append(screen.name());
        screen.activated();
        if (screen.isClosed())
            return;
        if (const auto it = modal.find(screen.name()); it != modal.end() && !it->second.empty()) {
            auto steps = std::move(it->second.front());
            it->second.pop_front();
            steps(screen);
        }
        if (!screen.isClosed() && !screen.process().requestClose(screen))
            screen.process().closeScreen(screen);
    }
    void remove(Screen&) override {}
    void setMainTitle(const QString& text) override { title = text; }
    QString mainTitle() const override { return title; }
    void resetLauncher() override { ++launcherResets; }
    void hourglass(bool) override {}
    void processEvents() override {}
    void waitUntil(const QDateTime&, int seconds) override { waited += seconds; }
    void playSound(const QString& event, const QString&) override { sounds.append(event); }
    void showHelp(const QString& file, int command) override {
        help.append(file + u' ' + QString::number(command));
    }
    void quit() override { quitCalled = true; }

    bool instanceRunning = false;
    QSize size{1024, 768};
    QStringList shown;
    QString title;
    int launcherResets = 0;
    int waited = 0;
    QStringList sounds;
    QStringList help;
    bool quitCalled = false;
    std::map<QString, std::deque<std::function<void(Screen&)>>> modal;
};

// A program folder in a temporary directory with a database made from the schema and a Control row.
class TestWorld {
public:
    TestWorld() : process(host, prompter) {
        process.state.clock.fix(QDateTime(QDate(2026, 1, 15), QTime(10, 0)));
        folder = dir.path() + u"/"_s;
        dbPath = folder + u"Data/Vantrel.db"_s;
        QDir().mkpath(folder + u"Data"_s);
        withFile([](QSqlDatabase& db) {
            QString error;
            ASSERT_TRUE(schema::migrate(db, &error)) << error.toStdString();
            QSqlQuery q(db);
            ASSERT_TRUE(
                q.exec(u"INSERT INTO Control (Clinic_User, Password, HOpt, ControlPassword, SoundEffect, "
                       "UserProfileUpdated, DefaultFee, AgePaediatric, AgeElderly) "
                       "VALUES ('DR. ASHA RAO', 'terces', 'nimda', '', 1, 1, 250, 12, 65)"_s))
                << q.lastError().text().toStdString();
        });
    }

    // Runs statements on the database file while the program does not hold it open.
    void withFile(const std::function<void(QSqlDatabase&)>& use) {
        const QString name = u"test-file-"_s + QString::number(reinterpret_cast<quintptr>(this));
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
            db.setDatabaseName(dbPath);
            ASSERT_TRUE(db.open());
            use(db);
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
    }

    void sql(const QString& statement) {
        withFile([&](QSqlDatabase& db) {
            QSqlQuery q(db);
            ASSERT_TRUE(q.exec(statement)) << q.lastError().text().toStdString();
        });
    }

    QTemporaryDir dir;
    QString folder;
    QString dbPath;
    FakeHost host;
    FakePrompter prompter;
    Process process;
};

} // namespace vantrel::test
