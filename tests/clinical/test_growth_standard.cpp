#include "clinical/GrowthStandard.h"
#include "tests/store/DeliveredData.h"
#include "tests/support/Application.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using vantrel::testing::DeliveredDataTest;
namespace growth = vantrel::growth;

namespace {

QString growthDir() {
    return QString::fromUtf8(VANTREL_SOURCE_DIR) + u"/data/growth"_s;
}

const growth::LmsRow& rowAt(const std::vector<growth::LmsRow>& rows, QChar sex, int month, QChar kind) {
    const auto found = std::find_if(rows.cbegin(), rows.cend(), [&](const growth::LmsRow& r) {
        return r.sex == sex && r.month == month && r.kind == kind;
    });
    EXPECT_NE(found, rows.cend());
    return *found;
}

} // namespace

// The curves drawn from the standards land on the figures the WHO tables print (one decimal).
TEST(GrowthStandard, CurvesReproduceThePublishedTables) {
    struct Case {
        const char* file;
        QChar sex;
        int month;
        QChar kind;
        double minus2;
        double median;
        double plus2;
    };
    const Case cases[] = {
        {"weight_for_age", u'M', 12, u'W', 7.7, 9.6, 12.0},
        {"weight_for_age", u'F', 60, u'W', 13.7, 18.2, 24.9},
        {"length_height_for_age", u'M', 24, u'L', 81.7, 87.8, 93.9},
        {"length_height_for_age", u'M', 24, u'H', 81.0, 87.1, 93.2},
        {"length_height_for_age", u'F', 60, u'H', 99.9, 109.4, 118.9},
        {"bmi_for_age", u'M', 60, u'H', 12.9, 15.2, 18.3},
        {"bmi_for_age", u'F', 6, u'L', 14.1, 16.9, 20.3},
        {"head_circumference_for_age", u'F', 36, u'C', 45.7, 48.5, 51.3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        QString error;
        const auto rows =
            growth::ReadLms(growthDir() + u'/' + QString::fromLatin1(c.file) + u".csv"_s, &error);
        ASSERT_TRUE(rows) << qPrintable(error);
        const growth::LmsRow& row = rowAt(*rows, c.sex, c.month, c.kind);
        EXPECT_NEAR(growth::ValueAt(row, -2.0), c.minus2, 0.051) << c.month;
        EXPECT_NEAR(growth::ValueAt(row, 0.0), c.median, 0.051) << c.month;
        EXPECT_NEAR(growth::ValueAt(row, 2.0), c.plus2, 0.051) << c.month;
    }
}

TEST(GrowthStandard, RefusesAFileThatIsNotAStandard) {
    QTemporaryDir dir;
    const auto attempt = [&](const QByteArray& content) {
        QFile file(dir.filePath(u"x.csv"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QString error;
        const bool read = growth::ReadLms(file.fileName(), &error).has_value();
        return read ? QString() : error;
    };
    EXPECT_TRUE(attempt("# Source\nSex,Month,Kind,L,M,S\nM,0,W,0.3,3.3,0.14\n").isEmpty());
    EXPECT_TRUE(attempt("Sex,Month,L,M,S\n").contains(u":1: "_s));
    EXPECT_TRUE(attempt("Sex,Month,Kind,L,M,S\nX,0,W,0.3,3.3,0.14\n").contains(u":2: "_s));
    EXPECT_TRUE(attempt("Sex,Month,Kind,L,M,S\nM,0,W,0.3,0,0.14\n").contains(u":2: "_s)) << "a median of 0";
    EXPECT_TRUE(attempt("# only a comment\n").contains(u"missing"_s));
    EXPECT_FALSE(growth::ReadLms(dir.filePath(u"absent.csv"_s), nullptr).has_value());
}

// Every chart the GrowthCharts rows name is drawn, and nothing else.
TEST_F(DeliveredDataTest, GrowthChartRowsNameTheDrawnCharts) {
    vantrel::testing::ensureApplication();
    QTemporaryDir dir;
    QString error;
    ASSERT_TRUE(growth::DrawDeliveredCharts(growthDir(), dir.path(), &error)) << qPrintable(error);
    QSet<QString> drawn;
    for (const QString& name : QDir(dir.path()).entryList(QDir::Files))
        drawn.insert(name);
    QSet<QString> named;
    for (const QString& name : texts(*m_full, u"SELECT FileName FROM GrowthCharts"_s))
        named.insert(name);
    EXPECT_EQ(named, drawn);
    EXPECT_EQ(drawn.size(), 8);
    const QImage chart(dir.filePath(u"weight_for_age_girls.jpg"_s));
    ASSERT_FALSE(chart.isNull());
    EXPECT_NE(chart.pixelColor(660, 500), chart.pixelColor(5, 995)) << "the chart holds more than white";
}
