#pragma once

#include <corma/xx_gridListCtrl.h>

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace corma {

/// The rows of a grid list: texts, and the records of their styles. Operations do nothing and
/// answer false for what is out of range.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    [[nodiscard]] bool hasRow(int row) const;
    [[nodiscard]] bool hasCell(int row, int column) const;

    /// Inserts a column, at the end if there are fewer; the index must not be below 0. Returns it.
    int addColumn(int column, const xx_gridListCtrl::Column& description);
    bool takeColumn(int column);

    /// Inserts a row with the text of its first cell, at the end if there are fewer. There must be
    /// a column, and the row must not be below 0.
    void addRow(int row, const QString& text, std::unique_ptr<ItemStruct> record);
    bool takeRow(int row);
    void clear();

    [[nodiscard]] QString text(int row, int column) const;
    bool setText(int row, int column, const QString& text);

    /// The plain record of a cell that must be there.
    [[nodiscard]] ItemStruct& cell(int row, int column) const;

    /// The style of the row as a whole, or of the column; null before it was asked for.
    [[nodiscard]] ItemStruct* rowStyle(int row) const;
    [[nodiscard]] ItemStruct* columnStyle(int column) const;

    ItemStruct& makeRowStyle(int row);
    ItemStruct& makeColumnStyle(int column);

    /// The font of the list is another: what was made from it goes.
    void dropAllFonts();

private:
    struct Row
    {
        std::vector<QString> texts; // by column
        std::unique_ptr<ItemStruct> record;
    };

    struct Header
    {
        QString text;
        Qt::Alignment alignment;
    };

    [[nodiscard]] const Row& at(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    std::vector<Row> m_rows;
    std::vector<Header> m_headers;
    std::vector<std::unique_ptr<ItemStruct>> m_columnStyles; // by column
};

} // namespace corma
