#include "core/ClinicParameters.h"

#include "store/Database.h"
#include "store/Schema.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

const QStringList kPasswords = {u"Password"_s, u"ControlPassword"_s, u"HOpt"_s};

// The OPD application's column of a pair, where its name is not simply "OPD" + the plain name.
QString opdColumnOf(const QString& column) {
    if (column.startsWith(u"PadSnap"_s, Qt::CaseInsensitive))
        return u"OPDSnap"_s + column.mid(7);
    return u"OPD"_s + column;
}

} // namespace

QString ClinicParameters::reversed(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (auto it = text.crbegin(); it != text.crend(); ++it)
        out.append(*it);
    return out;
}

bool ClinicParameters::read(Database& db, int runMode, QString* error) {
    const std::optional<Row> row = db.first(u"SELECT * FROM Control"_s);
    if (!row) {
        *error = db.lastError().isEmpty() ? u"The Control row is missing."_s : db.lastError();
        return false;
    }
    const schema::Table* control = schema::findTable(u"Control"_s);
    m_values.clear();
    for (const QString& column : row->columns()) {
        const QString source = runMode == 2 && row->has(opdColumnOf(column)) ? opdColumnOf(column) : column;
        const schema::Column* def = control ? schema::findColumn(*control, source) : nullptr;
        const schema::Type type = def ? def->type : schema::Type::Text;
        QVariant value;
        switch (type) {
        case schema::Type::Boolean:
            value = row->flag(source);
            break;
        case schema::Type::Long:
        case schema::Type::Integer:
        case schema::Type::Counter:
        case schema::Type::KeyLong:
            value = row->integer(source);
            break;
        case schema::Type::Double:
        case schema::Type::Single:
            value = row->real(source);
            break;
        default:
            value = row->text(source);
            break;
        }
        m_values.insert(column, value);
    }
    for (const QString& password : kPasswords) {
        if (m_values.contains(password))
            m_values.insert(password, reversed(m_values.value(password).toString().trimmed()));
    }
    return true;
}

bool ClinicParameters::has(const QString& column) const {
    return m_values.contains(column);
}

QVariant ClinicParameters::raw(const QString& column) const {
    const auto it = m_values.constFind(column);
    if (it != m_values.cend())
        return it.value();
    for (auto i = m_values.cbegin(); i != m_values.cend(); ++i) {
        if (i.key().compare(column, Qt::CaseInsensitive) == 0)
            return i.value();
    }
    Q_ASSERT_X(m_values.isEmpty(), "ClinicParameters", qPrintable(column));
    return {};
}

QString ClinicParameters::text(const QString& column) const {
    return raw(column).toString();
}

bool ClinicParameters::flag(const QString& column) const {
    return integer(column) != 0;
}

qint64 ClinicParameters::integer(const QString& column) const {
    const QVariant v = raw(column);
    if (v.typeId() == QMetaType::QString)
        return qRound64(v.toString().trimmed().toDouble());
    return v.toLongLong();
}

double ClinicParameters::number(const QString& column) const {
    const QVariant v = raw(column);
    if (v.typeId() == QMetaType::QString)
        return v.toString().trimmed().toDouble();
    return v.toDouble();
}

void ClinicParameters::set(const QString& column, const QVariant& value) {
    m_values.insert(column, value);
}

} // namespace vantrel
