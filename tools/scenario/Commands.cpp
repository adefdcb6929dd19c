#include "core/Lookup.h"
#include "core/Routines.h"
#include "core/Screen.h"
#include "core/Startup.h"
#include "tools/scenario/World.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace vantrel::scenario {

namespace {

QString quoted(const QString& text) {
    QString escaped = text;
    escaped.replace(u"\\"_s, u"\\\\"_s).replace(u"\""_s, u"\\\""_s).replace(u"\n"_s, u"\\n"_s);
    return u"\""_s + escaped + u"\""_s;
}

QString valueText(const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        const double d = value.toDouble();
        if (d == static_cast<double>(static_cast<qint64>(d)))
            return QString::number(static_cast<qint64>(d));
        return QString::number(d, 'g', QLocale::FloatingPointShortest);
    }
    default:
        return value.toString();
    }
}

QDate parseDate(const QString& text) {
    QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid())
        d = QLocale(QLocale::English).toDate(text, u"dd-MMM-yyyy"_s);
    return d;
}

// "Name(3)" -> Name, 3; "Name" -> Name, -1.
std::pair<QString, int> controlName(const QString& written) {
    static const QRegularExpression element(u"^(.+)\\((\\d+)\\)$"_s);
    const QRegularExpressionMatch m = element.match(written);
    if (m.hasMatch())
        return {m.captured(1), m.captured(2).toInt()};
    return {written, -1};
}

QString stripAmpersand(QString caption) {
    return caption.remove(u'&');
}

} // namespace

void World::run(const Step& step) {
    const Step* outer = currentStep;
    currentStep = &step;
    if (m_verbose)
        qInfo("  %s:%d: %s", qPrintable(step.file), step.line, qPrintable(step.words.join(u' ')));
    const QStringList& w = step.words;
    const QString cmd = w.first();
    const auto arg = [&](int i) -> QString {
        if (i >= w.size())
            fail(u"`%1` needs more arguments"_s.arg(cmd));
        return w.at(i);
    };
    Process& p = *m_process;
    const auto top = [&]() -> Screen& {
        purge();
        Screen* s = p.top();
        if (!s)
            fail(u"no screen is open"_s);
        return *s;
    };
    const auto find = [&](Screen& screen, const QString& written) -> Control& {
        const auto [name, index] = controlName(written);
        Control* c = screen.control(name, index);
        if (!c)
            fail(u"%1 has no control %2"_s.arg(screen.name(), written));
        return *c;
    };
    const auto namedScreen = [&](const QString& name) -> Screen& {
        Screen* s = p.find(name);
        if (!s)
            fail(u"%1 is not open"_s.arg(name));
        return *s;
    };
    const auto expectEqual = [&](const QString& what, const QString& expected, const QString& actual) {
        if (expected != actual)
            fail(u"%1: expected %2, got %3"_s.arg(what, quoted(expected), quoted(actual)));
    };
    const auto yesNo = [&](const QString& text) -> bool {
        if (text != u"yes"_s && text != u"no"_s)
            fail(u"expected yes or no, got %1"_s.arg(quoted(text)));
        return text == u"yes"_s;
    };
    const auto grid = [&](Screen& screen, const QString& name) -> Grid& {
        auto* g = qobject_cast<Grid*>(&find(screen, name));
        if (!g)
            fail(u"%1 is not a grid"_s.arg(name));
        return *g;
    };
    const auto columnNumber = [&](Grid& g, const QString& written) -> int {
        const GridColumn* c = g.findColumn(written);
        if (!c)
            fail(u"%1 has no column %2"_s.arg(g.name(), written));
        return c->number;
    };
    const auto withDatabase = [&](const std::function<void(QSqlDatabase&)>& use) {
        if (p.state.OpenDb.isOpen()) {
            use(p.state.OpenDb.handle());
            return;
        }
        const QString connection = u"scenario-check"_s;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
            db.setDatabaseName(folder() + u"Data/Vantrel.db"_s);
            if (!db.open())
                fail(u"the database could not be opened: %1"_s.arg(db.lastError().text()));
            try {
                use(db);
            } catch (...) {
                db.close();
                db = QSqlDatabase();
                QSqlDatabase::removeDatabase(connection);
                throw;
            }
            db.close();
        }
        QSqlDatabase::removeDatabase(connection);
    };

    // World set-up.
    if (cmd == u"database"_s) {
        if (started)
            fail(u"the database is chosen before the program starts"_s);
        QString error;
        if (!useDatabase(arg(1), &error))
            fail(error);
    } else if (cmd == u"today"_s || cmd == u"now"_s) {
        const QString text =
            cmd == u"today"_s ? arg(1) + u" 00:00:00"_s : arg(1) + u" "_s + w.value(2, u"00:00"_s);
        QDateTime at = QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_s);
        if (!at.isValid())
            at = QDateTime::fromString(text, u"yyyy-MM-dd HH:mm"_s);
        if (!at.isValid())
            fail(u"not a date: %1"_s.arg(quoted(w.mid(1).join(u' '))));
        if (cmd == u"today"_s)
            at.setTime(p.state.clock.now().time());
        p.state.clock.fix(at);
    } else if (cmd == u"sql"_s) {
        withDatabase([&](QSqlDatabase& db) {
            QSqlQuery q(db);
            if (!q.exec(arg(1)))
                fail(u"the statement failed: %1"_s.arg(q.lastError().text()));
        });
    } else if (cmd == u"sql-file"_s) {
        // Statements ending with a semicolon at the end of a line, from a file beside the scenario file.
        QFile file(QDir(step.folder).filePath(arg(1)));
        if (!file.open(QIODevice::ReadOnly))
            fail(u"cannot read %1"_s.arg(arg(1)));
        const QString text = QString::fromUtf8(file.readAll());
        withDatabase([&](QSqlDatabase& db) {
            QString statement;
            for (const QString& line : text.split(u'\n')) {
                if (line.trimmed().startsWith(u"--"_s))
                    continue;
                statement += line + u'\n';
                if (!line.trimmed().endsWith(u';'))
                    continue;
                QSqlQuery q(db);
                if (!q.exec(statement))
                    fail(u"the statement failed: %1"_s.arg(q.lastError().text()));
                statement.clear();
            }
        });
    } else if (cmd == u"reload"_s) {
        ensureSession();
        LoadControlParameters(p);
    } else if (cmd == u"screen"_s) {
        host.size = QSize(arg(1).toInt(), arg(2).toInt());
    } else if (cmd == u"instance"_s) {
        host.instanceRunning = arg(1) == u"running"_s;
    } else if (cmd == u"file"_s) {
        const QString path = folder() + arg(2);
        if (arg(1) == u"write"_s) {
            QDir().mkpath(QFileInfo(path).path());
            QFile f(path);
            if (!f.open(QIODevice::WriteOnly) || f.write(w.value(3).toUtf8()) < 0)
                fail(u"%1 could not be written"_s.arg(arg(2)));
        } else if (arg(1) == u"remove"_s) {
            if (QFileInfo(path).isDir())
                QDir(path).removeRecursively();
            else
                QFile::remove(path);
        } else {
            fail(u"file takes write or remove"_s);
        }
    } else if (cmd == u"device"_s) {
        scannerPresent = arg(2) == u"present"_s;
    }
    // Starting.
    else if (cmd == u"start"_s) {
        started = true;
        Main(p, w.value(1) == u"opd"_s ? 2 : 1, folder());
    } else if (cmd == u"session"_s) {
        if (started)
            fail(u"the program has already started"_s);
        startSession(w.value(1) == u"opd"_s ? 2 : 1, w.contains(u"admin"_s));
    } else if (cmd == u"open"_s) {
        ensureSession();
        const QString mode = w.value(2);
        if (!ScreenRegistry::instance().has(arg(1)))
            fail(u"the program has no screen %1"_s.arg(arg(1)));
        p.open(arg(1), [&](Screen& s) {
            if (w.size() > 2)
                s.inputs.insert(u"Mode"_s, mode);
        });
    } else if (cmd == u"launcher"_s) {
        ensureSession();
        Screen* launcher = p.find(p.state.RunMode == 2 ? u"OPDSlide"_s : u"Slide"_s);
        if (!launcher)
            fail(u"the launcher is not open"_s);
        if (arg(1) == u"main"_s) {
            launcher->click(find(*launcher, u"ImgMain(%1)"_s.arg(arg(2).toInt() - 1)));
        } else {
            Control* target = nullptr;
            for (const QString& level : {u"LblSubOption"_s, u"LblOption"_s}) {
                for (Control* c : launcher->array(level)) {
                    if (!target && c->visible() && stripAmpersand(c->caption()) == arg(2))
                        target = c;
                }
            }
            if (!target)
                fail(u"the launcher shows no option %1"_s.arg(quoted(arg(2))));
            if (arg(1) == u"hover"_s) {
                if (target->onHover)
                    target->onHover(true);
            } else {
                launcher->click(*target);
            }
        }
    } else if (cmd == u"close"_s) {
        Screen& s = w.size() > 1 ? namedScreen(arg(1)) : top();
        p.requestClose(s);
    }
    // Acting on the top screen.
    else if (cmd == u"type"_s) {
        Screen& s = top();
        s.type(find(s, arg(1)), arg(2));
    } else if (cmd == u"set"_s) {
        Screen& s = top();
        Control& c = find(s, arg(1));
        if (auto* date = qobject_cast<DateBox*>(&c)) {
            if (!s.moveFocus(date))
                return;
            const QDate d = arg(2).isEmpty() ? QDate() : parseDate(arg(2));
            if (!arg(2).isEmpty() && !d.isValid())
                fail(u"not a date: %1"_s.arg(quoted(arg(2))));
            date->setDate(d);
        } else {
            s.paste(c, arg(2));
        }
    } else if (cmd == u"key"_s) {
        Screen& s = top();
        static const std::map<QString, Key> keys = {
            {u"Enter"_s, Key::Enter},   {u"Escape"_s, Key::Escape},
            {u"Tab"_s, Key::Tab},       {u"Up"_s, Key::Up},
            {u"Down"_s, Key::Down},     {u"F2"_s, Key::F2},
            {u"F3"_s, Key::F3},         {u"CtrlEnter"_s, Key::CtrlEnter},
            {u"Delete"_s, Key::Delete}, {u"Backspace"_s, Key::Backspace}};
        const auto k = keys.find(arg(2));
        if (k != keys.end())
            s.pressKey(find(s, arg(1)), k->second);
        else if (arg(2).size() == 1)
            s.pressKey(find(s, arg(1)), Key::Character, arg(2).at(0));
        else
            fail(u"unknown key %1"_s.arg(arg(2)));
    } else if (cmd == u"leave"_s) {
        Screen& s = top();
        s.leave(find(s, arg(1)));
    } else if (cmd == u"click"_s) {
        Screen& s = top();
        if (w.size() > 2) {
            Control* target = nullptr;
            for (Control* c : s.array(arg(1))) {
                if (!target && stripAmpersand(c->caption()) == arg(2))
                    target = c;
            }
            if (!target)
                fail(u"%1 has no %2 captioned %3"_s.arg(s.name(), arg(1), quoted(arg(2))));
            s.click(*target);
        } else {
            Control& c = find(s, arg(1));
            if (!c.enabled())
                fail(u"%1 is disabled"_s.arg(arg(1)));
            s.click(c);
        }
    } else if (cmd == u"choose"_s) {
        Screen& s = top();
        auto* combo = qobject_cast<ComboBox*>(&find(s, arg(1)));
        if (!combo)
            fail(u"%1 is not a combo"_s.arg(arg(1)));
        if (combo->findRow(w.mid(2)) < 0)
            fail(u"%1 has no row %2"_s.arg(arg(1), quoted(w.mid(2).join(u' '))));
        s.choose(*combo, w.mid(2));
    } else if (cmd == u"tick"_s || cmd == u"untick"_s || cmd == u"select"_s) {
        Screen& s = top();
        auto* list = qobject_cast<ListControl*>(&find(s, arg(1)));
        if (!list)
            fail(u"%1 is not a list"_s.arg(arg(1)));
        const int row = list->findRow({arg(2)});
        if (row < 0)
            fail(u"%1 has no row %2"_s.arg(arg(1), quoted(arg(2))));
        if (!s.moveFocus(list))
            return;
        list->setCurrent(row);
        if (cmd != u"select"_s)
            list->setTicked(row, cmd == u"tick"_s);
        if (list->onClick)
            list->onClick();
    } else if (cmd == u"tab"_s) {
        Screen& s = top();
        auto* strip = qobject_cast<TabStrip*>(&find(s, arg(1)));
        if (!strip)
            fail(u"%1 is not a tab strip"_s.arg(arg(1)));
        s.changeTab(*strip, arg(2).toInt());
    } else if (cmd == u"grid"_s) {
        Screen& s = top();
        Grid& g = grid(s, arg(1));
        if (!s.moveFocus(&g))
            return;
        const QString action = arg(2);
        if (action == u"row"_s)
            g.goToRow(arg(3) == u"new"_s ? g.rowCount() : arg(3).toInt() - 1);
        else if (action == u"cell"_s)
            g.editCell(columnNumber(g, arg(3)), arg(4));
        else if (action == u"pick"_s)
            g.pick(columnNumber(g, arg(3)), w.mid(4));
        else if (action == u"tick"_s || action == u"untick"_s)
            g.tick(columnNumber(g, arg(3)), action == u"tick"_s);
        else if (action == u"commit"_s)
            g.commit();
        else if (action == u"click"_s)
            g.clickCell(arg(3).toInt() - 1, columnNumber(g, arg(4)));
        else if (action == u"delete"_s)
            g.deleteRow();
        else
            fail(u"unknown grid action %1"_s.arg(action));
    }
    // Messages and questions.
    else if (cmd == u"answer"_s) {
        for (int i = 1; i < w.size(); ++i)
            prompter.answers.push_back(yesNo(w.at(i)));
    } else if (cmd == u"expect"_s) {
        if (arg(1) == u"none"_s) {
            if (!prompter.pending.empty())
                fail(u"expected no message, got %1 %2"_s.arg(prompter.pending.front().kind,
                                                             quoted(prompter.pending.front().text)));
        } else {
            if (prompter.pending.empty())
                fail(u"expected %1 %2, got no message"_s.arg(arg(1), quoted(arg(2))));
            const Message m = prompter.pending.front();
            prompter.pending.pop_front();
            if (m.kind != arg(1) || m.text != arg(2))
                fail(u"expected %1 %2, got %3 %4"_s.arg(arg(1), quoted(arg(2)), m.kind, quoted(m.text)));
        }
    }
    // Modal screens.
    else if (cmd == u"on"_s) {
        modalSteps[arg(1).toUpper()].push_back(step);
    }
    // Checks.
    else if (cmd == u"check"_s) {
        withDatabase([&](QSqlDatabase& db) {
            QSqlQuery q(db);
            if (!q.exec(arg(1)))
                fail(u"the query failed: %1"_s.arg(q.lastError().text()));
            const QString actual = q.next() ? valueText(q.value(0)) : QString();
            expectEqual(arg(1), arg(2), actual);
        });
    } else if (cmd == u"expect-text"_s) {
        Screen& s = top();
        Control& c = find(s, arg(1));
        QString actual;
        if (auto* box = qobject_cast<TextBox*>(&c))
            actual = box->text();
        else if (auto* combo = qobject_cast<ComboBox*>(&c))
            actual = combo->text();
        else if (auto* date = qobject_cast<DateBox*>(&c))
            actual = date->text();
        else
            actual = c.caption();
        expectEqual(arg(1), arg(2), actual);
    } else if (cmd == u"expect-value"_s) {
        Screen& s = top();
        Control& c = find(s, arg(1));
        bool value = false;
        if (auto* box = qobject_cast<CheckBox*>(&c))
            value = box->value();
        else if (auto* option = qobject_cast<OptionButton*>(&c))
            value = option->value();
        else
            fail(u"%1 is not a tick box or option"_s.arg(arg(1)));
        expectEqual(arg(1), arg(2), value ? u"yes"_s : u"no"_s);
    } else if (cmd == u"expect-enabled"_s || cmd == u"expect-locked"_s || cmd == u"expect-visible"_s) {
        Screen& s = top();
        Control& c = find(s, arg(1));
        bool state = false;
        if (cmd == u"expect-enabled"_s) {
            state = c.enabled();
        } else if (cmd == u"expect-visible"_s) {
            state = c.visible();
        } else {
            auto* box = qobject_cast<TextBox*>(&c);
            state = box ? box->locked() : !c.enabled();
        }
        expectEqual(cmd.mid(7) + u" "_s + arg(1), arg(2), state ? u"yes"_s : u"no"_s);
    } else if (cmd == u"expect-mask"_s) {
        Screen& s = top();
        if (s.array(arg(1)).empty())
            fail(u"%1 has no control array %2"_s.arg(s.name(), arg(1)));
        expectEqual(u"mask of "_s + arg(1), arg(2), s.mask(arg(1)));
    } else if (cmd == u"expect-focus"_s) {
        Screen& s = top();
        expectEqual(u"focus"_s, arg(1), s.focus() ? s.focus()->fullName() : QString());
    } else if (cmd == u"expect-rows"_s) {
        Screen& s = top();
        Control& c = find(s, arg(1));
        int rows = 0;
        if (auto* g = qobject_cast<Grid*>(&c))
            rows = g->rowCount();
        else if (auto* list = qobject_cast<ListControl*>(&c))
            rows = list->count();
        else
            fail(u"%1 has no rows"_s.arg(arg(1)));
        expectEqual(u"rows of "_s + arg(1), arg(2), QString::number(rows));
    } else if (cmd == u"expect-cell"_s) {
        Screen& s = top();
        Grid& g = grid(s, arg(1));
        expectEqual(u"cell %1 %2 of %3"_s.arg(arg(2), arg(3), arg(1)), arg(4),
                    g.cellText(arg(2).toInt() - 1, columnNumber(g, arg(3))));
    } else if (cmd == u"expect-list"_s) {
        Screen& s = top();
        auto* list = qobject_cast<ListControl*>(&find(s, arg(1)));
        QStringList actual;
        if (list) {
            for (const ListRow& row : list->rows())
                actual.append(row.columns.value(0));
        } else if (auto* g = qobject_cast<Grid*>(&find(s, arg(1)))) {
            const int first = g->columns().empty() ? 0 : g->columns().front().number;
            for (int r = 0; r < g->rowCount(); ++r)
                actual.append(g->cellText(r, first));
        } else {
            fail(u"%1 is not a list"_s.arg(arg(1)));
        }
        QStringList expected = w.mid(2);
        if (expected != actual) {
            QStringList e, a;
            for (const QString& t : expected)
                e.append(quoted(t));
            for (const QString& t : actual)
                a.append(quoted(t));
            fail(u"list of %1: expected %2, got %3"_s.arg(arg(1), e.join(u' '), a.join(u' ')));
        }
    } else if (cmd == u"expect-title"_s) {
        expectEqual(u"title"_s, arg(1), host.title);
    } else if (cmd == u"expect-open"_s || cmd == u"expect-closed"_s) {
        purge();
        const bool open = p.isOpen(arg(1));
        if (open != (cmd == u"expect-open"_s))
            fail(u"%1 is %2"_s.arg(arg(1), open ? u"open"_s : u"closed"_s));
    } else if (cmd == u"expect-shown"_s) {
        expectEqual(u"shown "_s + arg(1), arg(2), shown.count(arg(1).toUpper()) ? u"yes"_s : u"no"_s);
    } else if (cmd == u"expect-caption"_s) {
        expectEqual(u"caption of "_s + arg(1), arg(2), namedScreen(arg(1)).caption());
    } else if (cmd == u"expect-tab"_s) {
        Screen& s = top();
        auto* strip = qobject_cast<TabStrip*>(&find(s, arg(1)));
        if (!strip)
            fail(u"%1 is not a tab strip"_s.arg(arg(1)));
        expectEqual(u"tab of "_s + arg(1), arg(2), QString::number(strip->current()));
    } else if (cmd == u"expect-options"_s) {
        Screen* launcher = p.find(p.state.RunMode == 2 ? u"OPDSlide"_s : u"Slide"_s);
        if (!launcher)
            fail(u"the launcher is not open"_s);
        QStringList actual;
        for (const QString& level : {u"LblSubOption"_s, u"LblOption"_s}) {
            for (Control* c : launcher->array(level)) {
                if (c->visible() && !c->caption().isEmpty())
                    actual.append(stripAmpersand(c->caption()));
            }
            if (!actual.isEmpty())
                break;
        }
        if (actual != w.mid(1))
            fail(u"options: expected %1, got %2"_s.arg(w.mid(1).join(u" | "_s), actual.join(u" | "_s)));
    } else if (cmd == u"expect-sounds"_s) {
        const QStringList actual = host.sounds;
        host.sounds.clear();
        if (actual != w.mid(1))
            fail(u"sounds: expected %1, got %2"_s.arg(w.mid(1).join(u' '), actual.join(u' ')));
    } else if (cmd == u"expect-file"_s) {
        expectEqual(u"file "_s + arg(1), arg(2), QFileInfo::exists(folder() + arg(1)) ? u"yes"_s : u"no"_s);
    }
    // Shared routines.
    else if (cmd == u"routine"_s) {
        const qsizetype arrow = w.indexOf(u"=>"_s);
        if (arrow < 2 || arrow + 1 >= w.size())
            fail(u"routine NAME ARG... => \"EXPECTED\""_s);
        const QStringList a = w.mid(2, arrow - 2);
        const QString name = arg(1);
        const auto date = [&](int i) { return a.value(i).isEmpty() ? QDate() : parseDate(a.value(i)); };
        const auto num = [&](int i) { return a.value(i).toDouble(); };
        const auto integer = [&](int i) { return a.value(i).toInt(); };
        QString actual;
        if (name == u"AmountInWords"_s) {
            actual = AmountInWords(num(0));
        } else if (name == u"DateDifference"_s) {
            const DateDiff d = DateDifference(date(0), date(1));
            actual = u"%1 %2 %3"_s.arg(d.years).arg(d.months).arg(d.days);
        } else if (name == u"AgeText"_s) {
            actual = AgeText(p.state.clock.today(), date(0));
        } else if (name == u"BirthFromAge"_s) {
            actual = BirthFromAge(date(0), integer(1), integer(2), integer(3)).toString(Qt::ISODate);
        } else if (name == u"ChildGrowthText"_s) {
            actual = ChildGrowthText(integer(0), integer(1), num(2), num(3));
        } else if (name == u"BodyMassText"_s) {
            actual = BodyMassText(num(0), num(1));
        } else if (name == u"WeightAssessment"_s) {
            actual = WeightAssessment(integer(0), integer(1), num(2), num(3));
        } else if (name == u"PregnancyStatusText"_s) {
            actual = PregnancyStatusText(date(0), date(1));
        } else if (name == u"SizeInMB"_s) {
            actual = NumberText(SizeInMB(a.value(0).toLongLong()));
        } else if (name == u"TextBefore"_s) {
            actual = TextBefore(a.value(0), a.value(1));
        } else if (name == u"ProperCase"_s) {
            actual = ProperCase(a.value(0));
        } else if (name == u"BrandName"_s) {
            ensureSession();
            actual = BrandName(p.state.OpenDb, a.value(0).toLongLong());
        } else {
            fail(u"unknown routine %1"_s.arg(name));
        }
        expectEqual(u"routine "_s + name, w.at(arrow + 1), actual);
    } else {
        fail(u"unknown command %1"_s.arg(cmd));
    }
    purge();
    currentStep = outer;
}

} // namespace vantrel::scenario
