#include "controls/GridModel.h"

#include "controls/grid_style.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corma {

namespace {

template<typename List> auto iteratorAt(List& list, int index)
{
    return std::next(list.begin(), index);
}

constexpr std::size_t kFirstRows = 8; // that there is place for

// The first column's cell is the record of the row itself, so that column stands for the next one.
int indexOfRecord(int column)
{
    return std::max(column - 1, 0);
}

} // namespace

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headers.size());
}

bool GridModel::hasRow(int row) const
{
    return row >= 0 && row < rowCount();
}

bool GridModel::hasCell(int row, int column) const
{
    return hasRow(row) && column >= 0 && column < columnCount();
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!hasCell(index.row(), index.column())) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return text(index.row(), index.column());
    }
    if (role == Qt::TextAlignmentRole) {
        return headerData(index.column(), Qt::Horizontal, role);
    }
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const Header& header = m_headers[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return header.text;
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(header.alignment | Qt::AlignVCenter);
    }
    return {};
}

int GridModel::addColumn(int column, const xx_gridListCtrl::Column& description)
{
    const int index = std::min(column, columnCount());
    beginInsertColumns({}, index, index);
    m_headers.insert(iteratorAt(m_headers, index), {description.text, description.alignment});
    m_columnStyles.insert(iteratorAt(m_columnStyles, index), nullptr);
    for (Row& row : m_rows) {
        row.texts.insert(iteratorAt(row.texts, index), QString());
        auto& cells = row.record->cells;
        cells.insert(iteratorAt(cells, indexOfRecord(index)), std::make_unique<ItemStruct>());
    }
    endInsertColumns();
    return index;
}

bool GridModel::takeColumn(int column)
{
    if (column < 0 || column >= columnCount()) {
        return false;
    }
    if (columnCount() < 2) {
        clear();
    }
    beginRemoveColumns({}, column, column);
    m_headers.erase(iteratorAt(m_headers, column));
    m_columnStyles.erase(iteratorAt(m_columnStyles, column));
    for (Row& row : m_rows) {
        row.texts.erase(iteratorAt(row.texts, column));
        auto& cells = row.record->cells;
        cells.erase(iteratorAt(cells, indexOfRecord(column)));
    }
    endRemoveColumns();
    return true;
}

void GridModel::addRow(int row, const QString& text, std::unique_ptr<ItemStruct> record)
{
    const auto columns = m_headers.size();
    while (record->cells.size() + 1 < columns) {
        record->cells.push_back(std::make_unique<ItemStruct>());
    }
    Row added {std::vector<QString>(columns), std::move(record)};
    added.texts.front() = text;
    // What can fail comes before the views are told.
    if (m_rows.size() == m_rows.capacity()) {
        m_rows.reserve(2 * m_rows.size() + kFirstRows);
    }
    const int index = std::min(row, rowCount());
    beginInsertRows({}, index, index);
    m_rows.insert(iteratorAt(m_rows, index), std::move(added));
    endInsertRows();
}

bool GridModel::takeRow(int row)
{
    if (!hasRow(row)) {
        return false;
    }
    beginRemoveRows({}, row, row);
    m_rows.erase(iteratorAt(m_rows, row));
    endRemoveRows();
    return true;
}

void GridModel::clear()
{
    if (m_rows.empty()) {
        return;
    }
    beginRemoveRows({}, 0, rowCount() - 1);
    m_rows.clear();
    endRemoveRows();
}

QString GridModel::text(int row, int column) const
{
    return hasCell(row, column) ? at(row).texts[static_cast<std::size_t>(column)] : QString();
}

bool GridModel::setText(int row, int column, const QString& text)
{
    if (!hasCell(row, column)) {
        return false;
    }
    iteratorAt(m_rows, row)->texts[static_cast<std::size_t>(column)] = text;
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed, {Qt::DisplayRole});
    return true;
}

ItemStruct& GridModel::cell(int row, int column) const
{
    ItemStruct& record = *at(row).record;
    return column == 0 ? record : *record.cells[static_cast<std::size_t>(column) - 1];
}

ItemStruct* GridModel::rowStyle(int row) const
{
    return at(row).record->rowStyle.get();
}

ItemStruct* GridModel::columnStyle(int column) const
{
    return m_columnStyles[static_cast<std::size_t>(column)].get();
}

ItemStruct& GridModel::makeRowStyle(int row)
{
    auto& style = at(row).record->rowStyle;
    if (!style) {
        style = std::make_unique<ItemStruct>();
    }
    return *style;
}

ItemStruct& GridModel::makeColumnStyle(int column)
{
    auto& style = m_columnStyles[static_cast<std::size_t>(column)];
    if (!style) {
        style = std::make_unique<ItemStruct>();
    }
    return *style;
}

void GridModel::dropAllFonts()
{
    for (const Row& row : m_rows) {
        dropFonts(*row.record);
    }
    for (const auto& style : m_columnStyles) {
        if (style) {
            dropFonts(*style);
        }
    }
}

} // namespace corma
