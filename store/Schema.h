#pragma once

#include <QSqlDatabase>
#include <QString>
#include <span>
#include <vector>

namespace vantrel::schema {

// How a column is stored. Text compares without case, as the clinic's data always has.
enum class Type {
    Counter,  // INTEGER PRIMARY KEY AUTOINCREMENT: assigned by the database when the row is added
    KeyLong,  // INTEGER PRIMARY KEY: a number the program assigns (Max + 1)
    KeyText,  // TEXT PRIMARY KEY COLLATE NOCASE: a composed number such as an OPD card number
    Text,     // TEXT COLLATE NOCASE
    Memo,     // TEXT
    Long,     // INTEGER (32 bits)
    Integer,  // INTEGER (16 bits)
    Double,   // REAL
    Single,   // REAL
    Boolean,  // INTEGER NOT NULL DEFAULT 0, holding 0 or 1
    Date,     // TEXT 'YYYY-MM-DD'
    DateTime, // TEXT 'YYYY-MM-DD HH:MM:SS'
    Time,     // TEXT 'HH:MM:SS'
};

struct Column {
    const char* name;
    Type type;
};

struct Index {
    std::vector<const char*> columns;
};

struct Table {
    const char* name;
    bool staging; // a Tmp... table: created TEMP on every connection, private to the process
    std::vector<Column> columns;
    std::vector<Index> indexes;
};

// Every table of the database, in one place.
std::span<const Table> tables();

// The table of that name (compared without case), or nullptr.
const Table* findTable(const QString& name);

// The column of that table (compared without case), or nullptr.
const Column* findColumn(const Table& table, const QString& name);

// The schema version written to PRAGMA user_version by the last migration.
int currentVersion();

// Creates every permanent table and index on an empty database, or upgrades an older one through the
// ordered migrations, each in its own transaction. Returns false with the engine's text in error.
bool migrate(QSqlDatabase& db, QString* error);

// Creates the TEMP staging tables on a freshly opened connection.
bool createStaging(QSqlDatabase& db, QString* error);

// The CREATE TABLE statement of one table (TEMP for staging tables).
QString createStatement(const Table& table);

} // namespace vantrel::schema
