#include "editor/SettingListModel.h"

#include "controls/icons.h"
#include "controls/qt_text.h"
#include "settings/texts.h"

#include <QColor>

#include <array>

namespace corma {

namespace {

constexpr std::array<int, SettingListModel::kColumns> kHeadings
    = {row::kName, row::kType, row::kValue, row::kDescription};

// What a mark says, for those who cannot see it; 0 for one without a text.
constexpr std::array<int, kMarks> kMarkTexts
    = {row::kGlobalSetting, row::kProjectSetting, row::kLocalSetting,
       row::kCopyOfGlobal,  row::kCopyOfGlobal,   row::kCopyOfProject,
       row::kDoubleCopy,    row::kObsolete,       0};

const std::wstring& textOf(const SettingRow& row, int column)
{
    switch (column) {
    case SettingListModel::kName:
        return row.name;
    case SettingListModel::kType:
        return row.type;
    case SettingListModel::kValue:
        return row.value;
    default:
        return row.description;
    }
}

QVariant colourOf(std::uint32_t rgb)
{
    constexpr std::uint32_t kByte = 0xFF;
    if (rgb == 0) {
        return {};
    }
    return QColor(static_cast<int>(rgb & kByte), static_cast<int>(rgb >> 8 & kByte),
                  static_cast<int>(rgb >> 16 & kByte));
}

QVariant markText(int image)
{
    const bool isMark = image >= 0 && image < kMarks;
    const int number = isMark ? kMarkTexts[static_cast<std::size_t>(image)] : 0;
    return number == 0 ? QVariant() : qtText(number);
}

QVariant nameData(const SettingRow& row, int role)
{
    switch (role) {
    case Qt::DecorationRole:
        return markIcon(row.image);
    case Qt::AccessibleDescriptionRole:
        return markText(row.image);
    default:
        return {};
    }
}

} // namespace

void SettingListModel::show(const std::vector<SettingRow>& rows)
{
    beginResetModel();
    m_rows = &rows;
    endResetModel();
}

int SettingListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || m_rows == nullptr ? 0 : static_cast<int>(m_rows->size());
}

int SettingListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant SettingListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const SettingRow& row = (*m_rows)[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return toQt(textOf(row, index.column()));
    case Qt::ForegroundRole:
        return colourOf(row.rgb);
    default:
        return index.column() == kName ? nameData(row, role) : QVariant();
    }
}

QVariant SettingListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0
        || section >= kColumns) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    return qtText(kHeadings[static_cast<std::size_t>(section)]);
}

} // namespace corma
