#include "core/Lookup.h"

#include "core/Controls.h"

#include "core/Host.h"
#include "core/Process.h"
#include "store/Database.h"

#include <map>

using namespace Qt::StringLiterals;

namespace vantrel {

QString BrandName(Database& db, qint64 code) {
    const QVariant name = db.scalar(u"SELECT A.Name FROM GenericName A WHERE A.Code = ?"_s, {code});
    return name.isNull() ? QString() : name.toString();
}

void ClearPhysicalObservations(ProcessState& state) {
    for (PhysicalEntry& entry : state.PhysicalList)
        entry.Observation.clear();
}

void LoadPhysicalObservations(ProcessState& state, const QString& kind, qint64 code, const QString& visitNo) {
    ClearPhysicalObservations(state);
    Rows rows;
    if (kind == u"P"_s)
        rows = state.OpenDb.select(
            u"SELECT PhysicalCode, Observation FROM PatientPhysical WHERE PatientCode = ?"_s, {code});
    else if (kind == u"D"_s)
        rows = state.OpenDb.select(
            u"SELECT PhysicalCode, Observation FROM PresPhysical WHERE PrescriptionCode = ?"_s, {code});
    else if (kind == u"V"_s)
        rows = state.OpenDb.select(u"SELECT PhysicalCode, Observation FROM VisitPhysical WHERE VisitNo = ?"_s,
                                   {visitNo});
    for (const Row& row : rows) {
        const qint64 physical = row.integer(u"PhysicalCode"_s);
        for (PhysicalEntry& entry : state.PhysicalList) {
            if (entry.Code == physical) {
                entry.Observation = row.text(u"Observation"_s);
                break;
            }
        }
    }
}

void ShowHelpContents(Process& process) {
    process.host.showHelp(process.state.HelpFile, 1);
}

void ShowHelpIndex(Process& process) {
    process.host.showHelp(process.state.HelpFile, 2);
}

void FillCombo(Database& db, ComboBox& combo, const QString& sql, const QString& nameColumn) {
    std::vector<ListRow> rows;
    for (const Row& row : db.select(sql))
        rows.push_back({row.integer(u"Code"_s), {row.text(nameColumn)}, false});
    combo.setRows(std::move(rows));
}

qint64 ComboCode(const ComboBox& combo) {
    const QString text = combo.text().trimmed();
    if (text.isEmpty())
        return 0;
    for (const ListRow& row : combo.rows()) {
        if (row.columns.value(0).trimmed().compare(text, Qt::CaseInsensitive) == 0)
            return row.code.toLongLong();
    }
    return -1;
}

namespace {

std::vector<ListRow> ReadRows(Database& db, const QString& sql, const QVariantList& params) {
    std::vector<ListRow> rows;
    for (const Row& row : db.select(sql, params)) {
        ListRow item;
        for (const QString& column : row.columns()) {
            if (column.compare(u"Code"_s, Qt::CaseInsensitive) == 0)
                item.code = row.value(column);
            else
                item.columns.append(row.text(column));
        }
        rows.push_back(std::move(item));
    }
    return rows;
}

struct KeptList {
    QString version;
    std::vector<ListRow> rows;
};

} // namespace

qint64 ChosenCode(const ComboBox& combo) {
    const int current = combo.current();
    if (current >= 0 && combo.rows().at(current).columns.value(0).trimmed().compare(combo.text().trimmed(),
                                                                                    Qt::CaseInsensitive) == 0)
        return combo.rows().at(current).code.toLongLong();
    return ComboCode(combo);
}

void FillRows(Database& db, ListControl& list, const QString& sql, const QVariantList& params) {
    list.setRows(ReadRows(db, sql, params));
}

void FillRowsKept(Database& db, ListControl& list, const QString& sql, const QStringList& tables) {
    static std::map<QString, KeptList> kept;
    const QString version = db.version(tables);
    KeptList& entry = kept[sql];
    if (entry.version != version) {
        entry.rows = ReadRows(db, sql, {});
        entry.version = version;
    }
    list.setRows(entry.rows);
}

void ShowComboCode(ComboBox& combo, qint64 code) {
    const int row = code != 0 ? combo.findCode(code) : -1;
    combo.setCurrent(row);
    combo.setText(row >= 0 ? combo.rows().at(row).columns.value(0) : QString());
}

void SearchList(ListControl& list, const QString& text) {
    const QString prefix = text.trimmed();
    const int row = prefix.isEmpty() ? 0 : list.findRow({prefix});
    if (row >= 0)
        list.setCurrent(row);
}

} // namespace vantrel
