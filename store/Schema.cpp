#include "store/Schema.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace vantrel::schema {

namespace {

QString quoted(const QString& identifier) {
    return u"\"%1\""_s.arg(identifier);
}

QString quoted(const char* identifier) {
    return quoted(QString::fromLatin1(identifier));
}

QString columnType(Type type) {
    switch (type) {
    case Type::Counter:
        return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    case Type::KeyLong:
        return u"INTEGER PRIMARY KEY"_s;
    case Type::KeyText:
        return u"TEXT PRIMARY KEY COLLATE NOCASE"_s;
    case Type::Text:
        return u"TEXT COLLATE NOCASE"_s;
    case Type::Memo:
    case Type::Date:
    case Type::DateTime:
    case Type::Time:
        return u"TEXT"_s;
    case Type::Long:
    case Type::Integer:
        return u"INTEGER"_s;
    case Type::Double:
    case Type::Single:
        return u"REAL"_s;
    case Type::Boolean:
        return u"INTEGER NOT NULL DEFAULT 0"_s;
    }
    return {};
}

QString indexStatement(const Table& table, const Index& index) {
    QString name = u"ix_"_s + QString::fromLatin1(table.name);
    QStringList columns;
    for (const char* column : index.columns) {
        name += u'_' + QString::fromLatin1(column);
        columns << quoted(column);
    }
    return u"CREATE INDEX %1 ON %2 (%3)"_s.arg(quoted(name), quoted(table.name), columns.join(u", "_s));
}

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

bool run(QSqlDatabase& db, const QString& sql, QString* error) {
    QSqlQuery query(db);
    return query.exec(sql) || fail(error, query.lastError().text());
}

// Reads PRAGMA user_version; -1 when the file can not be read.
int userVersion(QSqlDatabase& db, QString* error) {
    QSqlQuery query(db);
    if (!query.exec(u"PRAGMA user_version"_s) || !query.next()) {
        fail(error, query.lastError().text());
        return -1;
    }
    return query.value(0).toInt();
}

// The version is a number of this program, never a typed value, and a pragma takes no parameter.
bool setUserVersion(QSqlDatabase& db, int version, QString* error) {
    return run(db, u"PRAGMA user_version = %1"_s.arg(version), error);
}

// The file also declares each staging table, empty, so that its schema shows every table of the system.
// The live staging tables are the TEMP ones of each connection, which shadow these declarations.
bool createPermanentTables(QSqlDatabase& db, QString* error) {
    for (const Table& table : tables()) {
        if (table.staging) {
            if (!run(db,
                     createStatement(table).replace(u"CREATE TEMP TABLE IF NOT EXISTS"_s, u"CREATE TABLE"_s),
                     error))
                return false;
            continue;
        }
        if (!run(db, createStatement(table), error))
            return false;
        for (const Index& index : table.indexes) {
            if (!run(db, indexStatement(table, index), error))
                return false;
        }
    }
    return true;
}

template <typename Work> bool inTransaction(QSqlDatabase& db, QString* error, Work work) {
    if (!db.transaction())
        return fail(error, db.lastError().text());
    if (!work()) {
        db.rollback();
        return false;
    }
    if (!db.commit()) {
        fail(error, db.lastError().text());
        db.rollback();
        return false;
    }
    return true;
}

using Upgrade = bool (*)(QSqlDatabase& db, QString* error);

// Creates every index the tables declare that the file does not have yet.
bool addMissingIndexes(QSqlDatabase& db, QString* error) {
    for (const Table& table : tables()) {
        for (const Index& index : table.indexes) {
            if (!table.staging &&
                !run(db,
                     indexStatement(table, index).replace(u"CREATE INDEX"_s, u"CREATE INDEX IF NOT EXISTS"_s),
                     error))
                return false;
        }
    }
    return true;
}

// upgrades[i] brings a database of version i + 1 to version i + 2. A release that changes the schema
// appends its step here and makes the same change in tables(), which an empty file is created from.
// Version 2: the columns the in-use checks look for are indexed on the large tables of prescriptions.
// Version 3: the links the brand filters search by (indication, group) are indexed.
constexpr std::array<Upgrade, 2> upgrades{addMissingIndexes, addMissingIndexes};

} // namespace

const Table* findTable(const QString& name) {
    static const QHash<QString, const Table*> byName = [] {
        QHash<QString, const Table*> hash;
        for (const Table& table : tables())
            hash.insert(QString::fromLatin1(table.name).toLower(), &table);
        return hash;
    }();
    return byName.value(name.toLower(), nullptr);
}

const Column* findColumn(const Table& table, const QString& name) {
    for (const Column& column : table.columns) {
        if (name.compare(QLatin1String(column.name), Qt::CaseInsensitive) == 0)
            return &column;
    }
    return nullptr;
}

int currentVersion() {
    return 1 + static_cast<int>(upgrades.size());
}

QString createStatement(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns)
        columns << quoted(column.name) + u' ' + columnType(column.type);
    const QString create = table.staging ? u"CREATE TEMP TABLE IF NOT EXISTS"_s : u"CREATE TABLE"_s;
    return u"%1 %2 (%3)"_s.arg(create, quoted(table.name), columns.join(u", "_s));
}

bool migrate(QSqlDatabase& db, QString* error) {
    const int version = userVersion(db, error);
    if (version < 0)
        return false;
    if (version > currentVersion()) {
        return fail(error,
                    u"The database has schema version %1, newer than version %2 of this program."_s.arg(
                        QString::number(version), QString::number(currentVersion())));
    }
    if (version == 0) {
        return inTransaction(db, error, [&] {
            return createPermanentTables(db, error) && setUserVersion(db, currentVersion(), error);
        });
    }
    for (int from = version; from < currentVersion(); ++from) {
        const Upgrade upgrade = upgrades.at(static_cast<std::size_t>(from - 1));
        if (!inTransaction(db, error,
                           [&] { return upgrade(db, error) && setUserVersion(db, from + 1, error); }))
            return false;
    }
    return true;
}

bool createStaging(QSqlDatabase& db, QString* error) {
    for (const Table& table : tables()) {
        if (table.staging && !run(db, createStatement(table), error))
            return false;
    }
    return true;
}

} // namespace vantrel::schema
