// What the host hands out as result nodes, put where its owner wants it.

#include "drawing/host_variables.h"
#include "host/host.h"
#include "support/RecordingServices.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace corma::testing {

namespace {

constexpr short kEntityName = 5006;
constexpr short kSelection = 5007;
constexpr short kListBegin = 5016;
constexpr short kListEnd = 5017;
constexpr short kNothing = 5019;

constexpr const wchar_t* kBadType = L"\nError in file xx_assign_value2.cpp on line 41\n(ASSIGN bad "
                                    L"type, ec = ";

struct ReleaseList
{
    void operator()(resbuf* list) const { acutRelRb(list); }
};

using List = std::unique_ptr<resbuf, ReleaseList>;

resbuf nodeOf(short type)
{
    resbuf node {};
    node.restype = type;
    return node;
}

class AssignValue : public ::testing::Test
{
protected:
    RecordingServices services;
};

// --- single values -------------------------------------------------------------------------------

TEST_F(AssignValue, CopiesANumber)
{
    resbuf node = nodeOf(RTREAL);
    node.resval.rreal = -2.5;
    double real = 0;
    EXPECT_EQ(xx_assign_value2(node, {RTREAL, &real}, 1), RTNORM);
    EXPECT_EQ(real, -2.5);
}

TEST_F(AssignValue, WidensAShortNumber)
{
    resbuf node = nodeOf(RTSHORT);
    node.resval.rint = -7;
    std::int32_t whole = 0x12345678;
    EXPECT_EQ(xx_assign_value2(node, {RTSHORT, &whole}, 1), RTNORM);
    EXPECT_EQ(whole, -7);
}

TEST_F(AssignValue, CopiesALongNumber)
{
    resbuf node = nodeOf(RTLONG);
    node.resval.rlong = -70'000;
    std::int32_t whole = 0;
    EXPECT_EQ(xx_assign_value2(node, {RTLONG, &whole}, 1), RTNORM);
    EXPECT_EQ(whole, -70'000);
}

TEST_F(AssignValue, CopiesTwoOrThreeNumbersOfAPoint)
{
    const struct
    {
        short type;
        std::array<double, 4> copied;
    } rows[] = {{RTPOINT, {1, 2, 9, 9}}, {RT3DPOINT, {1, 2, 3, 9}}};

    for (const auto& row : rows) {
        resbuf node = nodeOf(row.type);
        for (int i = 0; i < 3; ++i) {
            node.resval.rpoint[i] = i + 1;
        }
        std::array<double, 4> point = {9, 9, 9, 9};
        EXPECT_EQ(xx_assign_value2(node, {row.type, point.data()}, 1), RTNORM);
        EXPECT_EQ(point, row.copied);
    }
}

TEST_F(AssignValue, CopiesTheFirstWordOfANameOfTheHost)
{
    for (const short type : {kEntityName, kSelection}) {
        resbuf node = nodeOf(type);
        node.resval.rlname[0] = 0x123456789ABCDEF;
        node.resval.rlname[1] = 42;
        std::array<long long, 2> name = {1, 2};
        EXPECT_EQ(xx_assign_value2(node, {type, name.data()}, 1), RTNORM);
        EXPECT_EQ(name[0], 0x123456789ABCDEF);
        EXPECT_EQ(name[1], 2);
    }
}

struct AssignedTextRow
{
    const char* sentence;
    const wchar_t* text;
    std::size_t size;
    std::wstring buffer; // what stands there then, of "same" and a terminator
};

class AssignText : public AssignValue, public ::testing::WithParamInterface<AssignedTextRow>
{
};

TEST_P(AssignText, GoesIntoTheBuffer)
{
    resbuf node = nodeOf(RTSTR);
    node.resval.rstring = const_cast<wchar_t*>(GetParam().text);
    std::wstring buffer = L"same";
    EXPECT_EQ(xx_assign_value2(node, {RTSTR, buffer.data(), GetParam().size}, 1), RTNORM);
    EXPECT_EQ(buffer, GetParam().buffer);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AssignValue, AssignText, ::testing::Values(
    AssignedTextRow {"Whole", L"ab", 4, {L'a', L'b', 0, L'e'}},
    AssignedTextRow {"JustFitting", L"abc", 4, {L'a', L'b', L'c', 0}},
    AssignedTextRow {"CutByTheRoomForTheTerminator", L"abcd", 4, {L'a', L'b', L'c', 0}},
    AssignedTextRow {"Empty", L"", 4, {0, L'a', L'm', L'e'}},
    AssignedTextRow {"NotWhenItIsNull", nullptr, 4, L"same"},
    AssignedTextRow {"NotWithoutRoom", L"ab", 0, L"same"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(AssignValue, HasNothingToDoForNothing)
{
    resbuf node = nodeOf(kNothing);
    EXPECT_EQ(xx_assign_value2(node, {kNothing, nullptr}, 1), RTNORM);
    EXPECT_EQ(services.allPrinted(), L"");
}

// --- lists ---------------------------------------------------------------------------------------

class AssignList : public AssignValue
{
protected:
    // Nodes of these types, chained; each has its place as its value.
    static List chainOf(const std::vector<short>& types)
    {
        resbuf* first = nullptr;
        resbuf** next = &first;
        for (std::size_t i = 0; i < types.size(); ++i) {
            *next = acutNewRb(types[i]);
            (*next)->resval.rlong = static_cast<int>(i);
            next = &(*next)->rbnext;
        }
        return List(first);
    }

    static std::string placesOf(const List& list)
    {
        std::string places;
        for (const resbuf* at = list.get(); at != nullptr; at = at->rbnext) {
            places += (places.empty() ? "" : " ") + std::to_string(at->resval.rlong);
        }
        return places;
    }

    // Takes the list out of the chain that begins with it.
    static int take(const List& chain, List& list)
    {
        resbuf* taken = nullptr;
        const int status = xx_assign_value2(*chain, {kListBegin, &taken}, 1);
        list.reset(taken);
        return status;
    }
};

TEST_F(AssignList, TakesWhatIsBetweenTheMarksOutOfTheChain)
{
    const List chain = chainOf({kListBegin, RTLONG, RTLONG, kListEnd, RTLONG});
    List list;
    EXPECT_EQ(take(chain, list), RTNORM);
    EXPECT_EQ(placesOf(list), "1 2");
    EXPECT_EQ(placesOf(chain), "0 3 4");
}

TEST_F(AssignList, GoesToTheMatchingEnd)
{
    const List chain = chainOf({kListBegin, kListBegin, RTLONG, kListEnd, RTLONG, kListBegin,
                                kListBegin, kListEnd, kListEnd, kListEnd, RTLONG, kListEnd});
    List list;
    EXPECT_EQ(take(chain, list), RTNORM);
    EXPECT_EQ(placesOf(list), "1 2 3 4 5 6 7 8");
    EXPECT_EQ(placesOf(chain), "0 9 10 11");

    // The list that is within can be taken in turn.
    List inner;
    EXPECT_EQ(take(list, inner), RTNORM);
    EXPECT_EQ(placesOf(inner), "2");
    EXPECT_EQ(placesOf(list), "1 3 4 5 6 7 8");
}

TEST_F(AssignList, MayBeEmpty)
{
    const List chain = chainOf({kListBegin, kListEnd, RTLONG});
    resbuf* taken = chain.get();
    EXPECT_EQ(xx_assign_value2(*chain, {kListBegin, &taken}, 1), RTNORM);
    EXPECT_EQ(taken, nullptr);
    EXPECT_EQ(placesOf(chain), "0 1 2");
}

TEST_F(AssignList, NeedsItsEnd)
{
    for (const auto& types :
         {std::vector<short> {kListBegin}, std::vector<short> {kListBegin, RTLONG},
          std::vector<short> {kListBegin, kListBegin, RTLONG, kListEnd}}) {
        const List chain = chainOf(types);
        const std::string before = placesOf(chain);
        resbuf* taken = chain.get();
        EXPECT_EQ(xx_assign_value2(*chain, {kListBegin, &taken}, 1), RTCAN);
        EXPECT_EQ(taken, chain.get());
        EXPECT_EQ(placesOf(chain), before);
    }
}

// --- other types ---------------------------------------------------------------------------------

struct TypeRow
{
    const char* sentence;
    short wanted;
    short type;
};

class AssignBadType : public AssignValue, public ::testing::WithParamInterface<TypeRow>
{
};

TEST_P(AssignBadType, IsRefusedAndToldWhenThatIsWanted)
{
    resbuf node = nodeOf(GetParam().type);
    std::array<double, 3> target = {1, 2, 3};
    const VariableTarget value {GetParam().wanted, target.data(), 3};
    EXPECT_EQ(xx_assign_value2(node, value, 0), RTCAN);
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(xx_assign_value2(node, value, 1), RTCAN);
    EXPECT_EQ(services.allPrinted(), kBadType + std::to_wstring(GetParam().type) + L")");
    EXPECT_EQ(target, (std::array<double, 3> {1, 2, 3}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AssignValue, AssignBadType, ::testing::Values(
    TypeRow {"AShortNumberForALongOne", RTLONG, RTSHORT},
    TypeRow {"ALongNumberForAShortOne", RTSHORT, RTLONG},
    TypeRow {"APointInThePlaneForOneInSpace", RT3DPOINT, RTPOINT},
    TypeRow {"ANumberForAText", RTSTR, RTREAL},
    TypeRow {"NothingForAText", RTSTR, kNothing},
    TypeRow {"AnEntityForASelection", kSelection, kEntityName},
    TypeRow {"AnEndForABegin", kListBegin, kListEnd},
    TypeRow {"AnAngleThoughItIsWanted", 5004, 5004},
    TypeRow {"AnEndThoughItIsWanted", kListEnd, kListEnd},
    TypeRow {"NoTypeAtAll", 0, 0}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::testing
