#include "editor/FakeView.h"

#include <gtest/gtest.h>

using corma::TreeContents;
using corma::testing::written;

namespace {

TEST(TreeContents, HasWhatWasSelectedBeforeAsItsOnlyItem)
{
    TreeContents tree(L"Text", corma::kEnglish);
    ASSERT_NE(tree.selectedItem(), nullptr);
    EXPECT_EQ(tree.textOf(tree.selectedItem()), L"Text");
    tree.deleteAllItems();
    EXPECT_EQ(tree.selectedItem(), nullptr);
    EXPECT_EQ(tree.first(), nullptr);
    EXPECT_EQ(written(tree), "");
}

TEST(TreeContents, HasNothingSelectedAtFirst)
{
    TreeContents tree(corma::kEnglish);
    EXPECT_EQ(tree.selectedItem(), nullptr);
    EXPECT_EQ(written(tree), "");
}

TEST(TreeContents, HoldsCategoriesBelowTheirRootInTheOrderInWhichTheyCame)
{
    TreeContents tree(corma::kEnglish);
    void* const root = tree.insertItem(L"General", nullptr);
    tree.insertItem(L"b", root);
    tree.selectItem(tree.insertItem(L"a", root));
    EXPECT_EQ(written(tree), "General\n  -b\n  -a *\n");
    tree.expand(root);
    EXPECT_EQ(written(tree), "-General\n  -b\n  -a *\n");
    const auto& category = *tree.topLevel().front()->children.front();
    EXPECT_EQ(category.parent, tree.first());
    EXPECT_FALSE(category.isIncludedFile());
    EXPECT_EQ(tree.first()->parent, nullptr);
}

TEST(TreeContents, SortsAsPeopleExpectAndKeepsTheSelection)
{
    TreeContents tree(12);
    void* const root = tree.insertItem(L"Général", nullptr);
    for (const wchar_t* name : {L"zone", L"Échelle", L"Texte", L"ecran", L"échelle", L"Texte"}) {
        tree.insertItem(name, root);
    }
    tree.selectItem(tree.insertItem(L"Ligne", root));
    tree.sortChildren(root);
    EXPECT_EQ(written(tree),
              "Général\n  -échelle\n  -Échelle\n  -ecran\n  -Ligne *\n  -Texte\n  -Texte\n"
              "  -zone\n");
}

TEST(TreeContents, PutsIncludedFilesAboveAllOthers)
{
    TreeContents tree(corma::kEnglish);
    tree.selectItem(tree.insertItem(L"General", nullptr));
    tree.insertIncludedFile(L"b.ini", 1);
    tree.insertIncludedFile(L"a.ini", 0);
    EXPECT_EQ(written(tree), "a.ini [100]\nb.ini [101]\nGeneral *\n");
    EXPECT_TRUE(tree.first()->isIncludedFile());
    EXPECT_EQ(tree.first()->text, L"a.ini");
}

} // namespace
