#include "store/Schema.h"

#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <optional>
#include <utility>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using vantrel::schema::Table;
using vantrel::schema::Type;
namespace schema = vantrel::schema;

namespace {

QString quoted(const char* identifier) {
    return u"\"%1\""_s.arg(QString::fromLatin1(identifier));
}

// Each test has its own in-memory database, shared only by the connections the test opens itself.
class SchemaTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        m_file = u"file:schema-%1-%2?mode=memory&cache=shared"_s.arg(
            QString::fromLatin1(test->test_suite_name()), QString::fromLatin1(test->name()));
        db = connect(u"main"_s);
        ASSERT_TRUE(db.isOpen());
    }

    void TearDown() override {
        db = QSqlDatabase();
        for (const QString& name : std::as_const(m_connections)) {
            QSqlDatabase::database(name, false).close();
            QSqlDatabase::removeDatabase(name);
        }
    }

    QSqlDatabase connect(const QString& suffix) {
        const QString name = m_file + u'#' + suffix;
        m_connections << name;
        QSqlDatabase connection = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
        connection.setDatabaseName(m_file);
        connection.setConnectOptions(u"QSQLITE_OPEN_URI"_s);
        connection.open();
        return connection;
    }

    void migrateAndStage() {
        QString error;
        ASSERT_TRUE(schema::migrate(db, &error)) << qPrintable(error);
        ASSERT_TRUE(schema::createStaging(db, &error)) << qPrintable(error);
    }

    // Runs a statement with bound values, on the test's connection unless another is given.
    QSqlQuery run(const QString& sql, const QVariantList& params = {}, const QSqlDatabase& on = {}) {
        QSqlQuery query(on.isValid() ? on : db);
        query.prepare(sql);
        for (const QVariant& param : params)
            query.addBindValue(param);
        query.exec();
        return query;
    }

    bool exec(const QString& sql, const QVariantList& params = {}) { return run(sql, params).isActive(); }

    // The first column of the first row, or an invalid value when the statement fails or finds nothing.
    QVariant value(const QString& sql, const QVariantList& params = {}, const QSqlDatabase& on = {}) {
        QSqlQuery query = run(sql, params, on);
        return query.next() ? query.value(0) : QVariant();
    }

    int count(const QString& sql, const QVariantList& params = {}) { return value(sql, params).toInt(); }

    QSqlDatabase db;

private:
    QString m_file;
    QStringList m_connections;
};

TEST_F(SchemaTest, MigrateCreatesEveryPermanentTableWithItsColumnsAndIndexesOnce) {
    int indexes = 0;
    for (const Table& table : schema::tables())
        indexes += static_cast<int>(table.indexes.size());

    for (int pass = 0; pass < 2; ++pass) {
        QString error;
        ASSERT_TRUE(schema::migrate(db, &error)) << qPrintable(error);
        EXPECT_EQ(count(u"PRAGMA user_version"_s), schema::currentVersion());
        EXPECT_EQ(count(u"SELECT count(*) FROM sqlite_master WHERE type = 'index' AND name LIKE 'ix!_%' "
                        u"ESCAPE '!'"_s),
                  indexes);
        for (const Table& table : schema::tables()) {
            const QString name = QString::fromLatin1(table.name);
            const int found =
                count(u"SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = ?"_s, {name});
            EXPECT_EQ(found, 1) << table.name;
            EXPECT_EQ(count(u"SELECT count(*) FROM pragma_table_info(?)"_s, {name}),
                      static_cast<int>(table.columns.size()))
                << table.name;
        }
    }
}

TEST_F(SchemaTest, AFirstReleaseDatabaseGainsTheIndexesOfTheInUseChecksAndKeepsItsRows) {
    QString error;
    ASSERT_TRUE(schema::migrate(db, &error)) << qPrintable(error);
    ASSERT_TRUE(exec(u"DROP INDEX ix_PresDet_GenericCode"_s));
    ASSERT_TRUE(exec(u"DROP INDEX ix_PresDisease_DiseaseCode"_s));
    ASSERT_TRUE(exec(u"INSERT INTO PresDet (Code, GenericCode) VALUES (1, 5)"_s));
    ASSERT_TRUE(exec(u"PRAGMA user_version = 1"_s));
    ASSERT_TRUE(schema::migrate(db, &error)) << qPrintable(error);
    EXPECT_EQ(count(u"PRAGMA user_version"_s), schema::currentVersion());
    EXPECT_EQ(count(u"SELECT count(*) FROM sqlite_master WHERE name IN "
                    u"('ix_PresDet_GenericCode', 'ix_PresDisease_DiseaseCode')"_s),
              2);
    EXPECT_EQ(count(u"SELECT GenericCode FROM PresDet WHERE Code = 1"_s), 5);
}

TEST_F(SchemaTest, NewerDatabaseIsRefusedAndLeftAlone) {
    const int newer = schema::currentVersion() + 1;
    ASSERT_TRUE(exec(u"PRAGMA user_version = %1"_s.arg(newer)));
    QString error;
    EXPECT_FALSE(schema::migrate(db, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(count(u"PRAGMA user_version"_s), newer);
    EXPECT_EQ(count(u"SELECT count(*) FROM sqlite_master"_s), 0);
}

TEST_F(SchemaTest, FailedCreationRollsBackEverything) {
    ASSERT_TRUE(exec(u"CREATE TABLE City (Stray INTEGER)"_s));
    QString error;
    EXPECT_FALSE(schema::migrate(db, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(count(u"PRAGMA user_version"_s), 0);
    EXPECT_EQ(count(u"SELECT count(*) FROM sqlite_master"_s), 1);
}

TEST_F(SchemaTest, StagingTablesAreTemporaryAndPrivateToTheirConnection) {
    migrateAndStage();
    QString error;
    ASSERT_TRUE(schema::createStaging(db, &error)) << qPrintable(error);
    ASSERT_TRUE(exec(u"INSERT INTO TmpDet (Code, Name) VALUES (?, ?)"_s, {7, u"CROCIN"_s}));

    QSqlDatabase other = connect(u"other"_s);
    ASSERT_TRUE(other.isOpen());
    EXPECT_TRUE(value(u"SELECT count(*) FROM PresHead"_s, {}, other).isValid());
    for (const Table& table : schema::tables()) {
        if (!table.staging)
            continue;
        const QString name = QString::fromLatin1(table.name);
        EXPECT_EQ(
            count(u"SELECT count(*) FROM sqlite_temp_master WHERE type = 'table' AND name = ?"_s, {name}), 1)
            << table.name;
        EXPECT_EQ(value(u"SELECT count(*) FROM %1"_s.arg(quoted(table.name)), {}, other).toInt(), 0)
            << table.name;
    }
    EXPECT_EQ(count(u"SELECT count(*) FROM TmpDet"_s), 1);
    EXPECT_EQ(count(u"SELECT count(*) FROM main.TmpDet"_s), 0) << "the file's declaration stays empty";
}

TEST_F(SchemaTest, TextComparesWithoutCaseAndMemoWithCase) {
    migrateAndStage();
    ASSERT_TRUE(exec(u"INSERT INTO City (Name) VALUES (?)"_s, {u"Abc"_s}));
    EXPECT_EQ(count(u"SELECT count(*) FROM City WHERE Name = ?"_s, {u"ABC"_s}), 1);
    ASSERT_TRUE(exec(u"INSERT INTO TmpDet (Code, Name) VALUES (?, ?)"_s, {1, u"Abc"_s}));
    EXPECT_EQ(count(u"SELECT count(*) FROM TmpDet WHERE Name = ?"_s, {u"ABC"_s}), 1);
    ASSERT_TRUE(exec(u"INSERT INTO PharmaName (Name, Remark) VALUES (?, ?)"_s, {u"X"_s, u"Abc"_s}));
    EXPECT_EQ(count(u"SELECT count(*) FROM PharmaName WHERE Remark = ?"_s, {u"ABC"_s}), 0);

    ASSERT_TRUE(exec(u"INSERT INTO OPDCard (OPDCardNo) VALUES (?)"_s, {u"2024A000001"_s}));
    EXPECT_FALSE(exec(u"INSERT INTO OPDCard (OPDCardNo) VALUES (?)"_s, {u"2024a000001"_s}));
}

TEST_F(SchemaTest, BooleanColumnsReadZeroOnARowAddedWithoutThem) {
    migrateAndStage();
    for (const Table& table : schema::tables()) {
        QStringList flags;
        for (const auto& column : table.columns) {
            if (column.type == Type::Boolean)
                flags << quoted(column.name);
        }
        if (flags.isEmpty())
            continue;
        ASSERT_TRUE(exec(u"INSERT INTO %1 DEFAULT VALUES"_s.arg(quoted(table.name)))) << table.name;
        for (const QString& flag : std::as_const(flags)) {
            const QVariant read = value(u"SELECT %1 FROM %2"_s.arg(flag, quoted(table.name)));
            EXPECT_FALSE(read.isNull()) << table.name << '.' << qPrintable(flag);
            EXPECT_EQ(read.toInt(), 0) << table.name << '.' << qPrintable(flag);
        }
    }
}

TEST_F(SchemaTest, CounterCodesIncreaseAndAreNeverReused) {
    migrateAndStage();
    auto add = [&](const QString& name) {
        EXPECT_TRUE(exec(u"INSERT INTO Manufacturer (Name) VALUES (?)"_s, {name}));
        return value(u"SELECT Code FROM Manufacturer WHERE Name = ?"_s, {name}).toLongLong();
    };
    EXPECT_EQ(add(u"CIPLA"_s), 1);
    EXPECT_EQ(add(u"LUPIN"_s), 2);
    ASSERT_TRUE(exec(u"DELETE FROM Manufacturer WHERE Code = ?"_s, {2}));
    EXPECT_EQ(add(u"RANBAXY"_s), 3);

    ASSERT_TRUE(exec(u"INSERT INTO PresHead (Code) VALUES (?)"_s, {1000}));
    EXPECT_FALSE(exec(u"INSERT INTO PresHead (Code) VALUES (?)"_s, {1000}));
}

TEST(SchemaDefinition, NamesAreUniqueAndIndexesNameRealColumns) {
    QSet<QString> tableNames;
    for (const Table& table : schema::tables()) {
        const QString name = QString::fromLatin1(table.name);
        EXPECT_FALSE(tableNames.contains(name.toLower())) << table.name;
        tableNames.insert(name.toLower());
        EXPECT_EQ(table.staging, name.startsWith(u"Tmp"_s)) << table.name;
        EXPECT_TRUE(!table.staging || table.indexes.empty()) << table.name;
        EXPECT_EQ(schema::findTable(name.toUpper()), &table) << table.name;

        QSet<QString> columnNames;
        int keys = 0;
        for (const auto& column : table.columns) {
            const QString columnName = QString::fromLatin1(column.name).toLower();
            EXPECT_FALSE(columnNames.contains(columnName)) << table.name << '.' << column.name;
            columnNames.insert(columnName);
            keys +=
                column.type == Type::Counter || column.type == Type::KeyLong || column.type == Type::KeyText;
        }
        EXPECT_LE(keys, 1) << table.name;
        for (const auto& index : table.indexes) {
            for (const char* column : index.columns)
                EXPECT_NE(schema::findColumn(table, QString::fromLatin1(column)), nullptr)
                    << table.name << column;
        }
    }
}

TEST(SchemaDefinition, SpotChecks) {
    auto typeOf = [](const char* table, const char* column) -> std::optional<Type> {
        const Table* found = schema::findTable(QString::fromLatin1(table));
        if (!found)
            return std::nullopt;
        const auto* col = schema::findColumn(*found, QString::fromLatin1(column).toLower());
        return col ? std::optional<Type>(col->type) : std::nullopt;
    };
    EXPECT_EQ(typeOf("control", "Clinic_User"), Type::Text);
    EXPECT_EQ(typeOf("Control", "Password"), Type::Text);
    EXPECT_EQ(typeOf("Control", "HOpt"), Type::Text);
    EXPECT_EQ(typeOf("Control", "OPDFindFore"), Type::Text);
    EXPECT_EQ(typeOf("Control", "CardGenBy"), Type::Long);
    EXPECT_EQ(typeOf("PresHead", "Code"), Type::KeyLong);
    EXPECT_EQ(typeOf("OPDCard", "OPDCardNo"), Type::KeyText);
    EXPECT_EQ(typeOf("Visits", "VisitNo"), Type::KeyText);
    EXPECT_EQ(typeOf("Visits", "VisitTime"), Type::Time);
    EXPECT_EQ(typeOf("TmpDet", "Update"), Type::Boolean);
    EXPECT_EQ(typeOf("Level2", "MenuName"), Type::Text);
    EXPECT_EQ(typeOf("Level2", "ShowOption"), Type::Boolean);
    EXPECT_EQ(typeOf("Level2", "DefaultUser"), Type::Boolean);
    EXPECT_TRUE(schema::findTable(u"TmpDet"_s)->staging);
    // The disposal utility names this table by mistake; its delete must keep failing.
    EXPECT_EQ(schema::findTable(u"PresDiaease"_s), nullptr);
}

} // namespace
