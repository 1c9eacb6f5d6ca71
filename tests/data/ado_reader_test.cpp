#include "data/DataTest.h"
#include "data/FakeProviders.h"
#include "data/ado_reader.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

using ado::Type;

Variant ofInteger(VariantTag tag, std::int64_t value)
{
    return {.tag = tag, .integer = value};
}

Variant ofReal(VariantTag tag, double value)
{
    return {.tag = tag, .real = value};
}

Variant ofText(const std::wstring& value)
{
    return {.tag = VT_BSTR, .text = value};
}

const Variant kNull {.tag = VT_NULL};

class AdoReader : public DataTest
{
protected:
    /// Runs a statement on a database of a provider; gives the columns.
    std::string run(const std::wstring& sql, int maximumRows = 0, bool isDebug = false)
    {
        status = xx_ado_sql(L"huis", L"P", {sql, maximumRows, isDebug}, result, {});
        return columnsOf(result);
    }

    /// Reads the one column of a type.
    std::string read(int type, const std::vector<Variant>& values)
    {
        FakeRows rows {.fields = {{L"A", type}}};
        for (const Variant& value : values) {
            rows.rows.push_back({value});
        }
        providers.answers[L"SELECT"] = rows;
        return run(L"SELECT");
    }

    ~AdoReader() override { xx_ado_close_all(); } // while there are providers

    FakeProviders providers;
};

struct TypeRow
{
    const char* sentence;
    int type;
    std::vector<Variant> values;
    const char* column;
};

class AdoType : public AdoReader, public ::testing::WithParamInterface<TypeRow>
{
};

TEST_P(AdoType, DecidesHowValuesCome)
{
    EXPECT_EQ(read(GetParam().type, GetParam().values), GetParam().column);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

// clang-format off
const TypeRow typeRows[] = {
    {"OfASmallIntegerIsLong", Type::smallInteger,
        {ofInteger(VT_I2, -7), ofInteger(VT_I2, 32767), kNull}, "A long: -7|32767|0"},
    {"OfAnIntegerIsLong", Type::integer,
        {ofInteger(VT_I4, -70000), ofInteger(VT_I4, 2147483647), kNull, Variant {}},
        "A long: -70000|2147483647|0|0"},
    {"OfAnIntegerThatComesAsADoubleIsRounded", Type::integer,
        {ofReal(VT_R8, 2.4), ofReal(VT_R8, 2.5), ofReal(VT_R8, 2.6), ofReal(VT_R8, 0.0),
         ofReal(VT_R8, -2.4), ofReal(VT_R8, -2.5), ofReal(VT_R8, -2.6), ofReal(VT_R4, 3.5)},
        "A long: 2|3|3|0|-2|-2|-3|4"},
    {"OfAnIntegerThatComesAsSomethingElseIsNought", Type::integer,
        {ofText(L"12"), ofInteger(VT_I8, 12), ofInteger(VT_BOOL, -1), ofInteger(VT_UI1, 3)},
        "A long: 0|0|0|0"},
    {"OfADoubleIsReal", Type::real,
        {ofReal(VT_R8, 2.5), ofReal(VT_R4, -0.5), ofInteger(VT_I4, 3), ofInteger(VT_I2, 4), kNull},
        "A real: 2.5|-0.5|3|4|0"},
    {"OfADoubleThatComesAsSomethingElseIsNought", Type::real,
        {ofText(L"2.5"), ofInteger(VT_I8, 12)}, "A real: 0|0"},
    {"OfABooleanIsLong", Type::boolean,
        {ofInteger(VT_BOOL, -1), ofInteger(VT_BOOL, 1), ofInteger(VT_BOOL, 0), kNull},
        "A long: 1|1|0|0"},
    {"OfABigIntegerIsCutTo32Bits", Type::bigInteger,
        {ofInteger(VT_I8, 12), ofInteger(VT_I8, 4294967297), ofInteger(VT_I8, 2147483648), kNull},
        "A long: 12|1|-2147483648|0"},
    {"OfASingleIsATextInExponentForm", Type::single,
        {ofReal(VT_R4, 2.5), ofReal(VT_R4, -0.125), kNull},
        "A text: 2.500000e+00|-1.250000e-01|NULL"},
    {"OfAVaryingTextIsText", Type::varyingWide,
        {ofText(L"één 😀"), ofText(L""), ofText(std::wstring(45, L'a')), kNull},
        "A text: één 😀||aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa|NULL"},
    {"OfANarrowTextIsText", Type::narrow, {ofText(L"x  ")}, "A text: x  "},
    {"OfATinyIntegerIsText", Type::tinyInteger, {ofInteger(VT_UI1, 31)}, "A text: 0x1F"},
    {"OfADateIsText", Type::date, {ofReal(VT_DATE, dateValue(2024, 2, 29))}, "A text: 29/02/24"},
    {"OfAnUnknownNumberIsText", 9999, {ofInteger(VT_I4, 5), ofInteger(VT_BOOL, -1)},
        "A text: 5|TRUE"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(ado, AdoType, ::testing::ValuesIn(typeRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

// --- rows ----------------------------------------------------------------------------------------

class AdoRows : public AdoReader
{
protected:
    AdoRows()
    {
        providers.answers[L"SELECT"]
            = {.fields = {{L"Naam", Type::varyingWide}, {L"N", Type::integer}},
               .rows = {{ofText(L"een"), ofInteger(VT_I4, 1)},
                        {ofText(L"twee"), ofInteger(VT_I4, 2)},
                        {ofText(L"drie"), ofInteger(VT_I4, 3)}}};
        providers.answers[L"NONE"] = {.fields = {{L"Naam", Type::varyingWide}}};
        providers.answers[L"UPDATE"] = {};
    }
};

TEST_F(AdoRows, GiveAColumnWithAValueForEachRow)
{
    EXPECT_EQ(run(L"SELECT"), "Naam text: een|twee|drie\nN long: 1|2|3");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(providers.log(), "open P: huis\nrun SELECT\nend rows");
}

TEST_F(AdoRows, StopAtTheMaximum)
{
    EXPECT_EQ(run(L"SELECT", 1), "Naam text: een\nN long: 1");
    EXPECT_EQ(run(L"SELECT", 3), "Naam text: een|twee|drie\nN long: 1|2|3");
    EXPECT_EQ(run(L"SELECT", 4), "Naam text: een|twee|drie\nN long: 1|2|3");
    EXPECT_EQ(run(L"SELECT", -1), "Naam text: een|twee|drie\nN long: 1|2|3");
}

TEST_F(AdoRows, LeaveTheResultEmptyWithoutAny)
{
    run(L"SELECT");
    EXPECT_EQ(run(L"NONE"), "");
    EXPECT_EQ(status, RTNORM);
    run(L"SELECT");
    providers.log();
    EXPECT_EQ(run(L"UPDATE"), "");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(providers.log(), "run UPDATE"); // it opens no record set
}

TEST_F(AdoRows, AreAsManyAsAColumnHolds)
{
    std::vector<Variant> values;
    for (int i = 1; i <= 32'760; ++i) {
        values.push_back(ofInteger(VT_I4, i));
    }
    read(Type::integer, values);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(result[0]->count, 32'760);
    values.push_back(ofInteger(VT_I4, -1));
    read(Type::integer, values);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(),
              "Only the first 32760 rows are kept; ask for the others by another statement");
    ASSERT_EQ(result[0]->count, 32'760);
    EXPECT_EQ(result[0]->values[0].rlong, 1);
    EXPECT_EQ(result[0]->values[32'759].rlong, 32'760);
}

TEST_F(AdoRows, OfDoubledNamesKeepTheLast)
{
    providers.answers[L"SELECT"]
        = {.fields = {{L"N", Type::integer}, {L"B", Type::integer}, {L"n", Type::varyingWide}},
           .rows = {{ofInteger(VT_I4, 1), ofInteger(VT_I4, 2), ofText(L"x")}}};
    EXPECT_EQ(run(L"SELECT"), "B long: 2\nn text: x");
}

TEST_F(AdoRows, HaveNamesOfLowBytesCutTo132Characters)
{
    const std::wstring name(133, L'n');
    providers.answers[L"SELECT"] = {.fields = {{L"H\x00F6he", Type::integer},
                                               {L"\x0414\x20AC"
                                                L"A",
                                                Type::integer},
                                               {name, Type::integer}},
                                    .rows = {{kNull, kNull, kNull}}};
    run(L"SELECT");
    ASSERT_EQ(result.length(), 3);
    EXPECT_STREQ(result[0]->name(), L"H\x00F6he");
    EXPECT_STREQ(result[1]->name(),
                 L"\x0014\x00AC"
                 L"A");
    EXPECT_EQ(result[2]->name(), name.substr(0, 132));
}

TEST_F(AdoRows, CutLongFieldsOnly)
{
    const std::wstring memo(300, L'm');
    providers.answers[L"SELECT"] = {
        .fields = {{L"Memo", Type::longWide, ado::kIsLong | 4}, {L"Tekst", Type::varyingWide, 4}},
        .rows = {{ofText(memo), ofText(memo)}}};
    run(L"SELECT");
    EXPECT_STREQ(result[0]->currentText(), std::wstring(100, L'm').c_str());
    EXPECT_STREQ(result[1]->currentText(), memo.c_str());
    EXPECT_EQ(providers.log(), "open P: huis\nrun SELECT\nchunk Memo\nend rows");
}

// --- failures ------------------------------------------------------------------------------------

std::string dumpOf(const std::string& description)
{
    return "\nxx_dump_com_error!\n\n\tCode = 80004005\n\n\tCode meaning = Unspecified error\n\n"
           "\tSource = Fake\n\n\tDescription = "
        + description + "\n";
}

TEST_F(AdoRows, OfAStatementThatFailsAreNone)
{
    run(L"SELECT");
    EXPECT_EQ(run(L"SELECT FROM"), "");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(), dumpOf("no such statement"));
    providers.log();
    run(L"SELECT");
    EXPECT_EQ(providers.log(), "run SELECT\nend rows"); // the connection is a good one
}

TEST_F(AdoRows, OfADatabaseThatDoesNotOpenAreNone)
{
    result.append(new xx_Var(L"Oud", L"inhoud"));
    providers.refuses = true;
    EXPECT_EQ(run(L"SELECT", 0, true), "");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(),
              "\n======================== xx_ado_sql 1 ===============================\n"
              "SELECT\n"
                  + dumpOf("refused"));
    EXPECT_EQ(providers.log(), "open P: huis");
}

TEST_F(AdoRows, AreLostWhenOneOfThemFails)
{
    providers.answers[L"SELECT"].failingRow = 2;
    EXPECT_EQ(run(L"SELECT"), "");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(), dumpOf("no such value"));
    providers.answers[L"SELECT"].failingRow = -1;
    EXPECT_EQ(run(L"SELECT", 1), "Naam text: een\nN long: 1");
}

TEST_F(AdoRows, ComeFromANewConnectionWhenTheFormerIsLost)
{
    run(L"SELECT");
    providers.isLost = true;
    EXPECT_EQ(run(L"SELECT FROM"), "");
    EXPECT_EQ(status, RTERROR);
    providers.isLost = false;
    providers.log();
    EXPECT_EQ(run(L"SELECT", 1), "Naam text: een\nN long: 1");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(providers.log(), "open P: huis\nrun SELECT\nend rows");
}

// --- messages ------------------------------------------------------------------------------------

TEST_F(AdoRows, AreShownOnDemand)
{
    providers.answers[L"SELECT 1"]
        = {.fields = {{L"Getal", Type::integer},
                      {L"Maat", Type::real},
                      {L"Aan", Type::boolean},
                      {L"Groot", Type::bigInteger},
                      {L"Naam", Type::varyingWide}},
           .rows = {{ofInteger(VT_I4, -3), ofReal(VT_R8, 2.5), ofInteger(VT_BOOL, -1),
                     ofInteger(VT_I8, 4294967299), ofText(L"één")},
                    {kNull, kNull, kNull, kNull, kNull}}};
    run(L"SELECT 1", 0, true);
    EXPECT_EQ(shown(), R"(
======================== xx_ado_sql 1 ===============================
SELECT 1

----------------------------------------------------------

Read record 0

Field   0 : 
Naam                Getal Var (Int) -3

Field   1 : 
Naam                 Maat Var (Double) 2.500000

Field   2 : 
Naam                  Aan Var (Bool) 1

Field   3 : 
Naam                Groot Var (Long) 3

Field   4 : 
Naam                 Naam Var (String) één

----------------------------------------------------------

Read record 1

Field   0 : 
Naam                Getal Var (Int) 0

Field   1 : 
Naam                 Maat Var (Double) 0.000000

Field   2 : 
Naam                  Aan Var (Bool) 0

Field   3 : 
Naam                Groot Var (Long) 0

Field   4 : 
Naam                 Naam Var (String) NULL

ec = 5100)");
}

TEST_F(AdoRows, AreShownUpToAFailure)
{
    run(L"SELECT FROM", 0, true);
    EXPECT_EQ(shown(),
              "\n======================== xx_ado_sql 1 ===============================\n"
              "SELECT FROM\n"
                  + dumpOf("no such statement") + "\n\nec = -5001");
}

} // namespace

} // namespace corma::testing
