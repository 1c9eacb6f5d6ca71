#include "controls/GridDelegate.h"
#include "controls/GridModel.h"
#include "controls/PerformanceTimer.h"
#include "controls/grid_cells.h"
#include <corma/xx_gridListCtrl.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextDocument> // Qt::mightBeRichText()
#include <QToolTip>

#include <algorithm>
#include <new>
#include <optional>

namespace {

constexpr QRgb kFirstCellColor = qRgb(0x7D, 0x7D, 0x7D);
constexpr int kTipSize = 80; // characters

// Where the timer tells marks to be: fixed, so that recordings of all versions can be compared.
constexpr const wchar_t* kSource = L"xx_gridListCtrl.cpp";
constexpr int kColorsKept = 1990;
constexpr int kMarkMoved = 1993;
constexpr int kCellsStyled = 2000;
constexpr int kRedrawn = 2002;

std::optional<corma::CellStep> stepOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return corma::CellStep::left;
    case Qt::Key_Right:
        return corma::CellStep::right;
    case Qt::Key_Up:
        return corma::CellStep::up;
    case Qt::Key_Down:
        return corma::CellStep::down;
    default:
        return std::nullopt;
    }
}

bool isPlain(const QKeyEvent& event)
{
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

// A tool tip would take some texts for HTML.
QString asPlainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped())
                                     : text;
}

QString cutTip(const QString& text)
{
    QString tip = text.left(kTipSize);
    if (!tip.isEmpty() && tip.back().isHighSurrogate()) {
        tip.chop(1); // no half of a character
    }
    return tip;
}

} // namespace

/// What the list keeps, and what it does with it.
class xx_gridListCtrl::Grid
{
public:
    explicit Grid(xx_gridListCtrl& list)
        : m_list(list)
        , m_model(new corma::GridModel(&list))
        , m_delegate(new corma::GridDelegate(m_look, *m_model, list))
    {
        takeHighlight();
        connect(m_model, &QAbstractItemModel::rowsInserted, &list,
                [this](const QModelIndex&, int first, int last) {
                    m_mark += m_mark >= first ? last - first + 1 : 0;
                });
        connect(m_model, &QAbstractItemModel::rowsRemoved, &list,
                [this](const QModelIndex&, int first, int last) {
                    if (m_mark > last) {
                        m_mark -= last - first + 1;
                    } else if (m_mark >= first) {
                        m_mark = -1;
                    }
                });
    }

    void takeHighlight()
    {
        m_look.highlightText = m_list.palette().color(QPalette::Active, QPalette::HighlightedText);
        m_look.highlightBack = m_list.palette().color(QPalette::Active, QPalette::Highlight);
    }

    [[nodiscard]] int columnAt(int position) const
    {
        return m_list.header()->logicalIndex(std::max(position, 0));
    }

    void show(bool redraw) const
    {
        if (redraw) {
            m_list.viewport()->update();
        }
    }

    // The place of the keys becomes Qt's current index, too, which screen readers follow.
    void goTo(const corma::GridPosition& position)
    {
        m_look.currentColumn = position.column;
        const QModelIndex index = m_model->index(position.row, columnAt(position.column));
        if (index.isValid()) {
            m_list.selectionModel()->setCurrentIndex(
                index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            m_list.scrollTo(index);
        }
        show(true);
    }

    // The current column is a position: another column may be there now.
    void followColumn()
    {
        const QModelIndex current = m_list.currentIndex();
        const QModelIndex index = current.siblingAtColumn(columnAt(m_look.currentColumn));
        if (index.isValid() && index != current) {
            m_list.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        }
        show(true);
    }

    void scrollTo(int position) const
    {
        const QHeaderView& header = *m_list.header();
        const int column = columnAt(position);
        const corma::ColumnSpan span {header.sectionPosition(column), header.sectionSize(column)};
        QScrollBar& bar = *m_list.horizontalScrollBar();
        bar.setValue(bar.value()
                     + corma::scrollToColumn(span, -header.offset(), m_list.viewport()->width()));
    }

    void colorCell(int row, int column, const QColor& color) const
    {
        m_list.setBackColor(row, column, color, false);
        if (color.rgb() == qRgb(0xFF, 0xFF, 0xFF)) {
            m_list.setTextColor(row, column, Qt::black, true);
            m_list.setStyleFlags(row, column, ItemStruct::kHasTextColor | ItemStruct::kHasBackColor,
                                 false);
        } else {
            m_list.setStyleFlags(row, column, ItemStruct::kHasBackColor, false);
        }
    }

    // Before the list itself has the press: the current column is the one under the point. Returns
    // the cell if it was the current one already. Since there are no pictures, all of a cell in the
    // first column is its label.
    QModelIndex press(const QMouseEvent& event)
    {
        const QModelIndex index = m_list.indexAt(event.position().toPoint());
        if (event.button() != Qt::LeftButton || !index.isValid()) {
            return {};
        }
        const int position = m_list.header()->visualIndex(index.column());
        const bool isCurrent
            = position == m_look.currentColumn && index.row() == m_list.currentIndex().row();
        m_look.currentColumn = position;
        scrollTo(position);
        return isCurrent ? index : QModelIndex();
    }

    // And behind it: by then another column may have been under the point.
    void pressed(const QModelIndex& cellToEdit)
    {
        followColumn();
        if (cellToEdit.isValid()) {
            askToEdit(cellToEdit.row(), cellToEdit.column());
        }
    }

    void askToEdit(int row, int column) const
    {
        Q_EMIT m_list.beginLabelEdit(row, column, m_model->text(row, column));
    }

    void askToEditCurrent() const
    {
        const QModelIndexList rows = m_list.selectionModel()->selectedRows();
        if (m_look.currentColumn >= 0 && m_look.currentColumn < m_model->columnCount()
            && !rows.isEmpty()) {
            askToEdit(rows.first().row(), columnAt(m_look.currentColumn));
        }
    }

    xx_gridListCtrl& m_list;
    corma::GridLook m_look;
    corma::GridModel* m_model; // of the list
    corma::GridDelegate* m_delegate; // of the list
    int m_mark = -1;
    QColor m_currentCellColor = kFirstCellColor;
    QColor m_rowColor = Qt::black;
    int m_style = 0;
};

xx_gridListCtrl::xx_gridListCtrl(QWidget* parent)
    : QTreeView(parent)
    , m_grid(std::make_unique<Grid>(*this))
{
    setModel(m_grid->m_model);
    setItemDelegate(m_grid->m_delegate);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    header()->setStretchLastSection(false);
    connect(header(), &QHeaderView::sectionMoved, this, [this] { m_grid->followColumn(); });
    for (QScrollBar* const bar : {horizontalScrollBar(), verticalScrollBar()}) {
        connect(bar, &QScrollBar::sliderPressed, this, [this] { setFocus(); });
        // A wheel moves the slider, too, but over any list, whoever has the focus.
        connect(bar, &QScrollBar::actionTriggered, this, [this, bar](int action) {
            if (action != QAbstractSlider::SliderMove || bar->isSliderDown()) {
                setFocus();
            }
        });
    }
}

xx_gridListCtrl::~xx_gridListCtrl() = default;

void xx_gridListCtrl::setRowColor(int row, int column, const QColor& cellColor,
                                  const QColor& rowColor)
{
    corma::PerformanceTimer timer(L"xx_gridListCtrl::setRowColor");
    m_grid->m_currentCellColor = cellColor;
    m_grid->m_rowColor = rowColor;
    timer.mark(kSource, kColorsKept);
    if (!m_grid->m_model->hasCell(row, column)) {
        return;
    }
    m_grid->m_mark = row;
    timer.mark(kSource, kMarkMoved);
    for (int other = 0; other < columnCount(); ++other) {
        m_grid->colorCell(row, other, other == column ? cellColor : rowColor);
    }
    timer.mark(kSource, kCellsStyled);
    m_grid->show(true);
    timer.mark(kSource, kRedrawn);
}

int xx_gridListCtrl::autoSizeColumns()
{
    const int count = columnCount();
    for (int column = 0; column < count; ++column) {
        autoSizeColumn(column);
    }
    return count;
}

bool xx_gridListCtrl::autoSizeColumn(int column)
{
    if (column < 0 || column >= columnCount()) {
        return false;
    }
    header()->resizeSection(
        column,
        std::max(m_grid->m_delegate->widthOfColumn(column), header()->sectionSizeHint(column)));
    return true;
}

void xx_gridListCtrl::setCellText(int row, int column, int image, const QString& text,
                                  const QString& tip)
try {
    if (column != 0) {
        m_grid->m_model->setText(row, column, text);
        return;
    }
    if (row < 0 || columnCount() == 0) {
        return;
    }
    auto record = std::make_unique<ItemStruct>();
    record->image = image;
    record->tipText = tip.isEmpty() ? text : tip;
    m_grid->m_model->addRow(row, text, std::move(record));

} catch (const std::bad_alloc&) {
    return;
}

void xx_gridListCtrl::onKeyDown(int key)
{
    const auto step = stepOf(key);
    if (!step) {
        return;
    }
    const auto position
        = corma::moved({currentColumn(), selectionMark()}, *step, {rowCount(), columnCount()});
    m_grid->goTo(position);
    setRowColor(position.row, m_grid->columnAt(position.column), currentCellColor(), rowColor());
}

void xx_gridListCtrl::setGridStyle(int style)
{
    m_grid->m_style = style;
    setSelectionBehavior(SelectRows);
    header()->setSectionsMovable(true);
    header()->setFirstSectionMovable(true);
}

int xx_gridListCtrl::gridStyle() const
{
    return m_grid->m_style;
}

int xx_gridListCtrl::insertColumn(int column, const Column& description)
{
    if (column < 0) {
        return -1;
    }
    const int index = m_grid->m_model->addColumn(column, description);
    if (description.width >= 0) {
        header()->resizeSection(index, description.width);
    }
    if (description.order >= 0) {
        header()->moveSection(header()->visualIndex(index),
                              std::min(description.order, columnCount() - 1));
    }
    return index;
}

bool xx_gridListCtrl::deleteColumn(int column)
{
    return m_grid->m_model->takeColumn(column);
}

bool xx_gridListCtrl::deleteRow(int row)
{
    return m_grid->m_model->takeRow(row);
}

void xx_gridListCtrl::deleteAllRows()
{
    m_grid->m_model->clear();
}

int xx_gridListCtrl::rowCount() const
{
    return m_grid->m_model->rowCount();
}

int xx_gridListCtrl::columnCount() const
{
    return m_grid->m_model->columnCount();
}

QString xx_gridListCtrl::text(int row, int column) const
{
    return m_grid->m_model->text(row, column);
}

void xx_gridListCtrl::setText(int row, int column, const QString& text)
{
    m_grid->m_model->setText(row, column, text);
}

void xx_gridListCtrl::setTextColor(int row, int column, const QColor& color, bool redraw)
{
    if (m_grid->m_model->hasCell(row, column)) {
        cellStyle(row, column).textColor = color;
        m_grid->show(redraw);
    }
}

void xx_gridListCtrl::setBackColor(int row, int column, const QColor& color, bool redraw)
{
    if (m_grid->m_model->hasCell(row, column)) {
        cellStyle(row, column).whileSelected().backColor = color;
        m_grid->show(redraw);
    }
}

void xx_gridListCtrl::setStyleFlags(int row, int column, unsigned flags, bool redraw)
{
    if (m_grid->m_model->hasCell(row, column)) {
        cellStyle(row, column).whileSelected().setFlags(flags);
        m_grid->show(redraw);
    }
}

ItemStruct& xx_gridListCtrl::cellStyle(int row, int column)
{
    return m_grid->m_model->cell(row, column);
}

ItemStruct& xx_gridListCtrl::rowStyle(int row)
{
    return m_grid->m_model->makeRowStyle(row);
}

ItemStruct& xx_gridListCtrl::columnStyle(int column)
{
    return m_grid->m_model->makeColumnStyle(column);
}

int xx_gridListCtrl::currentColumn() const
{
    return m_grid->m_look.currentColumn;
}

int xx_gridListCtrl::selectionMark() const
{
    return m_grid->m_mark;
}

QColor xx_gridListCtrl::currentCellColor() const
{
    return m_grid->m_currentCellColor;
}

QColor xx_gridListCtrl::rowColor() const
{
    return m_grid->m_rowColor;
}

QColor xx_gridListCtrl::highlightText() const
{
    return m_grid->m_look.highlightText;
}

QColor xx_gridListCtrl::highlightBack() const
{
    return m_grid->m_look.highlightBack;
}

void xx_gridListCtrl::setOwnDrawText(bool on)
{
    m_grid->m_look.ownDrawText = on;
    m_grid->show(true);
}

bool xx_gridListCtrl::ownDrawText() const
{
    return m_grid->m_look.ownDrawText;
}

void xx_gridListCtrl::setMaxDecimals(int count)
{
    m_grid->m_look.maxDecimals = std::max(count, 0);
    m_grid->show(true);
}

int xx_gridListCtrl::maxDecimals() const
{
    return m_grid->m_look.maxDecimals;
}

int xx_gridListCtrl::message(int number, int key)
{
    if (number == kCellEditor) {
        return 1;
    }
    if (number != kCellKey) {
        return 0;
    }
    setFocus();
    onKeyDown(key == Qt::Key_Return || key == Qt::Key_Enter ? Qt::Key_Down : key);
    return 1;
}

int xx_gridListCtrl::toolHitTest(const QPoint& point, QRect* cell) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid() || !viewport()->rect().contains(point)) {
        return -1;
    }
    if (cell != nullptr) {
        *cell = visualRect(index) & viewport()->rect();
    }
    return corma::toolOf({index.row(), index.column()});
}

QString xx_gridListCtrl::toolTipOf(int tool) const
{
    const corma::GridCell cell = corma::cellOfTool(tool);
    if (tool <= 0 || !m_grid->m_model->hasRow(cell.row)) {
        return {};
    }
    const QString& tip = m_grid->m_model->cell(cell.row, 0).tipText;
    return cutTip(tip.isEmpty() ? text(cell.row, cell.column) : tip);
}

bool xx_gridListCtrl::event(QEvent* event)
{
    // What these keys do here goes before what they do in the window, such as a shortcut of a menu.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (isPlain(key) && (key.key() == Qt::Key_Delete || key.key() == Qt::Key_F2)) {
            event->accept();
            return true;
        }
    }
    return QTreeView::event(event);
}

bool xx_gridListCtrl::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QTreeView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QRect cell;
    const QString tip = toolTipOf(toolHitTest(help.pos(), &cell));
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        QToolTip::showText(help.globalPos(), asPlainTip(tip), viewport(), cell);
    }
    return true;
}

void xx_gridListCtrl::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_grid->takeHighlight();
    } else if (event->type() == QEvent::FontChange) {
        m_grid->m_model->dropAllFonts();
    }
}

void xx_gridListCtrl::keyPressEvent(QKeyEvent* event)
{
    if (!isPlain(*event)) {
        QTreeView::keyPressEvent(event);
        return;
    }
    if (stepOf(event->key())) {
        onKeyDown(event->key());
        return;
    }
    if (event->key() == Qt::Key_Delete) {
        deleteRow(selectionMark());
        return;
    }
    if (event->key() == Qt::Key_F2) {
        m_grid->askToEditCurrent();
        return;
    }
    QTreeView::keyPressEvent(event);
}

void xx_gridListCtrl::mousePressEvent(QMouseEvent* event)
{
    const auto cellToEdit = m_grid->press(*event);
    QTreeView::mousePressEvent(event);
    m_grid->pressed(cellToEdit);
}

// The second press of a double one counts like any other.
void xx_gridListCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto cellToEdit = m_grid->press(*event);
    QTreeView::mouseDoubleClickEvent(event);
    m_grid->pressed(cellToEdit);
}

void xx_gridListCtrl::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    m_grid->m_mark = current.row();
}
