// cfgctl apply, remove and remove-category: changes through the settings model, as the dialogs of
// the editor make them.

#include "CfgctlTest.h"

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlEditModel : public CfgctlTest
{
protected:
    CfgctlEditModel()
    {
        write("stop.ini", kFile);
        write("stop.inr", "Taal=s\nMaat=i min=1 max=9\n[Wand]\nDikte=i\nArceren=t\nLaag=v\n");
        write("werk/stop.ipr", kProject);
    }

    // Runs a command in its JSON form: the exit status, the document, and what is told.
    std::string outcome(Words words) const
    {
        words.emplace_back("--json");
        const ProgramResult result = run(words);
        return std::to_string(result.exitStatus) + ' ' + result.out + result.err;
    }

    // What a drawing holds for the file.
    std::string held(const char* drawing) const
    {
        const Json settings = Json::parse(json({"drawing", "--drawing", drawing}))["settings"];
        return settings.contains("STOP.INI") ? settings["STOP.INI"].dump() : "nothing";
    }

    static std::string noSetting(const std::string& category, const std::string& name)
    {
        return "cfgctl: there is no setting \"" + name + "\" in the category \"" + category
            + "\"; upper and lower case differ\n";
    }

    void expectNothingChanged() const
    {
        EXPECT_EQ(read("stop.ini"), kFile);
        EXPECT_EQ(read("werk/stop.ipr"), kProject);
        EXPECT_FALSE(folder.has(L"stop.ipr"));
        EXPECT_FALSE(folder.has(L"dummy.tmp"));
        EXPECT_FALSE(folder.has(L"werk/dummy.tmp"));
    }

    static constexpr const char* kFile = ";remark\nTaal=NL\nMaat=1\n\n[Wand]\nDikte=100\n"
                                         "Arceren=1\nLaag=21-WAND,2,CONTINUOUS,0.50\n[Leeg]\n";
    static constexpr const char* kProject = "Maat=2\n[Wand]\nHoogte=2600\n";
};

// --- apply ---------------------------------------------------------------------------------------

class CfgctlApply : public CfgctlEditModel
{
};

TEST_F(CfgctlApply, StoresAValueInTheFile)
{
    const ProgramResult result = run({"apply", "stop.ini", "Wand", "Dikte", "120"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "120\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("stop.ini"),
              ";remark\nTaal=NL\nMaat=1\n\n[Wand]\nDikte=120\nArceren=1\n"
              "Laag=21-WAND,2,CONTINUOUS,0.50\n[Leeg]\n");
    EXPECT_FALSE(folder.has(L"stop.ipr"));
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

TEST_F(CfgctlApply, TellsWhatItTook)
{
    EXPECT_EQ(outcome({"apply", "stop.ini", "Algemeen", "Maat", "5"}),
              "0 {\"accepted\":true,\"value\":\"5\"}\n");
    EXPECT_EQ(get({"stop.ini", "Maat"}), "5");
}

TEST_F(CfgctlApply, LooksAtTheTypeAndNotAtTheLimits)
{
    EXPECT_EQ(outcome({"apply", "stop.ini", "Algemeen", "Maat", "99"}),
              "0 {\"accepted\":true,\"value\":\"99\"}\n");
    EXPECT_EQ(get({"stop.ini", "Maat"}), "99");
}

struct RefusedApply
{
    const char* sentence;
    Words arguments;
    const char* document;
};

class CfgctlApplyRefused : public CfgctlApply, public ::testing::WithParamInterface<RefusedApply>
{
};

TEST_P(CfgctlApplyRefused, LeavesAllAsItWas)
{
    copyDrawing("r2000", "plan.dxf");
    const std::string former = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    Words words = GetParam().arguments;
    words.emplace_back("--json");
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(GetParam().document) + '\n');
    expectNothingChanged();
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(timeOf("plan.dxf"), time);
}

constexpr const char* kNoSetting = R"({"accepted":false,"value":null})";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Because, CfgctlApplyRefused, ::testing::Values(
    RefusedApply {"AnIntegerHasALetter",     {"apply", "stop.ini", "Wand", "Dikte", "12x"}, R"({"accepted":false,"value":"12"})"},
    RefusedApply {"YesOrNoIsNeither",        {"apply", "stop.ini", "Wand", "Arceren", "ja"}, R"({"accepted":false,"value":"0"})"},
    RefusedApply {"TheDrawingDoesNotGetIt",  {"apply", "stop.ini", "Wand", "Dikte", "x", "--drawing", "plan.dxf"}, R"({"accepted":false,"value":""})"},
    RefusedApply {"TheProjectDoesNotGetIt",  {"apply", "stop.ini", "Wand", "Dikte", "x", "--project", "werk/stop.ipr", "--save-globally", "--save-in-project"}, R"({"accepted":false,"value":""})"},
    RefusedApply {"TheIdentIsNotThere",      {"apply", "stop.ini", "Wand", "Kleur", "1"}, kNoSetting},
    RefusedApply {"TheIdentHasOtherCase",    {"apply", "stop.ini", "Wand", "dikte", "1"}, kNoSetting},
    RefusedApply {"TheIdentIsEmpty",         {"apply", "stop.ini", "Wand", "", "1"}, kNoSetting},
    RefusedApply {"TheCategoryIsNotThere",   {"apply", "stop.ini", "Deur", "Dikte", "1"}, kNoSetting},
    RefusedApply {"TheCategoryHasOtherCase", {"apply", "stop.ini", "wand", "Dikte", "1"}, kNoSetting},
    RefusedApply {"TheFileIsNotThere",       {"apply", "weg.ini", "Wand", "Dikte", "1"}, kNoSetting}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

struct Stored
{
    const char* sentence;
    Words options;
    std::string file; // the value of [Wand]Dikte that each holds then; "-" when it holds none
    std::string project;
    std::string drawing;
};

class CfgctlApplyAt : public CfgctlApply, public ::testing::WithParamInterface<Stored>
{
protected:
    std::string inFile(const std::string& name) const
    {
        return folder.has(std::wstring(name.begin(), name.end())) ? valueOf(get({name, kIdent}))
                                                                  : "-";
    }

    static std::string valueOf(const std::string& got) { return got == "(none)" ? "-" : got; }

    static constexpr const char* kIdent = "[Wand]Dikte";
};

TEST_P(CfgctlApplyAt, TheLevelsThatItShould)
{
    copyDrawing("r2000", "alleen/plan.dxf");
    copyDrawing("r2000", "werk/plan.dxf");
    Words words {"apply", "stop.ini", "Wand", "Dikte", "120"};
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    EXPECT_EQ(outcome(words), "0 {\"accepted\":true,\"value\":\"120\"}\n");
    EXPECT_EQ(inFile("stop.ini"), GetParam().file);
    const bool isInOwnFolder = GetParam().sentence == std::string("AVisualValueBesideTheFile");
    EXPECT_EQ(inFile(isInOwnFolder ? "stop.ipr" : "werk/stop.ipr"), GetParam().project);
    EXPECT_EQ(folder.has(L"stop.ipr"), isInOwnFolder);
    const std::string inDrawing = R"({"Wand":{"Dikte":")" + GetParam().drawing + R"("}})";
    const std::string wanted = GetParam().drawing == "-" ? "nothing" : inDrawing;
    const bool isAlone = words.back().find("alleen") != std::string::npos
        || std::find(words.begin(), words.end(), "alleen/plan.dxf") != words.end();
    EXPECT_EQ(held("alleen/plan.dxf"), isAlone ? wanted : "nothing");
    EXPECT_EQ(held("werk/plan.dxf"), isAlone ? "nothing" : wanted);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Are, CfgctlApplyAt, ::testing::Values(
    Stored {"TheFile",                   {}, "120", "-", "-"},
    Stored {"AVisualValueBesideTheFile", {"--visual"}, "100", "120", "-"},
    Stored {"AVisualValueInTheFileToo",  {"--visual", "--save-globally", "--project", "werk/stop.ipr"}, "120", "120", "-"},
    Stored {"TheProject",                {"--project", "werk/stop.ipr"}, "100", "120", "-"},
    Stored {"TheProjectAndTheFile",      {"--project", "werk/stop.ipr", "--save-globally"}, "120", "120", "-"},
    Stored {"TheDrawing",                {"--drawing", "alleen/plan.dxf"}, "100", "-", "120"},
    Stored {"TheDrawingAndTheFile",      {"--save-globally", "--drawing", "alleen/plan.dxf"}, "120", "-", "120"},
    Stored {"TheDrawingOfAProject",      {"--drawing", "werk/plan.dxf"}, "100", "-", "120"},
    Stored {"TheDrawingAndItsProject",   {"--drawing", "werk/plan.dxf", "--save-in-project"}, "100", "120", "120"},
    Stored {"AVisualValueInTheProjectOfADrawing", {"--drawing", "werk/plan.dxf", "--visual"}, "100", "120", "-"},
    Stored {"AllThree",                  {"--drawing", "werk/plan.dxf", "--save-in-project", "--save-globally"}, "120", "120", "120"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlApply, ASettingOfTheProjectStaysThere)
{
    EXPECT_EQ(outcome({"apply", "stop.ini", "Algemeen", "Maat", "7", "--project=werk/stop.ipr"}),
              "0 {\"accepted\":true,\"value\":\"7\"}\n");
    EXPECT_EQ(read("werk/stop.ipr"), "Maat=7\n[Wand]\nHoogte=2600\n");
    EXPECT_EQ(read("stop.ini"), kFile);
}

TEST_F(CfgctlApply, MakesAProjectFileThatIsNotThere)
{
    EXPECT_EQ(outcome({"apply", "stop.ini", "Wand", "Dikte", "70", "--project=nieuw.ipr"}),
              "0 {\"accepted\":true,\"value\":\"70\"}\n");
    EXPECT_EQ(read("nieuw.ipr"), "[Wand]\nDikte=70");
    EXPECT_EQ(read("stop.ini"), kFile);
}

TEST_F(CfgctlApply, SavesADrawingElsewhere)
{
    copyDrawing("r2000", "plan.dxf");
    const std::string former = read("plan.dxf");
    EXPECT_EQ(outcome({"apply", "stop.ini", "Wand", "Dikte", "70", "--drawing=plan.dxf",
                       "--save-as=kopie.dxf"}),
              "0 {\"accepted\":true,\"value\":\"70\"}\n");
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(held("kopie.dxf"), R"({"Wand":{"Dikte":"70"}})");
    expectNothingChanged();
}

// The value is good, but it was not stored.
TEST_F(CfgctlApply, TellsAFileThatMayNotBeWritten)
{
    setMode("stop.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"apply", "stop.ini", "Wand", "Dikte", "120", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"accepted\":true,\"value\":\"120\"}\n");
    EXPECT_EQ(result.err,
              pathOf("stop.ini") + " : Could not open file for write \n" + pathOf("stop.ini")
                  + "\nSetting was not written. \nCheck if ini-file is present and \n"
                    "if the file is not read-only\n");
    expectNothingChanged();
}

TEST_F(CfgctlApply, TellsADrawingThatHasNoPlace)
{
    copyDrawing("r12", "oud.dxf");
    const std::string former = read("oud.dxf");
    const ProgramResult result
        = run({"apply", "stop.ini", "Wand", "Dikte", "120", "--drawing=oud.dxf", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"accepted\":true,\"value\":\"120\"}\n");
    EXPECT_THAT(result.err, HasSubstr("oud.dxf: its version (AC1009) is R12 or older."));
    EXPECT_EQ(read("oud.dxf"), former);
    expectNothingChanged();
}

TEST_F(CfgctlApply, SaysWhyItRefuses)
{
    const ProgramResult refused = run({"apply", "stop.ini", "Wand", "Dikte", "1x2"});
    EXPECT_EQ(refused.out, "12\n");
    EXPECT_EQ(refused.err, "cfgctl: \"1x2\" is refused: it is no value of the type of \"Dikte\"\n");
    const ProgramResult absent = run({"apply", "stop.ini", "Wand", "dikte", "1"});
    EXPECT_EQ(absent.out, "");
    EXPECT_EQ(absent.err, noSetting("Wand", "dikte"));
}

// --- remove --------------------------------------------------------------------------------------

class CfgctlRemove : public CfgctlEditModel
{
};

constexpr const char* kRemoved = "0 {\"removed\":true}\n";
constexpr const char* kNotRemoved = "1 {\"removed\":false}\n";

TEST_F(CfgctlRemove, TakesALineOutOfTheFile)
{
    const ProgramResult result = run({"remove", "stop.ini", "Wand", "Dikte"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("stop.ini"),
              ";remark\nTaal=NL\nMaat=1\n\n[Wand]\nArceren=1\n"
              "Laag=21-WAND,2,CONTINUOUS,0.50\n[Leeg]\n");
    EXPECT_EQ(outcome({"remove", "stop.ini", "Algemeen", "Taal"}), kRemoved);
    EXPECT_EQ(get({"stop.ini", "Taal"}), "(none)");
}

TEST_F(CfgctlRemove, WhatIsNotThereChangesNothing)
{
    for (const Words& words :
         {Words {"Wand", "Kleur"}, Words {"Wand", "dikte"}, Words {"Deur", "Dikte"},
          Words {"wand", "Dikte"}, Words {"Algemeen", "Dikte"}, Words {"Wand", ""}}) {
        EXPECT_EQ(outcome({"remove", "stop.ini", words[0], words[1]}),
                  kNotRemoved + noSetting(words[0], words[1]));
    }
    expectNothingChanged();
    const ProgramResult result = run({"remove", "weg.ini", "Wand", "Dikte", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"removed\":false}\n");
    EXPECT_NE(result.err, "");
    EXPECT_FALSE(folder.has(L"weg.ini"));
}

TEST_F(CfgctlRemove, AProjectsSettingFallsBackToTheFile)
{
    EXPECT_EQ(outcome({"remove", "stop.ini", "Algemeen", "Maat", "--project=werk/stop.ipr"}),
              kRemoved);
    EXPECT_EQ(read("werk/stop.ipr"), "[Wand]\nHoogte=2600\n");
    EXPECT_EQ(read("stop.ini"), kFile);
    EXPECT_EQ(outcome({"remove", "stop.ini", "Wand", "Hoogte", "--project=werk/stop.ipr"}),
              kRemoved);
    EXPECT_EQ(read("werk/stop.ipr"), "[Wand]\n");
}

TEST_F(CfgctlRemove, ADrawingsSettingFallsBackToTheProject)
{
    copyDrawing("r2000", "werk/plan.dxf");
    run({"set", "stop.ini", "Maat", "3", "--drawing=werk/plan.dxf"});
    run({"set", "stop.ini", "[Wand]Dikte", "70", "--drawing=werk/plan.dxf"});
    EXPECT_EQ(outcome({"remove", "stop.ini", "Algemeen", "Maat", "--drawing=werk/plan.dxf"}),
              kRemoved);
    EXPECT_EQ(held("werk/plan.dxf"), R"({"Wand":{"Dikte":"70"}})");
    EXPECT_EQ(get({"stop.ini", "Maat", "--drawing=werk/plan.dxf"}), "2");
    expectNothingChanged();
}

TEST_F(CfgctlRemove, WithADrawingOnlyItsOwnSettingsGo)
{
    copyDrawing("r2000", "plan.dxf");
    const std::string former = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    const Words words {"remove", "stop.ini", "Wand", "Dikte", "--drawing=plan.dxf"};
    EXPECT_EQ(outcome(words), std::string(kNotRemoved) + "Can not remove setting in Local Mode\n");
    Words dutch = words;
    dutch.insert(dutch.end(), {"--language", "19"});
    EXPECT_EQ(outcome(dutch),
              std::string(kNotRemoved) + "Kan instelling niet verwijderen in Lokale modus\n");
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    expectNothingChanged();
}

TEST_F(CfgctlRemove, TheFirstLineThatBeginsWithTheNameGoes)
{
    write("stop.ini", "[Wand]\nDikten=70,100\nDikte=100\n");
    EXPECT_EQ(outcome({"remove", "stop.ini", "Wand", "Dikte"}), kRemoved);
    EXPECT_EQ(read("stop.ini"), "[Wand]\nDikte=100\n");
}

TEST_F(CfgctlRemove, TellsAFileThatMayNotBeWritten)
{
    setMode("stop.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"remove", "stop.ini", "Wand", "Dikte", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"removed\":false}\n");
    EXPECT_EQ(result.err, "Ini-file not found: " + pathOf("stop.ini") + "\n");
    expectNothingChanged();
}

// --- remove-category -----------------------------------------------------------------------------

class CfgctlRemoveCategory : public CfgctlEditModel
{
protected:
    static constexpr const char* kDone = "0 {\"status\":5100}\nRubriek succesvol verwijderd.\n";
    static constexpr const char* kNotDone = "1 {\"status\":-5001}\n";
    static constexpr const char* kNotAll
        = "Een van de onderliggende instellingen kon niet verwijderd worden. "
          "Daarom kan de rubriek niet verwijderd worden.\n";
};

TEST_F(CfgctlRemoveCategory, TakesItOutOfTheFile)
{
    const ProgramResult result = run({"remove-category", "stop.ini", "Wand"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "Rubriek succesvol verwijderd.\n");
    EXPECT_EQ(read("stop.ini"), ";remark\nTaal=NL\nMaat=1\n\n[Leeg]\n");
}

TEST_F(CfgctlRemoveCategory, AnEmptyOneToo)
{
    EXPECT_EQ(outcome({"remove-category", "stop.ini", "Leeg"}), kDone);
    EXPECT_EQ(read("stop.ini"),
              ";remark\nTaal=NL\nMaat=1\n\n[Wand]\nDikte=100\n"
              "Arceren=1\nLaag=21-WAND,2,CONTINUOUS,0.50\n");
}

TEST_F(CfgctlRemoveCategory, RemarksStay)
{
    write("stop.ini", "[A]\n;of A\nX=1\n[B]\nX=2\n");
    EXPECT_EQ(outcome({"remove-category", "stop.ini", "A"}), kDone);
    EXPECT_EQ(read("stop.ini"), ";of A\n[B]\nX=2\n");
}

TEST_F(CfgctlRemoveCategory, WhatIsNotThereChangesNothing)
{
    for (const std::string name : {"Deur", "wand", ""}) {
        EXPECT_EQ(outcome({"remove-category", "stop.ini", name}),
                  kNotDone + ("cfgctl: there is no category \"" + name)
                      + "\"; upper and lower case differ\n");
    }
    expectNothingChanged();
    EXPECT_EQ(run({"remove-category", "weg.ini", "Wand"}).exitStatus, 1);
    EXPECT_FALSE(folder.has(L"weg.ini"));
}

// Each turn takes the first setting out of one level; those of the project need a second one.
TEST_F(CfgctlRemoveCategory, OfAProjectTheSettingsGoAndTheHeaderStays)
{
    write("werk/stop.ipr", "[Wand]\nHoogte=2600\n");
    EXPECT_EQ(outcome({"remove-category", "stop.ini", "Wand", "--project=werk/stop.ipr"}), kDone);
    EXPECT_EQ(read("werk/stop.ipr"), "[Wand]\n");
    EXPECT_EQ(read("stop.ini"), ";remark\nTaal=NL\nMaat=1\n\n[Leeg]\n");
}

TEST_F(CfgctlRemoveCategory, WithADrawingItsRecordsGoAndOthersKeepItThere)
{
    copyDrawing("r2000", "plan.dxf");
    write("stop.ini", "[Wand]\nDikte=100\n");
    run({"set", "stop.ini", "[Wand]Kleur", "3", "--drawing=plan.dxf"});
    EXPECT_EQ(outcome({"remove-category", "stop.ini", "Wand", "--drawing=plan.dxf"}),
              std::string(kNotDone) + "Can not remove setting in Local Mode\n"
                  + "Can not remove setting in Local Mode\n" + kNotAll);
    EXPECT_EQ(read("stop.ini"), "[Wand]\nDikte=100\n");
}

TEST_F(CfgctlRemoveCategory, OfADrawingAloneGoesWhole)
{
    copyDrawing("r2000", "plan.dxf");
    write("stop.ini", "A=1\n");
    run({"set", "stop.ini", "[Wand]Kleur", "3", "--drawing=plan.dxf"});
    EXPECT_EQ(held("plan.dxf"), R"({"Wand":{"Kleur":"3"}})");
    EXPECT_EQ(outcome({"remove-category", "stop.ini", "Wand", "--drawing=plan.dxf"}), kDone);
    EXPECT_EQ(held("plan.dxf").find("Wand"), std::string::npos);
    EXPECT_EQ(read("stop.ini"), "A=1\n");
}

TEST_F(CfgctlRemoveCategory, TellsAFileThatMayNotBeWritten)
{
    setMode("stop.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"remove-category", "stop.ini", "Wand", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    const std::string once = "Ini-file not found: " + pathOf("stop.ini") + "\n";
    EXPECT_EQ(result.err, once + once + once + kNotAll);
    expectNothingChanged();
}

} // namespace

} // namespace corma::testing
