#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace vantrel {

class Database;

// The clinic's parameters: the one Control row, read into the process at start and by Apply. Each column
// is one value under its own name; the OPD application reads the OPD... column of a pair under the plain
// name, so that every screen asks for the plain name in either application.
class ClinicParameters {
public:
    // Reads the Control row. Text reads Null as empty, numbers held as text read empty as 0, passwords
    // are trimmed and turned back to their clear order.
    bool read(Database& db, int runMode, QString* error);

    bool has(const QString& column) const;
    QString text(const QString& column) const;
    bool flag(const QString& column) const;
    qint64 integer(const QString& column) const;
    double number(const QString& column) const;
    void set(const QString& column, const QVariant& value);

    // A password as stored: its characters in reverse order.
    static QString reversed(const QString& text);

private:
    QVariant raw(const QString& column) const;
    QVariantMap m_values;
};

} // namespace vantrel
