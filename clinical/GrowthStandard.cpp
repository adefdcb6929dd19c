#include "clinical/GrowthStandard.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vantrel::growth {

std::optional<std::vector<LmsRow>> ReadLms(const QString& path, QString* error) {
    const auto refuse = [&](int line, const QString& why) -> std::optional<std::vector<LmsRow>> {
        if (error)
            *error = line > 0 ? u"%1:%2: %3"_s.arg(path).arg(line).arg(why) : u"%1: %2"_s.arg(path, why);
        return std::nullopt;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return refuse(0, file.errorString());
    QTextStream in(&file);
    std::vector<LmsRow> rows;
    bool header = false;
    for (int lineNo = 1; !in.atEnd(); ++lineNo) {
        const QString line = in.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (!header) {
            if (line != u"Sex,Month,Kind,L,M,S"_s)
                return refuse(lineNo, u"the columns are Sex,Month,Kind,L,M,S"_s);
            header = true;
            continue;
        }
        const QStringList f = line.split(u',');
        bool okMonth = false;
        bool okL = false;
        bool okM = false;
        bool okS = false;
        LmsRow row;
        if (f.size() == 6) {
            row.month = f.at(1).toInt(&okMonth);
            row.l = f.at(3).toDouble(&okL);
            row.m = f.at(4).toDouble(&okM);
            row.s = f.at(5).toDouble(&okS);
        }
        if (f.size() != 6 || (f.at(0) != u"M"_s && f.at(0) != u"F"_s) || f.at(2).size() != 1 || !okMonth ||
            !okL || !okM || !okS || row.m <= 0 || row.s <= 0)
            return refuse(lineNo, u"a row is Sex (M or F), Month, Kind (one letter), L, M and S above 0"_s);
        row.sex = f.at(0).at(0);
        row.kind = f.at(2).at(0);
        rows.push_back(row);
    }
    if (!header)
        return refuse(0, u"the line of column names is missing"_s);
    return rows;
}

double ValueAt(const LmsRow& row, double z) {
    if (std::abs(row.l) < 1e-9)
        return row.m * std::exp(row.s * z);
    return row.m * std::pow(1.0 + row.l * row.s * z, 1.0 / row.l);
}

namespace {

constexpr double Curves[] = {-3.0, -2.0, 0.0, 2.0, 3.0};

QColor curveColour(double z) {
    if (z == 0.0)
        return QColor(0, 128, 0);
    if (std::abs(z) == 2.0)
        return QColor(200, 0, 0);
    return QColor(0, 0, 0);
}

QString curveLabel(double z) {
    return z == 0.0 ? u"0"_s : (z > 0 ? u"+%1"_s.arg(z) : QString::number(z));
}

} // namespace

QImage DrawChart(const std::vector<LmsRow>& all, const ChartLayout& layout) {
    std::vector<LmsRow> rows;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(rows),
                 [&](const LmsRow& r) { return r.sex == layout.sex && r.month <= layout.lastMonth; });
    QImage image(1400, 1000, QImage::Format_RGB32);
    image.fill(Qt::white);
    if (rows.empty())
        return image;

    double low = ValueAt(rows.front(), -3.0);
    double high = ValueAt(rows.front(), 3.0);
    for (const LmsRow& r : rows) {
        low = std::min(low, ValueAt(r, -3.0));
        high = std::max(high, ValueAt(r, 3.0));
    }
    const double span = high - low;
    const double step = span > 60 ? 10.0 : span > 30 ? 5.0 : span > 12 ? 2.0 : 1.0;
    low = std::floor(low / step) * step;
    high = std::ceil(high / step) * step;

    const QRectF plot(110, 110, 1200, 780);
    const auto x = [&](double month) { return plot.left() + plot.width() * month / layout.lastMonth; };
    const auto y = [&](double value) { return plot.bottom() - plot.height() * (value - low) / (high - low); };

    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor band = layout.sex == u'M' ? QColor(225, 238, 255) : QColor(255, 230, 240);
    p.fillRect(QRectF(0, 0, image.width(), 80), band);
    QFont titleFont(u"DejaVu Sans"_s, 22, QFont::Bold);
    p.setFont(titleFont);
    p.setPen(Qt::black);
    p.drawText(QRectF(0, 0, image.width(), 80), Qt::AlignCenter, layout.title);

    QFont axisFont(u"DejaVu Sans"_s, 11);
    p.setFont(axisFont);
    for (double v = low; v <= high + 1e-9; v += step) {
        p.setPen(QPen(QColor(210, 210, 210), 1));
        p.drawLine(QPointF(plot.left(), y(v)), QPointF(plot.right(), y(v)));
        p.setPen(Qt::black);
        p.drawText(QRectF(plot.left() - 100, y(v) - 10, 90, 20), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(v));
    }
    for (int month = 0; month <= layout.lastMonth; ++month) {
        const bool year = month % 12 == 0;
        p.setPen(QPen(year ? QColor(150, 150, 150) : QColor(230, 230, 230), year ? 2 : 1));
        p.drawLine(QPointF(x(month), plot.top()), QPointF(x(month), plot.bottom()));
        if (month % 2 == 0 || year) {
            p.setPen(Qt::black);
            const QString label =
                year && month > 0 ? u"%1 yr"_s.arg(month / 12) : QString::number(month % 12);
            p.drawText(QRectF(x(month) - 30, plot.bottom() + 6, 60, 20), Qt::AlignCenter, label);
        }
    }
    p.setPen(QPen(Qt::black, 2));
    p.drawRect(plot);
    p.drawText(QRectF(plot.left(), plot.bottom() + 30, plot.width(), 24), Qt::AlignCenter,
               u"Age (completed months and years)"_s);
    p.save();
    p.translate(24, plot.center().y());
    p.rotate(-90);
    p.drawText(QRectF(-200, -12, 400, 24), Qt::AlignCenter, layout.unit);
    p.restore();

    for (const double z : Curves) {
        QPainterPath path;
        bool started = false;
        QChar kind;
        for (const LmsRow& r : rows) {
            const QPointF point(x(r.month), y(ValueAt(r, z)));
            if (!started || r.kind != kind)
                path.moveTo(point);
            else
                path.lineTo(point);
            started = true;
            kind = r.kind;
        }
        p.setPen(QPen(curveColour(z), z == 0.0 ? 3 : 2));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
        p.setPen(curveColour(z));
        p.drawText(QRectF(plot.right() + 6, y(ValueAt(rows.back(), z)) - 10, 80, 20),
                   Qt::AlignLeft | Qt::AlignVCenter, curveLabel(z));
    }
    p.setPen(Qt::black);
    p.drawText(QRectF(plot.left(), image.height() - 60, plot.width(), 50), Qt::AlignLeft | Qt::TextWordWrap,
               u"Curves: median (0) and -2/+2, -3/+3 standard deviations (z-scores). "
               "Source: WHO Child Growth Standards, 2006."_s);
    p.end();
    return image;
}

std::vector<DeliveredChart> DeliveredCharts() {
    struct Standard {
        const char* data;
        const char* indicator;
        const char* unit;
        int lastMonth;
    };
    const Standard standards[] = {
        {"weight_for_age", "Weight-for-age", "Weight (kg)", 60},
        {"length_height_for_age", "Length/height-for-age", "Length / height (cm)", 60},
        {"bmi_for_age", "BMI-for-age", "BMI (kg/m\u00b2)", 60},
        {"head_circumference_for_age", "Head circumference-for-age", "Head circumference (cm)", 36},
    };
    std::vector<DeliveredChart> out;
    for (const Standard& standard : standards) {
        for (const QChar sex : {u'M', u'F'}) {
            const QString who = sex == u'M' ? u"Boys"_s : u"Girls"_s;
            const QString span = standard.lastMonth == 60 ? u"birth to 5 years"_s : u"birth to 3 years"_s;
            const QString data = QString::fromLatin1(standard.data);
            out.push_back(
                {data + u".csv"_s, u"%1_%2.jpg"_s.arg(data, who.toLower()),
                 ChartLayout{u"%1 %2, %3 (WHO)"_s.arg(QString::fromUtf8(standard.indicator), who, span),
                             QString::fromUtf8(standard.unit), sex, standard.lastMonth}});
        }
    }
    return out;
}

bool DrawDeliveredCharts(const QString& growthDir, const QString& chartFolder, QString* error) {
    if (!QDir().mkpath(chartFolder)) {
        *error = chartFolder + u": the folder can not be made"_s;
        return false;
    }
    for (const DeliveredChart& chart : DeliveredCharts()) {
        const auto rows = ReadLms(QDir(growthDir).filePath(chart.dataFile), error);
        if (!rows)
            return false;
        const QString file = QDir(chartFolder).filePath(chart.fileName);
        if (!DrawChart(*rows, chart.layout).save(file, "JPG", 90)) {
            *error = file + u": the chart can not be written"_s;
            return false;
        }
    }
    return true;
}

} // namespace vantrel::growth
