#pragma once

#include "editor/HatchPalette.h"

#include <QAbstractListModel>

namespace corma {

/// The patterns of a palette as a list: the name to show, the description as the tip. The palette
/// must live as long, and keep its patterns.
class HatchPatternModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit HatchPatternModel(const HatchPalette& palette, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// What a person means who types a text is for the palette to find; the views ask this way.
    [[nodiscard]] QModelIndexList match(const QModelIndex& start, int role, const QVariant& value,
                                        int hits, Qt::MatchFlags flags) const override;

    /// The pattern of a row of this model, which must be valid.
    [[nodiscard]] const host::HatchPattern& pattern(const QModelIndex& index) const;

private:
    const HatchPalette& m_palette;
};

} // namespace corma
