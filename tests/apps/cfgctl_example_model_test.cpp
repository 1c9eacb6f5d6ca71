// The family of files in examples/: what each of them adds is seen in the model.

#include "CfgctlTest.h"

#include <array>
#include <set>
#include <sstream>

namespace corma::testing {

namespace {

using Keys = std::set<std::string>;

// What a setting has that stands in a configuration file alone.
const Json kUsual = Json::parse(R"({
    "longDescription": "", "shortDescription": "", "bitmap": "", "type": 0, "value": "",
    "choices": "", "maxValue": "", "minValue": "", "readOnly": "false", "level": "", "fileTypes": "",
    "globalValue": "***KV_BESTAAT_NIET***", "projectValue": "***KV_BESTAAT_NIET***",
    "isProject": false, "isLocal": false, "rgb": 0, "viewAccess": 0, "editAccess": 0})");

class CfgctlExampleModel : public CfgctlTest
{
protected:
    CfgctlExampleModel() { workIn = CORMA_EXAMPLES; }

    Json model(Words arguments) const
    {
        arguments.insert(arguments.begin(), {"model", "plattegrond.ini"});
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
        return Json::parse(result.out, nullptr, false);
    }

    // The keys that have no other value than the usual one in all of the model.
    static Keys unused(const Json& model)
    {
        Keys keys;
        for (const auto& usual : kUsual.items()) {
            keys.insert(usual.key());
        }
        for (const Json& category : model["categories"]) {
            for (const Json& setting : category["settings"]) {
                for (const auto& usual : kUsual.items()) {
                    if (setting[usual.key()] != usual.value() && setting[usual.key()] != "") {
                        keys.erase(usual.key());
                    }
                }
            }
        }
        return keys;
    }

    static Json settingOf(const Json& model, const std::string& chapter, const std::string& name)
    {
        for (const Json& category : model["categories"]) {
            for (const Json& setting : category["settings"]) {
                if (category["name"] == chapter && setting["name"] == name) {
                    return setting;
                }
            }
        }
        return {};
    }
};

TEST_F(CfgctlExampleModel, UsesEveryAttributeOfAFile)
{
    for (const char* language : {"9", "19"}) {
        EXPECT_EQ(unused(model({"--language", language})),
                  Keys({"globalValue", "projectValue", "isProject", "isLocal"}))
            << language;
    }
}

TEST_F(CfgctlExampleModel, UsesTheLevelOfTheProject)
{
    for (const char* language : {"9", "19"}) {
        EXPECT_EQ(unused(model({"--project", "project/plattegrond.ipr", "--language", language})),
                  Keys({"projectValue", "isLocal"}))
            << language;
    }
}

TEST_F(CfgctlExampleModel, UsesEveryAttributeOnTheDrawing)
{
    for (const char* language : {"9", "19"}) {
        EXPECT_EQ(unused(model({"--drawing=project/woonhuis.dxf", "--language", language})), Keys())
            << language;
    }
}

TEST_F(CfgctlExampleModel, HasEveryTypeAndImagesOfEveryLevel)
{
    std::set<int> types;
    std::set<int> images;
    const Words drawing = {"--drawing=project/woonhuis.dxf"};
    const Json document = model(drawing);
    for (const Json& category : document["categories"]) {
        for (const Json& setting : category["settings"]) {
            types.insert(setting["type"].get<int>());
        }
        const ProgramResult rows
            = run({"rows", "plattegrond.ini", category["name"].get<std::string>(), "--access=20",
                   drawing.front()});
        for (const Json& row : Json::parse(rows.out)) {
            images.insert(row["image"].get<int>());
        }
    }
    EXPECT_EQ(types, (std::set<int> {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(images, (std::set<int> {0, 1, 2, 3, 7, 8}));
}

TEST_F(CfgctlExampleModel, StacksItsLevels)
{
    const Json setting
        = settingOf(model({"--drawing=project/woonhuis.dxf"}), "Algemeen", "ProjectNaam");
    EXPECT_EQ(setting["value"], "Woonhuis Lindelaan 14, begane grond");
    EXPECT_EQ(setting["projectValue"], "Woonhuis Lindelaan 14");
    EXPECT_EQ(setting["globalValue"], "(naamloos)");
    EXPECT_EQ(setting["isLocal"], true);
    EXPECT_EQ(setting["isProject"], false);
}

TEST_F(CfgctlExampleModel, SpeaksItsLanguages)
{
    const Json english = settingOf(model({}), "Ruimten", "Decimalen");
    const Json dutch = settingOf(model({"--language=19"}), "Ruimten", "Decimalen");
    EXPECT_EQ(english["shortDescription"], "Number of decimals of an area.");
    EXPECT_EQ(dutch["shortDescription"], "Aantal decimalen van een oppervlakte.");
}

// The choices of all options.
Keys choicesIn(const Json& model)
{
    Keys choices;
    for (const Json& category : model["categories"]) {
        for (const Json& setting : category["settings"]) {
            std::istringstream words(setting["choices"].get<std::string>());
            for (std::string word; std::getline(words, word, ',');) {
                choices.insert(word);
            }
        }
    }
    return choices;
}

TEST_F(CfgctlExampleModel, HasWordsForItsChoices)
{
    const auto table
        = Json::parse(run({"sql", "woorden.db3", "SELECT Key FROM Keys", "--json"}).out);
    const Keys choices = choicesIn(model({}));
    for (const Json& key : table["columns"][0]["values"]) {
        EXPECT_EQ(choices.count(key.get<std::string>()), 1U) << key << " can be chosen nowhere";
    }
    const Json material = settingOf(model({}), "Trappen", "Materiaal");
    const Json finish = settingOf(model({}), "Trappen", "Afwerking");
    EXPECT_EQ(material["type"], 11);
    EXPECT_EQ(finish["type"], 12);
    for (const Json& setting : {material, finish}) {
        for (const std::string& word : choicesIn(
                 Json::parse(R"({"categories":[{"settings":[)" + setting.dump() + R"(]}]})"))) {
            EXPECT_NE(run({"translate", "plattegrond.ini", word}).out, word + '\n');
        }
    }
}

TEST_F(CfgctlExampleModel, ShowsItsChoicesInTheLanguage)
{
    const std::vector<std::array<const char*, 3>> rows = {
        {"9", "Wood", "Oiled"},       {"12", "Bois", "Huil\xC3\xA9"}, {"7", "Holz", "Ge\xC3\xB6lt"},
        {"10", "Madera", "Aceitado"}, {"19", "Hout", "Geolied"},      {"25", "Wood", "Oiled"}};
    for (const auto& [language, material, finish] : rows) {
        const Json list = Json::parse(run({"rows", "plattegrond.ini", "Trappen",
                                           "--search=Materiaal+Afwerking", "--language", language})
                                          .out);
        ASSERT_EQ(list.size(), 2U) << language;
        EXPECT_EQ(list[0]["value"], material) << language;
        EXPECT_EQ(list[1]["value"], finish) << language;
    }
}

} // namespace

} // namespace corma::testing
