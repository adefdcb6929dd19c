// Fills the delivered program folder from data/: the growth charts drawn from the WHO standards in
// data/growth, and the hand-outs and special topics of data/documents with the header pictures that the
// delivered database's topics name.
// Usage: vantrel-folder DATA_DIR PROGRAM_DIR DELIVERED_DB

#include "clinical/GrowthStandard.h"
#include "organiser/DeliveredDocuments.h"

#include <QDir>
#include <QGuiApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 4) {
        err << "usage: vantrel-folder DATA_DIR PROGRAM_DIR DELIVERED_DB\n";
        return 2;
    }
    const QDir data(args.at(1));
    const QDir program(args.at(2));
    QString error;
    bool done = false;
    {
        QSqlDatabase delivered = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"delivered"_s);
        delivered.setDatabaseName(args.at(3));
        delivered.setConnectOptions(u"QSQLITE_OPEN_READONLY"_s);
        if (!delivered.open())
            error = args.at(3) + u": "_s + delivered.lastError().text();
        else
            done = vantrel::growth::DrawDeliveredCharts(
                       data.filePath(u"growth"_s), program.filePath(u"Bin$01.001/PaeBin$1.001"_s), &error) &&
                   vantrel::InstallDocuments(data.path(), program.path(), delivered, &error);
        delivered.close();
    }
    QSqlDatabase::removeDatabase(u"delivered"_s);
    if (!done) {
        err << error << '\n';
        return 1;
    }
    return 0;
}
