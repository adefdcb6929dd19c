#pragma once

#include <QImage>
#include <QString>

#include <optional>
#include <vector>

namespace vantrel::growth {

// One month of a growth standard: the Box-Cox power L, the median M and the coefficient of variation S.
// Kind tells measures apart that share a month: L recumbent length, H standing height, W weight, C head.
struct LmsRow {
    QChar sex;
    int month = 0;
    QChar kind;
    double l = 1.0;
    double m = 0.0;
    double s = 0.0;
};

// Reads a growth standard file: '#' header lines, the line "Sex,Month,Kind,L,M,S", then the rows. Gives no
// value, with the file and line in error, for anything else.
std::optional<std::vector<LmsRow>> ReadLms(const QString& path, QString* error);

// The measure at z standard deviations from the median.
double ValueAt(const LmsRow& row, double z);

// A chart of one standard for one sex: the curves at -3, -2, 0, +2 and +3 standard deviations over the
// months, with the grid, the axes' figures and the title. A change of kind within the months (length to
// height at two years) breaks the curves there.
struct ChartLayout {
    QString title;
    QString unit;
    QChar sex;
    int lastMonth = 60;
};
QImage DrawChart(const std::vector<LmsRow>& rows, const ChartLayout& layout);

// The charts the program folder holds: each standard for boys and girls, named as the GrowthCharts rows
// name them.
struct DeliveredChart {
    QString dataFile; // below the growth data folder
    QString fileName; // below the chart folder
    ChartLayout layout;
};
std::vector<DeliveredChart> DeliveredCharts();

// Draws every delivered chart from the standards in growthDir into chartFolder, as JPG images.
bool DrawDeliveredCharts(const QString& growthDir, const QString& chartFolder, QString* error);

} // namespace vantrel::growth
