#include "editor/AttributeRowModel.h"

#include "controls/icons.h"
#include "editor/accessible_texts.h"

namespace corma {

namespace {

// Images of a block, its drawing and a reference, in the list of icons.
constexpr int kBlockImage = 0;
constexpr int kDrawingImage = 1;
constexpr int kReferenceImage = 2;

int imageOf(const AttributeUpdateForm::Row& row, int column)
{
    if (column == AttributeRowModel::kName) {
        return row.isReference ? kReferenceImage : kBlockImage;
    }
    return row.isReference ? kBlockImage : kDrawingImage;
}

QString kindOf(const AttributeUpdateForm::Row& row)
{
    return QString::fromStdWString(
        accessibleText(row.isReference ? AccessibleText::blockReference : AccessibleText::block));
}

} // namespace

AttributeRowModel::AttributeRowModel(AttributeUpdateForm& form, QObject* parent)
    : QAbstractTableModel(parent)
    , m_form(form)
{
}

int AttributeRowModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_form.rows().size());
}

int AttributeRowModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

Qt::ItemFlags AttributeRowModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == kName ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant AttributeRowModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const AttributeUpdateForm::Row& row = this->row(index);
    const bool isName = index.column() == kName;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return QString::fromStdWString(isName ? row.name : row.source);
    case Qt::DecorationRole:
        return blockIcon(imageOf(row, index.column()));
    case Qt::CheckStateRole:
        return isName ? QVariant(row.isChecked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::AccessibleDescriptionRole:
        return isName ? QVariant(kindOf(row)) : QVariant();
    default:
        return {};
    }
}

bool AttributeRowModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.column() != kName || role != Qt::CheckStateRole) {
        return false;
    }
    m_form.check(static_cast<std::size_t>(index.row()), value.toInt() == Qt::Checked);
    rowChanged(index.row());
    return true;
}

QVariant AttributeRowModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    switch (section) {
    case kName:
        return QStringLiteral("Name");
    case kSource:
        return QStringLiteral("Source");
    default:
        return {};
    }
}

void AttributeRowModel::toggle(int row)
{
    const bool isChecked = m_form.rows()[static_cast<std::size_t>(row)].isChecked;
    setData(index(row, kName), isChecked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void AttributeRowModel::rowChanged(int row)
{
    Q_EMIT dataChanged(index(row, 0), index(row, kColumns - 1));
}

const AttributeUpdateForm::Row& AttributeRowModel::row(const QModelIndex& index) const
{
    return m_form.rows()[static_cast<std::size_t>(index.row())];
}

} // namespace corma
