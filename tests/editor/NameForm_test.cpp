#include "editor/NameForm.h"
#include "support/RecordingServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

class NameFormTest : public ::testing::Test
{
protected:
    NameFormTest()
    {
        tree.insertItem(L"plan.ini", nullptr);
        m_root = tree.insertItem(L"General", nullptr);
    }

    void* add(const wchar_t* category) { return tree.insertItem(category, m_root); }

    [[nodiscard]] void* root() const { return m_root; }

    [[nodiscard]] NameForm categoryForm() const { return {tree, NameOf::category}; }

    const RecordingServices services;
    TreeContents tree {9};

private:
    void* m_root;
};

TEST_F(NameFormTest, ASettingIsNoCopy)
{
    add(L"Walls");
    NameForm form(tree, NameOf::setting);
    EXPECT_FALSE(form.offersCopy());
    EXPECT_THAT(form.sources(), IsEmpty());
    form.setName(L" Height ");
    form.setCopy(true);
    EXPECT_FALSE(form.canSelectSource());
    EXPECT_EQ(form.answer().name, L" Height ");
    EXPECT_EQ(form.answer().copyOf, std::nullopt);
}

TEST_F(NameFormTest, TheRootAndItsCategoriesCanBeCopiedInTheirOrder)
{
    add(L"Walls");
    add(L"Doors");
    EXPECT_THAT(categoryForm().sources(), ElementsAre(L"General", L"Walls", L"Doors"));
}

TEST_F(NameFormTest, TheRootIsFoundByItsWordInTheLanguageInForce)
{
    setTextLanguage(19);
    EXPECT_THAT(categoryForm().sources(), IsEmpty());
    tree.insertItem(L"Algemeen", nullptr);
    EXPECT_THAT(categoryForm().sources(), ElementsAre(L"Algemeen"));
}

TEST_F(NameFormTest, TheListIsFreeOnlyWhileTheBoxIsTicked)
{
    NameForm form = categoryForm();
    EXPECT_FALSE(form.canSelectSource());
    form.setCopy(true);
    EXPECT_TRUE(form.canSelectSource());
    form.setCopy(false);
    EXPECT_FALSE(form.canSelectSource());
}

TEST_F(NameFormTest, WithoutATickNothingIsCopied)
{
    tree.selectItem(add(L"Walls"));
    NameForm form = categoryForm();
    form.setName(L"Stairs");
    EXPECT_EQ(form.answer().copyOf, std::nullopt);
    form.setCopy(true);
    EXPECT_EQ(form.answer().copyOf, L"Walls");
    form.selectSource(0);
    EXPECT_EQ(form.answer().copyOf, L"General");
    form.setCopy(false);
    EXPECT_EQ(form.answer().copyOf, std::nullopt);
}

TEST_F(NameFormTest, AnEmptyNameIsAnAnswer)
{
    EXPECT_EQ(categoryForm().answer().name, L"");
}

// --- the selected source -------------------------------------------------------------------------

TEST_F(NameFormTest, TheSelectedCategoryIsTheSource)
{
    add(L"Walls");
    tree.selectItem(add(L"Doors"));
    EXPECT_EQ(categoryForm().selectedSource(), 2);
}

TEST_F(NameFormTest, TheSelectedRootIsTheSource)
{
    add(L"Walls");
    tree.selectItem(root());
    EXPECT_EQ(categoryForm().selectedSource(), 0);
}

TEST_F(NameFormTest, WithoutASelectionTheFirstOneIsTheSource)
{
    add(L"Walls");
    EXPECT_EQ(categoryForm().selectedSource(), 0);
}

TEST_F(NameFormTest, ALongerNameAboveTheSelectedOneIsFoundFirst)
{
    add(L"WALLS outside");
    tree.selectItem(add(L"Walls"));
    EXPECT_EQ(categoryForm().selectedSource(), 1);
}

TEST_F(NameFormTest, AShorterNameIsNotFound)
{
    add(L"Wall");
    tree.selectItem(add(L"Walls"));
    EXPECT_EQ(categoryForm().selectedSource(), 2);
}

TEST_F(NameFormTest, WithoutCategoriesBelowTheRootNoneIsSelected)
{
    tree.selectItem(root());
    NameForm form = categoryForm();
    EXPECT_THAT(form.sources(), ElementsAre(L"General"));
    EXPECT_EQ(form.selectedSource(), -1);
    form.setCopy(true);
    EXPECT_EQ(form.answer().copyOf, L"");
}

TEST_F(NameFormTest, ACopyWhileAnIncludedFileIsSelectedIsOneOfNothing)
{
    add(L"Walls");
    tree.insertIncludedFile(L"norm.ini", 0);
    tree.selectItem(tree.first());
    NameForm form = categoryForm();
    EXPECT_EQ(form.selectedSource(), -1);
    form.setCopy(true);
    EXPECT_EQ(form.answer().copyOf, L"");
}

TEST_F(NameFormTest, AnEmptyTreeHasNothingToCopy)
{
    const NameForm form(TreeContents(9), NameOf::category);
    EXPECT_THAT(form.sources(), IsEmpty());
    EXPECT_EQ(form.selectedSource(), -1);
}

} // namespace

} // namespace corma::testing
