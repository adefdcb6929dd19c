// Fills the delivered program folder from data/: the growth charts drawn from the WHO standards in
// data/growth, and the hand-outs and special topics of data/documents with their header pictures.
// Usage: vantrel-folder DATA_DIR PROGRAM_DIR

#include "clinical/GrowthStandard.h"
#include "organiser/DeliveredDocuments.h"

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
        err << "usage: vantrel-folder DATA_DIR PROGRAM_DIR\n";
        return 2;
    }
    const QDir data(args.at(1));
    const QDir program(args.at(2));
    QString error;
    if (!vantrel::growth::DrawDeliveredCharts(data.filePath(u"growth"_s),
                                              program.filePath(u"Bin$01.001/PaeBin$1.001"_s), &error) ||
        !vantrel::InstallDocuments(data.path(), program.path(), &error)) {
        err << error << '\n';
        return 1;
    }
    return 0;
}
