#include "core/Grid.h"

#include "core/Screen.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

DropDown::DropDown(Screen& screen, const QString& name, int index)
    : ListControl(screen, ControlKind::List, name, index) {
    setTabStop(false);
}

Grid::Grid(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::Grid, name, index) {}

void Grid::addColumn(GridColumn column) {
    m_columns.push_back(std::move(column));
}

const GridColumn* Grid::column(int number) const {
    for (const GridColumn& c : m_columns) {
        if (c.number == number)
            return &c;
    }
    return nullptr;
}

const GridColumn* Grid::columnByField(const QString& field) const {
    for (const GridColumn& c : m_columns) {
        if (c.field.compare(field, Qt::CaseInsensitive) == 0)
            return &c;
    }
    return nullptr;
}

const GridColumn* Grid::findColumn(const QString& numberOrField) const {
    bool isNumber = false;
    const int number = numberOrField.toInt(&isNumber);
    return isNumber ? column(number) : columnByField(numberOrField);
}

void Grid::bind(Database& db, const QString& table, const QString& orderBy) {
    m_db = &db;
    m_table = table;
    m_orderBy = orderBy;
    reload();
}

void Grid::reload() {
    m_rows.clear();
    if (m_db) {
        const QString order = m_orderBy.isEmpty() ? u"rowid"_s : m_orderBy;
        for (const Row& row :
             m_db->select(u"SELECT rowid AS GridRowId, * FROM \"%1\" ORDER BY %2"_s.arg(m_table, order))) {
            RowData data;
            data.rowid = row.integer(u"GridRowId"_s);
            for (const QString& column : row.columns()) {
                if (column != u"GridRowId"_s)
                    data.values.insert(column, row.value(column));
            }
            m_rows.push_back(std::move(data));
        }
    }
    m_current = 0;
    m_dirty = false;
    m_buffer = m_rows.empty() ? RowData{} : m_rows.front();
    notify();
}

QVariant Grid::cell(int row, const QString& field) const {
    if (row == m_current)
        return value(field);
    return storedValue(row, field);
}

QVariant Grid::storedValue(int row, const QString& field) const {
    if (row < 0 || row >= rowCount())
        return {};
    for (auto it = m_rows.at(row).values.cbegin(); it != m_rows.at(row).values.cend(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    return {};
}

qint64 Grid::rowId(int row) const {
    return row >= 0 && row < rowCount() ? m_rows.at(row).rowid : 0;
}

QString Grid::cellText(int row, int columnNumber) const {
    const GridColumn* c = column(columnNumber);
    if (!c)
        return {};
    const QVariant v = cell(row, c->field);
    return v.isNull() ? QString() : v.toString();
}

QVariant Grid::value(const QString& field) const {
    for (auto it = m_buffer.values.cbegin(); it != m_buffer.values.cend(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    return {};
}

QString Grid::text(const QString& field) const {
    const QVariant v = value(field);
    return v.isNull() ? QString() : v.toString();
}

void Grid::setValue(const QString& field, const QVariant& value) {
    for (auto it = m_buffer.values.begin(); it != m_buffer.values.end(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0) {
            it.value() = value;
            m_dirty = true;
            notify();
            return;
        }
    }
    m_buffer.values.insert(field, value);
    m_dirty = true;
    notify();
}

bool Grid::goToRow(int row) {
    row = std::clamp(row, 0, rowCount());
    if (row == m_current)
        return true;
    if (!commit())
        return false;
    enterRow(row);
    return true;
}

void Grid::enterRow(int row) {
    m_current = std::clamp(row, 0, rowCount());
    m_buffer = m_current < rowCount() ? m_rows.at(m_current) : RowData{};
    m_dirty = false;
    notify();
    if (onRowChange)
        onRowChange();
}

void Grid::setCurrentColumn(int number) {
    if (m_column != number) {
        m_column = number;
        notify();
    }
}

bool Grid::editCell(int columnNumber, const QString& text) {
    const GridColumn* c = column(columnNumber);
    if (!c || c->locked || locked || (onNewLine() && !allowAdd))
        return false;
    setCurrentColumn(columnNumber);
    setValue(c->field, text);
    return !onColumnLeave || onColumnLeave(columnNumber);
}

bool Grid::pick(int columnNumber, const QStringList& values) {
    const GridColumn* c = column(columnNumber);
    if (!c || c->dropDown.isEmpty() || locked || (onNewLine() && !allowAdd))
        return false;
    auto* list = qobject_cast<DropDown*>(screen().control(c->dropDown));
    if (!list)
        return false;
    const int found = list->findRow(values);
    if (found < 0)
        return false;
    setCurrentColumn(columnNumber);
    list->setCurrent(found);
    const ListRow& row = list->rows().at(found);
    if (onPick)
        onPick(columnNumber, row);
    else
        setValue(c->field, row.columns.value(0));
    return !onColumnLeave || onColumnLeave(columnNumber);
}

bool Grid::tick(int columnNumber, bool on) {
    const GridColumn* c = column(columnNumber);
    if (!c || !c->checkBox || c->locked || locked)
        return false;
    setCurrentColumn(columnNumber);
    setValue(c->field, on ? 1 : 0);
    return !onColumnLeave || onColumnLeave(columnNumber);
}

void Grid::discard() {
    m_buffer = onNewLine() ? RowData{} : m_rows.at(m_current);
    m_dirty = false;
    notify();
}

bool Grid::clickCell(int row, int columnNumber) {
    if (!goToRow(row))
        return false;
    setCurrentColumn(columnNumber);
    if (onCellClick)
        onCellClick(columnNumber);
    return true;
}

bool Grid::commit() {
    if (!m_dirty)
        return true;
    if (onCommit && !onCommit())
        return false;
    if (!store())
        return false;
    m_dirty = false;
    if (onAfterCommit)
        onAfterCommit();
    return true;
}

bool Grid::store() {
    if (!m_db)
        return false;
    QStringList fields;
    QVariantList values;
    for (auto it = m_buffer.values.cbegin(); it != m_buffer.values.cend(); ++it) {
        fields.append(u"\"%1\""_s.arg(it.key()));
        values.append(it.value());
    }
    if (fields.isEmpty())
        return true;
    if (m_buffer.rowid == 0) {
        QStringList marks;
        for (qsizetype i = 0; i < fields.size(); ++i)
            marks.append(u"?"_s);
        const QString sql =
            u"INSERT INTO \"%1\" (%2) VALUES (%3)"_s.arg(m_table, fields.join(u", "_s), marks.join(u", "_s));
        if (m_db->execute(sql, values) < 0)
            return false;
        m_buffer.rowid = m_db->lastInsertId();
        m_rows.push_back(m_buffer);
        m_current = rowCount() - 1;
    } else {
        QStringList sets;
        for (const QString& f : fields)
            sets.append(f + u" = ?"_s);
        values.append(m_buffer.rowid);
        const QString sql = u"UPDATE \"%1\" SET %2 WHERE rowid = ?"_s.arg(m_table, sets.join(u", "_s));
        if (m_db->execute(sql, values) < 0)
            return false;
        m_rows[m_current] = m_buffer;
    }
    notify();
    return true;
}

bool Grid::deleteRow() {
    if (!allowDelete || locked)
        return false;
    if (onNewLine()) {
        m_buffer = RowData{};
        m_dirty = false;
        notify();
        return true;
    }
    if (onDelete && !onDelete())
        return false;
    if (m_db->execute(u"DELETE FROM \"%1\" WHERE rowid = ?"_s.arg(m_table), {m_rows.at(m_current).rowid}) < 0)
        return false;
    m_rows.erase(m_rows.begin() + m_current);
    enterRow(m_current);
    return true;
}

} // namespace vantrel
