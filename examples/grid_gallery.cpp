// What a list with columns can show: styles of cells, rows and columns, numbers, tool tips, a
// current cell that the arrow keys move, and an editor in the cell.
//
//     grid_gallery                        shows the window
//     grid_gallery --picture FILE.png     writes a picture of it instead

#include <corma/xx_gridListCtrl.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdio>
#include <initializer_list>

namespace {

using Texts = std::initializer_list<const char*>;

// A cell of the first column makes the row; the others fill it.
void addRow(xx_gridListCtrl& grid, const Texts& texts, const char* tip = "")
{
    const int row = grid.rowCount();
    int column = 0;
    for (const char* const text : texts) {
        grid.setCellText(row, column, 0, QString::fromUtf8(text), QString::fromUtf8(tip));
        ++column;
    }
}

// --- styles ---

void setColors(ItemStruct& style, unsigned flags, const QColor& text, const QColor& back)
{
    style.setFlags(flags | ItemStruct::kHasTextColor | ItemStruct::kHasBackColor);
    style.textColor = text;
    style.backColor = back;
}

void fillStyles(xx_gridListCtrl& grid)
{
    grid.setGridStyle(0);
    grid.insertColumn(0, {QStringLiteral("Door")});
    grid.insertColumn(1, {QStringLiteral("Kind")});
    grid.insertColumn(2, {QStringLiteral("Width"), Qt::AlignRight});
    grid.insertColumn(3, {QStringLiteral("Remark")});
    addRow(grid, {"D001", "single", "830", "bold, and a colour of its own"}, "The front door");
    addRow(grid, {"D002", "double", "1600", "a row in italics; the width is bold besides"});
    addRow(grid, {"D003", "sliding", "930", "struck out: taken out of the plan"});
    addRow(grid, {"D004", "single", "880", "a coloured row; the kind takes nothing from it"});
    addRow(grid, {"D005", "single", "830", "a column has its font while the row is selected"});
    addRow(grid, {"D006", "single", "780", "underlined"});

    grid.cellStyle(0, 3).setFlags(ItemStruct::kBold | ItemStruct::kHasTextColor);
    grid.cellStyle(0, 3).textColor = QColor(0xC0, 0x50, 0x10);

    grid.rowStyle(1).setFlags(ItemStruct::kItalic);
    grid.cellStyle(1, 2).setFlags(ItemStruct::kBold); // the most specific level wins: both

    grid.rowStyle(2).setFlags(ItemStruct::kStrikeOut);

    setColors(grid.rowStyle(3), 0, QColor(0x10, 0x40, 0x10), QColor(0xC8, 0xE6, 0xC9));
    grid.cellStyle(3, 1).setFlags(ItemStruct::kStopAll);

    grid.columnStyle(1).setFlags(ItemStruct::kBold);

    grid.cellStyle(5, 3).setFlags(ItemStruct::kUnderline);
    grid.autoSizeColumns();
}

// --- numbers ---

void fillNumbers(xx_gridListCtrl& grid)
{
    grid.setGridStyle(0);
    grid.insertColumn(0, {QStringLiteral("Room")});
    grid.insertColumn(1, {QStringLiteral("Area"), Qt::AlignRight});
    grid.insertColumn(2, {QStringLiteral("Height"), Qt::AlignRight});
    grid.setOwnDrawText(true);
    grid.setMaxDecimals(2); // of what is shown; the texts keep all of theirs
    addRow(grid, {"Hall", "12.5", "2.7"}, "Numbers with few decimals stay as they are");
    addRow(grid, {"Kitchen", "14.23847", "2.7"}, "14.23847 has too many decimals");
    addRow(grid, {"Bathroom", "6.0049", "2.65"}, "6.0049 has too many decimals");
    grid.autoSizeColumns();
}

// --- the editor in a cell ---

/// A field over the current cell. Enter and the up and down keys store and go on to the cell above
/// or below, Escape gives up.
class CellEditor : public QLineEdit
{
public:
    explicit CellEditor(xx_gridListCtrl& grid)
        : QLineEdit(grid.viewport())
        , m_grid(grid)
    {
        hide();
        setAccessibleName(QStringLiteral("Cell"));
        connect(&grid, &xx_gridListCtrl::beginLabelEdit, this, &CellEditor::begin);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Escape:
            m_row = -1;
            m_grid.setFocus();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Up:
        case Qt::Key_Down:
            store();
            m_grid.message(xx_gridListCtrl::kCellKey, event->key());
            return;
        default:
            QLineEdit::keyPressEvent(event);
        }
    }

    void focusOutEvent(QFocusEvent* event) override
    {
        QLineEdit::focusOutEvent(event);
        store();
        hide();
    }

private:
    void begin(int row, int column, const QString& text)
    {
        m_row = row;
        m_column = column;
        setText(text);
        setGeometry(m_grid.visualRect(m_grid.model()->index(row, column)));
        show();
        selectAll();
        setFocus();
    }

    void store()
    {
        if (m_row >= 0) {
            m_grid.setText(m_row, m_column, text());
        }
        m_row = -1;
    }

    xx_gridListCtrl& m_grid;
    int m_row = -1; // below 0 when nothing is edited
    int m_column = 0;
};

// --- the window ---

class Gallery : public QWidget
{
public:
    Gallery()
    {
        setWindowTitle(QStringLiteral("Grid gallery"));
        addGrid(m_styles, 2, QStringLiteral("&Styles (arrow keys, F2 or a second click to edit)"));
        addGrid(m_numbers, 1, QStringLiteral("&Numbers with two decimals"));
        fillStyles(m_styles);
        fillNumbers(m_numbers);
        new CellEditor(m_styles);
        resize(640, 380);
    }

    /// As if the user had come to the third cell of the fifth row by the arrow keys.
    void moveToACell()
    {
        m_styles.setFocus();
        m_styles.setRowColor(4, 0, QColor(0x7D, 0x7D, 0x7D), m_styles.highlightBack());
        for (int i = 0; i < 3; ++i) {
            m_styles.onKeyDown(Qt::Key_Right);
        }
    }

private:
    void addGrid(xx_gridListCtrl& grid, int stretch, const QString& title)
    {
        auto* const label = new QLabel(title, this);
        label->setBuddy(&grid);
        grid.setAccessibleName(QString(title).remove(u'&')); // what a screen reader calls it
        m_layout.addWidget(label);
        m_layout.addWidget(&grid, stretch);
    }

    QVBoxLayout m_layout {this};
    xx_gridListCtrl m_styles;
    xx_gridListCtrl m_numbers;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    Gallery gallery;
    gallery.show();
    gallery.activateWindow();
    gallery.moveToACell();
    if (arguments.size() != 3 || arguments[1] != QStringLiteral("--picture")) {
        return QApplication::exec();
    }
    QApplication::processEvents(); // lays out and gives the focus
    if (!gallery.grab().save(arguments[2], "PNG")) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(arguments[2]));
        return 1;
    }
    return 0;
}
