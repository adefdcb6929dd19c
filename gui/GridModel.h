#pragma once

#include "core/Grid.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QStyledItemDelegate>

class QComboBox;

namespace vantrel {

// The rows of a list control in a combo box: the first column shows in the box, and a list with more than
// one column drops down as a table under the control's column headings.
void fillCombo(QComboBox& combo, const ListControl& list);

// One model for every grid: the grid's stored rows, then its new line when rows can be added. Everything the
// person does goes to the grid's own actions, whose rules may refuse.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // A drop-down pick: the displayed columns of the chosen row of the column's drop-down list.
    static constexpr int PickRole = Qt::UserRole + 1;

    GridModel(Grid& grid, QObject* parent);

    Grid* grid() const { return m_grid; }
    // The grid is going away: the model shows nothing from now on.
    void detach();
    const GridColumn* columnAt(int viewColumn) const;
    int viewColumnOf(int number) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
    // A rule of the grid refused what was done in this cell.
    void refused(const QModelIndex& index);

private:
    void refresh();
    int gridRows() const;
    std::vector<int> visibleColumns() const;
    QPointer<Grid> m_grid;
    std::vector<int> m_columns;
    int m_rows = 0;
};

// Edits the cells of a grid: a plain line, or for a column with a drop-down list a combo of the list's rows
// whose pick goes to the grid as a pick.
class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    static const DropDown* dropDownOf(const QModelIndex& index);
};

} // namespace vantrel
