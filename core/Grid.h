#pragma once

#include "core/Controls.h"

#include <QVariantMap>

namespace vantrel {

class Database;

// A grid's drop-down list: its own control, named as the system names it (BrandDD, SymbolDD).
class DropDown : public ListControl {
    Q_OBJECT
public:
    DropDown(Screen& screen, const QString& name, int index = -1);
};

struct GridColumn {
    int number = 0;  // the system's number of the column
    QString field;   // the column of the staging table
    QString caption; // heading
    bool locked = false;
    bool visible = true;
    bool checkBox = false;
    QString dropDown; // name of the drop-down list serving this column, if any
    int width = 0;    // in characters, a hint for the view
};

// A hidden column holding a code.
inline GridColumn CodeColumn(int number, const QString& field) {
    GridColumn c;
    c.number = number;
    c.field = field;
    c.visible = false;
    return c;
}

// A shown column, with the drop-down list that serves it, if any.
inline GridColumn ShownColumn(int number, const QString& field, const QString& caption, int width = 0,
                              const QString& dropDown = {}) {
    GridColumn c;
    c.number = number;
    c.field = field;
    c.caption = caption;
    c.width = width;
    c.dropDown = dropDown;
    return c;
}

// A grid bound to a staging table. Rows are edited in a buffer; leaving an edited row commits it to the
// table (its rule may refuse), so the table always holds what the grid shows.
class Grid : public Control {
    Q_OBJECT
public:
    Grid(Screen& screen, const QString& name, int index = -1);

    void addColumn(GridColumn column);
    const std::vector<GridColumn>& columns() const { return m_columns; }
    const GridColumn* column(int number) const;
    const GridColumn* columnByField(const QString& field) const;
    // A column addressed by its number or by its field name.
    const GridColumn* findColumn(const QString& numberOrField) const;

    void bind(Database& db, const QString& table, const QString& orderBy = {});
    // Reads the staging table again; the current row goes back to the first.
    void reload();
    const QString& table() const { return m_table; }

    bool allowAdd = true;
    bool allowDelete = true;
    bool locked = false;
    // Locks or frees the grid as the screen's mode changes; the view shows the new line only when free.
    void setLocked(bool on) {
        if (locked != on) {
            locked = on;
            notify();
        }
    }

    // Stored rows; the empty new line at the end is not counted.
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    // 0-based current row; rowCount() is the new line.
    int currentRow() const { return m_current; }
    bool onNewLine() const { return m_current == rowCount(); }
    int currentColumn() const { return m_column; }
    bool dirty() const { return m_dirty; }

    QVariant cell(int row, const QString& field) const;
    // A row as it stands in the table, before the edits of the current line.
    QVariant storedValue(int row, const QString& field) const;
    // The table's row id of a stored row; 0 for the new line.
    qint64 rowId(int row) const;
    QString cellText(int row, int columnNumber) const;
    // The current row's values, as edited.
    QVariant value(const QString& field) const;
    QString text(const QString& field) const;
    // The logic sets a field of the current row.
    void setValue(const QString& field, const QVariant& value);

    // What the person does. Each returns false when a rule refused and the grid stayed where it was.
    bool goToRow(int row);
    bool goToNewLine() { return goToRow(rowCount()); }
    bool editCell(int columnNumber, const QString& text);
    bool pick(int columnNumber, const QStringList& values);
    bool tick(int columnNumber, bool on);
    bool commit();
    bool deleteRow();
    // The person stands on a column of the current line, as the view shows it already.
    void standOn(int columnNumber) { m_column = columnNumber; }
    // Drops the edits of the current line: a stored line comes back as stored, the new line empties.
    void discard();
    // The person clicks a cell: its row becomes current, then the cell's rule runs.
    bool clickCell(int row, int columnNumber);
    // Leaves the grid: an edited row is committed first.
    bool leave() { return commit(); }

    // Rules of the screen.
    std::function<bool(int columnNumber)> onColumnLeave;
    std::function<bool()> onCommit;
    std::function<void()> onAfterCommit;
    std::function<bool()> onDelete;
    std::function<void(int columnNumber, const ListRow& row)> onPick;
    std::function<void()> onRowChange;
    std::function<void(int columnNumber)> onCellClick;

private:
    struct RowData {
        qint64 rowid = 0;
        QVariantMap values;
    };
    bool store();
    // Makes a row (or the new line) current with its stored values.
    void enterRow(int row);
    void setCurrentColumn(int number);
    Database* m_db = nullptr;
    QString m_table;
    QString m_orderBy;
    std::vector<GridColumn> m_columns;
    std::vector<RowData> m_rows;
    RowData m_buffer;
    int m_current = 0;
    int m_column = 0;
    bool m_dirty = false;
};

} // namespace vantrel
