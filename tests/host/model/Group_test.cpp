#include "host/model/Group.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

// Such as `0 LINE 5 2A`.
std::wstring codes(const Groups& groups)
{
    std::wstring text;
    for (const Group& group : groups) {
        text += (text.empty() ? L"" : L" ") + std::to_wstring(group.code);
    }
    return text;
}

Groups attribute()
{
    return Groups({{0, L"ATTRIB"},
                   {5, Handle {0x2A}},
                   {102, L"{ACAD_XDICTIONARY"},
                   {360, Handle {0x30}},
                   {102, L"}"},
                   {330, Handle {0x1F}},
                   {100, L"AcDbEntity"},
                   {8, L"0"},
                   {100, L"AcDbText"},
                   {10, 1.0},
                   {20, 2.0},
                   {40, 2.5},
                   {100, L"AcDbAttribute"},
                   {2, L"TAG"},
                   {70, 3},
                   {101, L"Embedded Object"},
                   {70, 9},
                   {1001, L"ACAD"},
                   {1070, 1}});
}

struct KindRow
{
    int code;
    ValueKind kind;
};

TEST(ValueKinds, FollowFromTheCode)
{
    for (const KindRow& row : {
             KindRow {-1, ValueKind::text},     KindRow {0, ValueKind::text},
             KindRow {4, ValueKind::text},      KindRow {5, ValueKind::handle},
             KindRow {6, ValueKind::text},      KindRow {9, ValueKind::text},
             KindRow {10, ValueKind::real},     KindRow {59, ValueKind::real},
             KindRow {60, ValueKind::int16},    KindRow {79, ValueKind::int16},
             KindRow {80, ValueKind::text},     KindRow {90, ValueKind::int32},
             KindRow {99, ValueKind::int32},    KindRow {100, ValueKind::text},
             KindRow {105, ValueKind::handle},  KindRow {110, ValueKind::real},
             KindRow {149, ValueKind::real},    KindRow {160, ValueKind::int64},
             KindRow {179, ValueKind::int16},   KindRow {210, ValueKind::real},
             KindRow {289, ValueKind::int16},   KindRow {290, ValueKind::boolean},
             KindRow {300, ValueKind::text},    KindRow {310, ValueKind::binary},
             KindRow {320, ValueKind::handle},  KindRow {369, ValueKind::handle},
             KindRow {370, ValueKind::int16},   KindRow {390, ValueKind::handle},
             KindRow {410, ValueKind::text},    KindRow {420, ValueKind::int32},
             KindRow {430, ValueKind::text},    KindRow {460, ValueKind::real},
             KindRow {481, ValueKind::handle},  KindRow {482, ValueKind::text},
             KindRow {999, ValueKind::text},    KindRow {1000, ValueKind::text},
             KindRow {1004, ValueKind::binary}, KindRow {1005, ValueKind::handle},
             KindRow {1010, ValueKind::real},   KindRow {1060, ValueKind::int16},
             KindRow {1071, ValueKind::int32},  KindRow {1072, ValueKind::text},
         }) {
        EXPECT_EQ(valueKindOf(row.code), row.kind) << row.code;
    }
}

TEST(GroupValues, OfAnotherKindAreEmpty)
{
    const Group text(1, L"a");
    EXPECT_EQ(text.text(), L"a");
    EXPECT_EQ(text.real(), 0.0);
    EXPECT_EQ(text.integer(), 0);
    EXPECT_EQ(text.handle(), Handle::none);
    EXPECT_EQ(text.bytes(), "");
    EXPECT_EQ(Group(70, 3).real(), 3.0);
    EXPECT_EQ(Group(40, 3.0).integer(), 0);
    EXPECT_EQ(Group(40, 3.0).text(), L"");
}

TEST(GroupValues, ThatAreNewHaveNoBytesOfTheFile)
{
    Group group(1, L"a");
    group.raw = "1\na\n";
    group.set(std::wstring(L"b"));
    EXPECT_TRUE(group.raw.empty());
}

TEST(RecordGroups, HaveABodyWithoutTypeEmbeddedObjectsAndExtendedData)
{
    const Groups groups = attribute();
    EXPECT_EQ(groups.body().begin, 1U);
    EXPECT_EQ(groups.body().end, 15U);
    EXPECT_EQ(groups.integer(70, groups.body()), 3);
    EXPECT_EQ(Groups().body().end, 0U);
}

TEST(RecordGroups, AreFoundBySubclass)
{
    const Groups groups = attribute();
    EXPECT_EQ(groups.text(2, groups.subclass(L"AcDbAttribute")), L"TAG");
    EXPECT_EQ(groups.text(2, groups.subclass(L"AcDbText"), L"none"), L"none");
    EXPECT_EQ(groups.real(40, groups.subclass(L"AcDbText")), 2.5);
    const GroupRange missing = groups.subclass(L"AcDbLine");
    EXPECT_EQ(missing.begin, missing.end);
    const Groups old({{0, L"TEXT"}, {8, L"0"}, {1, L"a"}});
    EXPECT_EQ(old.text(1, old.subclass(L"AcDbText")), L"a") << "R12 has no markers";
}

TEST(RecordGroups, AreFoundInBraces)
{
    const Groups groups = attribute();
    const GroupRange braces = groups.braces(L"ACAD_XDICTIONARY");
    EXPECT_EQ(groups.handle(360, braces), Handle {0x30});
    EXPECT_EQ(braces.end - braces.begin, 1U);
    const GroupRange missing = groups.braces(L"ACAD_REACTORS");
    EXPECT_EQ(missing.begin, missing.end);
    const Groups open({{0, L"LINE"}, {102, L"{ACAD_REACTORS"}, {330, Handle {7}}});
    EXPECT_EQ(open.handle(330, open.braces(L"ACAD_REACTORS")), Handle {7});
}

TEST(RecordGroups, TellTheirPoints)
{
    const Groups groups = attribute();
    EXPECT_EQ(groups.point(10, groups.body()), (Point {1.0, 2.0, 0.0}));
    EXPECT_EQ(groups.point(210, groups.body(), {0.0, 0.0, 1.0}), (Point {0.0, 0.0, 1.0}));
    EXPECT_EQ(groups.point(10, groups.body(), {7.0, 8.0, 9.0}), (Point {1.0, 2.0, 9.0}));
}

TEST(RecordGroups, AreSetWhereTheyStandOrAtTheEndOfTheirRange)
{
    Groups groups = attribute();
    groups.set(40, groups.subclass(L"AcDbText"), 5.0);
    groups.set(50, groups.subclass(L"AcDbText"), 90.0);
    EXPECT_EQ(codes(groups),
              L"0 5 102 360 102 330 100 8 100 10 20 40 50 100 2 70 101 70 1001 1070");
    EXPECT_EQ(groups.real(40, groups.subclass(L"AcDbText")), 5.0);
    EXPECT_EQ(groups.real(50, groups.subclass(L"AcDbText")), 90.0);
}

TEST(RecordGroups, KeepTheirBytesWhenTheValueStays)
{
    Groups groups = attribute();
    const std::string_view bytes = " 40\n2.50\n";
    groups[11].raw = bytes;
    groups.set(40, groups.body(), 2.5);
    EXPECT_EQ(groups[11].raw, bytes);
    groups.set(40, groups.body(), 2.6);
    EXPECT_TRUE(groups[11].raw.empty());
    groups[9].raw = bytes;
    groups[10].raw = bytes;
    groups.setPoint(10, groups.body(), {1.0, 3.0, 0.0});
    EXPECT_EQ(groups[9].raw, bytes);
    EXPECT_TRUE(groups[10].raw.empty());
}

TEST(RecordGroups, CompleteAPoint)
{
    Groups groups = attribute();
    groups.setPoint(10, groups.subclass(L"AcDbText"), {3.0, 4.0, 5.0});
    EXPECT_EQ(codes(groups),
              L"0 5 102 360 102 330 100 8 100 10 20 30 40 100 2 70 101 70 1001 1070");
    groups.setPoint(11, groups.subclass(L"AcDbText"), {6.0, 7.0, 8.0});
    EXPECT_EQ(codes(groups),
              L"0 5 102 360 102 330 100 8 100 10 20 30 40 11 21 31 100 2 70 101 70 "
              L"1001 1070");
    EXPECT_EQ(groups.point(11, groups.body()), (Point {6.0, 7.0, 8.0}));
}

TEST(RecordGroups, AreTakenOut)
{
    Groups groups = attribute();
    groups.remove(70, groups.body());
    groups.remove(70, groups.body());
    EXPECT_EQ(codes(groups), L"0 5 102 360 102 330 100 8 100 10 20 40 100 2 101 70 1001 1070");
}

TEST(RecordGroups, TellTheHandlesOfTheRecordAndItsOwner)
{
    Groups groups = attribute();
    EXPECT_EQ(groups.ownHandle(), Handle {0x2A});
    EXPECT_EQ(groups.ownerHandle(), Handle {0x1F});
    groups.setOwnerHandle(Handle {0x20});
    EXPECT_EQ(groups.ownerHandle(), Handle {0x20});
    const Groups style({{0, L"DIMSTYLE"}, {105, Handle {7}}, {100, L"A"}, {5, Handle {8}}});
    EXPECT_EQ(style.ownHandle(), Handle {7});
    const Groups data({{0, L"XRECORD"}, {100, L"AcDbXrecord"}, {5, Handle {8}}, {330, Handle {9}}});
    EXPECT_EQ(data.ownHandle(), Handle::none);
    EXPECT_EQ(data.ownerHandle(), Handle::none);
}

TEST(RecordGroups, ANewOwnerStandsBehindBracesAndAheadOfTheFirstSubclass)
{
    Groups groups({{0, L"LINE"},
                   {5, Handle {1}},
                   {102, L"{ACAD_REACTORS"},
                   {330, Handle {2}},
                   {102, L"}"},
                   {100, L"AcDbEntity"}});
    EXPECT_EQ(groups.ownerHandle(), Handle::none);
    groups.setOwnerHandle(Handle {3});
    EXPECT_EQ(codes(groups), L"0 5 102 330 102 330 100");
    EXPECT_EQ(groups.ownerHandle(), Handle {3});
}

struct HandleRow
{
    std::wstring_view text;
    std::optional<Handle> handle;
};

TEST(HandleText, IsHexadecimal)
{
    for (const HandleRow& row : {
             HandleRow {L"0", Handle::none}, HandleRow {L"2a", Handle {0x2A}},
             HandleRow {L"2A", Handle {0x2A}}, HandleRow {L"00FF", Handle {0xFF}},
             HandleRow {L"FFFFFFFFFFFFFFFF", Handle {0xFFFFFFFFFFFFFFFF}},
             HandleRow {L"10000000000000000", std::nullopt}, // 17 digits
             HandleRow {L"", std::nullopt}, HandleRow {L"G", std::nullopt},
             HandleRow {L"2A ", std::nullopt}, HandleRow {L"-1", std::nullopt},
             HandleRow {L"\x0662", std::nullopt}, // a digit of another script
         }) {
        EXPECT_EQ(handleFrom(row.text), row.handle) << std::wstring(row.text);
    }
    EXPECT_EQ(handleFrom(std::string_view("2a")), Handle {0x2A});
    EXPECT_EQ(toText(Handle::none), L"0");
    EXPECT_EQ(toText(Handle {0x2A}), L"2A");
    EXPECT_EQ(toText(Handle {0xFFFFFFFFFFFFFFFF}), L"FFFFFFFFFFFFFFFF");
}

} // namespace

} // namespace corma::host
