#include "support/RecordingServices.h"
#include <corma/xx_Var.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using corma::testing::RecordingServices;
using Messages = std::vector<std::wstring>;

/// A record of a type that no constructor makes, as another module may hand it in.
xx_Var recordOf(int type, const std::vector<ads_u_val>& values)
{
    constexpr short capacity = 10;
    xx_Var record(L"NAME", 0.0);
    record.type = static_cast<unsigned short>(type);
    record.count = 0;
    EXPECT_EQ(record.capacity, capacity);
    for (const ads_u_val& value : values) {
        record.values[record.count++] = value;
    }
    return record;
}

xx_Var shortRecord(short value)
{
    ads_u_val slot {};
    slot.rint = value;
    return recordOf(RTSHORT, {slot});
}

xx_Var pointRecord(double x, double y, double z)
{
    return recordOf(RT3DPOINT, {{.rpoint = {x, y, z}}});
}

void fillWithTexts(xx_Var& record, int count)
{
    for (int i = 0; i < count; ++i) {
        record.addText(L"NAME", std::to_wstring(i).c_str());
    }
}

// --- construction --------------------------------------------------------------------------------

TEST(xx_Var, AnEmptyRecordHasNothing)
{
    const xx_Var record;
    EXPECT_EQ(record.rbnext, nullptr);
    EXPECT_EQ(record.restype, 0);
    EXPECT_EQ(record.resval.rstring, nullptr);
    EXPECT_EQ(record.type, 0);
    EXPECT_EQ(record.values, nullptr);
    EXPECT_EQ(record.count, 0);
    EXPECT_EQ(record.capacity, 0);
    EXPECT_EQ(record.cursor, 0);
    EXPECT_EQ(record.name(), nullptr);
}

TEST(xx_Var, ARealIsConstructedWithOneValue)
{
    const xx_Var record(L"Hoogte", 2.5);
    EXPECT_EQ(record.restype, RTSTR);
    EXPECT_STREQ(record.name(), L"Hoogte");
    EXPECT_EQ(record.type, RTREAL);
    ASSERT_EQ(record.count, 1);
    EXPECT_EQ(record.capacity, 10);
    EXPECT_EQ(record.values[0].rreal, 2.5);
}

TEST(xx_Var, ALongIsConstructedWithOneValue)
{
    const xx_Var record(L"Aantal", -70000);
    EXPECT_EQ(record.restype, RTSTR);
    EXPECT_STREQ(record.name(), L"Aantal");
    EXPECT_EQ(record.type, RTLONG);
    ASSERT_EQ(record.count, 1);
    EXPECT_EQ(record.capacity, 10);
    EXPECT_EQ(record.values[0].rlong, -70000);
}

TEST(xx_Var, ATextIsConstructedWithOneValueOfItsOwn)
{
    std::wstring name = L"Stijl";
    std::wstring value = L"Recht";
    const xx_Var record(name.c_str(), value.c_str());
    name = L"?????";
    value = L"?????";
    EXPECT_STREQ(record.name(), L"Stijl");
    EXPECT_EQ(record.type, RTSTR);
    ASSERT_EQ(record.count, 1);
    EXPECT_EQ(record.capacity, 10);
    EXPECT_STREQ(record.values[0].rstring, L"Recht");
}

TEST(xx_Var, ANullTextStaysANullValue)
{
    const xx_Var record(L"Stijl", nullptr);
    EXPECT_EQ(record.type, RTSTR);
    ASSERT_EQ(record.count, 1);
    EXPECT_EQ(record.values[0].rstring, nullptr);
}

TEST(xx_Var, ANullNameStaysNull)
{
    const xx_Var record(nullptr, 1);
    EXPECT_EQ(record.name(), nullptr);
    EXPECT_EQ(record.count, 1);
}

TEST(xx_Var, ARecordCanBeReadAsAResultNode)
{
    const xx_Var record(L"NAME", 1.0);
    const resbuf* const node = &record;
    EXPECT_EQ(static_cast<const void*>(node), static_cast<const void*>(&record));
    EXPECT_EQ(node->rbnext, nullptr);
    EXPECT_EQ(node->restype, RTSTR);
    EXPECT_STREQ(node->resval.rstring, L"NAME");
}

TEST(xx_Var, TheFieldsStandInTheirOrderBehindTheNode)
{
    const xx_Var record;
    const auto at = [&](const auto& field) {
        return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&record);
    };
    EXPECT_LE(static_cast<std::ptrdiff_t>(sizeof(resbuf)), at(record.type));
    EXPECT_LT(at(record.type), at(record.values));
    EXPECT_LT(at(record.values), at(record.count));
    EXPECT_EQ(at(record.count) + 2, at(record.capacity));
    EXPECT_EQ(at(record.capacity) + 2, at(record.cursor));
}

TEST(xx_Var, TheFieldsHaveTheirWidths)
{
    EXPECT_TRUE((std::is_same_v<decltype(xx_Var::restype), short>));
    EXPECT_TRUE((std::is_same_v<decltype(xx_Var::type), unsigned short>));
    EXPECT_TRUE((std::is_same_v<decltype(xx_Var::count), short>));
    EXPECT_TRUE((std::is_same_v<decltype(xx_Var::capacity), short>));
    EXPECT_TRUE((std::is_same_v<decltype(xx_Var::cursor), short>));
    EXPECT_GE(sizeof(ads_u_val), 3 * sizeof(double));
}

// --- the name ------------------------------------------------------------------------------------

TEST(xx_Var, ANullRecordHasNoName)
{
    EXPECT_EQ(xx_Var::name(nullptr), nullptr);
}

TEST(xx_Var, ARecordThatMayBeNullGivesItsName)
{
    const xx_Var record(L"NAME", 1);
    EXPECT_STREQ(xx_Var::name(&record), L"NAME");
}

TEST(xx_Var, ANodeThatHoldsNoTextHasNoName)
{
    xx_Var record;
    record.restype = RTREAL;
    record.resval.rreal = 1.0;
    EXPECT_EQ(record.name(), nullptr);
}

// --- appending -----------------------------------------------------------------------------------

using Append = std::function<void(xx_Var&, const wchar_t*)>;

void addReal(xx_Var& record, const wchar_t* name)
{
    record.add(name, 1.5);
}

void addLong(xx_Var& record, const wchar_t* name)
{
    record.addLong(name, 70000);
}

void addShort(xx_Var& record, const wchar_t* name)
{
    record.addShort(name, 70000);
}

void addText(xx_Var& record, const wchar_t* name)
{
    record.addText(name, L"tekst");
}

struct FirstRow
{
    const char* sentence;
    Append append;
    int type;
};

std::string sentenceOf(const auto& row)
{
    return row.param.sentence;
}

class FirstAppend : public testing::TestWithParam<FirstRow>
{
};

TEST_P(FirstAppend, GivesAnEmptyRecordItsNameAndType)
{
    RecordingServices services;
    xx_Var record;
    GetParam().append(record, L"Naam");
    EXPECT_EQ(record.restype, RTSTR);
    EXPECT_STREQ(record.name(), L"Naam");
    EXPECT_EQ(record.type, GetParam().type);
    EXPECT_EQ(record.count, 1);
    EXPECT_EQ(record.capacity, 10);
    EXPECT_EQ(services.printed, Messages {});
}

TEST_P(FirstAppend, AgreesWithASecondOneOfTheSameName)
{
    RecordingServices services;
    xx_Var record;
    GetParam().append(record, L"Naam");
    GetParam().append(record, L"Naam");
    EXPECT_EQ(record.count, 2);
    EXPECT_EQ(services.printed, Messages {});
}

TEST_P(FirstAppend, AgreesWithASecondOneWhenBothNamesAreNull)
{
    RecordingServices services;
    xx_Var record;
    GetParam().append(record, nullptr);
    GetParam().append(record, nullptr);
    EXPECT_EQ(record.name(), nullptr);
    EXPECT_EQ(record.count, 2);
    EXPECT_EQ(services.printed, Messages {});
}

INSTANTIATE_TEST_SUITE_P(xx_Var, FirstAppend,
                         testing::Values(FirstRow {"OfAReal", addReal, RTREAL},
                                         FirstRow {"OfALong", addLong, RTLONG},
                                         FirstRow {"OfAShort", addShort, RTLONG},
                                         FirstRow {"OfAText", addText, RTSTR}),
                         [](const auto& row) { return sentenceOf(row); });

TEST(xx_Var, EachAppendStoresItsValue)
{
    xx_Var real(L"NAME", 1.0);
    real.add(L"NAME", 2.5);
    EXPECT_EQ(real.values[1].rreal, 2.5);

    xx_Var number(L"NAME", 1);
    number.addLong(L"NAME", -70000);
    EXPECT_EQ(number.values[1].rlong, -70000);

    xx_Var text(L"NAME", L"een");
    std::wstring value = L"twee";
    text.addText(L"NAME", value.c_str());
    value = L"????";
    EXPECT_STREQ(text.values[1].rstring, L"twee");
    text.addText(L"NAME", nullptr);
    ASSERT_EQ(text.count, 3);
    EXPECT_EQ(text.values[2].rstring, nullptr);
}

TEST(xx_Var, AnEmptyRecordWithANameTakesOverTheNameOfItsFirstValue)
{
    RecordingServices services;
    xx_Var record(L"Oud", 1);
    record.type = 0;
    record.addText(L"Nieuw", L"tekst");
    EXPECT_STREQ(record.name(), L"Nieuw");
    EXPECT_STREQ(record.currentText(), L"tekst");
    EXPECT_EQ(services.printed, Messages {});
}

TEST(xx_Var, TheFirstValuePutsTheCursorBack)
{
    xx_Var record;
    record.cursor = 3;
    record.add(L"NAME", 1.0);
    EXPECT_EQ(record.cursor, 0);
}

TEST(xx_Var, ALaterValueLeavesTheCursor)
{
    xx_Var record(L"NAME", L"een");
    record.cursor = 1;
    record.addText(L"NAME", L"twee");
    EXPECT_EQ(record.cursor, 1);
    EXPECT_STREQ(record.currentText(), L"twee");
}

TEST(xx_Var, AShortOnALongRecordKeepsItsFullValue)
{
    xx_Var record(L"NAME", 1);
    record.addShort(L"NAME", 70000);
    EXPECT_EQ(record.values[1].rlong, 70000);
}

TEST(xx_Var, AShortOnAShortRecordKeepsItsLow16Bits)
{
    xx_Var record = shortRecord(7);
    record.addShort(L"NAME", 70000);
    record.addShort(L"NAME", 32767);
    record.addShort(L"NAME", 32768);
    ASSERT_EQ(record.count, 4);
    EXPECT_EQ(record.values[1].rint, 4464);
    EXPECT_EQ(record.values[2].rint, 32767);
    EXPECT_EQ(record.values[3].rint, -32768);
}

TEST(xx_Var, AShortOnAnEmptyRecordMakesALongOne)
{
    xx_Var record;
    record.addShort(L"NAME", 70000);
    EXPECT_EQ(record.type, RTLONG);
    EXPECT_EQ(record.values[0].rlong, 70000);
}

TEST(xx_Var, ARecordCanAppendItsOwnText)
{
    xx_Var record(L"NAME", L"tekst");
    for (int i = 0; i < 10; ++i) {
        record.addText(record.name(), record.currentText());
    }
    ASSERT_EQ(record.count, 11);
    EXPECT_STREQ(record.values[10].rstring, L"tekst");
}

// --- room ----------------------------------------------------------------------------------------

TEST(xx_Var, TenValuesFitTheFirstVector)
{
    xx_Var record(L"NAME", L"0");
    const ads_u_val* const first = record.values;
    fillWithTexts(record, 9);
    EXPECT_EQ(record.count, 10);
    EXPECT_EQ(record.capacity, 10);
    EXPECT_EQ(record.values, first);
}

TEST(xx_Var, TheEleventhValueMakesTenSlotsMoreAndKeepsTheEarlierValues)
{
    xx_Var record;
    fillWithTexts(record, 11);
    ASSERT_EQ(record.count, 11);
    EXPECT_EQ(record.capacity, 20);
    for (short i = 0; i < 11; ++i) {
        EXPECT_EQ(record.values[i].rstring, std::to_wstring(i));
    }
}

TEST(xx_Var, NumbersSurviveTheNewVectorToo)
{
    xx_Var record;
    for (int i = 0; i < 21; ++i) {
        record.add(L"NAME", i / 2.0);
    }
    ASSERT_EQ(record.count, 21);
    EXPECT_EQ(record.capacity, 30);
    for (short i = 0; i < 21; ++i) {
        EXPECT_EQ(record.values[i].rreal, i / 2.0);
    }
}

TEST(xx_Var, UnusedSlotsAreZero)
{
    xx_Var record;
    fillWithTexts(record, 11);
    for (short i = record.count; i < record.capacity; ++i) {
        for (const double coordinate : record.values[i].rpoint) {
            EXPECT_EQ(coordinate, 0.0);
        }
    }
}

void expectZero(const ads_u_val& slot)
{
    for (const double coordinate : slot.rpoint) {
        EXPECT_EQ(coordinate, 0.0);
    }
}

// The block behind the slots grows otherwise than the capacity does.
TEST(xx_Var, GrowsByTenUpToTheLastValueThatFits)
{
    xx_Var record;
    for (int i = 0; i < xx_Var::kMostValues; ++i) {
        record.addLong(L"NAME", i);
        ASSERT_EQ(record.count, i + 1);
        ASSERT_EQ(record.capacity, i / 10 * 10 + 10);
        if (i % 10 == 0) { // ten slots are new
            for (int slot = record.count; slot < record.capacity; ++slot) {
                expectZero(record.values[slot]);
            }
        }
    }
    ASSERT_FALSE(HasFailure());
    record.addLong(L"NAME", -1);
    EXPECT_EQ(record.count, xx_Var::kMostValues);
    for (int i = 0; i < xx_Var::kMostValues; ++i) {
        ASSERT_EQ(record.values[i].rlong, i);
    }
}

TEST(xx_Var, KeepsEachOfManyTexts)
{
    xx_Var record;
    fillWithTexts(record, xx_Var::kMostValues + 5);
    EXPECT_EQ(record.count, xx_Var::kMostValues);
    EXPECT_EQ(record.capacity, xx_Var::kMostValues);
    const xx_Var copy(record);
    for (int i = 0; i < xx_Var::kMostValues; ++i) {
        ASSERT_EQ(copy.values[i].rstring, std::to_wstring(i));
    }
}

TEST(xx_Var, AVectorOfAnotherModuleGrowsToo)
{
    // It has no more slots than its capacity tells.
    for (const int slots : {10, 20, 30, 40, 130, 160, 170, 320}) {
        xx_Var record(L"NAME", 0);
        std::free(record.values);
        record.values = static_cast<ads_u_val*>(
            std::calloc(static_cast<std::size_t>(slots), sizeof(ads_u_val)));
        record.count = static_cast<short>(slots);
        record.capacity = record.count;
        record.values[slots - 1].rlong = 7;
        record.addLong(L"NAME", 8);
        EXPECT_EQ(record.capacity, slots + 10);
        EXPECT_EQ(record.values[slots - 1].rlong, 7);
        EXPECT_EQ(record.values[slots].rlong, 8);
    }
}

TEST(xx_Var, AClashGrowsAFullRecordAllTheSame)
{
    RecordingServices services;
    xx_Var record;
    fillWithTexts(record, 10);
    record.add(L"NAME", 1.0);
    EXPECT_EQ(record.count, 10);
    EXPECT_EQ(record.capacity, 20);
    EXPECT_STREQ(record.values[9].rstring, L"9");
}

TEST(xx_Var, MoreValuesThan16BitsCountAreLeftOut)
{
    constexpr short almostFull = 32759;
    xx_Var record(L"NAME", 1);
    std::free(record.values);
    record.values = static_cast<ads_u_val*>(std::calloc(almostFull + 1, sizeof(ads_u_val)));
    record.count = almostFull;
    record.capacity = almostFull + 1;
    record.addLong(L"NAME", 5);
    EXPECT_EQ(record.count, 32760);
    record.addLong(L"NAME", 6);
    EXPECT_EQ(record.count, 32760);
    EXPECT_EQ(record.capacity, 32760);
    EXPECT_EQ(record.values[32759].rlong, 5);
}

// --- reports -------------------------------------------------------------------------------------

struct ReportRow
{
    const char* sentence;
    std::function<xx_Var()> make;
    Append append;
    const wchar_t* name;
    short count; // after the append
    const wchar_t* report;
};

xx_Var realRecord()
{
    return {L"NAME", 1.0};
}

xx_Var longRecord()
{
    return {L"NAME", 1};
}

xx_Var textRecord()
{
    return {L"NAME", L"een"};
}

xx_Var shortOne()
{
    return shortRecord(1);
}

xx_Var pointOne()
{
    return pointRecord(1.0, 2.0, 3.0);
}

xx_Var namelessRecord()
{
    return {nullptr, 1};
}

class Report : public testing::TestWithParam<ReportRow>
{
};

TEST_P(Report, IsShownWordForWord)
{
    RecordingServices services;
    xx_Var record = GetParam().make();
    GetParam().append(record, GetParam().name);
    EXPECT_EQ(record.count, GetParam().count);
    EXPECT_EQ(services.printed, (Messages {L"\n", GetParam().report}));
    EXPECT_EQ(services.alerts, Messages {});
}

// clang-format off
const ReportRow reportRows[] = {
    {"ARealOfAnotherName", realRecord, addReal, L"ANDERS", 2,
        L"Error in file xx_var.cpp on line 204\n(NAME, ec = 5001)"},
    {"ARealOfTheNameInOtherCase", realRecord, addReal, L"name", 2,
        L"Error in file xx_var.cpp on line 204\n(NAME, ec = 5001)"},
    {"ARealWithoutAName", realRecord, addReal, nullptr, 2,
        L"Error in file xx_var.cpp on line 204\n(NAME, ec = 5001)"},
    {"ARealOnText", textRecord, addReal, L"NAME", 1,
        L"Error in file xx_var.cpp on line 210\n(5005, ec = 0)"},
    {"ARealOnLong", longRecord, addReal, L"NAME", 1,
        L"Error in file xx_var.cpp on line 210\n(5010, ec = 0)"},
    {"ARealOnAPoint", pointOne, addReal, L"NAME", 1,
        L"Error in file xx_var.cpp on line 210\n(5009, ec = 0)"},
    {"ALongOfAnotherName", longRecord, addLong, L"name", 2,
        L"Error in file xx_var.cpp on line 223\n(NAME, ec = 5010)"},
    {"ALongOnReal", realRecord, addLong, L"NAME", 1,
        L"Error in file xx_var.cpp on line 228\n(5001, ec = 0)"},
    {"ALongOnShort", shortOne, addLong, L"NAME", 1,
        L"Error in file xx_var.cpp on line 228\n(5003, ec = 0)"},
    {"AShortOfAnotherNameOnShort", shortOne, addShort, L"name", 2,
        L"Error in file xx_var.cpp on line 240\n(NAME, ec = 5003)"},
    {"AShortOfAnotherNameOnLong", longRecord, addShort, L"name", 2,
        L"Error in file xx_var.cpp on line 255\n(NAME, ec = 5010)"},
    {"AShortOnReal", realRecord, addShort, L"NAME", 1,
        L"Error in file xx_var.cpp on line 260\n(5001, ec = 0)"},
    {"AShortOnText", textRecord, addShort, L"NAME", 1,
        L"Error in file xx_var.cpp on line 260\n(5005, ec = 0)"},
    {"ATextOfAnotherName", textRecord, addText, L"name", 2,
        L"Error in file xx_var.cpp on line 272\n(NAME, ec = 5005)"},
    {"ATextOnLong", longRecord, addText, L"NAME", 1,
        L"Error in file xx_var.cpp on line 277\n(5010, ec = 0)"},
    {"AClashOfNameAndTypeTellsTheType", longRecord, addText, L"name", 1,
        L"Error in file xx_var.cpp on line 277\n(5010, ec = 0)"},
    {"ANameOnANamelessRecord", namelessRecord, addLong, L"NAME", 2,
        L"Error in file xx_var.cpp on line 223\n(, ec = 5010)"},
    {"AnEmptyNameOnANamelessRecord", namelessRecord, addLong, L"", 2,
        L"Error in file xx_var.cpp on line 223\n(, ec = 5010)"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(xx_Var, Report, testing::ValuesIn(reportRows),
                         [](const auto& row) { return sentenceOf(row); });

TEST(xx_Var, ANameThatDiffersStaysAsItWas)
{
    RecordingServices services;
    xx_Var record(L"NAME", 1.0);
    record.add(L"name", 2.5);
    EXPECT_STREQ(record.name(), L"NAME");
    EXPECT_EQ(record.values[1].rreal, 2.5);
}

TEST(xx_Var, AClashKeepsTheValueThatIsThere)
{
    RecordingServices services;
    xx_Var record(L"NAME", L"een");
    record.addLong(L"NAME", 2);
    EXPECT_EQ(record.type, RTSTR);
    EXPECT_STREQ(record.currentText(), L"een");
}

// --- assignment ----------------------------------------------------------------------------------

TEST(xx_Var, AssignmentCopiesTextsDeeply)
{
    xx_Var source(L"NAME", L"een");
    source.addText(L"NAME", nullptr);
    source.addText(L"NAME", L"drie");
    source.cursor = 2;
    xx_Var target(L"Oud", L"oud");
    target = source;
    EXPECT_STREQ(target.name(), L"NAME");
    EXPECT_NE(target.name(), source.name());
    EXPECT_EQ(target.type, RTSTR);
    EXPECT_EQ(target.cursor, 2);
    ASSERT_EQ(target.count, 3);
    EXPECT_EQ(target.capacity, 10);
    EXPECT_STREQ(target.values[0].rstring, L"een");
    EXPECT_NE(target.values[0].rstring, source.values[0].rstring);
    EXPECT_EQ(target.values[1].rstring, nullptr);
    EXPECT_STREQ(target.currentText(), L"drie");
}

TEST(xx_Var, ACopyOutlivesItsSource)
{
    xx_Var target;
    {
        const xx_Var source(L"NAME", L"tekst");
        target = source;
    }
    EXPECT_STREQ(target.name(), L"NAME");
    EXPECT_STREQ(target.currentText(), L"tekst");
}

TEST(xx_Var, AssignmentCopiesEachKindOfNumber)
{
    xx_Var target(L"Oud", L"oud");
    target = xx_Var(L"NAME", 2.5);
    EXPECT_EQ(target.type, RTREAL);
    EXPECT_EQ(target.values[0].rreal, 2.5);

    target = xx_Var(L"NAME", 70000);
    EXPECT_EQ(target.type, RTLONG);
    EXPECT_EQ(target.values[0].rlong, 70000);

    target = shortRecord(-7);
    EXPECT_EQ(target.type, RTSHORT);
    EXPECT_EQ(target.values[0].rint, -7);

    target = pointRecord(1.0, -2.0, 3.5);
    EXPECT_EQ(target.type, RT3DPOINT);
    ASSERT_EQ(target.count, 1);
    EXPECT_EQ(target.values[0].rpoint[0], 1.0);
    EXPECT_EQ(target.values[0].rpoint[1], -2.0);
    EXPECT_EQ(target.values[0].rpoint[2], 3.5);
}

TEST(xx_Var, AssignmentLeavesValuesOfAnotherTypeBehind)
{
    const xx_Var source = [] {
        xx_Var record(L"NAME", 1.0);
        record.type = static_cast<unsigned short>(RTPOINT);
        return record;
    }();
    xx_Var target(L"Oud", 5);
    target = source;
    EXPECT_STREQ(target.name(), L"NAME");
    EXPECT_EQ(target.type, RTPOINT);
    EXPECT_EQ(target.count, 0);
    EXPECT_EQ(target.capacity, 0);
    EXPECT_EQ(target.values, nullptr);
}

TEST(xx_Var, AssignmentGrowsByTensAsAppendingDoes)
{
    xx_Var source;
    fillWithTexts(source, 11);
    source.capacity = 20;
    xx_Var target;
    target = source;
    EXPECT_EQ(target.count, 11);
    EXPECT_EQ(target.capacity, 20);
    EXPECT_STREQ(target.values[10].rstring, L"10");
}

TEST(xx_Var, AssigningAnEmptyRecordEmptiesTheTargetWhichMayBeFilledAgain)
{
    xx_Var record(L"NAME", L"tekst");
    record = xx_Var();
    EXPECT_EQ(record.restype, 0);
    EXPECT_EQ(record.name(), nullptr);
    EXPECT_EQ(record.type, 0);
    EXPECT_EQ(record.values, nullptr);
    EXPECT_EQ(record.count, 0);
    EXPECT_EQ(record.capacity, 0);
    record = xx_Var(L"Weer", 2);
    EXPECT_STREQ(record.name(), L"Weer");
    EXPECT_EQ(record.values[0].rlong, 2);
}

TEST(xx_Var, AssigningARecordToItselfChangesNothing)
{
    xx_Var record(L"NAME", L"tekst");
    record.cursor = 4;
    const wchar_t* const name = record.name();
    const ads_u_val* const values = record.values;
    const xx_Var& same = record;
    record = same;
    EXPECT_EQ(record.name(), name);
    EXPECT_EQ(record.values, values);
    EXPECT_EQ(record.count, 1);
    EXPECT_EQ(record.cursor, 4);
    EXPECT_STREQ(record.values[0].rstring, L"tekst");
}

TEST(xx_Var, AssignmentCopiesTheWholeNode)
{
    resbuf next {};
    xx_Var source;
    source.restype = RTREAL;
    source.resval.rreal = 2.5;
    source.rbnext = &next;
    xx_Var target(L"Oud", 1);
    target = source;
    EXPECT_EQ(target.rbnext, &next);
    EXPECT_EQ(target.restype, RTREAL);
    EXPECT_EQ(target.resval.rreal, 2.5);
    EXPECT_EQ(target.name(), nullptr);
}

TEST(xx_Var, ARecordThatIsGivenUpHandsOverAllThatItHas)
{
    xx_Var from(L"Deur", L"hout");
    from.addText(L"Deur", L"staal");
    from.cursor = 1;
    const wchar_t* const name = from.name();
    const ads_u_val* const values = from.values;

    xx_Var to(std::move(from));
    EXPECT_EQ(to.name(), name);
    EXPECT_EQ(to.values, values);
    EXPECT_STREQ(to.currentText(), L"staal");
    EXPECT_EQ(from.restype, 0);
    EXPECT_EQ(from.name(), nullptr);
    EXPECT_EQ(from.values, nullptr);
    EXPECT_EQ(from.type + from.count + from.capacity + from.cursor, 0);

    from.add(L"Maat", 2.5); // and is an empty record like any other
    EXPECT_EQ(from.count, 1);
    to = std::move(from);
    EXPECT_STREQ(to.name(), L"Maat");
    EXPECT_EQ(to.values[0].rreal, 2.5);
    EXPECT_EQ(to.cursor, 0);

    xx_Var& same = to;
    to = std::move(same);
    EXPECT_STREQ(to.name(), L"Maat");
    EXPECT_EQ(to.count, 1);
}

TEST(xx_Var, ACopiedRecordHasItsOwnTexts)
{
    const xx_Var source(L"NAME", L"tekst");
    xx_Var copy(source);
    copy.values[0].rstring[0] = L'T';
    EXPECT_STREQ(copy.currentText(), L"Tekst");
    EXPECT_STREQ(source.currentText(), L"tekst");
    EXPECT_NE(copy.name(), source.name());
}

// --- the cursor ----------------------------------------------------------------------------------

struct CursorRow
{
    const char* sentence;
    short cursor;
    bool valid;
    const wchar_t* text; // null: none
};

class Cursor : public testing::TestWithParam<CursorRow>
{
};

TEST_P(Cursor, TellsWhetherThereIsAValue)
{
    xx_Var record;
    fillWithTexts(record, 3);
    record.cursor = GetParam().cursor;
    EXPECT_EQ(record.cursorValid(), GetParam().valid);
    EXPECT_STREQ(record.currentText(), GetParam().text);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(xx_Var, Cursor, testing::Values(
    CursorRow {"BeforeTheFirstValue", -1, false, nullptr},
    CursorRow {"AtTheFirstValue",      0, true,  L"0"},
    CursorRow {"AtTheLastValue",       2, true,  L"2"},
    CursorRow {"BehindTheLastValue",   3, false, nullptr}),
    [](const auto& row) { return sentenceOf(row); });

// clang-format on

TEST(xx_Var, ANumberIsNoText)
{
    EXPECT_EQ(xx_Var(L"NAME", 2.5).currentText(), nullptr);
    EXPECT_EQ(xx_Var(L"NAME", 2).currentText(), nullptr);
    EXPECT_TRUE(xx_Var(L"NAME", 2).cursorValid());
}

TEST(xx_Var, ATextRecordWithoutValuesHasNoText)
{
    xx_Var record;
    record.type = static_cast<unsigned short>(RTSTR);
    EXPECT_FALSE(record.cursorValid());
    EXPECT_EQ(record.currentText(), nullptr);
}

TEST(xx_Var, ANullTextIsReadAsNull)
{
    const xx_Var record(L"NAME", nullptr);
    EXPECT_TRUE(record.cursorValid());
    EXPECT_EQ(record.currentText(), nullptr);
}

} // namespace
