#include "organiser/DeliveredDocuments.h"
#include "store/Schema.h"
#include "tests/support/Application.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class InstallDocumentsTest : public ::testing::Test {
protected:
    void SetUp() override {
        vantrel::testing::ensureApplication();
        ASSERT_TRUE(write(data(u"documents/handouts/e_001f._$"_s), "<p>Fever</p>"));
        ASSERT_TRUE(write(data(u"documents/handouts/h_013f._$"_s),
                          "<p>\xe0\xa4\xac\xe0\xa5\x81\xe0\xa4\x96\xe0\xa4\xbe\xe0\xa4\xb0</p>"));
        ASSERT_TRUE(write(data(u"documents/topics/dengue.htm"_s), "<h1>Dengue</h1>"));
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"documents-test"_s);
        db.setDatabaseName(u":memory:"_s);
        ASSERT_TRUE(db.open());
        ASSERT_TRUE(QSqlQuery(db).exec(
            vantrel::schema::createStatement(*vantrel::schema::findTable(u"HotTopics"_s))));
        ASSERT_TRUE(topic(u"dengue.png"_s));
    }
    void TearDown() override {
        QSqlDatabase::database(u"documents-test"_s, false).close();
        QSqlDatabase::removeDatabase(u"documents-test"_s);
    }
    bool topic(const QString& headerImage) {
        QSqlQuery insert(delivered());
        insert.prepare(u"INSERT INTO HotTopics (MenuName, TopicName, RtfFile, HeaderImg) VALUES ('DENGUE', "
                       "'Dengue Fever', 'dengue.htm', ?)"_s);
        insert.addBindValue(headerImage);
        return insert.exec();
    }
    bool install(QString* error) const {
        return vantrel::InstallDocuments(m_data.path(), m_program.path(), delivered(), error);
    }
    static QSqlDatabase delivered() { return QSqlDatabase::database(u"documents-test"_s, false); }
    QString data(const QString& name) const { return m_data.filePath(name); }
    QString program(const QString& name) const { return m_program.filePath(name); }

    QTemporaryDir m_data;
    QTemporaryDir m_program;
};

} // namespace

TEST_F(InstallDocumentsTest, FillsTheFoldersAndDrawsTheTopicHeaders) {
    QString error;
    ASSERT_TRUE(install(&error)) << qPrintable(error);
    EXPECT_EQ(read(program(u"Bin$01.001/e_001f._$"_s)), "<p>Fever</p>");
    EXPECT_FALSE(read(program(u"Bin$01.001/h_013f._$"_s)).isEmpty());
    EXPECT_EQ(read(program(u"Bin$01.001/HtpBin$1.001/dengue.htm"_s)), "<h1>Dengue</h1>");
    const QImage header(program(u"Bin$01.001/HtpBin$1.001/dengue.png"_s));
    ASSERT_FALSE(header.isNull());
    EXPECT_EQ(header.size(), QSize(900, 120));
}

TEST_F(InstallDocumentsTest, LeavesTheClinicsOwnFilesAlone) {
    ASSERT_TRUE(write(program(u"Bin$01.001/e_001f._$"_s), "<p>Our own fever advice</p>"));
    ASSERT_TRUE(write(program(u"Bin$01.001/HtpBin$1.001/dengue.png"_s), "kept"));
    QString error;
    ASSERT_TRUE(install(&error)) << qPrintable(error);
    EXPECT_EQ(read(program(u"Bin$01.001/e_001f._$"_s)), "<p>Our own fever advice</p>");
    EXPECT_EQ(read(program(u"Bin$01.001/HtpBin$1.001/dengue.png"_s)), "kept");
    EXPECT_FALSE(read(program(u"Bin$01.001/h_013f._$"_s)).isEmpty()) << "the missing file is still added";
}

TEST_F(InstallDocumentsTest, RefusesATopicWithoutItsHeaderPicture) {
    ASSERT_TRUE(QSqlQuery(delivered()).exec(u"DELETE FROM HotTopics"_s));
    ASSERT_TRUE(topic(u" "_s));
    QString error;
    EXPECT_FALSE(install(&error));
    EXPECT_TRUE(error.contains(u"\"Dengue Fever\" names no header picture"_s)) << qPrintable(error);
}
