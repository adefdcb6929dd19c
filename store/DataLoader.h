#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

namespace vantrel {

// The tables that the program itself needs to start and run; the empty clinic database holds these rows
// and nothing else.
QStringList programTables();

// Loads one data file, data/<Table>.tsv, into its table: every row, inside one transaction, so that a
// refused file leaves the table as it was. The error names the file and its line.
bool loadTableFile(QSqlDatabase& db, const QString& path, QString* error);

// Builds the delivered databases from the data folder: outDir/Vantrel.db with every data file, and
// outDir/Schema.db with only the program's own tables. Each file is built beside its target and takes
// its place only when complete.
bool buildDeliveredDatabases(const QString& dataDir, const QString& outDir, QString* error);

} // namespace vantrel
