#include "editor/CCfgDeskExeDlg.h"

#include "controls/CColorListCtrl.h"
#include "controls/CPictureEx.h"
#include "controls/CategoryTreeView.h"
#include "controls/icons.h"
#include "controls/qt_text.h"
#include "editor/AboutCfgDeskDlg.h"
#include "editor/CategoryTreeModel.h"
#include "editor/DeskDialogs.h"
#include "editor/EditDlg.h"
#include "editor/NieuwDlg.h"
#include "editor/SettingListModel.h"
#include "editor/accessible_texts.h"
#include "editor/file_question.h"
#include "editor/mnemonics.h"
#include "settings/texts.h"
#include "ui_CCfgDeskExeDlg.h"
#include <corma/host.h>

#include <QAction>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <utility>

using corma::MenuCommand;
using corma::toQt;

namespace {

constexpr std::array<int, corma::SettingListModel::kColumns> kColumnWidths = {100, 65, 200, 321};
constexpr int kTreeWidth = 240;
constexpr int kListWidth = 800;
constexpr int kUpperHeight = 480;
constexpr int kLowerHeight = 110;

void name(QWidget* widget, corma::AccessibleText what)
{
    widget->setAccessibleName(toQt(corma::accessibleText(what)));
}

// The letters that open the titles of a menu.
std::wstring lettersOf(const corma::MenuForm& menu)
{
    std::wstring letters;
    for (const std::wstring_view title : {menu.firstTitle, menu.secondTitle}) {
        letters += title.at(title.find(L'&') + 1);
    }
    return letters;
}

// Marks something as under way for the life of the object.
class Flag
{
public:
    explicit Flag(bool& flag)
        : m_flag(flag)
        , m_former(std::exchange(flag, true))
    {
    }

    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

    ~Flag() { m_flag = m_former; }

private:
    bool& m_flag;
    bool m_former;
};

} // namespace

CCfgDeskExeDlg::CCfgDeskExeDlg(const corma::DeskStart& start, corma::Preferences& preferences,
                               QWidget* parent)
    : QDialog(parent)
    , m_desk(start, preferences)
    , m_ui(std::make_unique<Ui::CCfgDeskExeDlg>())
    , m_treeModel(std::make_unique<corma::CategoryTreeModel>())
    , m_listModel(std::make_unique<corma::SettingListModel>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setWindowIcon(corma::programIcon());
    setUpTreeAndList();
    if (!m_desk.isClean()) {
        setUpMenu();
    }
    addAbout();
    setUpKeys();
    connectTree();
    connectList();
    connectRest();
}

CCfgDeskExeDlg::~CCfgDeskExeDlg() = default;

// The access level comes between construction and here.
void CCfgDeskExeDlg::setVisible(bool visible)
{
    const bool isFirst = visible && !std::exchange(m_isOpen, true);
    if (isFirst) {
        setTexts();
        m_desk.open(*this);
    }
    QDialog::setVisible(visible);
    if (isFirst) {
        fitNames(); // only now the list knows which rows are in sight
    }
}

// --- setting up ----------------------------------------------------------------------------------

void CCfgDeskExeDlg::setUpTreeAndList()
{
    m_ui->tree->setModel(m_treeModel.get());
    m_ui->list->setModel(m_listModel.get());
    m_ui->leftAndRight->setSizes({kTreeWidth, kListWidth});
    m_ui->leftAndRight->setStretchFactor(0, 0);
    m_ui->leftAndRight->setStretchFactor(1, 1);
    m_ui->upAndDown->setSizes({kUpperHeight, kLowerHeight});
    m_ui->upAndDown->setStretchFactor(0, 1);
    m_ui->upAndDown->setStretchFactor(1, 0);
    m_ui->picture->setVisible(m_picture.isVisible);
    m_ui->list->viewport()->installEventFilter(this);
    m_ui->searchText->installEventFilter(this);
}

void CCfgDeskExeDlg::setUpMenu()
{
    const corma::MenuForm& form = m_desk.menu();
    m_menuBar = new QMenuBar(this);
    m_menuBar->setObjectName(QStringLiteral("menu"));
    QMenu* const file = m_menuBar->addMenu(QString::fromWCharArray(form.firstTitle));
    addItems(*file, MenuCommand::newProject, MenuCommand::projectSettings);
    file->addSeparator();
    addItems(*file, MenuCommand::makeProjectCopy, MenuCommand::makeLocalCopy);
    file->addSeparator();
    addItems(*file, MenuCommand::exit, MenuCommand::exit);
    QMenu* const view = m_menuBar->addMenu(QString::fromWCharArray(form.secondTitle));
    addItems(*view, MenuCommand::showGlobal, MenuCommand::sortCategories);
    layout()->setMenuBar(m_menuBar);
}

void CCfgDeskExeDlg::addItems(QMenu& menu, MenuCommand first, MenuCommand last)
{
    const auto end = static_cast<std::size_t>(last) + 1;
    for (auto number = static_cast<std::size_t>(first); number < end; ++number) {
        const auto command = static_cast<MenuCommand>(number);
        QAction* const item
            = menu.addAction(QString::fromWCharArray(m_desk.menu().textOf(command)));
        item->setCheckable(command >= MenuCommand::showGlobal);
        connect(item, &QAction::triggered, this, [this, command] { m_desk.run(command); });
        m_menuItems[number] = item;
    }
}

// What stands in the window's own menu where a program can change that: here it hangs on the
// program's icon, on a right click beside the other widgets, and on a key.
void CCfgDeskExeDlg::addAbout()
{
    auto* const about = new QAction(corma::programIcon(), corma::qtText(corma::row::kAbout), this);
    about->setObjectName(QStringLiteral("about"));
    about->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F1));
    connect(about, &QAction::triggered, this, &CCfgDeskExeDlg::showAbout);
    addAction(about);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    if (m_menuBar != nullptr) {
        auto* const button = new QToolButton(m_menuBar);
        button->setObjectName(QStringLiteral("windowMenu"));
        button->setIcon(corma::programIcon());
        button->setAutoRaise(true);
        button->setAccessibleName(corma::qtText(corma::row::kAbout).remove(u'&'));
        button->setPopupMode(QToolButton::InstantPopup);
        button->addAction(about);
        m_menuBar->setCornerWidget(button);
    }
}

// Enter searches wherever it is pressed, so no button is the default one.
void CCfgDeskExeDlg::setUpKeys()
{
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(QKeySequence(key), this);
        connect(enter, &QShortcut::activated, this, [this] { m_desk.search(); });
    }
    if (!m_desk.isClean()) {
        auto* const help = new QShortcut(QKeySequence(QKeySequence::HelpContents), this);
        connect(help, &QShortcut::activated, this, [] { corma::Desk::help(); });
    }
}

void CCfgDeskExeDlg::setTexts()
{
    m_ui->newCategory->setHidden(m_desk.isClean());
    m_ui->newSetting->setHidden(m_desk.isClean());
    m_ui->help->setHidden(m_desk.isClean());
    name(m_ui->tree, corma::AccessibleText::categories);
    name(m_ui->list, corma::AccessibleText::settings);
    name(m_ui->searchText, corma::AccessibleText::searchText);
    name(m_ui->description, corma::AccessibleText::description);
    name(m_ui->picture, corma::AccessibleText::picture);
    setColumnWidths();
}

void CCfgDeskExeDlg::setButtonTexts()
{
    const corma::FixedTexts& texts = m_desk.texts();
    const std::wstring newOne = texts.newOne + L"...";
    corma::setTextsWithMnemonics({{m_ui->newCategory, newOne},
                                  {m_ui->searchButton, m_searchButton},
                                  {m_ui->help, texts.help},
                                  {m_ui->newSetting, newOne}},
                                 m_menuBar == nullptr ? std::wstring() : lettersOf(m_desk.menu()));
    m_ui->searchText->setPlaceholderText(toQt(texts.search));
    name(m_ui->newCategory, corma::AccessibleText::newCategory);
    name(m_ui->newSetting, corma::AccessibleText::newSetting);
    m_ui->newCategory->setToolTip(m_ui->newCategory->accessibleName());
    m_ui->newSetting->setToolTip(m_ui->newSetting->accessibleName());
}

// The labels of the types are longer in some languages.
void CCfgDeskExeDlg::setColumnWidths()
{
    for (int column = 0; column < corma::SettingListModel::kColumns; ++column) {
        m_ui->list->setColumnWidth(column, kColumnWidths[static_cast<std::size_t>(column)]);
    }
    const QFontMetrics metrics = m_ui->list->fontMetrics();
    const int margins = 4 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
    int widest = m_ui->list->columnWidth(corma::SettingListModel::kType);
    for (unsigned type = 0; type <= static_cast<unsigned>(SettingType::openOption); ++type) {
        const int row = corma::labelRowOf(static_cast<SettingType>(type));
        const int width = metrics.horizontalAdvance(corma::qtText(row));
        widest = std::max(widest, width + margins);
    }
    m_ui->list->setColumnWidth(corma::SettingListModel::kType, widest);
}

// --- from the user to the desk -------------------------------------------------------------------

void CCfgDeskExeDlg::connectTree()
{
    corma::CategoryTreeView* const tree = m_ui->tree;
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CCfgDeskExeDlg::selectTreeIndex);
    connect(tree, &QTreeView::clicked, this, [this] { m_desk.clickTreeItem(); });
    connect(tree, &QTreeView::doubleClicked, this, [this] { m_desk.activateTreeItem(); });
    connect(tree, &corma::CategoryTreeView::editPressed, this,
            [this] { m_desk.activateTreeItem(); });
    connect(tree, &corma::CategoryTreeView::insertPressed, this, [this] { m_desk.newCategory(); });
    connect(tree, &corma::CategoryTreeView::removePressed, this,
            [this] { m_desk.removeCategory(); });
    connect(tree, &corma::CategoryTreeView::movedVertically, this, [this] { m_desk.moveInTree(); });
    connect(tree, &corma::CategoryTreeView::rightPressed, this, [this] {
        if (m_desk.goesOnToList()) {
            m_ui->list->setFocus();
        }
    });
}

void CCfgDeskExeDlg::connectList()
{
    CColorListCtrl* const list = m_ui->list;
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CCfgDeskExeDlg::selectRows);
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (!m_isShowing) {
                    m_desk.setMark(current.row());
                }
            });
    connect(list, &QTreeView::doubleClicked, this, &CCfgDeskExeDlg::activateList);
    connect(list, &CColorListCtrl::editPressed, this, &CCfgDeskExeDlg::editWithKey);
    connect(list, &CColorListCtrl::insertPressed, this, [this] { m_desk.newSetting(); });
    connect(list, &CColorListCtrl::removePressed, this, [this] { m_desk.removeSettings(); });
    connect(list, &CColorListCtrl::leftPressed, this, [this] { m_ui->tree->setFocus(); });
}

void CCfgDeskExeDlg::connectRest()
{
    connect(m_ui->newCategory, &QPushButton::clicked, this, [this] { m_desk.newCategory(); });
    connect(m_ui->newSetting, &QPushButton::clicked, this, [this] { m_desk.newSetting(); });
    connect(m_ui->searchButton, &QPushButton::clicked, this, [this] { m_desk.search(); });
    connect(m_ui->help, &QPushButton::clicked, this, [] { corma::Desk::help(); });
    connect(m_ui->searchText, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_desk.setSearchText(text.toStdWString()); });
    // Queued: the desk answers when the event is through, since it moves the focus again.
    connect(
        this, &CCfgDeskExeDlg::listReleased, this, [this] { m_desk.clickList(); },
        Qt::QueuedConnection);
    connect(
        this, &CCfgDeskExeDlg::searchFocused, this, [this] { m_desk.searchFocused(); },
        Qt::QueuedConnection);
}

void CCfgDeskExeDlg::selectTreeIndex(const QModelIndex& current)
{
    const auto* const item = corma::CategoryTreeModel::itemAt(current);
    if (!m_isShowing && item != nullptr) {
        m_desk.selectTreeItem(*item);
    }
}

void CCfgDeskExeDlg::selectRows(const QItemSelection& selected, const QItemSelection& deselected)
{
    if (m_isShowing) {
        return;
    }
    std::vector<int> rows;
    for (const QModelIndex& index : m_ui->list->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    const QItemSelection& changed = selected.isEmpty() ? deselected : selected;
    m_desk.selectRows(std::move(rows), changed.isEmpty() ? -1 : changed.last().bottom());
}

// The mark need not be selected, as after each filling of the list; the key means it then.
void CCfgDeskExeDlg::editWithKey()
{
    QItemSelectionModel* const selection = m_ui->list->selectionModel();
    if (!selection->hasSelection() && selection->currentIndex().isValid()) {
        selection->select(selection->currentIndex(),
                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    activateList();
}

void CCfgDeskExeDlg::activateList()
{
    const corma::DeskDialogs dialogs(m_desk, this);
    m_desk.activateList();
}

// A click counts wherever in the list it is.
bool CCfgDeskExeDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && watched == m_ui->list->viewport()
        && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        Q_EMIT listReleased();
    }
    if (event->type() == QEvent::FocusIn && watched == m_ui->searchText) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            Q_EMIT searchFocused();
        }
    }
    return QDialog::eventFilter(watched, event);
}

// --- from the desk to the widgets ----------------------------------------------------------------

void CCfgDeskExeDlg::showTree()
{
    const Flag flag(m_isShowing);
    const corma::TreeContents& tree = m_desk.tree();
    m_treeModel->show(tree);
    for (const auto& item : tree.topLevel()) {
        m_ui->tree->setExpanded(m_treeModel->indexOf(item.get()), item->isExpanded);
    }
    m_ui->tree->setCurrentIndex(m_treeModel->indexOf(tree.selected()));
}

void CCfgDeskExeDlg::showList()
{
    const Flag flag(m_isShowing);
    m_listModel->show(m_desk.rows());
    m_ui->list->selectionModel()->setCurrentIndex(m_listModel->index(m_desk.mark(), 0),
                                                  QItemSelectionModel::NoUpdate);
}

void CCfgDeskExeDlg::showState()
{
    setWindowTitle(toQt(m_desk.title()));
    const QString searchText = toQt(m_desk.searchText());
    if (m_ui->searchText->text() != searchText) {
        m_ui->searchText->setText(searchText);
    }
    if (m_searchButton != m_desk.searchButton()) {
        m_searchButton = m_desk.searchButton();
        setButtonTexts();
    }
    const QString description = toQt(m_desk.description());
    if (m_ui->description->toPlainText() != description) {
        m_ui->description->setPlainText(description);
    }
    showPicture();
    showMenuState();
}

void CCfgDeskExeDlg::showPicture()
{
    const corma::ShownPicture& wanted = m_desk.picture();
    if (wanted == m_picture) {
        return;
    }
    if (wanted.file.empty()) {
        m_ui->picture->unload();
    } else if (wanted.file != m_picture.file && m_ui->picture->load(wanted.file)) {
        m_ui->picture->draw();
    }
    m_ui->picture->setVisible(wanted.isVisible);
    m_picture = wanted;
}

void CCfgDeskExeDlg::showMenuState()
{
    if (m_menuBar == nullptr) {
        return;
    }
    for (std::size_t number = 0; number < m_menuItems.size(); ++number) {
        const auto command = static_cast<MenuCommand>(number);
        m_menuItems[number]->setEnabled(m_desk.isAvailable(command));
        if (m_menuItems[number]->isCheckable()) {
            m_menuItems[number]->setChecked(m_desk.isTicked(command));
        }
    }
}

void CCfgDeskExeDlg::fitNames()
{
    m_ui->list->fitFirstColumn();
}

void CCfgDeskExeDlg::focusOn(Pane pane)
{
    switch (pane) {
    case Pane::tree:
        m_ui->tree->setFocus();
        break;
    case Pane::list:
        m_ui->list->setFocus();
        break;
    case Pane::search:
        m_ui->searchText->setFocus();
        break;
    }
}

// --- questions -----------------------------------------------------------------------------------

std::optional<corma::NewName> CCfgDeskExeDlg::askName(corma::NameOf what)
{
    NieuwDlg dialog(m_desk, what, this);
    return dialog.exec() == Accepted ? std::optional(dialog.answer()) : std::nullopt;
}

std::optional<std::wstring> CCfgDeskExeDlg::askProject(const corma::ProjectQuestion& question)
{
    QFileDialog dialog(this);
    dialog.setObjectName(QStringLiteral("projectFile"));
    dialog.setDefaultSuffix(QStringLiteral("ipr"));
    dialog.setAcceptMode(question.isNew ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.isNew ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(corma::filtersOf(question.filter));
    dialog.setDirectory(toQt(m_desk.fileNames().projectFolder));
    dialog.selectFile(toQt(question.initialName));
    if (dialog.exec() != Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialog.selectedFiles().front().toStdWString();
}

bool CCfgDeskExeDlg::editSetting()
{
    return EditDlg(m_desk, this).exec() == Accepted;
}

void CCfgDeskExeDlg::editFile(const std::wstring& file)
{
    std::wstring path = file;
    xx_startCfgDeskFromDwg(path.data(), corma::currentDocument(), m_desk.language(), false, false);
}

void CCfgDeskExeDlg::endDialog()
{
    done(0);
}

void CCfgDeskExeDlg::showAbout()
{
    AboutCfgDeskDlg(this).exec();
}
