#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>
#include <optional>
#include <vector>

namespace vantrel {

// One row of a result, by column name (compared without case, as the engine does).
class Row {
public:
    Row() = default;
    explicit Row(const QSqlRecord& record);
    Row(QStringList names, QVariantList values);

    QVariant value(const QString& column) const;
    // Text read with an empty text joined to it: Null reads as "".
    QString text(const QString& column) const;
    // A number read through a numeric conversion: Null or empty text reads as 0.
    qint64 integer(const QString& column) const;
    double real(const QString& column) const;
    bool flag(const QString& column) const;
    QDate date(const QString& column) const;
    bool has(const QString& column) const;
    QVariant at(int index) const;
    int size() const { return static_cast<int>(m_values.size()); }
    QStringList columns() const { return m_names; }

private:
    int indexOf(const QString& column) const;
    QStringList m_names;
    QVariantList m_values;
};

using Rows = std::vector<Row>;

// The one open database of the process. Every statement takes its values as bound parameters.
class Database {
public:
    Database() = default;
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens an existing database file shared with the other application, read-write, brings its schema
    // up to date and creates the staging tables. A missing, unreadable or foreign file is refused.
    bool open(const QString& path, QString* error);
    void close();
    bool isOpen() const;
    QString path() const { return m_path; }
    QSqlDatabase& handle() { return m_db; }

    // Runs a statement that changes rows; returns the number of rows affected, or -1 with lastError().
    int execute(const QString& sql, const QVariantList& params = {});
    Rows select(const QString& sql, const QVariantList& params = {});
    std::optional<Row> first(const QString& sql, const QVariantList& params = {});
    // The first column of the first row, or an invalid QVariant when there is none.
    QVariant scalar(const QString& sql, const QVariantList& params = {});
    bool exists(const QString& sql, const QVariantList& params = {});
    // A number that changes whenever a row of one of these tables changes, through this connection or
    // another: a list read from them may be kept while it stays the same.
    QString version(const QStringList& tables);

    // The code given by the engine to the row just added.
    qint64 lastInsertId();

    QString lastError() const { return m_lastError; }
    // The engine's number of the last error.
    int lastErrorNumber() const { return m_lastErrorNumber; }

    bool begin();
    bool commit();
    void rollback();

private:
    bool prepare(QSqlQuery& query, const QString& sql, const QVariantList& params);
    void remember(const QSqlError& error);
    QSqlDatabase m_db;
    QString m_connection;
    QString m_path;
    QString m_lastError;
    int m_lastErrorNumber = 0;
    QStringList m_watched;
};

// A transaction that rolls back by itself unless it was committed.
class Transaction {
public:
    explicit Transaction(Database& db);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    bool active() const { return m_active; }
    bool commit();

private:
    Database& m_db;
    bool m_active;
};

// Stored forms of dates: ISO text.
QVariant sqlDate(const QDate& date);
QVariant sqlDateTime(const QDateTime& dateTime);
QDate dateFromSql(const QVariant& value);

} // namespace vantrel
