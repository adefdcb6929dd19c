// Draws the growth charts of the delivered program folder from the WHO standards in data/growth.
// Usage: vantrel-charts GROWTH_DATA_DIR PROGRAM_DIR

#include "clinical/GrowthStandard.h"

#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 3) {
        err << "usage: vantrel-charts GROWTH_DATA_DIR PROGRAM_DIR\n";
        return 2;
    }
    QString error;
    if (!vantrel::growth::DrawDeliveredCharts(
            args.at(1), QDir(args.at(2)).filePath(u"Bin$01.001/PaeBin$1.001"_s), &error)) {
        err << error << '\n';
        return 1;
    }
    return 0;
}
