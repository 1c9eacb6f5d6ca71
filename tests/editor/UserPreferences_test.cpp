#include "editor/UserPreferences.h"
#include "support/TempFolder.h"

#include <QSettings>

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

const char* const kFile = "Korvane/CfgDesk.conf";

/// Preferences in a folder of the test's own.
class UserPreferencesTest : public ::testing::Test
{
protected:
    UserPreferencesTest() { keepIn(folder.path()); }

    static void keepIn(const std::wstring& path)
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdWString(path));
    }

    void write(std::string_view text) const { folder.write(fileName(), text); }

    [[nodiscard]] std::string read() const { return folder.read(fileName()); }

    static std::wstring fileName() { return QString::fromLatin1(kFile).toStdWString(); }

    const TempFolder folder;
};

TEST_F(UserPreferencesTest, CategoriesAreNotSortedUntilThatWasSet)
{
    EXPECT_FALSE(UserPreferences().sortCategories());
}

TEST_F(UserPreferencesTest, WhatWasSetHoldsForTheNextOne)
{
    UserPreferences().setSortCategories(true);
    EXPECT_TRUE(UserPreferences().sortCategories());
    UserPreferences().setSortCategories(false);
    EXPECT_FALSE(UserPreferences().sortCategories());
}

TEST_F(UserPreferencesTest, AnOpenOneIsWrittenAtOnce)
{
    UserPreferences preferences;
    preferences.setSortCategories(true);
    EXPECT_EQ(read(), "[General]\nSortSections=1\n");
    preferences.setSortCategories(false);
    EXPECT_EQ(read(), "[General]\nSortSections=0\n");
}

TEST_F(UserPreferencesTest, AnyNumberButZeroSorts)
{
    struct Row
    {
        const char* value;
        bool sorts;
    };

    for (const Row& row : {Row {"0", false}, Row {"1", true}, Row {"2", true}, Row {"-1", true},
                           Row {"4294967295", true}, Row {"", false}, Row {"yes", false}}) {
        const TempFolder own; // Qt may not see that a file changed at once
        own.write(fileName(), std::string("[General]\nSortSections=") + row.value + "\n");
        keepIn(own.path());
        EXPECT_EQ(UserPreferences().sortCategories(), row.sorts) << row.value;
    }
}

TEST_F(UserPreferencesTest, OtherValuesOfTheFileStay)
{
    write("[General]\nOther=7\n");
    UserPreferences().setSortCategories(true);
    EXPECT_EQ(read(), "[General]\nOther=7\nSortSections=1\n");
}

TEST_F(UserPreferencesTest, WhereNothingCanBeKeptTheyHoldAsLongAsTheyAreThere)
{
    folder.write(L"Korvane", "a file, where the folder should be");
    UserPreferences preferences;
    preferences.setSortCategories(true);
    EXPECT_TRUE(preferences.sortCategories());
    EXPECT_EQ(folder.read(L"Korvane"), "a file, where the folder should be");
}

} // namespace

} // namespace corma::testing
