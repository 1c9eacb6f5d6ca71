#pragma once

// A list with columns that behaves like a grid: a current cell, which keys and mouse move; styles
// of cells, rows and columns; a tool tip for each cell. It is of Qt, as are its users.
//
// Rows and columns are counted from 0. A column is told by its index, wherever the user has dragged
// it to; only the current column is a display position. What is out of range is left alone.
//
// Nothing is edited in place: a host that wants that listens to beginLabelEdit(), shows an editor
// of its own over the cell, stores by setText(), and gives keys that leave the cell to message().

#include <corma/export.h>

#include <QColor>
#include <QFont>
#include <QString>
#include <QTreeView>

#include <memory>
#include <optional>
#include <vector>

/// The style of a cell, a row or a column. A new one is empty. A row of the list hangs on one,
/// which is also that of its first cell.
struct CORMA_EXPORT ItemStruct
{
    /// What `styleFlags` is made of.
    enum Flag : unsigned
    {
        kBold = 1,
        kItalic = 2,
        kUnderline = 4,
        kStrikeOut = 8,
        kHasTextColor = 16,
        kHasBackColor = 32,
        kStopFont = 64, ///< the levels below give no font: those of a cell are row and column
        kStopAll = 128 ///< the row gives nothing to this cell
    };

    static constexpr unsigned kFontFlags = kBold | kItalic | kUnderline | kStrikeOut;

    unsigned styleFlags = 0;
    bool hasFontStyle = false; ///< one of kFontFlags is set
    QColor textColor = Qt::black; ///< counts with kHasTextColor
    QColor backColor = Qt::black; ///< counts with kHasBackColor
    int image = 0; ///< as the row was made with it; nothing draws it
    std::vector<std::unique_ptr<ItemStruct>> cells; ///< on a row: the cell of column c is c - 1
    std::unique_ptr<ItemStruct> rowStyle; ///< on a row: null until asked for
    std::unique_ptr<ItemStruct> selectedStyle; ///< in place of this one while its row is selected
    std::optional<QFont> font; ///< made of styleFlags when first needed, or given by the host
    std::optional<QFont> compositeFont; ///< on a cell: made when several levels give a font
    bool fontOwned = false; ///< `font` was made of styleFlags, and goes when they change
    QString tipText; ///< on a row: the tool tip of its cells
    std::vector<QFont> compositeParts; ///< what compositeFont was made of

    /// Sets the flags, and what follows from them.
    void setFlags(unsigned flags);

    /// The record in place of this one while its row is selected; made on first use.
    ItemStruct& whileSelected();
};

class CORMA_EXPORT xx_gridListCtrl : public QTreeView
{
    Q_OBJECT

public:
    /// A column as insertColumn() takes it.
    struct Column
    {
        QString text; ///< of the header
        Qt::Alignment alignment = Qt::AlignLeft; ///< of header and cells
        int width = -1; ///< in pixels; below 0 that of a new column
        int order = -1; ///< where it is displayed; below 0 at its index
    };

    /// The messages that a cell editor of the host sends.
    enum Message
    {
        kCellKey = 0x9A, ///< a key moves the current cell: an arrow, or Enter for the one below
        kCellEditor = 0x784 ///< asks whether this is a grid
    };

    explicit xx_gridListCtrl(QWidget* parent = nullptr);
    ~xx_gridListCtrl() override;

    // --- the operations that a derived class can replace, in a fixed order ---

    /// Colours a row for the time that it is selected: the cell of the column with the first, the
    /// others with the second. The selection mark goes to the row. On white the text is black. Both
    /// colours are those of the current row from then on, also when row or column is out of range,
    /// which changes nothing else.
    virtual void setRowColor(int row, int column, const QColor& cellColor, const QColor& rowColor);

    /// Sizes all columns; returns how many there are.
    virtual int autoSizeColumns();

    /// Makes a column as wide as its widest text in any row, or its header, needs. False for a
    /// column that is not there.
    virtual bool autoSizeColumn(int column);

    /// For column 0 inserts a row, at the end if there are fewer; image and tip are its own, and an
    /// empty tip is the text. For another column sets the text of a row that is there; image and
    /// tip are not looked at. Does nothing when memory runs out, and for a row without columns.
    virtual void setCellText(int row, int column, int image, const QString& text,
                             const QString& tip);

    /// Moves the current cell: left and right by a column, up and down by a row, not over the
    /// edges; then setRowColor() gets the new place. Other keys (Qt::Key) do nothing. The list
    /// calls it for keys without Shift, Control and the like.
    virtual void onKeyDown(int key);

    // --- columns and rows ---

    /// Keeps the number; selects rows as a whole and lets headers be dragged.
    void setGridStyle(int style);
    [[nodiscard]] int gridStyle() const;

    /// Inserts a column, at the end if there are fewer. Returns its index, -1 when that was below
    /// 0. Texts move along with their columns. Of styles, those of columns do; cells have a new one
    /// before that of the column's index, but the first cell keeps that of its row.
    int insertColumn(int column, const Column& description);

    /// Without its last column the list has no rows. False for a column that is not there.
    bool deleteColumn(int column);

    bool deleteRow(int row);
    void deleteAllRows();

    [[nodiscard]] int rowCount() const;
    [[nodiscard]] int columnCount() const;

    /// The text of a cell; empty when it is not there.
    [[nodiscard]] QString text(int row, int column) const;

    /// Sets the text of a cell that is there, also in the first column.
    void setText(int row, int column, const QString& text);

    // --- styles ---

    /// Sets the colour of the plain cell; it counts while the flag is set.
    void setTextColor(int row, int column, const QColor& color, bool redraw);

    /// These two style a cell for the time that its row is selected.
    void setBackColor(int row, int column, const QColor& color, bool redraw);
    void setStyleFlags(int row, int column, unsigned flags, bool redraw);

    /// The records themselves, of a cell or row that must be there. Flags are set by
    /// ItemStruct::setFlags(); what changed is shown when the list is painted next, for which the
    /// host calls viewport()->update(). The style of a column counts for fonts in selected rows
    /// only. Styles of a row and a column are made when they are asked for. A reference is good
    /// until rows or columns are inserted or deleted.
    ItemStruct& cellStyle(int row, int column);
    ItemStruct& rowStyle(int row);
    ItemStruct& columnStyle(int column);

    // --- the current cell ---

    /// The display position of the current cell's column; -1 before there is one.
    [[nodiscard]] int currentColumn() const;

    /// The row that the arrow keys start from and Delete deletes; -1 for none. It goes along with
    /// the focused row, and setRowColor() moves it.
    [[nodiscard]] int selectionMark() const;

    [[nodiscard]] QColor currentCellColor() const; ///< grey until setRowColor() is called
    [[nodiscard]] QColor rowColor() const; ///< black until then

    /// From the palette.
    [[nodiscard]] QColor highlightText() const;
    [[nodiscard]] QColor highlightBack() const;

    // --- what is drawn ---

    /// With it, cells have the plain colours of the list, or the highlight, whatever their styles
    /// say of the back, and numbers have no more decimals than maxDecimals(). Off at the start.
    void setOwnDrawText(bool on);
    [[nodiscard]] bool ownDrawText() const;

    /// 32 at the start; below 0 is 0.
    void setMaxDecimals(int count);
    [[nodiscard]] int maxDecimals() const;

    // --- messages and tool tips ---

    /// Takes a message of a cell editor: kCellKey with the key (Qt::Key) gives the list the focus
    /// and moves the current cell, Enter as the down key, other keys not at all. Answers 1, and 0
    /// to any other message.
    int message(int number, int key = 0);

    /// The cell at a point of the viewport as row * 1024 + column + 1, with the column modulo 1024,
    /// and the part of it that is in sight; -1 where there is none.
    int toolHitTest(const QPoint& point, QRect* cell = nullptr) const;

    /// The tool tip of the cell with that number: that of its row, or else the cell's own text, cut
    /// to 80 characters.
    [[nodiscard]] QString toolTipOf(int tool) const;

Q_SIGNALS:
    /// The user wants to edit a cell: by a press on the current one, or by F2.
    void beginLabelEdit(int row, int column, const QString& text);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Grid;
    std::unique_ptr<Grid> m_grid;
};
