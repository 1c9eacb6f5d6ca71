#include "settings/NameIndex.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace corma {
namespace {

class NameIndexTest : public ::testing::Test
{
protected:
    [[nodiscard]] auto nameAt() const
    {
        return [this](std::size_t place) { return std::string_view(names[place]); };
    }

    void add(const std::string& name)
    {
        index.add(name, nameAt());
        names.push_back(name);
    }

    bool addNew(const std::string& name)
    {
        const bool isNew = index.addNew(name, nameAt());
        if (isNew) {
            names.push_back(name);
        }
        return isNew;
    }

    [[nodiscard]] std::size_t find(std::string_view name) const
    {
        return index.find(name, nameAt());
    }

    NameIndex index;
    std::vector<std::string> names;
};

TEST_F(NameIndexTest, FindsNothingWhenItIsEmpty)
{
    EXPECT_EQ(find("a"), NameIndex::kNowhere);
    EXPECT_EQ(find(""), NameIndex::kNowhere);
}

TEST_F(NameIndexTest, TheLastOfSeveralIsFound)
{
    add("a");
    add("b");
    add("a");
    EXPECT_EQ(find("a"), 2U);
    EXPECT_EQ(find("b"), 1U);
}

TEST_F(NameIndexTest, ANewNameIsTakenOnce)
{
    EXPECT_TRUE(addNew(""));
    EXPECT_TRUE(addNew("a"));
    EXPECT_FALSE(addNew("a"));
    EXPECT_FALSE(addNew(""));
    EXPECT_TRUE(addNew("A"));
    EXPECT_EQ(find("A"), 2U);
}

TEST_F(NameIndexTest, FindsNothingWhenItWasCleared)
{
    add("a");
    index.clear();
    names.clear();
    EXPECT_EQ(find("a"), NameIndex::kNowhere);
    add("b");
    EXPECT_EQ(find("b"), 0U);
}

TEST_F(NameIndexTest, FindsWhatALinearWalkFinds)
{
    std::mt19937 random(7);
    std::map<std::string, std::size_t> last;
    for (std::size_t i = 0; i < 5000; ++i) {
        // Names with a long common beginning, some of them again and again.
        const std::string name = "Instelling" + std::to_string(random() % 3000);
        add(name);
        last[name] = i;
    }
    for (const auto& [name, place] : last) {
        EXPECT_EQ(find(name), place);
        EXPECT_EQ(find(name + "x"), NameIndex::kNowhere);
    }
}

} // namespace
} // namespace corma
