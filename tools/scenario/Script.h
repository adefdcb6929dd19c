#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace vantrel::scenario {

// One command line of a scenario file; an `on SCREEN` block holds its steps.
struct Step {
    QString file;
    int line = 0;
    QStringList words; // the command and its arguments, quotes removed
    std::vector<Step> block;
    QString folder; // where the scenario file lies: files it names are found beside it
};

struct Scenario {
    QString name;
    QString file;
    std::vector<Step> steps;
};

// Splits a line into words: blanks separate, double quotes group, with \" \\ and \n inside quotes.
// Returns false on an unclosed quote.
bool splitWords(const QString& line, QStringList* words);

// Reads a scenario file; a file with no `scenario` line is one scenario named after the file.
bool parseFile(const QString& path, std::vector<Scenario>* scenarios, QString* error);

} // namespace vantrel::scenario
