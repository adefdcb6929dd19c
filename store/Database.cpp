#include "store/Database.h"

#include "store/Schema.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace vantrel {

Row::Row(const QSqlRecord& record) {
    for (int i = 0; i < record.count(); ++i) {
        m_names.append(record.fieldName(i));
        m_values.append(record.value(i));
    }
}

Row::Row(QStringList names, QVariantList values) : m_names(std::move(names)), m_values(std::move(values)) {}

int Row::indexOf(const QString& column) const {
    for (int i = 0; i < m_names.size(); ++i) {
        if (m_names.at(i).compare(column, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

bool Row::has(const QString& column) const {
    return indexOf(column) >= 0;
}

QVariant Row::value(const QString& column) const {
    const int i = indexOf(column);
    Q_ASSERT_X(i >= 0, "Row::value", qPrintable(column));
    return i >= 0 ? m_values.at(i) : QVariant();
}

QVariant Row::at(int index) const {
    return m_values.value(index);
}

QString Row::text(const QString& column) const {
    const QVariant v = value(column);
    return v.isNull() ? QString() : v.toString();
}

qint64 Row::integer(const QString& column) const {
    const QVariant v = value(column);
    if (v.isNull())
        return 0;
    if (v.typeId() == QMetaType::QString)
        return qRound64(v.toString().trimmed().toDouble());
    return v.toLongLong();
}

double Row::real(const QString& column) const {
    const QVariant v = value(column);
    if (v.isNull())
        return 0;
    if (v.typeId() == QMetaType::QString)
        return v.toString().trimmed().toDouble();
    return v.toDouble();
}

bool Row::flag(const QString& column) const {
    return integer(column) != 0;
}

QDate Row::date(const QString& column) const {
    return dateFromSql(value(column));
}

Database::~Database() {
    close();
}

bool Database::open(const QString& path, QString* error) {
    close();
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile() || !info.isReadable()) {
        *error = u"The database file %1 does not exist."_s.arg(path);
        return false;
    }
    static QAtomicInteger<int> counter;
    m_connection = u"vantrel-%1"_s.arg(counter.fetchAndAddRelaxed(1));
    m_db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection);
    m_db.setDatabaseName(u"file:%1?mode=rw"_s.arg(info.absoluteFilePath()));
    m_db.setConnectOptions(u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=5000"_s);
    m_path = info.absoluteFilePath();
    auto fail = [&](const QString& text) {
        *error = text;
        close();
        return false;
    };
    if (!m_db.open())
        return fail(m_db.lastError().text());
    const QVariant version = scalar(u"PRAGMA user_version"_s);
    if (!version.isValid())
        return fail(m_lastError);
    if (version.toInt() < 1)
        return fail(u"The file is not a clinic database."_s);
    if (execute(u"PRAGMA journal_mode = WAL"_s) < 0 || execute(u"PRAGMA synchronous = FULL"_s) < 0)
        return fail(m_lastError);
    QString schemaError;
    if (!schema::migrate(m_db, &schemaError) || !schema::createStaging(m_db, &schemaError))
        return fail(schemaError);
    return true;
}

void Database::close() {
    if (m_connection.isEmpty())
        return;
    m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
    m_connection.clear();
    m_watched.clear();
}

bool Database::isOpen() const {
    return !m_connection.isEmpty() && m_db.isOpen();
}

void Database::remember(const QSqlError& error) {
    m_lastError = error.text();
    m_lastErrorNumber = error.nativeErrorCode().toInt();
}

bool Database::prepare(QSqlQuery& query, const QString& sql, const QVariantList& params) {
    query.setForwardOnly(true);
    if (!query.prepare(sql)) {
        remember(query.lastError());
        return false;
    }
    for (const QVariant& p : params)
        query.addBindValue(p);
    if (!query.exec()) {
        remember(query.lastError());
        return false;
    }
    return true;
}

int Database::execute(const QString& sql, const QVariantList& params) {
    QSqlQuery query(m_db);
    if (!prepare(query, sql, params))
        return -1;
    return std::max(0, query.numRowsAffected());
}

Rows Database::select(const QString& sql, const QVariantList& params) {
    Rows rows;
    QSqlQuery query(m_db);
    if (!prepare(query, sql, params))
        return rows;
    // The names are read once; each row shares them.
    QStringList names;
    int columns = 0;
    while (query.next()) {
        if (names.isEmpty()) {
            const QSqlRecord record = query.record();
            columns = record.count();
            for (int i = 0; i < columns; ++i)
                names.append(record.fieldName(i));
        }
        QVariantList values;
        values.reserve(columns);
        for (int i = 0; i < columns; ++i)
            values.append(query.value(i));
        rows.emplace_back(names, std::move(values));
    }
    return rows;
}

QString Database::version(const QStringList& tables) {
    // Triggers of the connection count the changes of each table watched.
    execute(u"CREATE TEMP TABLE IF NOT EXISTS TableVersion (Name TEXT PRIMARY KEY, Version INTEGER)"_s);
    QStringList parts{m_connection, scalar(u"PRAGMA data_version"_s).toString()};
    for (const QString& table : tables) {
        if (!m_watched.contains(table)) {
            for (const QString& event : {u"INSERT"_s, u"UPDATE"_s, u"DELETE"_s})
                execute(u"CREATE TEMP TRIGGER IF NOT EXISTS \"Watch%1%2\" AFTER %2 ON main.\"%1\" BEGIN "
                        "INSERT INTO TableVersion (Name, Version) VALUES ('%1', 1) "
                        "ON CONFLICT (Name) DO UPDATE SET Version = Version + 1; END"_s.arg(table, event));
            m_watched.append(table);
        }
        parts.append(scalar(u"SELECT Version FROM TableVersion WHERE Name = ?"_s, {table}).toString());
    }
    return parts.join(u'/');
}

std::optional<Row> Database::first(const QString& sql, const QVariantList& params) {
    QSqlQuery query(m_db);
    if (!prepare(query, sql, params) || !query.next())
        return std::nullopt;
    return Row(query.record());
}

QVariant Database::scalar(const QString& sql, const QVariantList& params) {
    QSqlQuery query(m_db);
    if (!prepare(query, sql, params) || !query.next())
        return {};
    return query.value(0);
}

bool Database::exists(const QString& sql, const QVariantList& params) {
    QSqlQuery query(m_db);
    return prepare(query, sql, params) && query.next();
}

qint64 Database::lastInsertId() {
    return scalar(u"SELECT last_insert_rowid()"_s).toLongLong();
}

bool Database::begin() {
    if (!m_db.transaction()) {
        remember(m_db.lastError());
        return false;
    }
    return true;
}

bool Database::commit() {
    if (!m_db.commit()) {
        remember(m_db.lastError());
        return false;
    }
    return true;
}

void Database::rollback() {
    m_db.rollback();
}

Transaction::Transaction(Database& db) : m_db(db), m_active(db.begin()) {}

Transaction::~Transaction() {
    if (m_active)
        m_db.rollback();
}

bool Transaction::commit() {
    if (!m_active)
        return false;
    m_active = false;
    if (m_db.commit())
        return true;
    m_db.rollback();
    return false;
}

QVariant sqlDate(const QDate& date) {
    return date.isValid() ? QVariant(date.toString(Qt::ISODate)) : QVariant(QMetaType(QMetaType::QString));
}

QVariant sqlDateTime(const QDateTime& dateTime) {
    return dateTime.isValid() ? QVariant(dateTime.toString(u"yyyy-MM-dd HH:mm:ss"_s))
                              : QVariant(QMetaType(QMetaType::QString));
}

QDate dateFromSql(const QVariant& value) {
    if (value.isNull())
        return {};
    const QString text = value.toString();
    return QDate::fromString(text.left(10), Qt::ISODate);
}

} // namespace vantrel
