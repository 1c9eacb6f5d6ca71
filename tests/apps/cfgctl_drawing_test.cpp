// cfgctl drawing and record: what a drawing holds, and records that name what is in it.

#include "CfgctlTest.h"
#include "DrawingChanges.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlDrawing : public CfgctlTest
{
};

TEST_F(CfgctlDrawing, GivesADocumentOfAllThatItHolds)
{
    copyDrawing("damaged/blocks_insert_themselves", "plan.dxf");
    EXPECT_EQ(json({"drawing", "--drawing", "plan.dxf"}),
              R"({"version":"AC1015","blocks":["*Model_Space","*Paper_Space","A","B"],)"
              R"("layers":["0","WAND"],"linetypes":[],"textStyles":[],"references":[)"
              R"({"handle":"30","block":"A","space":"*Model_Space"},)"
              R"({"handle":"34","block":"B","space":"A"},)"
              R"({"handle":"38","block":"A","space":"B"},)"
              R"({"handle":"39","block":"B","space":"B"}],)"
              R"("settings":{"TOOL.INI":{"Algemeen":{"Taal":"NL"},"Tekst":{"Hoogte":"2.5"}}}})");
}

TEST_F(CfgctlDrawing, GivesTheSettingsByFileAndChapter)
{
    copyDrawing("r2000", "plan.dxf");
    const Json document = Json::parse(json({"drawing", "--drawing", "plan.dxf"}));
    EXPECT_EQ(document["settings"].dump(),
              R"({"TOOL.INI":{"Algemeen":{"Taal":"NL"},)"
              R"("Tekst":{"Hoogte":"2.5","Stijl":"NOTITIE",)"
              "\"Opschrift\":\"Ma\xC3\x9F 5\xC2\xB0, co\xC3\xB6rdinaten \xC2\xB1"
              "0,5 \xE2\x82\xAC\"},"
              R"("A=B":{"Gelijk":"ja"},)"
              "\"Ma\xC3\x9Flinien\":{\"Kleur\":\"3\"}}}");
}

TEST_F(CfgctlDrawing, StandsInAListForPeople)
{
    copyDrawing("damaged/insert_of_nothing", "plan.dxf");
    write("tool.ini", "");
    run({"set", "tool.ini", "[A:B]Maat", "2", "--drawing=plan.dxf"});
    const ProgramResult result = run({"drawing", "--drawing", "plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "version AC1015\n"
              "blocks\n"
              "  *Model_Space\n"
              "  *Paper_Space\n"
              "layers\n"
              "  0\n"
              "  WAND\n"
              "linetypes\n"
              "text styles\n"
              "references\n"
              "  30  (no block)  in *Model_Space\n"
              "settings\n"
              "  TOOL.INI\n"
              "    [Algemeen]\n"
              "      Taal=NL\n"
              "    [Tekst]\n"
              "      Hoogte=2.5\n"
              "    [A:B]\n"
              "      Maat=2\n");
}

TEST_F(CfgctlDrawing, OfR12HasNoSettings)
{
    copyDrawing("r12_binary", "plan.dxf");
    const Json document = Json::parse(json({"drawing", "--drawing", "plan.dxf"}));
    EXPECT_EQ(document["version"], "AC1009");
    EXPECT_EQ(document["settings"].dump(), "{}");
    EXPECT_EQ(document["references"].size(), 12U);
}

TEST_F(CfgctlDrawing, AgreesWithLookups)
{
    workIn = CORMA_EXAMPLES;
    const Json document = Json::parse(json({"drawing", "--drawing=project/woonhuis.dxf"}));
    for (const auto& chapter : document["settings"]["PLATTEGROND.INI"].items()) {
        for (const auto& setting : chapter.value().items()) {
            const std::string prefix = chapter.key() == "Algemeen" ? "" : "[" + chapter.key() + "]";
            const Json levels
                = Json::parse(json({"levels", "plattegrond.ini", prefix + setting.key(),
                                    "--drawing=project/woonhuis.dxf"}));
            EXPECT_EQ(levels[3]["source"], "drawing");
            EXPECT_EQ(levels[3]["value"], setting.value()) << setting.key();
        }
    }
}

class CfgctlRecord : public CfgctlTest
{
protected:
    CfgctlRecord()
    {
        write("tool.ini",
              "[A]\nLijn=Nieuw,3,DASHED,0.35\n"
              "Oud=uit,bylayer,streep,default\n"
              "Tekst=Nieuw,3,DASHED,0.35,NOTITIE,2.5,0.8,15\n"
              "Arcering=Nieuw,3,DASHED,0.35,ANSI31,45,2\n");
        copyDrawing("r2000", "plan.dxf");
    }
};

TEST_F(CfgctlRecord, NamesWhatTheIdsStandFor)
{
    EXPECT_EQ(json({"record", "tool.ini", "[A]Lijn", "--as=vis", "--drawing=plan.dxf"}),
              R"({"linetypeId":"DASHED","layerId":"Nieuw","colorIndex":3,"lineWeight":35})");
    EXPECT_EQ(json({"record", "tool.ini", "[A]Tekst", "--as=text", "--drawing=plan.dxf"}),
              R"({"linetypeId":"DASHED","layerId":"Nieuw","colorIndex":3,"lineWeight":35,)"
              R"("textStyleId":"NOTITIE","height":2.5,"widthFactor":0.8,"obliqueAngle":15.0})");
    EXPECT_EQ(json({"record", "tool.ini", "[A]Arcering", "--as=hatch", "--drawing=plan.dxf"}),
              R"({"linetypeId":"DASHED","layerId":"Nieuw","colorIndex":3,"lineWeight":35,)"
              R"("scale":2.0,"angle":45.0,"patternName":"ANSI31"})");
}

TEST_F(CfgctlRecord, HasNoIdsWithoutADrawing)
{
    EXPECT_EQ(json({"record", "tool.ini", "[A]Tekst", "--as", "text"}),
              R"({"linetypeId":null,"layerId":null,"colorIndex":3,"lineWeight":35,)"
              R"("textStyleId":null,"height":2.5,"widthFactor":0.8,"obliqueAngle":15.0})");
}

TEST_F(CfgctlRecord, PreparesTheDrawing)
{
    copyDrawing("r2000", "eerst.dxf");
    run({"record", "tool.ini", "[A]Lijn", "--as=vis", "--drawing=plan.dxf"});
    const Json document = Json::parse(json({"drawing", "--drawing=plan.dxf"}));
    EXPECT_EQ(document["layers"].back(), "Nieuw");
    EXPECT_EQ(document["linetypes"].back(), "DASHED");
    EXPECT_EQ(drawingChanges(pathOf("eerst.dxf"), pathOf("plan.dxf")),
              "- TABLE\n- TABLE\n+ TABLE\n+ LTYPE\n+ TABLE\n+ LAYER\n");
}

TEST_F(CfgctlRecord, LeavesADrawingThatIsReadyAlone)
{
    const std::string former = read("plan.dxf");
    const ProgramResult result
        = run({"record", "tool.ini", "[A]Oud", "--as=vis", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "linetypeId  STREEP\n"
              "layerId     UIT\n"
              "colorIndex  256\n"
              "lineWeight  -3\n");
    EXPECT_EQ(read("plan.dxf"), former);
}

TEST_F(CfgctlRecord, PreparesACopyWhenItIsAskedTo)
{
    const std::string former = read("plan.dxf");
    run({"record", "tool.ini", "[A]Lijn", "--as=vis", "--drawing=plan.dxf", "--save-as=kopie.dxf"});
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_THAT(json({"drawing", "--drawing=kopie.dxf"}), HasSubstr("\"Nieuw\""));
}

TEST_F(CfgctlRecord, PreparesR12Too)
{
    copyDrawing("r12", "oud.dxf");
    EXPECT_EQ(run({"record", "tool.ini", "[A]Lijn", "--as=vis", "--drawing=oud.dxf"}).exitStatus,
              0);
    EXPECT_THAT(json({"drawing", "--drawing=oud.dxf"}), HasSubstr("\"Nieuw\""));
}

TEST_F(CfgctlRecord, IsEmptyForASettingThatIsNotThere)
{
    for (const char* kind : {"vis", "text", "hatch"}) {
        const ProgramResult result = run({"record", "tool.ini", "[A]Weg", "--as", kind});
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_TRUE(result.out.starts_with("linetypeId") && result.out.find("(none)") != 0)
            << result.out;
        EXPECT_EQ(result.err, "[A]Weg not found in configurationfile\n") << kind;
    }
}

TEST_F(CfgctlRecord, FailsWhenThePreparedDrawingCannotBeWritten)
{
    const ProgramResult result = run(
        {"record", "tool.ini", "[A]Lijn", "--as=vis", "--drawing=plan.dxf", "--save-as=weg/x.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr("weg/x.dxf could not be written ("));
}

} // namespace

} // namespace corma::testing
