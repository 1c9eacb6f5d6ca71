#include "editor/HatchPatternModel.h"

namespace corma {

HatchPatternModel::HatchPatternModel(const HatchPalette& palette, QObject* parent)
    : QAbstractListModel(parent)
    , m_palette(palette)
{
}

int HatchPatternModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_palette.patterns().size());
}

QVariant HatchPatternModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdWString(pattern(index).name);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return QString::fromStdWString(pattern(index).description);
    default:
        return {};
    }
}

QModelIndexList HatchPatternModel::match(const QModelIndex& start, int role, const QVariant& value,
                                         int hits, Qt::MatchFlags flags) const
{
    const bool isTyped = role == Qt::DisplayRole && hits == 1 && flags.testFlag(Qt::MatchStartsWith)
        && flags.testFlag(Qt::MatchWrap);
    if (!isTyped) {
        return QAbstractListModel::match(start, role, value, hits, flags);
    }
    const auto from = static_cast<std::size_t>(std::max(0, start.row()));
    const auto found = m_palette.find(value.toString().toStdWString(), from);
    return found ? QModelIndexList {index(static_cast<int>(*found))} : QModelIndexList();
}

const host::HatchPattern& HatchPatternModel::pattern(const QModelIndex& index) const
{
    return m_palette.patterns()[static_cast<std::size_t>(index.row())];
}

} // namespace corma
