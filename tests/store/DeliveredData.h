#pragma once

// The tests' own connection to a database file, and the delivered databases built once from data/.

#include "store/DataLoader.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace vantrel::testing {

using namespace Qt::StringLiterals;

// A connection of the test's own to one database file, removed when the test is done with it.
class Connection {
public:
    explicit Connection(const QString& file) : m_name(u"dataloader-test-%1"_s.arg(++s_count)) {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_name);
        db.setDatabaseName(file);
        db.open();
    }
    ~Connection() {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    QSqlDatabase db() const { return QSqlDatabase::database(m_name, false); }

    std::vector<QVariantList> rows(const QString& sql, const QVariantList& params = {}) const {
        QSqlQuery query(db());
        query.prepare(sql);
        for (const QVariant& p : params)
            query.addBindValue(p);
        EXPECT_TRUE(query.exec()) << qPrintable(sql) << ": " << qPrintable(query.lastError().text());
        std::vector<QVariantList> out;
        while (query.next()) {
            QVariantList row;
            for (int i = 0; i < query.record().count(); ++i)
                row << query.value(i);
            out.push_back(row);
        }
        return out;
    }

    QVariant scalar(const QString& sql, const QVariantList& params = {}) const {
        const auto result = rows(sql, params);
        return result.empty() ? QVariant() : result.front().value(0);
    }

    qint64 count(const QString& table) const {
        return scalar(u"SELECT COUNT(*) FROM \"%1\""_s.arg(table)).toLongLong();
    }

private:
    static inline int s_count = 0;
    QString m_name;
};

inline bool writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class DeliveredDataTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
#ifdef VANTREL_SOURCE_DIR
        s_dir = std::make_unique<QTemporaryDir>();
        s_data = QString::fromUtf8(VANTREL_SOURCE_DIR) + u"/data"_s;
        s_built = vantrel::buildDeliveredDatabases(s_data, s_dir->path(), &s_error);
#endif
    }

    static void TearDownTestSuite() {
        s_dir.reset();
    }

    void SetUp() override {
        if (!s_dir)
            GTEST_SKIP() << "VANTREL_SOURCE_DIR is not defined for the tests";
        ASSERT_TRUE(s_built) << qPrintable(s_error);
        m_full = std::make_unique<Connection>(s_dir->filePath(u"Vantrel.db"_s));
        m_program = std::make_unique<Connection>(s_dir->filePath(u"Schema.db"_s));
    }

    void TearDown() override {
        m_full.reset();
        m_program.reset();
    }

    static QStringList texts(const Connection& c, const QString& sql, const QVariantList& params = {}) {
        QStringList out;
        for (const QVariantList& row : c.rows(sql, params))
            out << row.value(0).toString();
        return out;
    }

    static inline std::unique_ptr<QTemporaryDir> s_dir;
    static inline QString s_data;
    static inline bool s_built = false;
    static inline QString s_error;
    std::unique_ptr<Connection> m_full;
    std::unique_ptr<Connection> m_program;
};

} // namespace vantrel::testing
