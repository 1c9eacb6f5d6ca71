#include "editor/AttributeTagModel.h"

#include "controls/icons.h"
#include "editor/accessible_texts.h"

#include <utility>

namespace corma {

namespace {

// Images of the tags, in the list of icons.
constexpr int kNewImage = 0;
constexpr int kExtraImage = 1;

QString kindOf(const AttributeUpdateForm::Tag& tag)
{
    return QString::fromStdWString(
        accessibleText(tag.isNew ? AccessibleText::newAttribute : AccessibleText::extraAttribute));
}

} // namespace

void AttributeTagModel::show(std::vector<AttributeUpdateForm::Tag> tags)
{
    beginResetModel();
    m_tags = std::move(tags);
    endResetModel();
}

int AttributeTagModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_tags.size());
}

QVariant AttributeTagModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const AttributeUpdateForm::Tag& tag = m_tags[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdWString(tag.text);
    case Qt::DecorationRole:
        return attributeIcon(tag.isNew ? kNewImage : kExtraImage);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return kindOf(tag);
    case Qt::AccessibleTextRole: // with the kind, which not every reader asks for
        return QStringLiteral("%1, %2").arg(QString::fromStdWString(tag.text), kindOf(tag));
    default:
        return {};
    }
}

QVariant AttributeTagModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section != 0) {
        return QAbstractListModel::headerData(section, orientation, role);
    }
    return QStringLiteral("Attributes");
}

} // namespace corma
