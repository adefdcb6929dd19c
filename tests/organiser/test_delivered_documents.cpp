#include "organiser/DeliveredDocuments.h"
#include "tests/support/Application.h"

#include <QDir>
#include <QFile>
#include <QImage>
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
        ASSERT_TRUE(write(data(u"HotTopics.tsv"_s),
                          "# Test.\nMenuName\tTopicName\tRtfFile\tHeaderImg\nDENGUE\tDengue "
                          "Fever\tdengue.htm\tdengue.png\n"));
    }
    QString data(const QString& name) const { return m_data.filePath(name); }
    QString program(const QString& name) const { return m_program.filePath(name); }

    QTemporaryDir m_data;
    QTemporaryDir m_program;
};

} // namespace

TEST_F(InstallDocumentsTest, FillsTheFoldersAndDrawsTheTopicHeaders) {
    QString error;
    ASSERT_TRUE(vantrel::InstallDocuments(m_data.path(), m_program.path(), &error)) << qPrintable(error);
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
    ASSERT_TRUE(vantrel::InstallDocuments(m_data.path(), m_program.path(), &error)) << qPrintable(error);
    EXPECT_EQ(read(program(u"Bin$01.001/e_001f._$"_s)), "<p>Our own fever advice</p>");
    EXPECT_EQ(read(program(u"Bin$01.001/HtpBin$1.001/dengue.png"_s)), "kept");
    EXPECT_FALSE(read(program(u"Bin$01.001/h_013f._$"_s)).isEmpty()) << "the missing file is still added";
}

TEST_F(InstallDocumentsTest, RefusesATopicListWithoutItsColumns) {
    ASSERT_TRUE(write(data(u"HotTopics.tsv"_s),
                      "# Test.\nMenuName\tTopicName\tRtfFile\nDENGUE\tDengue\tdengue.htm\n"));
    QString error;
    EXPECT_FALSE(vantrel::InstallDocuments(m_data.path(), m_program.path(), &error));
    EXPECT_TRUE(error.contains(u"HotTopics.tsv:2: "_s)) << qPrintable(error);
}
