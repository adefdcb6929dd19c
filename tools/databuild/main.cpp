#include "store/DataLoader.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

// Builds the delivered databases Vantrel.db and Schema.db from the data folder into OUT_DIR.
int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: vantrel-databuild DATA_DIR OUT_DIR\n", stderr);
        return 1;
    }
    QString error;
    if (!vantrel::buildDeliveredDatabases(arguments.at(1), arguments.at(2), &error)) {
        std::fprintf(stderr, "vantrel-databuild: %s\n", qUtf8Printable(error));
        return 1;
    }
    return 0;
}
