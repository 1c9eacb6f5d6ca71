// cfgctl model, and find --model: what a settings model holds, level by level.

#include "CfgctlTest.h"
#include "support/row_names.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

constexpr const char* kNoValue = "***KV_BESTAAT_NIET***";
constexpr const char* kNothing = R"({"projectMode":false,"localMode":false,"categories":[]})";

// A setting of the model, as far as it differs from one that has a name and a value only.
struct Setting
{
    std::string name;
    std::string value;
    int type = 0;
    std::string description = {};
    std::string globalValue = kNoValue;
    std::string projectValue = kNoValue;
    bool isProject = false;
    bool isLocal = false;
    std::string readOnly = {};
};

std::string textOf(bool flag)
{
    return flag ? "true" : "false";
}

std::string textOf(const Setting& setting)
{
    const auto text = [](const std::string& content) { return '"' + content + '"'; };
    return R"({"name":)" + text(setting.name) + R"(,"longDescription":)" + text(setting.description)
        + R"(,"shortDescription":)" + text(setting.description) + R"(,"bitmap":"","type":)"
        + std::to_string(setting.type) + R"(,"value":)" + text(setting.value)
        + R"(,"choices":"","maxValue":"","minValue":"","readOnly":)" + text(setting.readOnly)
        + R"(,"level":"","fileTypes":"","globalValue":)" + text(setting.globalValue)
        + R"(,"projectValue":)" + text(setting.projectValue) + R"(,"isProject":)"
        + textOf(setting.isProject) + R"(,"isLocal":)" + textOf(setting.isLocal)
        + R"(,"rgb":0,"viewAccess":0,"editAccess":0})";
}

struct Category
{
    std::string name;
    std::string description;
    std::vector<Setting> settings;
};

struct Modes
{
    bool project = false;
    bool local = false;
};

std::string documentOf(Modes modes, const std::vector<Category>& categories)
{
    std::string all;
    for (const Category& category : categories) {
        std::string settings;
        for (const Setting& setting : category.settings) {
            settings += (settings.empty() ? "" : ",") + textOf(setting);
        }
        all += (all.empty() ? "" : ",") + (R"({"name":")" + category.name) + R"(","description":")"
            + category.description + R"(","settings":[)" + settings + "]}";
    }
    return R"({"projectMode":)" + textOf(modes.project) + R"(,"localMode":)" + textOf(modes.local)
        + R"(,"categories":[)" + all + "]}";
}

class CfgctlModel : public CfgctlTest
{
protected:
    // The document that the command prints when all is well, without a line on standard error.
    std::string model(Words arguments) const
    {
        arguments.insert(arguments.begin(), "model");
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(result.out.ends_with("}\n")) << result.out;
        return result.out.substr(0, result.out.find('\n'));
    }
};

TEST_F(CfgctlModel, GivesAllKeysInTheirOrder)
{
    write("tool.ini", "Maat=10\n[Tekst]\n");
    write("tool.inr",
          "Maat=i bitmap=maat.png choices={5,10 of meer} max=100 min=-2 readonly=true level=p "
          "filetypes=Tekst|*.txt|| rgb=255,128,1 access=5,-10\n");
    write("LanEN/tool.ind", "Maat=Size\xC2\xA7of \"it\"\n[Tekst]=All about texts\n");
    EXPECT_EQ(model({"tool.ini"}),
              R"({"projectMode":false,"localMode":false,"categories":[)"
              R"({"name":"Algemeen","description":"General settings","settings":[)"
              R"({"name":"Maat","longDescription":"Size§of \"it\"",)"
              R"("shortDescription":"Size of \"it\"","bitmap":")"
                  + pathOf("maat.png")
                  + R"(","type":2,"value":"10","choices":"5,10 of meer","maxValue":"100",)"
                    R"("minValue":"-2","readOnly":"true","level":"p",)"
                    R"("fileTypes":"Tekst|*.txt||","globalValue":"***KV_BESTAAT_NIET***",)"
                    R"("projectValue":"***KV_BESTAAT_NIET***","isProject":false,"isLocal":false,)"
                    R"("rgb":98559,"viewAccess":5,"editAccess":-10}]},)"
                    R"({"name":"Tekst","description":"All about texts","settings":[]}]})");
}

TEST_F(CfgctlModel, PrintsTheSameDocumentWithJson)
{
    write("tool.ini", "Maat=10\n[Tekst]\nHoogte=\xE2\x82\xAC\n");
    const std::string document = model({"tool.ini"});
    EXPECT_EQ(model({"tool.ini", "--json"}), document);
    EXPECT_EQ(document,
              documentOf({},
                         {{"Algemeen", "General settings", {{"Maat", "10"}}},
                          {"Tekst", "", {{"Hoogte", "\xE2\x82\xAC"}}}}));
}

TEST_F(CfgctlModel, GivesTheNumbersOfTheTypes)
{
    std::string values;
    std::string definitions;
    for (const char letter : std::string("stidklbvoxhcqzT")) {
        values += std::string("Is_") + letter + "=1\n";
        definitions += std::string("Is_") + letter + "=" + letter + "\n";
    }
    write("tool.ini", values + "Is_nothing=1\n");
    write("tool.inr", definitions);
    const Json document = Json::parse(model({"tool.ini"}));
    std::string types;
    for (const Json& setting : document["categories"][0]["settings"]) {
        types += setting["type"].dump() + ' ';
    }
    EXPECT_EQ(types, "0 1 2 3 4 5 6 7 8 9 10 11 12 0 0 0 ");
}

TEST_F(CfgctlModel, TakesTheFirstOfADoubleSettingAndTellsOfTheOther)
{
    write("tool.ini", "Maat=10\nMaat=20\n");
    const ProgramResult result = run({"model", "tool.ini"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              documentOf({}, {{"Algemeen", "General settings", {{"Maat", "10"}}}}) + "\n");
    EXPECT_THAT(result.err, HasSubstr("Setting 'Maat' already exists"));
}

class CfgctlModelLevels : public CfgctlModel
{
protected:
    CfgctlModelLevels()
    {
        write("tool.ini", "[Maat]\nBeide=g\nDrie=g\nGlobaal=g\nProject=g\nTekening=g\n");
        write("maat.ipr", "[Maat]\nBeide=p\nNieuw=p\nProject=p\n[Extra]\nAlleen=p\n");
        write("tool.inr", "[Maat]\nBeide=i\nNieuw=i\nProject=t\n");
    }
};

TEST_F(CfgctlModelLevels, OfTheFileAlone)
{
    EXPECT_EQ(model({"tool.ini"}),
              documentOf({},
                         {{"Algemeen", "General settings", {}},
                          {"Maat",
                           "",
                           {{.name = "Beide", .value = "g", .type = 2, .readOnly = "false"},
                            {"Drie", "g"},
                            {"Globaal", "g"},
                            {.name = "Project", .value = "g", .type = 1, .readOnly = "false"},
                            {"Tekening", "g"}}}}));
}

// What only the project has is not defined: definitions are read before it.
TEST_F(CfgctlModelLevels, OfAProjectFile)
{
    EXPECT_EQ(model({"tool.ini", "--project", "maat.ipr"}),
              documentOf({.project = true},
                         {{"Algemeen", "General settings", {}},
                          {"Maat",
                           "",
                           {{.name = "Beide",
                             .value = "p",
                             .type = 2,
                             .globalValue = "g",
                             .isProject = true,
                             .readOnly = "false"},
                            {"Drie", "g"},
                            {"Globaal", "g"},
                            {.name = "Project",
                             .value = "p",
                             .type = 1,
                             .globalValue = "g",
                             .isProject = true,
                             .readOnly = "false"},
                            {"Tekening", "g"},
                            {.name = "Nieuw", .value = "p", .isProject = true}}},
                          {"Extra", "", {{.name = "Alleen", .value = "p", .isProject = true}}}}));
}

class CfgctlModelDrawing : public CfgctlModel
{
protected:
    CfgctlModelDrawing()
    {
        write("maat.ini", "Kop=g\n[Maat]\nBeide=g\nGlobaal=g\n");
        copyDrawing("r2000", "werk/plan.dxf");
        for (const char* ident :
             {"Kop", "[Maat]Beide", "[Maat]Nieuw", "[Maat]Alleen", "[Laag: 1]Peil"}) {
            EXPECT_EQ(run({"set", "maat.ini", ident, "d", "--drawing=werk/plan.dxf"}).exitStatus,
                      0);
        }
    }

    const Words withDrawing = {"maat.ini", "--drawing=werk/plan.dxf"};
};

TEST_F(CfgctlModelDrawing, HoldsValuesAboveThoseOfTheFile)
{
    EXPECT_EQ(model(withDrawing),
              documentOf({.local = true},
                         {{"Algemeen",
                           "General settings",
                           {{.name = "Kop", .value = "d", .globalValue = "g", .isLocal = true}}},
                          {"Maat",
                           "",
                           {{.name = "Beide", .value = "d", .globalValue = "g", .isLocal = true},
                            {"Globaal", "g"},
                            {.name = "Alleen", .value = "d", .isLocal = true},
                            {.name = "Nieuw", .value = "d", .isLocal = true}}},
                          {"Laag: 1", "", {{.name = "Peil", .value = "d", .isLocal = true}}}}));
}

TEST_F(CfgctlModelDrawing, HoldsValuesAboveThoseOfTheProjectBesideIt)
{
    write("werk/maat.ipr", "[Maat]\nBeide=p\nNieuw=p\nGlobaal=p\n");
    EXPECT_EQ(
        model(withDrawing),
        documentOf({.project = true, .local = true},
                   {{"Algemeen",
                     "General settings",
                     {{.name = "Kop", .value = "d", .globalValue = "g", .isLocal = true}}},
                    {"Maat",
                     "",
                     {{.name = "Beide",
                       .value = "d",
                       .globalValue = "g",
                       .projectValue = "p",
                       .isLocal = true},
                      {.name = "Globaal", .value = "p", .globalValue = "g", .isProject = true},
                      {.name = "Nieuw", .value = "d", .projectValue = "p", .isLocal = true},
                      {.name = "Alleen", .value = "d", .isLocal = true}}},
                    {"Laag: 1", "", {{.name = "Peil", .value = "d", .isLocal = true}}}}));
}

TEST_F(CfgctlModelDrawing, IsAskedForNoOtherProject)
{
    const std::string document = model(withDrawing);
    write("ander.ipr", "Kop=p\n");
    Words words = withDrawing;
    words.insert(words.end(), {"--project", "ander.ipr"});
    EXPECT_EQ(model(words), document);
    words.back() = "nieuw.ipr";
    EXPECT_EQ(model(words), document);
    EXPECT_FALSE(folder.has(L"nieuw.ipr"));
}

TEST_F(CfgctlModelDrawing, StaysAsItIs)
{
    const std::string drawing = read("werk/plan.dxf");
    model(withDrawing);
    EXPECT_EQ(read("werk/plan.dxf"), drawing);
    EXPECT_FALSE(folder.has(L"werk/maat.ipr"));
}

TEST_F(CfgctlModelDrawing, ThatHoldsNothingOfTheFileIsALevelAllTheSame)
{
    write("leeg.ini", "");
    EXPECT_EQ(model({"leeg.ini", "--drawing", "werk/plan.dxf"}),
              documentOf({.local = true}, {{"Algemeen", "General settings", {}}}));
}

class CfgctlModelFiles : public CfgctlModel
{
protected:
    CfgctlModelFiles() { write("map/tool.ini", "Maat=1\n"); }

    static std::string document(Modes modes = {})
    {
        return documentOf(modes, {{"Algemeen", "General settings", {{"Maat", "1"}}}});
    }
};

TEST_F(CfgctlModelFiles, AreNamedWithOrWithoutAFolder)
{
    for (const std::string& name : {std::string("map/tool.ini"), std::string("map\\tool.ini"),
                                    std::string("map/tool"), pathOf("map/tool.ini")}) {
        EXPECT_EQ(model({name}), document()) << name;
    }
    workIn = pathOf("map");
    EXPECT_EQ(model({"tool.ini"}), document());
    EXPECT_EQ(model({"./tool.ini"}), document());
}

// The extension is for names with a folder and without any dot. Another is taken as it stands.
TEST_F(CfgctlModelFiles, WithABareNameOrADotHaveTheirExtension)
{
    workIn = pathOf("map");
    const ProgramResult bare = run({"model", "tool"});
    EXPECT_EQ(bare.exitStatus, 1);
    EXPECT_EQ(bare.out, std::string(kNothing) + "\n");
    EXPECT_EQ(bare.err, pathOf("map/tool") + " was not found.\n");

    const ProgramResult dotted = run({"model", "./tool"});
    EXPECT_EQ(dotted.exitStatus, 1);
    EXPECT_EQ(dotted.err, "./tool was not found.\n");
}

TEST_F(CfgctlModelFiles, ThatAreMissingGiveNoCategories)
{
    const ProgramResult result = run({"model", "weg.ini"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(kNothing) + "\n");
    EXPECT_EQ(result.err, pathOf("weg.ini") + " was not found.\n");
}

TEST_F(CfgctlModelFiles, ThatCannotBeOpenedGiveNoCategories)
{
    const ProgramResult result = run({"model", "map", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(kNothing) + "\n");
    EXPECT_EQ(result.err, "Access to " + pathOf("map") + " was denied.\n");
}

// What the levels above have is no success.
TEST_F(CfgctlModelFiles, ThatAreMissingFailWithTheOtherLevelsToo)
{
    write("werk/weg.ipr", "[Maat]\nHoogte=p\n");
    const ProgramResult project = run({"model", "weg.ini", "--project", "werk/weg.ipr"});
    EXPECT_EQ(project.exitStatus, 1);
    EXPECT_EQ(project.err, pathOf("weg.ini") + " was not found.\n");
    EXPECT_THAT(project.out, ::testing::StartsWith(R"({"projectMode":true,"localMode":false,)"));

    copyDrawing("r2000", "werk/plan.dxf");
    const ProgramResult drawing = run({"model", "weg.ini", "--drawing", "werk/plan.dxf"});
    EXPECT_EQ(drawing.exitStatus, 1);
    EXPECT_EQ(drawing.err, pathOf("weg.ini") + " was not found.\n");
    EXPECT_THAT(drawing.out, ::testing::StartsWith(R"({"projectMode":true,"localMode":true,)"));
}

TEST_F(CfgctlModelFiles, ForANewProjectAreMade)
{
    EXPECT_EQ(model({"map/tool.ini", "--project", "map/nieuw.ipr"}), document({.project = true}));
    EXPECT_EQ(read("map/nieuw.ipr"), "");
    EXPECT_EQ(model({"map/tool.ini", "--project", "bloot"}), document({.project = true}));
    EXPECT_TRUE(folder.has(L"bloot"));
}

TEST_F(CfgctlModelFiles, ForAProjectThatCannotBeMadeFail)
{
    const ProgramResult result = run({"model", "map/tool.ini", "--project", "weg/nieuw.ipr"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, document({.project = true}) + "\n");
    EXPECT_EQ(result.err, "weg/nieuw.ipr was not found.\n");
    EXPECT_FALSE(folder.has(L"weg"));
}

struct Described
{
    const char* sentence;
    std::vector<const char*> folders; // that have descriptions
    const char* language;
    const char* general; // description of the head
    const char* described; // description of the setting
};

class CfgctlModelTexts : public CfgctlModel, public ::testing::WithParamInterface<Described>
{
};

// Each description is the name of its folder.
TEST_P(CfgctlModelTexts, AreThoseOfTheLanguage)
{
    write("tool.ini", "Maat=1\n");
    for (const std::string folderName : GetParam().folders) {
        write(folderName + "/tool.ind", "Maat=" + folderName + "\n");
    }
    EXPECT_EQ(
        model({"tool.ini", "--language", GetParam().language}),
        documentOf({},
                   {{"Algemeen",
                     GetParam().general,
                     {{.name = "Maat", .value = "1", .description = GetParam().described}}}}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(In, CfgctlModelTexts, ::testing::Values(
    Described {"Dutch",                  {"LanNL", "LanN", "LanEN"}, "19", "Algemene instellingen", "LanNL"},
    Described {"DutchOfTheFormerFolder", {"LanN", "LanEN"},          "19", "Algemene instellingen", "LanN"},
    Described {"DutchWithoutAny",        {"LanEN", "LanE"},          "19", "Algemene instellingen", ""},
    Described {"French",                 {"LanFR", "LanF"},          "12", "Param\xC3\xA8tres g\xC3\xA9n\xC3\xA9raux", "LanFR"},
    Described {"FrenchOfTheFormerFolder", {"LanF"},                  "12", "Param\xC3\xA8tres g\xC3\xA9n\xC3\xA9raux", "LanF"},
    Described {"German",                 {"LanDE", "LanG"},           "7", "General settings", "LanDE"},
    Described {"GermanOfTheFormerFolder", {"LanG", "LanEN"},          "7", "General settings", "LanG"},
    Described {"Spanish",                {"LanES", "LanS"},          "10", "Par\xC3\xA1metros generales", "LanES"},
    Described {"Russian",                {"LanRU", "LanR"},          "25", "\xD0\x9E\xD0\xB1\xD1\x89\xD0\xB8\xD0\xB5 \xD0\xBF\xD0\xB0\xD1\x80\xD0\xB0\xD0\xBC\xD0\xB5\xD1\x82\xD1\x80\xD1\x8B", "LanRU"},
    Described {"PolishHasEnglishOnes",   {"LanEN", "LanE"},          "21", "Ustawienia og\xC3\xB3lne", "LanEN"},
    Described {"English",                {"LanEN", "LanE"},           "9", "General settings", "LanEN"},
    Described {"EnglishOfTheFormerFolder", {"LanE", "LanNL"},         "9", "General settings", "LanE"},
    Described {"AnUnknownLanguage",      {"LanNL", "LanE"},          "99", "General settings", "LanE"},
    Described {"ANegativeLanguage",      {"LanEN"},                  "-1", "General settings", "LanEN"}),
    sentenceOf);

// clang-format on

class CfgctlModelDefects : public CfgctlModel
{
protected:
    CfgctlModelDefects()
    {
        write("tool.ini", ";rem\nMaat=1\ngeen\nook geen\n[Tekst\n");
        write("tool.inr", "Maat=i\n[Tekst\n");
        write("LanEN/tool.ind", "Maat\nMaat=Size\n");
        write("LanNL/tool.ind", "Maat=Maat\n[Tekst=Alles\n");
        write("tool.ipr", "\n\nMaat=2\nkaal\n");
    }
};

// One per file, of the first line: counted from 0, without its "[".
TEST_F(CfgctlModelDefects, AreToldInEnglish)
{
    const ProgramResult result = run({"model", "tool.ini", "--project", "tool.ipr"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err,
              "Line was skipped! Expected: \"=\" (ini:2) (geen)\n"
              "Line was skipped! Expected: \"]\" (inr:1) (Tekst)\n"
              "Line was skipped! Expected: \"=\" (ind:0) (Maat)\n"
              "Line was skipped! Expected: \"=\" (ipr:3) (kaal)\n");
    EXPECT_EQ(result.out,
              documentOf({.project = true},
                         {{"Algemeen",
                           "General settings",
                           {{.name = "Maat",
                             .value = "2",
                             .type = 2,
                             .description = "Size",
                             .globalValue = "1",
                             .isProject = true,
                             .readOnly = "false"}}}})
                  + "\n");
}

TEST_F(CfgctlModelDefects, AreToldInDutch)
{
    const ProgramResult result = run({"model", "tool.ini", "--language=19"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err,
              "Regel overgeslagen! Verwacht: \"=\" (ini:2) (geen)\n"
              "Regel overgeslagen! Verwacht: \"]\" (inr:1) (Tekst)\n"
              "Regel overgeslagen! Verwacht: \"]\" (ind:1) (Tekst=Alles)\n");
}

class CfgctlFindModel : public CfgctlTest
{
protected:
    CfgctlFindModel()
    {
        write("tool.ini", "Kop=0\nKopie = 00\n[A]\nKleur=rood\nLeeg=\n[B]\nKleur=blauw\n");
        copyDrawing("r2000", "werk/plan.dxf");
    }

    // The pairs as "name=value;...", or the status when it is another than that of success.
    std::string found(Words arguments) const
    {
        arguments.insert(arguments.begin(), "find");
        arguments.emplace_back("--model");
        const Json document = Json::parse(json(arguments));
        std::string pairs = document["status"] == 5100 ? "" : document["status"].dump() + ' ';
        for (const Json& pair : document["pairs"]) {
            pairs += pair[0].get<std::string>() + '=' + pair[1].get<std::string>() + ';';
        }
        return pairs;
    }
};

TEST_F(CfgctlFindModel, PrintsALineForEachPair)
{
    const ProgramResult result = run({"find", "tool.ini", "[A]Kleur,K*", "--model"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "Kop\t0\nKopie\t00\n[A]Kleur\trood\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(json({"find", "tool.ini", "[A]Leeg", "--model"}),
              R"({"status":5100,"pairs":[["[A]Leeg",""]]})");
}

struct Query
{
    const char* sentence;
    Words arguments;
    const char* pairs;
};

class CfgctlFindModelPattern : public CfgctlFindModel, public ::testing::WithParamInterface<Query>
{
};

TEST_P(CfgctlFindModelPattern, Finds)
{
    EXPECT_EQ(found(GetParam().arguments), GetParam().pairs);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(That, CfgctlFindModelPattern, ::testing::Values(
    Query {"HasNoChapterIsForTheHead",      {"tool.ini", "*"}, "Kop=0;Kopie=00;"},
    Query {"HasAChapterIsForTheHeadToo",    {"tool.ini", "[B]*"}, "Kop=0;Kopie=00;[B]Kleur=blauw;"},
    Query {"HasAllChapters",                {"tool.ini", "[*]Kl*"}, "[A]Kleur=rood;[B]Kleur=blauw;"},
    Query {"FitsNothing",                   {"tool.ini", "[*]X*"}, "-5002 "},
    Query {"HasTheMarkerListsChaptersOnly", {"tool.ini", "[*]XXINIFRUBR"}, "Algemeen=;A=;B=;"},
    Query {"HasTheMarkerAndAChapter",       {"tool.ini", "[B]XXINIFRUBR"}, "Algemeen=;B=;"},
    Query {"HasTheMarkerWithoutChapter",    {"tool.ini", "XXINIFRUBR"}, "Algemeen=;"},
    Query {"HasTheMarkerAndIdents",         {"tool.ini", "[*]XXINIFRUBR,K*"}, "Kop=0;Kopie=00;Algemeen=;[A]Kleur=rood;A=;[B]Kleur=blauw;B=;"},
    Query {"HasTheMarkerLast",              {"tool.ini", "[A]Leeg,XXINIFRUBR"}, "Algemeen=;A=;"},
    Query {"SkipsInTheHeadOnly",            {"tool.ini", "[A]K*", "--skip", "2"}, "p=0;pie=00;[A]Kleur=rood;"},
    Query {"SkipsAWholeIdent",              {"tool.ini", "Kop", "--skip", "3"}, "=0;"},
    Query {"SkipsMoreThanAnIdent",          {"tool.ini", "Kop", "--skip", "9"}, "=0;"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlFindModel, SeesTheDrawingAndTheProject)
{
    write("werk/tool.ini", "");
    write("werk/tool.ipr", "[A]\nKleur=project\nNieuw=project\n[B]\nKleur=project\n[P]\nX=1\n");
    run({"set", "tool.ini", "[A]Kleur", "tekening", "--drawing=werk/plan.dxf"});
    EXPECT_EQ(found({"tool.ini", "[A,B,P]Kleur,Nieuw,X", "--drawing=werk/plan.dxf"}),
              "[A]Kleur=tekening;[A]Nieuw=project;[B]Kleur=project;[P]X=1;");
    EXPECT_EQ(found({"tool.ini", "[*]Hoogte", "--drawing=werk/plan.dxf"}), "[Tekst]Hoogte=2.5;");
}

// Without a configuration file of the name beside the drawing its project does not count.
TEST_F(CfgctlFindModel, SeesNoProjectWithoutItsConfigurationFile)
{
    write("werk/tool.ipr", "[A]\nKleur=project\n");
    EXPECT_EQ(found({"tool.ini", "[A]Kleur", "--drawing=werk/plan.dxf"}), "[A]Kleur=rood;");
}

TEST_F(CfgctlFindModel, SeesIncludedFilesFirst)
{
    write("boven.ini", "#INCLUDE=tool.ini\n[A]\nKleur=geel\n");
    EXPECT_EQ(found({"boven.ini", "[A]Kleur"}), "[A]Kleur=rood;[A]Kleur=geel;");
}

// The model reads a scrambled file as it stands, where no line is one.
TEST_F(CfgctlFindModel, FindsNothingInAScrambledFile)
{
    run({"scramble", "tool.ini", "7"});
    EXPECT_EQ(run({"find", "tool.ini", "[*]*", "--scramble=7"}).exitStatus, 0);
    const ProgramResult result
        = run({"find", "tool.ini", "[*]*", "--scramble=7", "--model", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"pairs\":[]}\n");
}

TEST_F(CfgctlFindModel, FailsForAFileThatIsNotThere)
{
    const ProgramResult result
        = run({"find", "weg.ini", "*", "--model", "--report", "--language=19", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"pairs\":[]}\n");
    EXPECT_THAT(result.err, HasSubstr("\"weg.ini\" not found"));
    EXPECT_THAT(result.err, HasSubstr("\nIni-bestand niet gevonden: "));
}

TEST_F(CfgctlFindModel, ReportsNoMiss)
{
    const ProgramResult result = run({"find", "tool.ini", "[A]X", "--model", "--report"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out + result.err, "");
}

} // namespace

} // namespace corma::testing
