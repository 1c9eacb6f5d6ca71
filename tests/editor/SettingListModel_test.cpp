#include "editor/SettingListModel.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QIcon>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;

namespace corma::testing {

namespace {

using Tester = QAbstractItemModelTester;

SettingRow row(const wchar_t* name, int image = 0)
{
    SettingRow made;
    made.name = name;
    made.type = L"String";
    made.value = L"1";
    made.description = L"about it";
    made.image = image;
    return made;
}

class SettingListModelTest : public ::testing::Test
{
protected:
    [[nodiscard]] std::vector<std::string> texts(int at) const
    {
        std::vector<std::string> all;
        for (int column = 0; column < model.columnCount(); ++column) {
            all.push_back(model.index(at, column).data().toString().toStdString());
        }
        return all;
    }

    const RecordingServices services;
    std::vector<SettingRow> rows;
    SettingListModel model;
    Tester tester {&model, Tester::FailureReportingMode::Fatal};
};

TEST_F(SettingListModelTest, IsEmptyUntilItShowsRows)
{
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 4);
    EXPECT_FALSE(model.index(0, 0).isValid());
}

TEST_F(SettingListModelTest, HasTheRowsInFourColumns)
{
    rows = {row(L"A"), row(L"B")};
    model.show(rows);
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_THAT(texts(0), ElementsAre("A", "String", "1", "about it"));
    EXPECT_THAT(texts(1), ElementsAre("B", "String", "1", "about it"));
    const QModelIndex first = model.index(0, 0);
    EXPECT_EQ(model.rowCount(first), 0) << "it is a list";
    EXPECT_EQ(model.columnCount(first), 0);
    EXPECT_EQ(model.index(0, 3).data(Qt::ToolTipRole).toString(), QStringLiteral("about it"));
    EXPECT_FALSE(model.flags(first).testFlag(Qt::ItemIsEditable));
}

TEST_F(SettingListModelTest, ItsHeadingsAreThoseOfTheLanguage)
{
    const auto heading = [this](int column, Qt::Orientation orientation = Qt::Horizontal) {
        return model.headerData(column, orientation, Qt::DisplayRole).toString().toStdString();
    };
    setTextLanguage(19);
    EXPECT_EQ(heading(0), "Naam");
    EXPECT_EQ(heading(3), "Beschrijving");
    setTextLanguage(9);
    EXPECT_EQ(heading(0), "Name");
    EXPECT_EQ(heading(0, Qt::Vertical), "1");
    EXPECT_NE(heading(-1), "Name");
    EXPECT_NE(heading(4), "Description");
}

TEST_F(SettingListModelTest, TheMarkIsAnIconWithAText)
{
    struct Row
    {
        int image;
        const char* text; // "" for none
    };

    for (const Row& mark :
         {Row {0, "Global Setting"}, Row {1, "Project Setting"}, Row {2, "Local Setting"},
          Row {3, "Copy of Global"}, Row {4, "Copy of Global"}, Row {5, "Copy of Project"},
          Row {6, "Double Copy"}, Row {7, "Obsolete"}, Row {8, ""}}) {
        rows = {row(L"A", mark.image)};
        model.show(rows);
        const QModelIndex name = model.index(0, 0);
        EXPECT_FALSE(name.data(Qt::DecorationRole).value<QIcon>().isNull()) << mark.image;
        EXPECT_EQ(name.data(Qt::AccessibleDescriptionRole).toString().toStdString(), mark.text);
        EXPECT_FALSE(model.index(0, 2).data(Qt::DecorationRole).isValid());
    }
    for (const int image : {-1, 9}) {
        rows = {row(L"A", image)};
        model.show(rows);
        EXPECT_TRUE(model.index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
        EXPECT_FALSE(model.index(0, 0).data(Qt::AccessibleDescriptionRole).isValid());
    }
}

// The lowest byte of a colour is its red part.
TEST_F(SettingListModelTest, ARowHasItsColourInEachColumn)
{
    rows = {row(L"A"), row(L"B")};
    rows[1].rgb = 0x0180FF;
    model.show(rows);
    for (int column = 0; column < model.columnCount(); ++column) {
        EXPECT_FALSE(model.index(0, column).data(Qt::ForegroundRole).isValid());
        EXPECT_EQ(model.index(1, column).data(Qt::ForegroundRole).value<QColor>(),
                  QColor(0xFF, 0x80, 0x01));
    }
}

TEST_F(SettingListModelTest, OtherRowsTakeTheirPlace)
{
    rows = {row(L"A"), row(L"B")};
    model.show(rows);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    rows = {row(L"C")};
    model.show(rows);
    EXPECT_EQ(reset.size(), 1);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_THAT(texts(0), ElementsAre("C", "String", "1", "about it"));
}

} // namespace

} // namespace corma::testing
