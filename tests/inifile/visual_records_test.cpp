// Records of how something is drawn, and the drawing that is made ready for them.

#include "host/host.h"
#include "inifile/InifileTest.h"
#include <corma/xx_VisParam.h>

using corma::host::Opened;
using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

constexpr const wchar_t* kNotice = L"\nLijn not found in configurationfile\n";

std::wstring nameOf(AcDbObjectId id)
{
    const Opened<AcDbSymbolTableRecord> record(id);
    std::wstring name;
    if (record) {
        record->getName(name);
    }
    return name;
}

template<class Table> bool has(const wchar_t* name)
{
    Opened<Table> table;
    acdbHostApplicationServices()->workingDatabase()->getSymbolTable(table.out());
    return table->has(name);
}

class VisualRecords : public InifileTest
{
protected:
    void SetUp() override { ASSERT_TRUE(corma::newDocument(folder.path(L"h.dxf").c_str())); }

    template<class Info>
    Info read(const std::string& value, int (xx_Inifile::*get)(wchar_t*, Info*, int))
    {
        Info info;
        read(value, get, info);
        return info;
    }

    template<class Info>
    void read(const std::string& value, int (xx_Inifile::*get)(wchar_t*, Info*, int), Info& info)
    {
        Ini ini(folder.write(L"v.ini", "Lijn=" + value + "\n"));
        wchar_t ident[] = L"Lijn";
        EXPECT_EQ((ini.file.*get)(ident, &info, 1), RTNORM);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }

    xx_VisParam visual(const std::string& value) { return read(value, &xx_Inifile::getVisParam); }
};

TEST_F(VisualRecords, HoldTheFourFields)
{
    const xx_VisParam info = visual("Muur,3,CENTER,0.35");
    EXPECT_EQ(nameOf(info.layerId), L"Muur");
    EXPECT_EQ(nameOf(info.linetypeId), L"CENTER");
    EXPECT_EQ(info.colorIndex, 3);
    EXPECT_EQ(info.lineWeight, 35);
}

TEST_F(VisualRecords, LeaveTheLayerAndTheLinetypeInTheDrawing)
{
    EXPECT_FALSE(has<AcDbLayerTable>(L"Nieuw"));
    EXPECT_FALSE(has<AcDbLinetypeTable>(L"DASHED"));
    visual("Nieuw,1,DASHED,0.25");
    EXPECT_TRUE(has<AcDbLayerTable>(L"Nieuw"));
    EXPECT_TRUE(has<AcDbLinetypeTable>(L"DASHED"));
    ASSERT_TRUE(corma::saveDocument());
    ASSERT_TRUE(corma::openDocument(folder.path(L"h.dxf").c_str()));
    EXPECT_TRUE(has<AcDbLayerTable>(L"Nieuw"));
    EXPECT_TRUE(has<AcDbLinetypeTable>(L"DASHED"));
}

TEST_F(VisualRecords, OfADrawingThatHasAllLeaveItUnchanged)
{
    visual("0,1,Continuous,0.25");
    EXPECT_FALSE(corma::isDocumentModified());
}

struct Field
{
    const char* sentence;
    const char* value;
    int color;
    int weight;
};

class Fields : public VisualRecords, public ::testing::WithParamInterface<Field>
{
};

TEST_P(Fields, AreRead)
{
    const xx_VisParam info = visual(GetParam().value);
    EXPECT_EQ(info.colorIndex, GetParam().color);
    EXPECT_EQ(info.lineWeight, GetParam().weight);
}

INSTANTIATE_TEST_SUITE_P(
    VisualRecords, Fields,
    ::testing::Values(Field {"TheWordForTheLayer", "L,BYLAYER,CONTINUOUS,0.25", 256, 25},
                      Field {"TheWordForTheBlock", "L,BYBLOCK,CONTINUOUS,BYBLOCK", 0, -2},
                      Field {"WordsInSmallLetters", "L,bylayer,CONTINUOUS,default", 256, -3},
                      Field {"WordsInMixedLetters", "L,ByBlock,CONTINUOUS,ByLayer", 0, -1},
                      Field {"BothWordsForTheDefault", "L,7,CONTINUOUS,BYDEFAULT", 7, -3},
                      Field {"AWeightThatIsLegal", "L,7,CONTINUOUS,0.13", 7, 13},
                      Field {"AWeightBetweenTwo", "L,7,CONTINUOUS,0.31", 7, 30},
                      Field {"AWeightBeyondAll", "L,7,CONTINUOUS,1e300", 7, 211},
                      Field {"AColourThatIsNoNumber", "L,rood,CONTINUOUS,0.5", 0, 50},
                      Field {"AnEmptyLinetypeShiftsTheWeight", "L,7,,0.5", 7, 0},
                      Field {"AnEmptyValue", "", 0, 0}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(VisualRecords, AnEmptyFieldMovesThoseBehindItUp)
{
    const xx_VisParam info = visual("L,7,,0.5");
    EXPECT_TRUE(info.linetypeId.isNull()); // "0.5" is no linetype
    const xx_VisParam other = visual("L,,CENTER,0.5");
    EXPECT_EQ(other.colorIndex, 0); // of "CENTER"
    EXPECT_TRUE(other.linetypeId.isNull()); // of "0.5"
}

TEST_F(VisualRecords, UnknownLinetypesAreNull)
{
    EXPECT_TRUE(visual("L,7,KENT NIEMAND,0.5").linetypeId.isNull());
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(VisualRecords, AMissingSettingIsTheRecordOfEmptyFields)
{
    Ini ini(folder.write(L"v.ini", ""));
    wchar_t ident[] = L"Lijn";
    xx_VisParam info;
    info.colorIndex = 99;
    info.lineWeight = 99;
    EXPECT_EQ(ini.file.getVisParam(ident, &info, 1), RTNORM);
    EXPECT_TRUE(info.layerId.isNull());
    EXPECT_EQ(info.colorIndex, 0);
    EXPECT_EQ(info.lineWeight, 0);
    EXPECT_EQ(services.allPrinted(), kNotice);
    EXPECT_EQ(ini.file.getVisParam(ident, &info, 0), RTNORM);
    EXPECT_EQ(services.allPrinted(), kNotice);
}

TEST_F(VisualRecords, OfTextsHaveFourMoreFields)
{
    const auto info = read("L,1,CONTINUOUS,0.5,Standard,2.5,0.8,15", &xx_Inifile::getTextInfo);
    EXPECT_EQ(nameOf(info.layerId), L"L");
    EXPECT_EQ(info.lineWeight, 50);
    EXPECT_EQ(nameOf(info.textStyleId), L"Standard");
    EXPECT_EQ(info.height, 2.5);
    EXPECT_EQ(info.widthFactor, 0.8);
    EXPECT_EQ(info.obliqueAngle, 15.0);
}

TEST_F(VisualRecords, AnUnknownTextStyleLeavesTheIdAlone)
{
    xx_TextInfo info;
    read("L,1,CONTINUOUS,0.5,Standard,2.5,1,0", &xx_Inifile::getTextInfo, info);
    const AcDbObjectId before = info.textStyleId;
    read("L,1,CONTINUOUS,0.5,Onbekend,3.5,1,0", &xx_Inifile::getTextInfo, info);
    EXPECT_EQ(info.textStyleId, before);
    EXPECT_EQ(info.height, 3.5);
}

TEST_F(VisualRecords, TheFirstFourFieldsOfATextAreCountedWithTheEmptyOnes)
{
    const auto info = read("L,,,,Standard,2.5", &xx_Inifile::getTextInfo);
    EXPECT_EQ(nameOf(info.textStyleId), L"Standard");
    EXPECT_EQ(info.height, 2.5);
    const auto shortOne = read("L,1,CONTINUOUS,0.5", &xx_Inifile::getTextInfo);
    EXPECT_TRUE(shortOne.textStyleId.isNull());
    EXPECT_EQ(shortOne.height, 0.0);
}

TEST_F(VisualRecords, OfHatchesHavePatternAngleAndScale)
{
    const auto info = read("L,1,CONTINUOUS,0.5,ANSI31,45,1.5", &xx_Inifile::getHatchInfo);
    EXPECT_STREQ(info.patternName, L"ANSI31");
    EXPECT_EQ(info.angle, 45.0);
    EXPECT_EQ(info.scale, 1.5);
    const auto longOne
        = read("L,1,CONTINUOUS,0.5," + std::string(600, 'P'), &xx_Inifile::getHatchInfo);
    EXPECT_EQ(std::wstring(longOne.patternName).size(), 499U - 19U); // a value has 499 characters
}

TEST_F(VisualRecords, AMissingTextOrHatchIsToldOnceWhateverIsAsked)
{
    Ini ini(folder.write(L"v.ini", ""));
    wchar_t ident[] = L"Lijn";
    xx_TextInfo text;
    EXPECT_EQ(ini.file.getTextInfo(ident, &text, 0), RTNORM);
    EXPECT_EQ(services.allPrinted(), kNotice);
    xx_VisHatchInfo hatch;
    EXPECT_EQ(ini.file.getHatchInfo(ident, &hatch, 1), RTNORM);
    EXPECT_EQ(services.allPrinted(), std::wstring(kNotice) + kNotice);
}

TEST_F(VisualRecords, WithoutADrawingAllIdsAreNull)
{
    corma::closeDocument();
    const auto info = read("L,1,CONTINUOUS,0.35,Standard,2.5,1,0", &xx_Inifile::getTextInfo);
    EXPECT_TRUE(info.layerId.isNull());
    EXPECT_TRUE(info.linetypeId.isNull());
    EXPECT_TRUE(info.textStyleId.isNull());
    EXPECT_EQ(info.lineWeight, 35);
}

// --- layers --------------------------------------------------------------------------------------

using MakeLayer = VisualRecords;

TEST_F(MakeLayer, TellsWhetherItMadeOne)
{
    bool created = false;
    EXPECT_EQ(xx_make_layer(L"0", nullptr, &created), RTNORM);
    EXPECT_FALSE(created);
    EXPECT_EQ(xx_make_layer(L"Nieuw", nullptr, &created), RTNORM);
    EXPECT_TRUE(created);
    created = false;
    EXPECT_EQ(xx_make_layer(L"NIEUW", nullptr, &created), RTNORM);
    EXPECT_FALSE(created);
}

TEST_F(MakeLayer, GivesANewLayerTheContinuousLinetype)
{
    xx_make_layer(L"Nieuw");
    Opened<AcDbLayerTable> layers;
    acdbHostApplicationServices()->workingDatabase()->getSymbolTable(layers.out());
    AcDbObjectId id;
    ASSERT_EQ(layers->getIdAt(L"Nieuw", id), Acad::eOk);
    const Opened<AcDbLayerTableRecord> layer(id);
    EXPECT_EQ(nameOf(layer->linetypeObjectId()), L"Continuous");
}

TEST_F(MakeLayer, BringsAnErasedOneBack)
{
    xx_make_layer(L"Weg");
    AcDbObjectId id;
    {
        Opened<AcDbLayerTable> layers;
        acdbHostApplicationServices()->workingDatabase()->getSymbolTable(layers.out());
        ASSERT_EQ(layers->getIdAt(L"Weg", id), Acad::eOk);
        const Opened<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
        ASSERT_EQ(layer->erase(), Acad::eOk);
    }
    EXPECT_FALSE(has<AcDbLayerTable>(L"Weg"));
    bool created = false;
    EXPECT_EQ(xx_make_layer(L"weg", nullptr, &created), RTNORM);
    EXPECT_FALSE(created);
    Opened<AcDbLayerTable> layers;
    acdbHostApplicationServices()->workingDatabase()->getSymbolTable(layers.out());
    AcDbObjectId back;
    ASSERT_EQ(layers->getIdAt(L"Weg", back), Acad::eOk);
    EXPECT_EQ(back, id);
}

TEST_F(MakeLayer, AnErasedOneThatSomeoneHasOpenCannotComeBack)
{
    xx_make_layer(L"Weg");
    Opened<AcDbLayerTable> layers;
    acdbHostApplicationServices()->workingDatabase()->getSymbolTable(layers.out());
    AcDbObjectId id;
    ASSERT_EQ(layers->getIdAt(L"Weg", id), Acad::eOk);
    layers.close();
    const Opened<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
    layer->erase();
    EXPECT_EQ(xx_make_layer(L"Weg"), RTCAN);
}

TEST_F(MakeLayer, RefusesNoNameNoDrawingAndALockedTable)
{
    EXPECT_EQ(xx_make_layer(L""), RTCAN);
    EXPECT_EQ(xx_make_layer(nullptr), RTCAN);
    {
        Opened<AcDbLayerTable> writer;
        acdbHostApplicationServices()->workingDatabase()->getSymbolTable(writer.out(),
                                                                         AcDb::kForWrite);
        EXPECT_EQ(xx_make_layer(L"Nieuw"), RTERROR);
    }
    {
        Opened<AcDbLayerTable> reader;
        acdbHostApplicationServices()->workingDatabase()->getSymbolTable(reader.out());
        EXPECT_EQ(xx_make_layer(L"Nieuw"), RTERROR); // it cannot be opened for write
    }
    corma::closeDocument();
    EXPECT_EQ(xx_make_layer(L"Nieuw"), RTERROR);
    AcDbDatabase other;
    EXPECT_EQ(xx_make_layer(L"Nieuw", &other), RTNORM);
}

} // namespace
