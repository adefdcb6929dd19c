#include "tools/scenario/Script.h"

#include <QFile>
#include <QFileInfo>
#include <functional>

using namespace Qt::StringLiterals;

namespace vantrel::scenario {

bool splitWords(const QString& line, QStringList* words) {
    words->clear();
    QString current;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (quoted) {
            if (c == u'\\' && i + 1 < line.size()) {
                const QChar next = line.at(++i);
                current.append(next == u'n' ? QChar(u'\n') : next);
            } else if (c == u'"') {
                quoted = false;
            } else {
                current.append(c);
            }
        } else if (c == u'"') {
            quoted = true;
            inWord = true;
        } else if (c.isSpace()) {
            if (inWord)
                words->append(current);
            current.clear();
            inWord = false;
        } else {
            current.append(c);
            inWord = true;
        }
    }
    if (quoted)
        return false;
    if (inWord)
        words->append(current);
    return true;
}

namespace {

enum class Stop { End, NextScenario, EndOfFile, Error };

// Reads steps up to the `end` of a block, the next `scenario` line or the end of the file.
Stop readSteps(const QStringList& lines, const QString& file, qsizetype& at, std::vector<Step>* steps,
               QString* error) {
    while (at < lines.size()) {
        const QString text = lines.at(at).trimmed();
        const int lineNo = static_cast<int>(at) + 1;
        if (text.isEmpty() || text.startsWith(u'#')) {
            ++at;
            continue;
        }
        Step step{file, lineNo, {}, {}, {}};
        if (!splitWords(text, &step.words)) {
            *error = u"%1:%2: unclosed quote"_s.arg(file).arg(lineNo);
            return Stop::Error;
        }
        const QString command = step.words.first();
        if (command == u"scenario"_s)
            return Stop::NextScenario;
        ++at;
        if (command == u"end"_s)
            return Stop::End;
        if (command == u"on"_s && step.words.size() == 2) {
            const Stop inner = readSteps(lines, file, at, &step.block, error);
            if (inner == Stop::Error)
                return inner;
            if (inner != Stop::End) {
                *error = u"%1:%2: `on` block without `end`"_s.arg(file).arg(lineNo);
                return Stop::Error;
            }
        }
        steps->push_back(std::move(step));
    }
    return Stop::EndOfFile;
}

bool readScenario(const QStringList& lines, const QString& file, qsizetype& at, Scenario* scenario,
                  QString* error) {
    const Stop stop = readSteps(lines, file, at, &scenario->steps, error);
    if (stop == Stop::End) {
        *error = u"%1:%2: `end` without `on`"_s.arg(file).arg(at);
        return false;
    }
    return stop != Stop::Error;
}

} // namespace

bool parseFile(const QString& path, std::vector<Scenario>* scenarios, QString* error) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = u"%1: cannot be read"_s.arg(path);
        return false;
    }
    const QStringList lines = QString::fromUtf8(f.readAll()).split(u'\n');
    const QString file = QFileInfo(path).fileName();
    qsizetype at = 0;
    Scenario first{QFileInfo(path).completeBaseName(), file, {}};
    if (!readScenario(lines, file, at, &first, error))
        return false;
    if (!first.steps.empty() || at >= lines.size())
        scenarios->push_back(std::move(first));
    while (at < lines.size()) {
        QStringList words;
        splitWords(lines.at(at).trimmed(), &words);
        Scenario next{words.value(1), file, {}};
        ++at;
        if (!readScenario(lines, file, at, &next, error))
            return false;
        scenarios->push_back(std::move(next));
    }
    const QString folder = QFileInfo(path).absolutePath();
    const std::function<void(std::vector<Step>&)> place = [&](std::vector<Step>& steps) {
        for (Step& step : steps) {
            step.folder = folder;
            place(step.block);
        }
    };
    for (Scenario& scenario : *scenarios)
        place(scenario.steps);
    return true;
}

} // namespace vantrel::scenario
