// cfgctl get: all kinds, its options, and where a value came from.

#include "CfgctlTest.h"
#include "support/row_names.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

constexpr const char* kTool = "Titel=Plan\n"
                              "Leeg=\n"
                              "[Wand]\n"
                              "Hoogte=2600\n"
                              "Factor=0.1\n"
                              "Groot=1250000\n"
                              "Maten=1.5,2,,-3\n"
                              "Namen=a;b;;c\n"
                              "Aan=-1\n"
                              "Woord=ja\n"
                              "Eenheid=m\xC2\xB2\n";

class CfgctlGet : public CfgctlTest
{
protected:
    CfgctlGet() { write("tool.ini", kTool); }
};

TEST_F(CfgctlGet, PrintsAValueOnALine)
{
    const ProgramResult result = run({"get", "tool.ini", "[Wand]Hoogte"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "2600\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlGet, PrintsAnEmptyValueAsAnEmptyLine)
{
    EXPECT_EQ(run({"get", "tool.ini", "Leeg"}).out, "\n");
    EXPECT_EQ(json({"get", "tool.ini", "Leeg"}), R"({"status":5100,"value":""})");
}

TEST_F(CfgctlGet, SpeaksUtf8)
{
    write("maten.ini", "Kopie\xC3\xABn=2\n");
    EXPECT_EQ(get({"tool.ini", "[Wand]Eenheid"}), "m\xC2\xB2");
    EXPECT_EQ(get({"maten.ini", "KOPIE\xC3\x8BN"}), "2");
    EXPECT_EQ(run({"get", "tool.ini", "[Wand]Eenheid", "--json"}).out,
              "{\"status\":5100,\"value\":\"m\xC2\xB2\"}\n");
}

TEST_F(CfgctlGet, TakesTheFirstIdentThatIsThere)
{
    EXPECT_EQ(get({"tool.ini", "[Wand]Breedte,[Wand]Hoogte,Titel"}), "2600");
}

TEST_F(CfgctlGet, PrintsNothingWhenNothingIsFound)
{
    const ProgramResult result = run({"get", "tool.ini", "[Wand]Breedte"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlGet, GivesNullInJsonWhenNothingIsFound)
{
    const ProgramResult result = run({"get", "tool.ini", "[Wand]Breedte", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001,\"value\":null}\n");
    EXPECT_EQ(json({"get", "tool.ini", "Nergens", "--as", "ints:3"}),
              R"({"status":-5001,"value":null})");
}

TEST_F(CfgctlGet, CannotLookUpAnEmptyList)
{
    const ProgramResult result = run({"get", "tool.ini", "", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"value\":null}\n");
}

TEST_F(CfgctlGet, ReportsAMissToStandardErrorOnly)
{
    const ProgramResult result = run({"get", "tool.ini", "A,[Wand]B", "--report"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "[Wand]B not found in configurationfile\n");
}

TEST_F(CfgctlGet, FailsForAFileThatIsNotThere)
{
    const ProgramResult result = run({"get", "weg.ini", "Titel", "--json", "--report"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001,\"value\":null}\n");
    EXPECT_THAT(result.err, HasSubstr("(Inifile \"weg.ini\" not found , ec = 0)\n"));
    EXPECT_TRUE(result.err.starts_with("Error in file ")) << result.err;
    EXPECT_TRUE(result.err.ends_with("ec = 0)\nTitel not found in configurationfile\n"))
        << result.err;
}

TEST_F(CfgctlGet, NoRoomForNumbersIsNoFailure)
{
    const ProgramResult result
        = run({"get", "tool.ini", "[Wand]Factor", "--as", "doubles:0", "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "{\"status\":5100,\"value\":[]}\n");
    EXPECT_THAT(result.err, HasSubstr("(Array too small, ec = 0)"));
}

struct KindRow
{
    const char* sentence;
    Words arguments;
    const char* plain; // with line ends
    const char* value; // in JSON
};

class CfgctlKind : public CfgctlGet, public ::testing::WithParamInterface<KindRow>
{
};

TEST_P(CfgctlKind, IsShown)
{
    const KindRow& row = GetParam();
    Words words = {"get", "tool.ini"};
    words.insert(words.end(), row.arguments.begin(), row.arguments.end());
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, row.plain);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(json(words), std::string(R"({"status":5100,"value":)") + row.value + "}");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Kinds, CfgctlKind, ::testing::Values(
    KindRow {"StringUnlessTold",        {"[Wand]Hoogte"},                         "2600\n",    R"("2600")"},
    KindRow {"String",                  {"[Wand]Hoogte", "--as", "string"},       "2600\n",    R"("2600")"},
    KindRow {"Int",                     {"[Wand]Hoogte", "--as", "int"},          "2600\n",    "2600"},
    KindRow {"IntWithAnEqualsSign",     {"[Wand]Hoogte", "--as=int"},             "2600\n",    "2600"},
    KindRow {"IntOfAWord",              {"[Wand]Woord", "--as", "int"},           "0\n",       "0"},
    KindRow {"BoolTrue",                {"[Wand]Aan", "--as", "bool"},            "true\n",    "true"},
    KindRow {"BoolFalse",               {"[Wand]Woord", "--as", "bool"},          "false\n",   "false"},
    KindRow {"Double",                  {"[Wand]Factor", "--as", "double"},       "0.1\n",     "0.1"},
    KindRow {"ARoundDouble",            {"[Wand]Hoogte", "--as", "double"},       "2600\n",    "2600.0"},
    KindRow {"ALargeDouble",            {"[Wand]Groot", "--as", "double"},        "1250000\n", "1250000.0"},
    KindRow {"DoublesWithRoomToSpare",  {"[Wand]Maten", "--as", "doubles:9"},     "1.5\n2\n0\n-3\n", "[1.5,2.0,0.0,-3.0]"},
    KindRow {"DoublesThatFillTheRoom",  {"[Wand]Maten", "--as", "doubles:4"},     "1.5\n2\n0\n-3\n", "[1.5,2.0,0.0,-3.0]"},
    KindRow {"DoublesAtTheMostRoom",    {"[Wand]Factor", "--as", "doubles:1000000"},  "0.1\n",     "[0.1]"},
    KindRow {"DoublesExactly",          {"[Wand]Maten", "--as", "doubles=4"},     "1.5\n2\n0\n-3\n", "[1.5,2.0,0.0,-3.0]"},
    KindRow {"Ints",                    {"[Wand]Maten", "--as", "ints:9"},        "1\n2\n0\n-3\n", "[1,2,0,-3]"},
    KindRow {"IntsExactly",             {"[Wand]Maten", "--as=ints=4"},           "1\n2\n0\n-3\n", "[1,2,0,-3]"},
    KindRow {"IntsOfAnEmptyValue",      {"Leeg", "--as", "ints:2"},               "0\n",       "[0]"},
    KindRow {"List",                    {"[Wand]Namen", "--as", "list:;"},        "a\nb\n\nc\n", R"(["a","b","","c"])"},
    KindRow {"ListWithoutItsSeparator", {"[Wand]Namen", "--as", "list:,"},        "a;b;;c\n",  R"(["a;b;;c"])"},
    KindRow {"ListAtTwoByteCharacter",  {"[Wand]Eenheid", "--as", "list:\xC2\xB2"}, "m\n\n",   R"(["m",""])"},
    KindRow {"ListOfAnEmptyValue",      {"Leeg", "--as", "list:;"},               "\n",        R"([""])"},
    KindRow {"SizeCutsAString",         {"[Wand]Hoogte", "--size", "3"},          "26\n",      R"("26")"},
    KindRow {"SizeAtTheValuesEnd",      {"[Wand]Hoogte", "--size", "5"},          "2600\n",    R"("2600")"},
    KindRow {"ANegativeSize",           {"[Wand]Hoogte", "--size=-4"},            "260\n",     R"("260")"},
    KindRow {"SizeZero",                {"[Wand]Hoogte", "--size", "0"},          "\n",        R"("")"},
    KindRow {"SizeForAStringOnly",      {"[Wand]Hoogte", "--size", "2", "--as", "int"}, "2600\n", "2600"}),
    sentenceOf);

// clang-format on

TEST_F(CfgctlGet, KeepsLongValuesUpToItsUsualSize)
{
    write("lang.ini", "Kort=" + std::string(2900, 'x') + "\n");
    EXPECT_EQ(get({"lang.ini", "Kort"}), std::string(2900, 'x'));
    EXPECT_EQ(get({"lang.ini", "Kort", "--size", "2900"}), std::string(2899, 'x'));
    EXPECT_EQ(get({"lang.ini", "Kort", "--size", "100000"}), std::string(2900, 'x'));
}

TEST_F(CfgctlGet, GivesWhatFitsAndReportsTheRest)
{
    const ProgramResult result = run({"get", "tool.ini", "[Wand]Maten", "--as", "doubles:2"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "1.5\n2\n");
    EXPECT_THAT(result.err, HasSubstr("(Array too small, ec = 2)\n"));
}

TEST_F(CfgctlGet, WantsTheExactCount)
{
    const ProgramResult result
        = run({"get", "tool.ini", "[Wand]Maten", "--as", "ints=5", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"value\":null}\n");
    EXPECT_THAT(result.err, HasSubstr("Only 4 of 5 numbers found for [Wand]Maten"));
}

TEST_F(CfgctlGet, TakesNoNumberFromAnEmptyValue)
{
    EXPECT_EQ(get({"tool.ini", "Leeg", "--as", "int"}), "(none)");
    EXPECT_EQ(json({"get", "tool.ini", "Leeg", "--as", "double"}),
              R"({"status":-5001,"value":null})");
}

TEST_F(CfgctlGet, PassesOddIdentsOnAsTheyAre)
{
    write("odd.ini", "{}=1\n++=2\n-x=3\nfind=4\n%%=5\n--json=6\n[a,b]\nc=7\n\"q\"=8\n");
    EXPECT_EQ(get({"odd.ini", "{}"}), "1");
    EXPECT_EQ(get({"odd.ini", "++"}), "2");
    EXPECT_EQ(get({"odd.ini", "--", "-x"}), "3");
    EXPECT_EQ(get({"odd.ini", "find"}), "4");
    EXPECT_EQ(get({"odd.ini", "%%"}), "5");
    EXPECT_EQ(get({"--", "odd.ini", "--json"}), "6");
    EXPECT_EQ(get({"odd.ini", "[a,b]c", "--report"}), "(none)");
    EXPECT_EQ(get({"odd.ini", "[a,b]\"q\",[x]y,-x"}), "3");
}

class CfgctlTrace : public CfgctlTest
{
protected:
    CfgctlTrace()
    {
        write("tool.ini", "#INCLUDE=norm.ini\n[A]\nEen=1\nTwee=2\nDrie=3\n");
        write("norm.ini", "[A]\nEen=11\n");
        copyDrawing("r2018", "werk/plan.dxf");
        write("werk/tool.ipr", ";project\n[A]\nTwee=22\n");
    }

    // One source as --trace tells it in JSON; line 0: without a line.
    std::string source(const char* name, const char* file, int line, bool found = false) const
    {
        Json one;
        one["source"] = name;
        one["file"] = pathOf(file);
        one["found"] = found || line != 0;
        if (line != 0) {
            one["line"] = line;
        }
        return one.dump();
    }
};

TEST_F(CfgctlTrace, TellsTheSourcesInTheOrderAsked)
{
    EXPECT_EQ(json({"get", "tool.ini", "[A]Een", "--trace"}),
              R"({"status":5100,"value":"11","sources":[)" + source("included", "norm.ini", 2)
                  + "]}");
    EXPECT_EQ(json({"get", "tool.ini", "[A]Drie", "--as", "int", "--trace"}),
              R"({"status":5100,"value":3,"sources":[)" + source("included", "norm.ini", 0) + ","
                  + source("file", "tool.ini", 5) + "]}");
    EXPECT_EQ(json({"get", "tool.ini", "[A]Twee", "--trace", "--drawing", "werk/plan.dxf"}),
              R"({"status":5100,"value":"22","sources":[)" + source("included", "norm.ini", 0) + ","
                  + source("drawing", "werk/plan.dxf", 0) + ","
                  + source("project", "werk/tool.ipr", 3) + "]}");
}

// The drawing holds [Tekst]Hoogte for this file.
TEST_F(CfgctlTrace, TellsTheDrawingWithoutALine)
{
    EXPECT_EQ(json({"get", "tool.ini", "[Tekst]Hoogte", "--trace", "--drawing", "werk/plan.dxf"}),
              R"({"status":5100,"value":"2.5","sources":[)" + source("included", "norm.ini", 0)
                  + "," + source("drawing", "werk/plan.dxf", 0, true) + "]}");
    EXPECT_THAT(
        run({"get", "tool.ini", "[Tekst]Hoogte", "--trace", "--drawing", "werk/plan.dxf"}).out,
        HasSubstr("  drawing   " + pathOf("werk/plan.dxf") + "  found\n"));
}

TEST_F(CfgctlTrace, TellsAMissToo)
{
    EXPECT_EQ(json({"get", "tool.ini", "[A]Vier", "--trace"}),
              R"({"status":-5001,"value":null,"sources":[)" + source("included", "norm.ini", 0)
                  + "," + source("file", "tool.ini", 0) + "]}");
    EXPECT_EQ(
        json({"get", "weg.ini", "X", "--trace"}),
        R"({"status":-5001,"value":null,"sources":[{"source":"file","file":"","found":false}]})");
    EXPECT_EQ(json({"get", "norm.ini", "", "--trace"}),
              R"({"status":-5002,"value":null,"sources":[]})");
}

TEST_F(CfgctlTrace, TellsTheReadCache)
{
    EXPECT_EQ(json({"get", "norm.ini", "[A]Een", "--trace", "--cache"}),
              R"({"status":5100,"value":"11","sources":[)" + source("cache", "norm.ini", 0) + ","
                  + source("file", "norm.ini", 2) + "]}");
}

TEST_F(CfgctlTrace, StandsInATableBelowTheValue)
{
    const ProgramResult result = run({"get", "tool.ini", "[A]Drie", "--trace"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              "3\n"
              "  included  "
                  + pathOf("norm.ini")
                  + "    not there\n"
                    "  file      "
                  + pathOf("tool.ini") + ":5  found\n");
}

TEST_F(CfgctlTrace, StandsAloneAfterAMiss)
{
    const ProgramResult result = run({"get", "weg.ini", "X", "--trace"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "  file  (no file)  not there\n");
}

// The idents of the tables in examples/README.md.
struct Example
{
    const char* sentence;
    Words arguments;
    const char* value;
};

std::string exampleOf(const ::testing::TestParamInfo<Example>& row)
{
    return row.param.sentence;
}

class CfgctlExample : public CfgctlTest, public ::testing::WithParamInterface<Example>
{
protected:
    CfgctlExample() { workIn = CORMA_EXAMPLES; }
};

TEST_P(CfgctlExample, HasTheValueThatIsTold)
{
    EXPECT_EQ(get(GetParam().arguments), GetParam().value);
}

const std::string kPlan = "plattegrond.ini";
const std::string kDrawing = "--drawing=project/woonhuis.dxf";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Plattegrond, CfgctlExample, ::testing::Values(
    Example {"TheFileAlone",            {kPlan, "[Trappen]OptredeMax", kDrawing},    "188"},
    Example {"TheHeadOfTheFile",        {kPlan, "OppervlakteEenheid", kDrawing},     "m\xC2\xB2"},
    Example {"AnInclude",               {kPlan, "[Tekst]Hoogte", kDrawing},          "2.5"},
    Example {"AnIncludeOfAnInclude",    {kPlan, "[Lagen]Buitenwand", kDrawing},      "21-BUITENWAND,2,CONTINUOUS,0.70"},
    Example {"TheProject",              {kPlan, "[Plot]Schaal", kDrawing},           "50"},
    Example {"TheProjectWithNoDrawing", {kPlan, "[Plot]Schaal"},                     "100"},
    Example {"AListOfIdents",           {kPlan, "[Deuren]HoogteSchuif,[Deuren]Hoogte", kDrawing}, "2315"},
    Example {"ALineSwitchedOff",        {kPlan, "[Wanden]KleurSloop", kDrawing},     "(none)"},
    Example {"Scrambled",               {"geheim.ini", "[Formules]StapModulusMax", "--scramble", "7"}, "630"},
    Example {"TheIncludeBeforeTheProject", {kPlan, "[Maatvoering]Afronding", kDrawing}, "5"},
    Example {"TheDrawing",              {kPlan, "[Ruimten]Hoogte", kDrawing},        "2700"},
    Example {"TheDrawingWithNoDrawing", {kPlan, "[Ruimten]Hoogte"},                  "2600"},
    Example {"TheHeadInTheDrawing",     {kPlan, "ProjectNaam", kDrawing},            "Woonhuis Lindelaan 14, begane grond"},
    Example {"TheDrawingOnly",          {kPlan, "TekeningNummer", kDrawing},         "B-101"},
    Example {"ACodedChapter",           {kPlan, "[Bouwlaag: begane grond]Plafond", kDrawing}, "2700"},
    Example {"TheIncludeBeforeTheDrawing", {kPlan, "[Tekst]TekstStijl", kDrawing},   "NK_NORMAAL"},
    Example {"AnOlderDrawing",          {kPlan, "Noordhoek", "--drawing=project/woonhuis-2004.dxf"}, "27.5"},
    Example {"ADrawingWithoutPlace",    {kPlan, "Noordhoek", "--drawing=project/woonhuis-r12.dxf"}, "0"},
    Example {"TheProjectOnly",          {kPlan, "ProjectNummer", kDrawing},          "2417"},
    Example {"TheProjectOnlyWithNoDrawing", {kPlan, "ProjectNummer"},                "(none)"},
    Example {"ALeadingBlank",           {kPlan, "[Ruimten]Achtervoegsel", kDrawing}, " m\xC2\xB2"},
    Example {"AnEmptyValue",            {kPlan, "[Maatvoering]Voorvoegsel", kDrawing}, ""},
    Example {"EqualsSignsInTheValue",   {kPlan, "[Deuren]LabelFormaat", kDrawing},   "b=%B h=%H"},
    Example {"AnyCase",                 {kPlan, "[plot]KOPIE\xC3\x8BN", kDrawing},   "1"},
    Example {"BehindTheByteOrderMark",  {kPlan, "LagenVersie", kDrawing},            "2024-2"},
    Example {"Windows1252",             {kPlan, "[Arcering]LegendaTitel", kDrawing}, "Arceringen, \xC3\xA9\xC3\xA9n patroon per materiaal"},
    Example {"Windows1252Scrambled",    {"geheim.ini", "[Formules]KostenEenheid", "--scramble=7"}, "\xE2\x82\xAC/m\xC2\xB2"}),
    exampleOf);
// clang-format on

} // namespace

} // namespace corma::testing
