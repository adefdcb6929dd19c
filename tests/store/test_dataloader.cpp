#include "store/DataLoader.h"
#include "store/Schema.h"
#include "tests/store/DeliveredData.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
namespace schema = vantrel::schema;
using vantrel::testing::Connection;
using vantrel::testing::DeliveredDataTest;
using vantrel::testing::readFile;
using vantrel::testing::writeFile;

namespace {

// Each test loads into a fresh database of the full schema, in a folder of its own.
class DataLoaderTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        m_connection = std::make_unique<Connection>(m_dir.filePath(u"test.db"_s));
        QSqlDatabase db = m_connection->db();
        QString error;
        ASSERT_TRUE(schema::migrate(db, &error)) << qPrintable(error);
    }

    void TearDown() override { m_connection.reset(); }

    // Writes data/<name> with the content and loads it.
    bool load(const QString& name, const QByteArray& content, QString* error) {
        QDir().mkpath(m_dir.filePath(u"data"_s));
        const QString path = m_dir.filePath(u"data/"_s + name);
        EXPECT_TRUE(writeFile(path, content));
        QSqlDatabase db = m_connection->db();
        return vantrel::loadTableFile(db, path, error);
    }

    const Connection& connection() const { return *m_connection; }

    QTemporaryDir m_dir;

private:
    std::unique_ptr<Connection> m_connection;
};

TEST_F(DataLoaderTest, RefusesBadFilesNamingFileAndLine) {
    struct Case {
        const char* what;
        QString file;
        QByteArray content;
        QString where; // the part of the message that places the fault
        QString table; // the table that must stay empty
    };
    const QByteArray patientHead = "# Source: the test.\nCode\tName\tCity\tPHeight\tIsHof\tBirthDate\n";
    const std::vector<Case> cases{
        {"file named after no table", u"Patients.tsv"_s, "Code\tName\n1\tA\n", u"Patients.tsv: "_s,
         u"Patient"_s},
        {"staging table", u"TmpDet.tsv"_s, "Code\tName\n1\tA\n", u"TmpDet.tsv: "_s, u"Patient"_s},
        {"column the table lacks", u"Patient.tsv"_s, "# Source\n\nCode\tNam\n1\tA\n", u"Patient.tsv:3: "_s,
         u"Patient"_s},
        {"column named twice", u"Patient.tsv"_s, "Code\tName\tcode\n", u"Patient.tsv:1: "_s, u"Patient"_s},
        {"too few fields", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t0\t2000-01-01\n2\tB\t1\t150\t0\n",
         u"Patient.tsv:4: "_s, u"Patient"_s},
        {"too many fields", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t0\t2000-01-01\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"text in a number column", u"Patient.tsv"_s, patientHead + "1\tA\tLKO\t150\t0\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"fraction in a whole-number column", u"Patient.tsv"_s, patientHead + "1.5\tA\t1\t150\t0\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"text in a real column", u"Patient.tsv"_s, patientHead + "1\tA\t1\ttall\t0\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"Boolean other than 0 or 1", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t2\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"empty Boolean", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t\t\n", u"Patient.tsv:3: "_s,
         u"Patient"_s},
        {"day that does not exist", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t0\t2023-02-29\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"date not in ISO form", u"Patient.tsv"_s, patientHead + "1\tA\t1\t150\t0\t01/02/2023\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"unknown escape", u"Patient.tsv"_s, patientHead + "1\tA\\x\t1\t150\t0\t\n", u"Patient.tsv:3: "_s,
         u"Patient"_s},
        {"backslash at the end of a field", u"Patient.tsv"_s, patientHead + "1\tA\\\t1\t150\t0\t\n",
         u"Patient.tsv:3: "_s, u"Patient"_s},
        {"16-bit column overflow", u"Vaccine.tsv"_s, "Code\tName\tNoofDose\n1\tBCG\t40000\n",
         u"Vaccine.tsv:2: "_s, u"Vaccine"_s},
        {"time of day out of range", u"AppointSetting.tsv"_s, "BeginTime\tEndTime\n09:00:00\t25:00:00\n",
         u"AppointSetting.tsv:2: "_s, u"AppointSetting"_s},
        {"no line of column names", u"Patient.tsv"_s, "# Source: the test.\n\n", u"Patient.tsv: "_s,
         u"Patient"_s},
        {"not UTF-8", u"Patient.tsv"_s, "Code\tName\n1\tR\xe9NU\n", u"Patient.tsv: "_s, u"Patient"_s},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        QString error;
        EXPECT_FALSE(load(c.file, c.content, &error));
        EXPECT_TRUE(error.contains(c.where)) << qPrintable(error);
        EXPECT_EQ(connection().count(c.table), 0);
    }
}

TEST_F(DataLoaderTest, RoundTripsNullsEscapesAndDefaults) {
    QString error;
    const QByteArray content =
        "\xEF\xBB\xBF# Source: the test.\r\n"
        "# A second comment line.\r\n"
        "Code\tName\tAddress\tCity\tPHeight\tBirthDate\tAllergies\r\n"
        "1\tSHARMA\\tRAVI\t12, MG ROAD\\nLUCKNOW\t47\t152.5\t1980-07-15\tC:\\\\DUST\r\n"
        "\r\n"
        "2\t#NOT A COMMENT\t\t\t\t\t\r\n";
    ASSERT_TRUE(load(u"Patient.tsv"_s, content, &error)) << qPrintable(error);

    const auto rows = connection().rows(
        u"SELECT Code, Name, Address, City, PHeight, BirthDate, Allergies, IsHof FROM Patient ORDER BY Code"_s);
    ASSERT_EQ(rows.size(), 2u);
    const QVariantList& first = rows.at(0);
    EXPECT_EQ(first.at(0).toLongLong(), 1);
    EXPECT_EQ(first.at(1).toString(), u"SHARMA\tRAVI"_s);
    EXPECT_EQ(first.at(2).toString(), u"12, MG ROAD\nLUCKNOW"_s);
    EXPECT_EQ(first.at(3).toLongLong(), 47);
    EXPECT_DOUBLE_EQ(first.at(4).toDouble(), 152.5);
    EXPECT_EQ(first.at(5).toString(), u"1980-07-15"_s);
    EXPECT_EQ(first.at(6).toString(), u"C:\\DUST"_s);
    EXPECT_EQ(first.at(7).toInt(), 0) << "a Boolean left out of the header takes its default";

    const QVariantList& second = rows.at(1);
    EXPECT_EQ(second.at(1).toString(), u"#NOT A COMMENT"_s) << "only the top lines are comments";
    for (int i = 2; i <= 6; ++i)
        EXPECT_TRUE(second.at(i).isNull()) << "column " << i << " of an empty field is NULL";

    const auto types =
        connection().rows(u"SELECT typeof(City), typeof(PHeight) FROM Patient WHERE Code = 1"_s);
    EXPECT_EQ(types.at(0).at(0).toString(), u"integer"_s);
    EXPECT_EQ(types.at(0).at(1).toString(), u"real"_s);
}

TEST_F(DataLoaderTest, RefusedFileLeavesNoPartialRows) {
    QString error;
    ASSERT_TRUE(load(u"City.tsv"_s, "Code\tName\n1\tPUNE\n", &error)) << qPrintable(error);

    // A type fault on the last line: nothing of the file is written.
    EXPECT_FALSE(load(u"City.tsv"_s, "Code\tName\n2\tAGRA\n3\tAGRA\nx\tKOTA\n", &error));
    EXPECT_TRUE(error.contains(u"City.tsv:4: "_s)) << qPrintable(error);
    EXPECT_EQ(connection().count(u"City"_s), 1);

    // The engine refuses the third row (a key given twice): the rows before it are rolled back.
    EXPECT_FALSE(
        load(u"PresHead.tsv"_s, "Code\tPresDate\n1\t2024-01-02\n2\t2024-01-02\n1\t2024-01-03\n", &error));
    EXPECT_TRUE(error.contains(u"PresHead.tsv:4: "_s)) << qPrintable(error);
    EXPECT_EQ(connection().count(u"PresHead"_s), 0);
}

// A file may name the rows of another table instead of writing their codes, and may store each row of a
// pair table in both directions; faults name the file and the line.
TEST_F(DataLoaderTest, NamesBecomeCodesAndPairsAreStoredBothWays) {
    QString error;
    ASSERT_TRUE(load(u"PharmaName.tsv"_s, "Code\tName\n7\tWARFARIN\n9\tASPIRIN\n12\tASPIRIN LOW\n", &error));
    ASSERT_TRUE(load(u"InteractionType.tsv"_s, "Code\tName\n3\tBLEEDING\n", &error));
    ASSERT_TRUE(load(u"Relation.tsv"_s, "Relation\nFATHER\n", &error)) << qPrintable(error);

    ASSERT_TRUE(load(u"Interaction.tsv"_s,
                     "# Test.\n#! both-ways PharmaCode PharmaCodeInt\n"
                     "PharmaCode=PharmaName\tPharmaCodeInt=PharmaName\tIntTypeCode=InteractionType\n"
                     "WARFARIN\tASPIRIN\tBLEEDING\nASPIRIN LOW\tWARFARIN\t\n",
                     &error))
        << qPrintable(error);
    const auto rows = connection().rows(
        u"SELECT PharmaCode, PharmaCodeInt, IntTypeCode FROM Interaction ORDER BY PharmaCode, PharmaCodeInt"_s);
    const std::vector<QVariantList> expected{{7, 9, 3}, {7, 12, QVariant()}, {9, 7, 3}, {12, 7, QVariant()}};
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows.at(i).at(0).toInt(), expected.at(i).at(0).toInt());
        EXPECT_EQ(rows.at(i).at(1).toInt(), expected.at(i).at(1).toInt());
        EXPECT_EQ(rows.at(i).at(2).isNull(), expected.at(i).at(2).isNull()) << "an empty name is NULL";
    }

    ASSERT_TRUE(load(u"PatientFamily.tsv"_s, "RelationCode=Relation.Relation\nFATHER\n", &error))
        << "a table whose name column is not Name: " << qPrintable(error);
    EXPECT_EQ(connection().scalar(u"SELECT RelationCode FROM PatientFamily"_s).toInt(), 1);

    struct Case {
        const char* what;
        QString file;
        QByteArray content;
        QString message;
    };
    const QByteArray pairHead =
        "#! both-ways PharmaCode PharmaCodeInt\nPharmaCode=PharmaName\tPharmaCodeInt=PharmaName\n";
    const std::vector<Case> cases{
        {"a name not in the table", u"DrugSafety.tsv"_s, "PharmaCode=PharmaName\nWARFARIN\nWARFARINE\n",
         u"DrugSafety.tsv:3: column PharmaCode: PharmaName \"WARFARINE\" is not there"_s},
        {"a name in other capitals", u"DrugSafety.tsv"_s, "PharmaCode=PharmaName\nWarfarin\n",
         u"DrugSafety.tsv:2: "_s},
        {"a table that does not exist", u"DrugSafety.tsv"_s, "PharmaCode=Drugs\nWARFARIN\n",
         u"DrugSafety.tsv:1: there is no table named Drugs"_s},
        {"a text column can not hold a code", u"DrugSafety.tsv"_s, "Remark=PharmaName\nWARFARIN\n",
         u"DrugSafety.tsv:1: "_s},
        {"a pair written twice in the other order", u"Interaction.tsv"_s,
         pairHead + "WARFARIN\tASPIRIN\nASPIRIN\tWARFARIN\n",
         u"Interaction.tsv:4: the pair is already written on line 3"_s},
        {"a drug paired with itself", u"Interaction.tsv"_s, pairHead + "ASPIRIN\tASPIRIN\n",
         u"Interaction.tsv:3: "_s},
        {"an unknown directive", u"Interaction.tsv"_s, "#! mirror PharmaCode PharmaCodeInt\nPharmaCode\n",
         u"Interaction.tsv:1: "_s},
        {"both-ways over a column the file lacks", u"Interaction.tsv"_s,
         "#! both-ways PharmaCode PharmaCodeInt\nPharmaCode\n1\n", u"Interaction.tsv:1: "_s},
    };
    const qint64 before = connection().count(u"Interaction"_s);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_FALSE(load(c.file, c.content, &error));
        EXPECT_TRUE(error.contains(c.message)) << qPrintable(error);
    }
    EXPECT_EQ(connection().count(u"DrugSafety"_s), 0);
    EXPECT_EQ(connection().count(u"Interaction"_s), before);
}

class DeliveredBuildTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        m_data = m_dir.filePath(u"data"_s);
        m_out = m_dir.filePath(u"out"_s);
        ASSERT_TRUE(QDir().mkpath(m_data));
        for (const QString& table : vantrel::programTables()) {
            const QByteArray header = "# The test's own settings.\n" + firstColumn(table) + '\n';
            ASSERT_TRUE(writeFile(m_data + u'/' + table + u".tsv"_s, header));
        }
        ASSERT_TRUE(writeFile(m_data + u"/City.tsv"_s, "# Test.\nCode\tName\n1\tPUNE\n"));
        ASSERT_TRUE(writeFile(m_data + u"/README.md"_s, "Not a data file.\n"));
    }

    static QByteArray firstColumn(const QString& table) {
        return QByteArray(schema::findTable(table)->columns.front().name);
    }

    QStringList outFiles() const { return QDir(m_out).entryList(QDir::Files, QDir::Name); }

    QTemporaryDir m_dir;
    QString m_data;
    QString m_out;
};

TEST_F(DeliveredBuildTest, SchemaDatabaseHoldsOnlyTheProgramTables) {
    QString error;
    ASSERT_TRUE(writeFile(m_data + u"/PhotoNO.tsv"_s, "# Own.\nPhotoID\n0\n"));
    ASSERT_TRUE(vantrel::buildDeliveredDatabases(m_data, m_out, &error)) << qPrintable(error);
    EXPECT_EQ(outFiles(), (QStringList{u"Schema.db"_s, u"Vantrel.db"_s}))
        << "no building file is left behind";

    const Connection full(m_out + u"/Vantrel.db"_s);
    EXPECT_EQ(full.count(u"City"_s), 1);
    EXPECT_EQ(full.count(u"PhotoNO"_s), 1);
    EXPECT_EQ(full.scalar(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
    EXPECT_EQ(full.scalar(u"PRAGMA user_version"_s).toInt(), schema::currentVersion());

    const Connection empty(m_out + u"/Schema.db"_s);
    EXPECT_EQ(empty.count(u"City"_s), 0);
    EXPECT_EQ(empty.count(u"PhotoNO"_s), 1);
}

TEST_F(DeliveredBuildTest, TablesLoadBeforeTheFilesThatNameTheirRows) {
    // Alphabetically the brand file comes before the makers' and the drugs' files it names.
    ASSERT_TRUE(
        writeFile(m_data + u"/GenericName.tsv"_s, "# Test.\nName\tCompany=Manufacturer\nCROCIN\tGSK\n"));
    ASSERT_TRUE(writeFile(m_data + u"/GenericPharma.tsv"_s,
                          "# Test.\nGenericCode=GenericName\tPharmaCode=PharmaName\nCROCIN\tPARACETAMOL\n"));
    ASSERT_TRUE(writeFile(m_data + u"/Manufacturer.tsv"_s, "# Test.\nName\nCIPLA\nGSK\n"));
    ASSERT_TRUE(writeFile(m_data + u"/PharmaName.tsv"_s, "# Test.\nName\tDose\nPARACETAMOL\t500 mg\n"));
    QString error;
    ASSERT_TRUE(vantrel::buildDeliveredDatabases(m_data, m_out, &error)) << qPrintable(error);
    Connection built(m_out + u"/Vantrel.db"_s);
    EXPECT_EQ(built.scalar(u"SELECT Company FROM GenericName WHERE Name = 'CROCIN'"_s).toInt(), 2);
    EXPECT_EQ(
        built
            .scalar(u"SELECT COUNT(*) FROM GenericPharma A JOIN GenericName B ON B.Code = A.GenericCode "
                    "JOIN PharmaName C ON C.Code = A.PharmaCode"_s)
            .toInt(),
        1);
}

TEST_F(DeliveredBuildTest, CircleOfReferencesIsRefused) {
    ASSERT_TRUE(writeFile(m_data + u"/SubGroup.tsv"_s, "# Test.\nName\tGroupCode=GroupName\nA\tB\n"));
    ASSERT_TRUE(writeFile(m_data + u"/GroupName.tsv"_s, "# Test.\nName\tCode=SubGroup\nB\tA\n"));
    QString error;
    EXPECT_FALSE(vantrel::buildDeliveredDatabases(m_data, m_out, &error));
    EXPECT_TRUE(error.contains(u"come back to itself"_s)) << qPrintable(error);
}

TEST_F(DeliveredBuildTest, FailedBuildLeavesTheEarlierDatabasesInPlace) {
    ASSERT_TRUE(QDir().mkpath(m_out));
    ASSERT_TRUE(writeFile(m_out + u"/Vantrel.db"_s, "earlier"));
    ASSERT_TRUE(writeFile(m_data + u"/City.tsv"_s, "# Test.\nCode\tName\n1\tPUNE\nTWO\tAGRA\n"));

    QString error;
    EXPECT_FALSE(vantrel::buildDeliveredDatabases(m_data, m_out, &error));
    EXPECT_TRUE(error.contains(u"City.tsv:4: "_s)) << qPrintable(error);
    EXPECT_EQ(readFile(m_out + u"/Vantrel.db"_s), "earlier");
    EXPECT_EQ(outFiles(), QStringList{u"Vantrel.db"_s});

    ASSERT_TRUE(QFile::remove(m_data + u"/Level3.tsv"_s));
    EXPECT_FALSE(vantrel::buildDeliveredDatabases(m_data, m_out, &error));
    EXPECT_TRUE(error.contains(u"Level3.tsv"_s)) << qPrintable(error);
}

// The delivered data of the source tree.

TEST_F(DeliveredDataTest, EveryFileNamesItsSources) {
    const QStringList files = QDir(s_data).entryList({u"*.tsv"_s}, QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files)
        EXPECT_TRUE(readFile(s_data + u'/' + name).startsWith("# ")) << qPrintable(name);
}

TEST_F(DeliveredDataTest, SettingsRowsAndFixedCodes) {
    for (const Connection* c : {m_full.get(), m_program.get()}) {
        for (const QString& table : {u"Control"_s, u"Printing"_s, u"InvPrinting"_s, u"PhotoNO"_s})
            EXPECT_EQ(c->count(table), 1) << qPrintable(table);
        const auto para = c->rows(u"SELECT Code, Name FROM SafetyPara ORDER BY Code"_s);
        const QStringList paraNames{u"Pregnancy"_s,
                                    u"Lactation"_s,
                                    u"Paediatrics"_s,
                                    u"Elderly"_s,
                                    u"Renal Insufficiency"_s,
                                    u"Liver Insufficiency"_s,
                                    u"Pulmonary Insufficiency"_s};
        ASSERT_EQ(para.size(), static_cast<std::size_t>(paraNames.size()));
        for (qsizetype i = 0; i < paraNames.size(); ++i) {
            EXPECT_EQ(para.at(static_cast<std::size_t>(i)).at(0).toLongLong(), i + 1);
            EXPECT_EQ(para.at(static_cast<std::size_t>(i)).at(1).toString(), paraNames.at(i));
        }
        const auto status = c->rows(u"SELECT Code, Name FROM SafetyStatus ORDER BY Code"_s);
        const QStringList statusNames{u"Safe"_s,     u"Un-Safe"_s,  u"Un-Certain"_s,
                                      u"Carefull"_s, u"Not Used"_s, u"Not Known"_s};
        ASSERT_EQ(status.size(), static_cast<std::size_t>(statusNames.size()));
        for (qsizetype i = 0; i < statusNames.size(); ++i) {
            EXPECT_EQ(status.at(static_cast<std::size_t>(i)).at(0).toLongLong(), i + 1);
            EXPECT_EQ(status.at(static_cast<std::size_t>(i)).at(1).toString(), statusNames.at(i));
        }
    }
}

TEST_F(DeliveredDataTest, ClinicParametersAreUsableOnFirstStart) {
    const auto control = m_full->rows(
        u"SELECT Clinic_User, UserProfileUpdated, DefaultUser, AgePaediatric, AgeElderly, CardGenBy, "
        u"VisitGenBy, "
        "(SELECT Name FROM City WHERE Code = Control.City), (SELECT Name FROM City WHERE Code = "
        "Control.City1), "
        "(SELECT Name FROM City WHERE Code = Control.City2), ReceiptFor, CardReceiptFor, VisitReceiptFor "
        "FROM Control"_s);
    ASSERT_EQ(control.size(), 1u);
    const QVariantList& row = control.front();
    EXPECT_FALSE(row.at(0).toString().isEmpty());
    EXPECT_EQ(row.at(1).toInt(), 1);
    EXPECT_EQ(row.at(2).toInt(), 1);
    EXPECT_GT(row.at(3).toInt(), 0);
    EXPECT_GT(row.at(4).toInt(), 0);
    EXPECT_TRUE(row.at(5).toInt() >= 0 && row.at(5).toInt() <= 2);
    EXPECT_TRUE(row.at(6).toInt() >= 0 && row.at(6).toInt() <= 2);
    for (int i = 7; i <= 9; ++i)
        EXPECT_FALSE(row.at(i).toString().isEmpty()) << "the city code of column " << i << " resolves";
    EXPECT_TRUE(row.at(10).toString().contains(u"<PRESCRIPTION>"_s));
    EXPECT_TRUE(row.at(11).toString().contains(u"<CARDNO>"_s));
    EXPECT_TRUE(row.at(12).toString().contains(u"<VISITNO>"_s));

    EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) FROM City WHERE Name <> UPPER(Name)"_s).toInt(), 0);
    EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) - COUNT(DISTINCT Name) FROM City"_s).toInt(), 0);
}

TEST_F(DeliveredDataTest, ProgramDatabaseHoldsNoReferenceData) {
    const QStringList program = vantrel::programTables();
    for (const schema::Table& table : schema::tables()) {
        if (table.staging)
            continue;
        const QString name = QString::fromLatin1(table.name);
        const qint64 expected = program.contains(name) ? m_full->count(name) : 0;
        EXPECT_EQ(m_program->count(name), expected) << qPrintable(name);
    }
}

// The shape rules of both launchers: main options, numbering, parents, capitals.
TEST_F(DeliveredDataTest, LaunchersKeepTheirShape) {
    for (const QString& prefix : {QString(), u"OPD"_s}) {
        SCOPED_TRACE(prefix.isEmpty() ? "Level2 / Level3" : "OPDLevel2 / OPDLevel3");
        const QString level2 = prefix + u"Level2"_s;
        const QString level3 = prefix + u"Level3"_s;
        EXPECT_GT(m_full->count(level2), 0);

        const QStringList mains = texts(*m_full, u"SELECT DISTINCT MainMenuNo FROM %1"_s.arg(level2));
        for (const QString& main : mains) {
            const int n = main.toInt();
            EXPECT_TRUE(n >= 1 && n <= 10 && n != 9) << "main option " << n;
        }
        EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) FROM %1 WHERE MenuNo NOT BETWEEN 1 AND 12"_s.arg(level2))
                      .toInt(),
                  0);
        EXPECT_EQ(
            m_full
                ->scalar(
                    u"SELECT COUNT(*) FROM (SELECT MainMenuNo, MenuNo FROM %1 GROUP BY MainMenuNo, MenuNo "
                    "HAVING COUNT(*) > 1)"_s.arg(level2))
                .toInt(),
            0)
            << "one option per place";
        EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) FROM %1 WHERE SubMenuNo NOT BETWEEN 1 AND 6"_s.arg(level3))
                      .toInt(),
                  0);
        EXPECT_EQ(
            m_full
                ->scalar(u"SELECT COUNT(*) FROM (SELECT 1 FROM %1 GROUP BY MainMenuNo, MenuNo, SubMenuNo "
                         "HAVING COUNT(*) > 1)"_s.arg(level3))
                .toInt(),
            0);
        EXPECT_EQ(
            m_full
                ->scalar(
                    u"SELECT COUNT(*) FROM %1 C WHERE NOT EXISTS (SELECT 1 FROM %2 P WHERE P.MainMenuNo = "
                    "C.MainMenuNo AND P.MenuNo = C.MenuNo)"_s.arg(level3, level2))
                .toInt(),
            0)
            << "every third-level option has its second-level parent";
        EXPECT_EQ(
            m_full
                ->scalar(u"SELECT COUNT(*) FROM %1 WHERE MenuName <> UPPER(MenuName) OR TRIM(MenuName) <> "
                         "MenuName OR COALESCE(MenuDesc, '') = ''"_s.arg(level2))
                .toInt(),
            0);
        EXPECT_EQ(
            m_full
                ->scalar(
                    u"SELECT COUNT(*) FROM %1 WHERE SubMenu <> UPPER(SubMenu) OR TRIM(SubMenu) <> SubMenu "
                    "OR COALESCE(MenuDesc, '') = ''"_s.arg(level3))
                .toInt(),
            0);
    }
}

// The options that the dispatch binds: second level by MenuName, third level by SubMenu, some of them only
// under one second-level text.
const QStringList kSecondLevel{
    u"CITY MASTER"_s,
    u"SPONSOR / PAYOR"_s,
    u"COMPANY / EMPLOYER"_s,
    u"PHYSICAL EXAMINATIONS"_s,
    u"VACCINATION MASTERS"_s,
    u"PATIENT DETAILS"_s,
    u"PRESCRIBER DETAILS"_s,
    u"SERIES MAINTENANCE"_s,
    u"IMMUNIZATION SCHEDULES"_s,
    u"BRAND DETAILS"_s,
    u"DISEASE DETAILS"_s,
    u"MONOGRAPHS EDITOR"_s,
    u"HANDOUTS EDITOR"_s,
    u"DISEASE MAINTENANCE"_s,
    u"VANTREL"_s,
    u"PAYMENT RECEIPT"_s,
    u"IMMUNIZATION"_s,
    u"PATIENT HISTORY"_s,
    u"SNAPSHOT VIEWER"_s,
    u"DRUG MONOGRAPHS"_s,
    u"CHILD GROWTH STATUS"_s,
    u"HANDOUTS / DOCUMENTS"_s,
    u"CORONARY RISK PREDICTION"_s,
    u"READYMADE PRESCRIPTIONS"_s,
    u"PRESCRIPTION(S) CHECK-LIST"_s,
    u"IMMUNIZATION REMINDERS"_s,
    u"PRESCRIBER DETAILS REPORTS"_s,
    u"PATIENT DETAILS REPORTS"_s,
    u"DRUG DETAILS REPORTS"_s,
    u"MASTER REPORTS"_s,
    u"DRUG QUERY"_s,
    u"BRAND QUERY"_s,
    u"PATIENT QUERY"_s,
    u"MASTERS QUERY"_s,
    u"PRESCRIBER QUERY"_s,
    u"VANTREL QUERY"_s,
    u"PATIENT INVESTIGATIONS QUERY"_s,
    u"SUBSTITUTE / INTERACTION QUERY"_s,
    u"REPAIR DATABASE"_s,
    u"BACKUP DATABASE"_s,
    u"RESTORE DATABASE"_s,
    u"COMPACT DATABASE"_s,
    u"APPOINTMENTS / TASK DIARY"_s,
    u"MESSAGE SCHEDULER"_s,
    u"CONTROL PARAMETERS"_s,
    u"PRESCRIPTION DISPOSAL"_s,
    u"PRESCRIPTION RENUMBERING"_s,
    u"KEY FEATURES"_s,
    u"HELP CONTENTS"_s,
    u"HELP INDEX"_s,
    u"CALENDAR"_s,
    u"CALCULATOR"_s,
    u"ABOUT VANTREL 3.0"_s,
};

const QStringList kThirdLevelAnywhere{
    u"CONTRA INDICATION MASTER"_s, u"INDICATION MASTER"_s,      u"INTERACTION TYPES MASTER"_s,
    u"SIDE EFFECT MASTER"_s,       u"SPL. PRECAUTION MASTER"_s, u"DRUG GROUP MASTER"_s,
    u"DOSAGE FORM MASTER"_s,       u"MANUFACTURER MASTER"_s,    u"GROUP MASTER"_s,
    u"SUB GROUP MASTER"_s,         u"OCCUPATIONS MASTER"_s,     u"RELATIONSHIP MASTER"_s,
    u"PERSONAL DETAILS MASTER"_s,  u"ALLERGY TYPES MASTER"_s,   u"ALLERGIES MASTER"_s,
    u"SUB-ALLERGIES MASTER"_s,     u"COMPLAINTS MASTER"_s,      u"DOSAGE REMARKS"_s,
    u"DOSAGE SYMBOLS"_s,           u"PROCEDURES MASTER"_s,      u"OPD DEPARTMENTS"_s,
    u"INVESTIGATION CATEGORIES"_s, u"INVESTIGATION PROFILES"_s, u"INVESTIGATIONS"_s,
    u"PROFILE MAINTENANCE"_s,      u"DRUGS MASTER"_s,           u"DRUGS GROUPING"_s,
};

const QStringList kCertificates{u"FITNESS CERTIFICATE"_s, u"HEALTH / FITNESS CERTIFICATE"_s,
                                u"MEDICAL CERTIFICATE"_s, u"INVESTIGATION REPORTS"_s};

const QList<std::pair<QString, QStringList>> kThirdLevelUnder{
    {u"DOCUMENT TEMPLATES"_s, kCertificates + QStringList{u"PAYMENT RECEIPTS"_s}},
    {u"SUMMARISED DAILY REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"PAYMENT BY CASH"_s, u"PAYMENT BY CHEQUE/DRAFT"_s, u"PAYMENT ON CREDIT"_s}},
    {u"IMMUNIZATION REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"ACTIVE SCHEDULES"_s, u"CLOSED SCHEDULES"_s, u"COMPLETED SCHEDULES"_s,
      u"RESCHEDULED SCHEDULES"_s}},
    {u"VACCINE SUMMARY REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"DUE VACCINES"_s, u"SKIPPED VACCINES"_s, u"VACCINATED VACCINES"_s}},
    {u"BRAND DETAILS REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"COMPANY WISE GROUPING"_s, u"GROUP NAME WISE GROUPING"_s}},
    {u"VANTREL REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"DATE WISE GROUPING"_s, u"PATIENT WISE GROUPING"_s, u"BRAND WISE GROUPING"_s,
      u"DISEASES WISE GROUPING"_s, u"PROCEDURE WISE GROUPING"_s}},
    {u"NEXT CHECKUP REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"DATE WISE GROUPING"_s, u"PATIENT WISE GROUPING"_s,
      u"DISEASES WISE GROUPING"_s, u"PROCEDURE WISE GROUPING"_s}},
    {u"PATIENT INVESTIGATION REPORTS"_s,
     {u"CONSOLIDATED REPORT"_s, u"DATE WISE GROUPING"_s, u"PATIENT WISE GROUPING"_s,
      u"INVESTIGATION WISE GROUPING"_s, u"PRESCRIPTION WISE GROUPING"_s}},
};

TEST_F(DeliveredDataTest, MainLauncherOffersEveryDispatchedOptionOnce) {
    const QStringList level2 = texts(*m_full, u"SELECT MenuName FROM Level2"_s);
    const QStringList level3 = texts(*m_full, u"SELECT SubMenu FROM Level3"_s);

    for (const QString& option : kSecondLevel)
        EXPECT_EQ(level2.count(option), 1) << qPrintable(option);
    for (const QString& option : kThirdLevelAnywhere)
        EXPECT_EQ(level3.count(option), 1) << qPrintable(option);
    for (const auto& [parent, options] : kThirdLevelUnder) {
        const QStringList under =
            texts(*m_full,
                  u"SELECT C.SubMenu FROM Level3 C JOIN Level2 P ON P.MainMenuNo = C.MainMenuNo AND "
                  "P.MenuNo = C.MenuNo WHERE P.MenuName = ? ORDER BY C.SubMenuNo"_s,
                  {parent});
        EXPECT_EQ(under, options) << qPrintable(parent);
    }
    // The certificates are also written, not only templated, from some other second-level option.
    for (const QString& option : kCertificates)
        EXPECT_EQ(level3.count(option), 2) << qPrintable(option);

    // An option with third-level rows can not be clicked, so it never carries a text that opens a screen.
    const QStringList groups = texts(*m_full, u"SELECT DISTINCT P.MenuName FROM Level2 P JOIN Level3 C ON "
                                              "C.MainMenuNo = P.MainMenuNo AND C.MenuNo = P.MenuNo"_s);
    for (const QString& group : groups)
        EXPECT_FALSE(kSecondLevel.contains(group)) << qPrintable(group);

    // A text appears once over both levels, but for the third-level texts bound under several parents.
    QSet<QString> repeatable(kCertificates.cbegin(), kCertificates.cend());
    QHash<QString, int> parents;
    for (const auto& [parent, options] : kThirdLevelUnder) {
        for (const QString& option : options)
            ++parents[option];
    }
    for (auto it = parents.cbegin(); it != parents.cend(); ++it) {
        if (it.value() > 1)
            repeatable.insert(it.key());
    }
    QHash<QString, int> seen;
    for (const QString& text : level2 + level3)
        ++seen[text];
    for (auto it = seen.cbegin(); it != seen.cend(); ++it) {
        if (!repeatable.contains(it.key())) {
            EXPECT_EQ(it.value(), 1) << qPrintable(it.key());
        }
    }
    EXPECT_TRUE(repeatable.contains(u"CONSOLIDATED REPORT"_s));
    EXPECT_TRUE(repeatable.contains(u"DATE WISE GROUPING"_s));

    EXPECT_EQ(texts(*m_full, u"SELECT MenuName FROM Level2 WHERE MainMenuNo = 8 AND MenuName = ?"_s,
                    {u"CONTROL PARAMETERS"_s})
                  .size(),
              1u)
        << "the first-run message sends the clinic to Package Controls -> Control Parameters";
}

TEST_F(DeliveredDataTest, AdministrativeOptionsAreHiddenFromOrdinaryLogins) {
    for (const QString& table : {u"Level2"_s, u"OPDLevel2"_s}) {
        const QStringList hidden =
            texts(*m_full, u"SELECT MenuName FROM %1 WHERE ShowOption = 0"_s.arg(table));
        EXPECT_TRUE(hidden.contains(u"REPAIR DATABASE"_s)) << qPrintable(table);
        EXPECT_TRUE(hidden.contains(u"RESTORE DATABASE"_s)) << qPrintable(table);
        EXPECT_FALSE(hidden.contains(u"CONTROL PARAMETERS"_s)) << qPrintable(table);
    }
    const QStringList hidden = texts(*m_full, u"SELECT MenuName FROM Level2 WHERE ShowOption = 0"_s);
    EXPECT_TRUE(hidden.contains(u"PRESCRIPTION RENUMBERING"_s));
    EXPECT_TRUE(hidden.contains(u"PRESCRIPTION DISPOSAL"_s));
}

TEST_F(DeliveredDataTest, FrontDeskLauncherOffersCardsVisitsAndItsOwnParameters) {
    const QStringList level2 = texts(*m_full, u"SELECT MenuName FROM OPDLevel2"_s);
    for (const QString& option : {u"OPD CARDS"_s, u"OPD CARD QUERY"_s, u"VISITS"_s, u"VISIT QUERY"_s,
                                  u"CONTROL PARAMETERS"_s, u"PATIENT DETAILS"_s, u"PAYMENT RECEIPT"_s})
        EXPECT_EQ(level2.count(option), 1) << qPrintable(option);
    for (const QString& doctorOnly :
         {u"VANTREL"_s, u"PRESCRIPTION DISPOSAL"_s, u"PRESCRIPTION RENUMBERING"_s})
        EXPECT_FALSE(level2.contains(doctorOnly)) << qPrintable(doctorOnly);

    // Every front-desk option either opens a screen (a dispatched text or a card or visit option) or holds
    // third-level options, never both; the topics of main option 10 open their hand-out.
    const QStringList opdOwn{u"OPD CARDS"_s, u"OPD CARD QUERY"_s, u"VISITS"_s, u"VISIT QUERY"_s};
    const auto rows =
        m_full->rows(u"SELECT P.MainMenuNo, P.MenuName, (SELECT COUNT(*) FROM OPDLevel3 C WHERE "
                     "C.MainMenuNo = P.MainMenuNo AND C.MenuNo = P.MenuNo) FROM OPDLevel2 P"_s);
    for (const QVariantList& row : rows) {
        const QString text = row.at(1).toString();
        const bool opens = kSecondLevel.contains(text) || opdOwn.contains(text);
        const bool group = row.at(2).toInt() > 0;
        EXPECT_TRUE(opens != group || (row.at(0).toInt() == 10 && !group)) << qPrintable(text);
    }
    QStringList thirdKnown = kThirdLevelAnywhere + kCertificates;
    for (const auto& [parent, options] : kThirdLevelUnder)
        thirdKnown += options;
    for (const QString& text : texts(*m_full, u"SELECT SubMenu FROM OPDLevel3"_s))
        EXPECT_TRUE(thirdKnown.contains(text)) << qPrintable(text);
}

} // namespace
