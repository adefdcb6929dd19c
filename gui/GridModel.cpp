#include "gui/GridModel.h"

#include "core/Screen.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace vantrel {

void fillCombo(QComboBox& combo, const ListControl& list) {
    int columns = 1;
    for (const ListRow& row : list.rows())
        columns = std::max(columns, static_cast<int>(row.columns.size()));
    auto* model = new QStandardItemModel(list.count(), columns, &combo);
    for (int r = 0; r < list.count(); ++r) {
        const QStringList& values = list.rows().at(r).columns;
        for (int c = 0; c < columns; ++c)
            model->setItem(r, c, new QStandardItem(values.value(c)));
    }
    if (!list.columnHeadings.isEmpty())
        model->setHorizontalHeaderLabels(list.columnHeadings);
    if (columns > 1 && !qobject_cast<QTableView*>(combo.view())) {
        auto* table = new QTableView;
        table->setSelectionBehavior(QAbstractItemView::SelectRows);
        table->setSelectionMode(QAbstractItemView::SingleSelection);
        table->verticalHeader()->hide();
        table->setShowGrid(false);
        table->setWordWrap(false);
        combo.setView(table);
    }
    combo.setModel(model);
    combo.setModelColumn(0);
    if (auto* table = qobject_cast<QTableView*>(combo.view())) {
        table->horizontalHeader()->setVisible(!list.columnHeadings.isEmpty());
        table->resizeColumnsToContents();
        int width = table->verticalScrollBar()->sizeHint().width() + 4;
        for (int c = 0; c < columns; ++c)
            width += table->columnWidth(c);
        table->setMinimumWidth(width);
    }
}

GridModel::GridModel(Grid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(&grid), m_columns(visibleColumns()), m_rows(gridRows()) {
    connect(&grid, &Control::changed, this, &GridModel::refresh);
}

void GridModel::detach() {
    beginResetModel();
    m_grid = nullptr;
    m_columns.clear();
    m_rows = 0;
    endResetModel();
}

int GridModel::gridRows() const {
    if (!m_grid)
        return 0;
    return m_grid->rowCount() + (m_grid->allowAdd && !m_grid->locked ? 1 : 0);
}

std::vector<int> GridModel::visibleColumns() const {
    std::vector<int> numbers;
    if (m_grid) {
        for (const GridColumn& c : m_grid->columns()) {
            if (c.visible)
                numbers.push_back(c.number);
        }
    }
    return numbers;
}

const GridColumn* GridModel::columnAt(int viewColumn) const {
    if (!m_grid || viewColumn < 0 || viewColumn >= static_cast<int>(m_columns.size()))
        return nullptr;
    return m_grid->column(m_columns.at(static_cast<size_t>(viewColumn)));
}

int GridModel::viewColumnOf(int number) const {
    const auto it = std::find(m_columns.begin(), m_columns.end(), number);
    return it == m_columns.end() ? -1 : static_cast<int>(it - m_columns.begin());
}

void GridModel::refresh() {
    if (!m_grid)
        return;
    if (std::vector<int> columns = visibleColumns(); columns != m_columns) {
        beginResetModel();
        m_columns = std::move(columns);
        m_rows = gridRows();
        endResetModel();
        return;
    }
    // Rows come and go at the end only: every row is read again from the grid below.
    const int rows = gridRows();
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    if (m_rows > 0 && !m_columns.empty())
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
    Q_EMIT headerDataChanged(Qt::Vertical, 0, std::max(0, m_rows - 1));
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    const GridColumn* c = columnAt(index.column());
    if (!c || index.row() >= m_rows)
        return {};
    const QVariant value = m_grid->cell(index.row(), c->field);
    if (c->checkBox) {
        if (role == Qt::CheckStateRole)
            return value.toInt() != 0 ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return value.isNull() ? QString() : value.toString();
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || !m_grid)
        return {};
    if (orientation == Qt::Horizontal) {
        const GridColumn* c = columnAt(section);
        return c ? c->caption : QVariant();
    }
    if (section == m_grid->rowCount())
        return u"*"_s;
    return section == m_grid->currentRow() ? u"\u25B8"_s : QString();
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    const GridColumn* c = columnAt(index.column());
    if (!c)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (c->locked || m_grid->locked)
        return flags;
    return flags | (c->checkBox ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const GridColumn* c = columnAt(index.column());
    if (!c)
        return false;
    Grid& grid = *m_grid;
    const int number = c->number;
    if (role == Qt::EditRole && value.toString() == grid.cellText(index.row(), number))
        return true;
    bool done = index.row() == grid.currentRow() || grid.goToRow(index.row());
    if (done) {
        if (role == Qt::CheckStateRole)
            done = grid.tick(number, value.toInt() == Qt::Checked);
        else if (role == PickRole)
            done = grid.pick(number, value.toStringList());
        else if (role == Qt::EditRole)
            done = grid.editCell(number, value.toString());
        else
            return false;
    }
    if (!done)
        Q_EMIT refused(index);
    return done;
}

const DropDown* GridDelegate::dropDownOf(const QModelIndex& index) {
    const auto* model = qobject_cast<const GridModel*>(index.model());
    const GridColumn* c = model ? model->columnAt(index.column()) : nullptr;
    if (!c || c->dropDown.isEmpty())
        return nullptr;
    return qobject_cast<const DropDown*>(model->grid()->screen().control(c->dropDown));
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    const DropDown* list = dropDownOf(index);
    if (!list)
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    fillCombo(*combo, *list);
    auto* self = const_cast<GridDelegate*>(this);
    connect(combo, &QComboBox::activated, self, [self, combo] {
        combo->setProperty("picked", true);
        Q_EMIT self->commitData(combo);
        Q_EMIT self->closeEditor(combo, QAbstractItemDelegate::EditNextItem);
    });
    return combo;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (!combo) {
        QStyledItemDelegate::setEditorData(editor, index);
        return;
    }
    const QString text = index.data(Qt::EditRole).toString();
    combo->setCurrentIndex(combo->findText(text, Qt::MatchFixedString));
    combo->setEditText(text);
    // The list opens on its own; no row stands chosen in it until the person moves to one, so Enter on an
    // empty cell picks nothing.
    QMetaObject::invokeMethod(
        combo,
        [combo, empty = text.isEmpty()] {
            combo->showPopup();
            if (empty)
                combo->view()->setCurrentIndex(QModelIndex());
        },
        Qt::QueuedConnection);
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (!combo) {
        QStyledItemDelegate::setModelData(editor, model, index);
        return;
    }
    const QString text = combo->currentText();
    const bool picked = combo->property("picked").toBool();
    if (!picked && text == index.data(Qt::EditRole).toString())
        return;
    const DropDown* list = dropDownOf(index);
    const int row = combo->currentIndex();
    if (text.isEmpty())
        model->setData(index, QString(), Qt::EditRole);
    else if (list && row >= 0 && row < list->count() && combo->itemText(row) == text)
        model->setData(index, list->rows().at(static_cast<size_t>(row)).columns, GridModel::PickRole);
    else
        model->setData(index, QStringList{text}, GridModel::PickRole);
}

} // namespace vantrel
