// The dialog of an attribute update, driven by mouse and keyboard.

#include "AttributeUpdateTest.h"
#include "controls/readable.h"
#include "editor/AttributeRowModel.h"
#include "editor/AttributeRowView.h"
#include "editor/AttributeTagModel.h"
#include "editor/xx_attUpdateDlg.h"
#include "platform/text.h"
#include "support/languages.h"
#include <corma/texts.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace corma::testing {

namespace {

class AttributeDialogTest : public AttributeUpdateTest
{
protected:
    /// Shows the dialog on what is detected in a drawing.
    void show(const BlockDrawing& drawing,
              AttributeUpdateMode mode = AttributeUpdateMode::references)
    {
        open(drawing);
        update = detected(mode);
        showDialog();
    }

    void showDialog()
    {
        dialog = std::make_unique<xx_attUpdateDlg>(update);
        dialog->setFileQuestion(
            [this](QWidget& parent, const std::wstring& start, const QStringList& filters) {
                EXPECT_EQ(&parent, dialog.get());
                ++asked;
                starts.push_back(start);
                askedFilters = filters;
                return answer;
            });
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        QApplication::processEvents();
    }

    template<class Widget> Widget& find(const char* name)
    {
        auto* const found = dialog->findChild<Widget*>(QLatin1StringView(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    AttributeRowView& list() { return find<AttributeRowView>("rows"); }

    QPushButton& browseButton() { return find<QPushButton>("browse"); }

    QPushButton& button(QDialogButtonBox::StandardButton which)
    {
        return *find<QDialogButtonBox>("buttons").button(which);
    }

    QModelIndex at(int row, int column = 0) { return list().model()->index(row, column); }

    QRect rowRect(int row)
    {
        return list().visualRect(at(row)).united(list().visualRect(at(row, 1)));
    }

    /// A place in what is seen of a row, beside its check box.
    QPoint placeIn(int row) { return rowRect(row).intersected(list().viewport()->rect()).center(); }

    void click(int row) { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeIn(row)); }

    void clickCheckBox(int row)
    {
        QStyleOptionViewItem option;
        option.initFrom(&list());
        option.rect = list().visualRect(at(row));
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        const QRect box = list().style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator,
                                                         &option, &list());
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, box.center());
    }

    void doubleClick(int row)
    {
        const QPoint place = placeIn(row);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
    }

    /// A key for the widget that has the focus.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_NE(dialog->focusWidget(), nullptr);
        QTest::keyClick(dialog->focusWidget(), key, modifiers);
    }

    bool isChecked(int row) { return at(row).data(Qt::CheckStateRole).toInt() == Qt::Checked; }

    /// The tags that are shown, with what they say of themselves.
    std::string tags()
    {
        const QAbstractItemModel& model = *find<QTreeView>("attributes").model();
        std::string text;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row, 0);
            EXPECT_EQ(index.data(Qt::AccessibleTextRole).toString(),
                      index.data().toString() + QStringLiteral(", ")
                          + index.data(Qt::AccessibleDescriptionRole).toString());
            text += (text.empty() ? "" : "; ")
                + index.data(Qt::AccessibleTextRole).toString().toStdString();
        }
        return text;
    }

    /// True when the button is shown at the right-hand end of a row, as large as that is high.
    bool hasButtonIn(int row)
    {
        const QRect end = rowRect(row);
        const QRect square(end.right() - end.height() + 1, end.top(), end.height(), end.height());
        return browseButton().isVisibleTo(list().viewport()) && browseButton().geometry() == square;
    }

    AttributeUpdate update;
    std::unique_ptr<xx_attUpdateDlg> dialog;
    std::optional<std::wstring> answer; // to the question for a file
    int asked = 0;
    std::vector<std::wstring> starts;
    QStringList askedFilters;
};

/// A drawing with that many blocks, each with a reference that is out of date.
BlockDrawing manyDoors(int blocks)
{
    BlockDrawing drawing;
    for (int i = 0; i < blocks; ++i) {
        const std::string number = std::to_string(10 + i);
        drawing.block("DOOR" + number, {{"T" + number}}).inModel({"20" + number, "DOOR" + number});
    }
    return drawing;
}

// --- what is shown -------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, ShowsTheRowsWithCheckBoxesAndIcons)
{
    show(doors());
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Update Attributes"));
    EXPECT_EQ(find<QGroupBox>("attributesBox").title(), QStringLiteral("Attributes"));
    const QAbstractItemModel& rows = *list().model();
    ASSERT_EQ(rows.rowCount(), 2);
    ASSERT_EQ(rows.columnCount(), 2);
    EXPECT_EQ(rows.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    EXPECT_EQ(rows.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Source"));
    EXPECT_EQ(at(0).data().toString(), QStringLiteral("DOOR (2)"));
    EXPECT_EQ(at(0, 1).data().toString(), QStringLiteral("DOOR"));
    EXPECT_TRUE(isChecked(0));
    EXPECT_FALSE(isChecked(1));
    EXPECT_FALSE(at(0, 1).data(Qt::CheckStateRole).isValid());
    const auto tagHeader = find<QTreeView>("attributes").model()->headerData(0, Qt::Horizontal);
    EXPECT_EQ(tagHeader.toString(), QStringLiteral("Attributes"));
    EXPECT_EQ(browseButton().text(), QStringLiteral("..."));
    EXPECT_EQ(button(QDialogButtonBox::Ok).text(), QStringLiteral("OK"));
    EXPECT_EQ(button(QDialogButtonBox::Cancel).text(), QStringLiteral("Cancel"));
}

QImage pictureOf(const QVariant& icon)
{
    return icon.value<QIcon>().pixmap(32, 32).toImage();
}

TEST_F(AttributeDialogTest, ARowOfARecordHasOtherIconsThanOneOfReferences)
{
    open(doors());
    update = updateOf(references({"A1"}));
    update.outOfDateRecords.append(block(L"GATE"));
    AttributeUpdateForm form(update);
    const AttributeRowModel rows(form);
    const auto picture = [&](int row, int column) {
        return pictureOf(rows.data(rows.index(row, column), Qt::DecorationRole));
    };
    EXPECT_EQ(picture(0, 0), picture(1, 1)) << "the block";
    EXPECT_NE(picture(0, 1), picture(1, 0)) << "its drawing, and a reference";
    EXPECT_NE(picture(0, 0), picture(0, 1));
    EXPECT_NE(picture(0, 0), picture(1, 0));
    EXPECT_FALSE(picture(0, 1).isNull());
}

TEST_F(AttributeDialogTest, AnEmptyCheckBoxCanBeSeenOnADarkGround)
{
    QPalette dark;
    const QColor ground(0x1B, 0x1E, 0x20);
    dark.setColor(QPalette::Base, ground);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Window, QColor(0x2A, 0x2E, 0x32));
    show(doors());
    dialog->setPalette(dark);
    QApplication::processEvents();
    const QImage image = list().viewport()->grab().toImage();
    ASSERT_FALSE(isChecked(1));
    const QRect row = list().visualRect(at(1));
    int seen = 0;
    for (int x = row.left(); x < row.left() + row.height(); ++x) {
        const bool isLine
            = contrast(image.pixelColor(x, row.center().y()), ground) >= kLeastContrast;
        seen += isLine ? 1 : 0;
    }
    EXPECT_EQ(seen, 2) << "the left and the right side";
}

TEST_F(AttributeDialogTest, BeginsWithTheTagsOfTheFirstRowAndWithoutTheButton)
{
    show(doors());
    EXPECT_EQ(tags(), "WOOD, New attribute");
    EXPECT_EQ(list().currentIndex(), at(0));
    EXPECT_FALSE(list().selectionModel()->hasSelection());
    EXPECT_FALSE(browseButton().isVisible());
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(AttributeDialogTest, ASelectedRowShowsItsTags)
{
    BlockDrawing drawing = doors();
    drawing.block("SIGN", {{"NEW1"}, {"NEW2"}}).inModel({"A4", "SIGN", {{"OLD1"}, {"OLD2"}}});
    show(drawing);
    click(1);
    EXPECT_EQ(
        tags(),
        "NEW1, New attribute; NEW2, New attribute; OLD1, Extra attribute; OLD2, Extra attribute");
    click(2);
    EXPECT_EQ(tags(), "");
    click(0);
    EXPECT_EQ(tags(), "WOOD, New attribute");
}

TEST_F(AttributeDialogTest, ColumnsFitTheirContentsAndTheButton)
{
    BlockDrawing drawing;
    const std::string longName(30, 'W');
    drawing.block(longName, {{"A"}}).inModel({"A1", longName});
    show(drawing);
    const int height = rowRect(0).height();
    const auto needed = [this](int column) {
        return std::max(list().sizeHintForIndex(at(0, column)).width(),
                        list().header()->sectionSizeHint(column));
    };
    EXPECT_EQ(list().columnWidth(0), needed(0));
    EXPECT_EQ(list().columnWidth(1), needed(1) + height + 2);
}

TEST_F(AttributeDialogTest, WithoutRowsTheColumnsFitTheirHeader)
{
    open(doors());
    showDialog();
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_EQ(list().columnWidth(1), list().header()->sectionSizeHint(1));
    EXPECT_EQ(tags(), "");
    press(Qt::Key_Space);
    press(Qt::Key_F4);
    EXPECT_EQ(asked, 0);
    button(QDialogButtonBox::Ok).click();
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(AttributeDialogTest, SpeaksTheLanguageInForceToThoseWhoCannotSee)
{
    setTextLanguage(kDutch);
    show(doors());
    EXPECT_EQ(tags(), "WOOD, Nieuw attribuut");
    EXPECT_EQ(at(0).data(Qt::AccessibleDescriptionRole).toString(),
              QStringLiteral("Blokverwijzing"));
    EXPECT_EQ(browseButton().accessibleName(), QStringLiteral("Andere brontekening kiezen"));
    EXPECT_EQ(browseButton().toolTip(), browseButton().accessibleName());
    EXPECT_FALSE(list().accessibleName().isEmpty());
    EXPECT_FALSE(find<QTreeView>("attributes").accessibleName().isEmpty());
}

// --- the button ----------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, TheButtonStandsAtTheEndOfASelectedReferenceAndHasTheFocus)
{
    show(doors());
    click(0);
    EXPECT_TRUE(hasButtonIn(0));
    EXPECT_EQ(dialog->focusWidget(), &browseButton());
    click(1);
    EXPECT_TRUE(hasButtonIn(1));
    EXPECT_EQ(dialog->focusWidget(), &browseButton());
}

TEST_F(AttributeDialogTest, ARowOfARecordHasNoButton)
{
    open(doors());
    update = updateOf(references({"A1"}));
    update.outOfDateRecords.append(block(L"GATE"));
    showDialog();
    click(1);
    EXPECT_TRUE(hasButtonIn(1));
    click(0);
    EXPECT_FALSE(browseButton().isVisible());
    EXPECT_EQ(dialog->focusWidget(), &list());
    doubleClick(0);
    press(Qt::Key_F4);
    EXPECT_EQ(asked, 0);
}

TEST_F(AttributeDialogTest, TheButtonGoesWithTheSelectionAndWhenARowIsChecked)
{
    show(doors());
    click(0);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list().visualRect(at(0, 1)).center());
    EXPECT_FALSE(list().selectionModel()->hasSelection());
    EXPECT_FALSE(browseButton().isVisible());
    EXPECT_EQ(dialog->focusWidget(), &list());
    click(0);
    EXPECT_TRUE(hasButtonIn(0));
    clickCheckBox(0);
    EXPECT_FALSE(isChecked(0));
    EXPECT_FALSE(browseButton().isVisible());
    EXPECT_EQ(dialog->focusWidget(), &list());
}

TEST_F(AttributeDialogTest, TheButtonFollowsScrollingAndResizing)
{
    show(manyDoors(40));
    ASSERT_GT(list().verticalScrollBar()->maximum(), 0);
    click(2);
    const QPoint before = browseButton().pos();
    list().verticalScrollBar()->setValue(1);
    EXPECT_TRUE(hasButtonIn(2));
    EXPECT_EQ(browseButton().pos(), before - QPoint(0, rowRect(2).height()));
    list().header()->resizeSection(0, list().columnWidth(0) + 25);
    QApplication::processEvents();
    EXPECT_TRUE(hasButtonIn(2));
    EXPECT_EQ(browseButton().x(), before.x() + 25);
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    EXPECT_FALSE(list().viewport()->rect().intersects(browseButton().geometry()));
    list().verticalScrollBar()->setValue(0);
    dialog->resize(dialog->width() + 100, dialog->height() + 50);
    QApplication::processEvents();
    EXPECT_TRUE(hasButtonIn(2));
}

// A name that is wider than the list must not take the button out of reach.
TEST_F(AttributeDialogTest, TheButtonOfAWideRowStandsAtTheEdgeOfTheList)
{
    BlockDrawing drawing;
    const std::string longName(200, 'W');
    drawing.block(longName, {{"A"}}).inModel({"A1", longName});
    show(drawing);
    click(0);
    const QRect seen = list().viewport()->rect();
    ASSERT_GT(rowRect(0).right(), seen.right());
    EXPECT_EQ(browseButton().geometry().right(), seen.right());
    list().horizontalScrollBar()->setValue(list().horizontalScrollBar()->maximum());
    EXPECT_TRUE(hasButtonIn(0));
}

// --- the keyboard --------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, ArrowsMoveThroughTheRowsThoughTheButtonHasTheFocus)
{
    show(manyDoors(5));
    press(Qt::Key_Down);
    EXPECT_TRUE(hasButtonIn(1));
    EXPECT_EQ(dialog->focusWidget(), &browseButton());
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_TRUE(hasButtonIn(3));
    EXPECT_EQ(tags(), "T13, New attribute");
    press(Qt::Key_Up);
    EXPECT_TRUE(hasButtonIn(2));
    press(Qt::Key_End);
    EXPECT_TRUE(hasButtonIn(4));
    press(Qt::Key_Home);
    EXPECT_TRUE(hasButtonIn(0));
    QTest::keyClicks(dialog->focusWidget(), QStringLiteral("door12"));
    EXPECT_TRUE(hasButtonIn(2));
    EXPECT_EQ(asked, 0);
}

TEST_F(AttributeDialogTest, SpaceTogglesTheRow)
{
    show(manyDoors(3));
    press(Qt::Key_Space);
    EXPECT_FALSE(isChecked(0));
    press(Qt::Key_Space);
    EXPECT_TRUE(isChecked(0));
    press(Qt::Key_Down);
    ASSERT_EQ(dialog->focusWidget(), &browseButton());
    press(Qt::Key_Space);
    EXPECT_FALSE(isChecked(1));
    EXPECT_TRUE(isChecked(0));
    EXPECT_EQ(dialog->focusWidget(), &list());
    press(Qt::Key_Space);
    EXPECT_TRUE(isChecked(1));
    press(Qt::Key_Down);
    EXPECT_TRUE(hasButtonIn(2));
    EXPECT_EQ(asked, 0);
}

TEST_F(AttributeDialogTest, KeysOpenTheQuestionForADrawing)
{
    show(manyDoors(3));
    press(Qt::Key_F4);
    EXPECT_EQ(asked, 1) << "the first row is current, though it is not selected";
    press(Qt::Key_Down);
    press(Qt::Key_F4);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(hasButtonIn(1)) << "the row stays";
    press(Qt::Key_Return);
    EXPECT_EQ(asked, 4) << "the button has the focus";
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(AttributeDialogTest, SpacePressesTheButtonForThoseWhoWentToIt)
{
    show(manyDoors(3));
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    EXPECT_EQ(dialog->focusWidget(), &find<QTreeView>("attributes"));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    ASSERT_EQ(dialog->focusWidget(), &browseButton());
    press(Qt::Key_Space);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(isChecked(1));
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(isChecked(2));
}

TEST_F(AttributeDialogTest, TabGoesFromTheRowsDown)
{
    show(manyDoors(3));
    std::vector<QWidget*> way;
    for (int i = 0; i < 4; ++i) {
        way.push_back(dialog->focusWidget());
        press(Qt::Key_Tab);
    }
    QWidget& ok = button(QDialogButtonBox::Ok);
    QWidget& cancel = button(QDialogButtonBox::Cancel);
    EXPECT_EQ(way, (std::vector<QWidget*> {&list(), &find<QTreeView>("attributes"), &ok, &cancel}));
    EXPECT_EQ(dialog->focusWidget(), &list());
}

// --- another source ------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, TheButtonAsksForADrawingAndTakesTheBlockOutOfIt)
{
    show(doors());
    answer = writeLibrary(L"lib.dxf", "GATE", {{"COLOUR"}});
    click(1);
    ASSERT_FALSE(isChecked(1));
    QTest::mouseClick(&browseButton(), Qt::LeftButton);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(askedFilters,
              (QStringList {QStringLiteral("Drawing (*.dwg)"),
                            QStringLiteral("Drawing Template (*.dwt)")}));
    EXPECT_EQ(definitionsOf(L"GATE"), "COLOUR=");
    EXPECT_EQ(tags(), "COLOUR, New attribute; COLOR, Extra attribute");
    EXPECT_TRUE(isChecked(1));
    EXPECT_FALSE(browseButton().isVisible()) << "the check box has changed";
    EXPECT_EQ(dialog->focusWidget(), &list());
    press(Qt::Key_F4);
    EXPECT_EQ(starts, (std::vector<std::wstring> {L"", *answer})) << "from the last one on";
}

TEST_F(AttributeDialogTest, TheButtonStaysInARowThatWasChecked)
{
    show(doors());
    answer = writeLibrary(L"lib.dxf", "DOOR", {{"WOOD"}, {"LOCK"}});
    click(0);
    QTest::mouseClick(&browseButton(), Qt::LeftButton);
    EXPECT_EQ(tags(), "WOOD, New attribute; LOCK, New attribute");
    EXPECT_TRUE(hasButtonIn(0));
    EXPECT_EQ(dialog->focusWidget(), &browseButton());
}

TEST_F(AttributeDialogTest, ADoubleClickAsksForADrawing)
{
    show(doors());
    answer = writeLibrary(L"lib.dxf", "GATE", {{"COLOUR"}});
    doubleClick(1);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(definitionsOf(L"GATE"), "COLOUR=");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(AttributeDialogTest, WithoutAFileNothingChanges)
{
    show(doors());
    doubleClick(1);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(isChecked(1));
    EXPECT_TRUE(hasButtonIn(1));
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(AttributeDialogTest, AFileThatCannotBeUsedIsToldAndTheRowStays)
{
    show(doors());
    answer = folder.path(L"weg.dxf");
    click(1);
    QTest::mouseClick(&browseButton(), Qt::LeftButton);
    EXPECT_EQ(services.alerts.size(), 2U);
    EXPECT_FALSE(isChecked(1));
    EXPECT_EQ(tags(), "");
    EXPECT_TRUE(hasButtonIn(1));
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(AttributeDialogTest, AFileIsChosenInAFileDialog)
{
    show(doors());
    const std::wstring library = writeLibrary(L"lib.dxf", "GATE", {{"COLOUR"}});
    dialog->setFileQuestion(askWithFileDialog);
    QTimer::singleShot(0, qApp, [&] {
        auto* const question = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(question->nameFilters().size(), 2);
        question->setDirectory(QString::fromStdWString(folder.path()));
        auto* const field = question->findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->setText(QString::fromStdWString(library));
        QTest::keyClick(field, Qt::Key_Return);
    });
    click(1);
    QTest::mouseClick(&browseButton(), Qt::LeftButton);
    EXPECT_EQ(definitionsOf(L"GATE"), "COLOUR=");
}

// --- the end -------------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, OkLeavesWhatIsChecked)
{
    show(doors());
    clickCheckBox(0);
    clickCheckBox(1);
    EXPECT_EQ(described(update.outOfDateRefs), "A1 A3");
    QTest::mouseClick(&button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(described(update.outOfDateRefs), "A2");
    EXPECT_EQ(described(update.upToDateRefs), "A2");
}

TEST_F(AttributeDialogTest, EnterInTheListIsOk)
{
    show(doors());
    press(Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(described(update.outOfDateRefs), "A1");
}

TEST_F(AttributeDialogTest, CancelAndEscapeChooseNothingButAReplacedDefinitionStays)
{
    for (const bool isByKey : {false, true}) {
        show(doors());
        answer = writeLibrary(L"lib.dxf", "GATE", {{"COLOUR"}});
        doubleClick(1);
        if (isByKey) {
            press(Qt::Key_Escape);
        } else {
            QTest::mouseClick(&button(QDialogButtonBox::Cancel), Qt::LeftButton);
        }
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(described(update.outOfDateRefs), "A1 A3");
        EXPECT_EQ(definitionsOf(L"GATE"), "COLOUR=");
        EXPECT_EQ(attributesOf("A2"), "COLOR=blue");
    }
}

TEST_F(AttributeDialogTest, EscapeAlsoLeavesFromTheButton)
{
    show(doors());
    click(0);
    ASSERT_EQ(dialog->focusWidget(), &browseButton());
    press(Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_FALSE(dialog->isVisible());
}

// --- the models ----------------------------------------------------------------------------------

TEST_F(AttributeDialogTest, TheModelsAreModels)
{
    open(doors());
    update = detected();
    AttributeUpdateForm form(update);
    AttributeRowModel rows(form);
    AttributeTagModel shown;
    constexpr auto kFatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
    const QAbstractItemModelTester rowTester(&rows, kFatal);
    const QAbstractItemModelTester tagTester(&shown, kFatal);
    EXPECT_FALSE(rows.setData(rows.index(0, 1), Qt::Checked, Qt::CheckStateRole));
    EXPECT_FALSE(rows.setData(rows.index(0, 0), QStringLiteral("x"), Qt::EditRole));
    EXPECT_FALSE(rows.setData({}, Qt::Checked, Qt::CheckStateRole));
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    EXPECT_TRUE(rows.setData(rows.index(1, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(form.rows()[1].isChecked);
    rows.toggle(1);
    EXPECT_FALSE(form.rows()[1].isChecked);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_FALSE(rows.data({}, Qt::DisplayRole).isValid());
    shown.show(form.tags());
    ASSERT_EQ(shown.rowCount(), 1);
    const QModelIndex tag = shown.index(0);
    EXPECT_EQ(tag.data().toString(), QStringLiteral("WOOD"));
    const QImage plus = pictureOf(tag.data(Qt::DecorationRole));
    shown.show({{L"A", false}, {L"B", true}});
    EXPECT_EQ(shown.rowCount(), 2);
    EXPECT_NE(pictureOf(shown.index(0).data(Qt::DecorationRole)), plus);
    EXPECT_EQ(pictureOf(shown.index(1).data(Qt::DecorationRole)), plus);
    shown.show({});
    EXPECT_EQ(shown.rowCount(), 0);
}

} // namespace

} // namespace corma::testing
