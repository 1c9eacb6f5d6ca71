#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include <corma/drawing_contents.h>

#include <gtest/gtest.h>
#include <memory>

using corma::DrawingContents;
using corma::host::Opened;

namespace corma::testing {

namespace {

std::string joined(const std::vector<std::wstring>& names)
{
    std::string text;
    for (const auto& name : names) {
        text += (text.empty() ? "" : ",") + toUtf8(name);
    }
    return text;
}

// "FILE [chapter] ident=value|ident=value", one chapter a line; control characters as they are.
std::string described(const std::vector<DrawingFile>& files)
{
    std::string text;
    for (const auto& file : files) {
        text += toUtf8(file.name) + "\n";
        for (const auto& chapter : file.chapters) {
            text += "  [" + toUtf8(chapter.name) + "]";
            for (const auto& setting : chapter.settings) {
                text += ' ' + toUtf8(setting.ident) + "=" + toUtf8(setting.value) + '|';
            }
            text += '\n';
        }
    }
    return text;
}

std::string described(const std::vector<DrawingReference>& references)
{
    std::string text;
    for (const auto& reference : references) {
        text += toUtf8(reference.handle) + ' ' + toUtf8(reference.block) + " in "
            + toUtf8(reference.space) + '\n';
    }
    return text;
}

class Contents : public OpenObjects
{
protected:
    // What a drawing of the test data holds.
    DrawingContents of(const std::string& name)
    {
        m_database = std::make_unique<AcDbDatabase>(false);
        const std::wstring path = fromUtf8(std::string(CORMA_TEST_DATA "/") + name + ".dxf");
        EXPECT_EQ(m_database->readDwgFile(path.c_str()), Acad::eOk) << name;
        auto contents = contentsOf(m_database.get());
        EXPECT_FALSE(m_database->isModified());
        EXPECT_EQ(host::openObjectCount(), 0);
        return std::move(contents).value_or(DrawingContents());
    }

    // A new drawing, to be filled by the test.
    AcDbDatabase& newDrawing()
    {
        m_database = std::make_unique<AcDbDatabase>();
        return *m_database;
    }

    AcDbDatabase& database() { return *m_database; }

    RecordingServices services;

private:
    std::unique_ptr<AcDbDatabase> m_database;
};

TEST_F(Contents, ThereAreNoneWithoutADrawing)
{
    EXPECT_FALSE(contentsOf().has_value());
}

TEST_F(Contents, OfTheWorkingDrawingNeedNoName)
{
    ASSERT_TRUE(corma::openDocument(fromUtf8(CORMA_TEST_DATA "/r2000.dxf").c_str()));
    EXPECT_EQ(contentsOf().value_or(DrawingContents()).version, L"AC1015");
    corma::closeDocument();
}

struct FileVersionRow
{
    const char* file;
    const wchar_t* version;
};

TEST_F(Contents, TellTheVersionAsItStandsInTheFile)
{
    for (const FileVersionRow& row :
         {FileVersionRow {"r12", L"AC1009"}, FileVersionRow {"r12_binary", L"AC1009"},
          FileVersionRow {"r13", L"AC1012"}, FileVersionRow {"r14", L"AC1014"},
          FileVersionRow {"r2018_binary", L"AC1032"}, FileVersionRow {"damaged/no_header", L""},
          FileVersionRow {"damaged/version_is_text", L"nieuwste"}}) {
        EXPECT_EQ(of(row.file).version, row.version) << row.file;
    }
}

TEST_F(Contents, NameTheRecordsOfTheTablesInTheirOrder)
{
    const DrawingContents contents = of("r2000");
    EXPECT_EQ(joined(contents.layers), "0,Balken,BEVROREN,UIT,VERGRENDELD");
    EXPECT_EQ(joined(contents.linetypes), "ByBlock,ByLayer,Continuous,STREEP,STREEPPUNT");
    EXPECT_EQ(joined(contents.textStyles), "Standard,NOTITIE");
    EXPECT_EQ(joined(contents.blocks),
              "*Model_Space,*Paper_Space,BOUT,Plaat,DEUR,*U1,*D1,*Paper_Space0");
}

TEST_F(Contents, LeaveErasedRecordsOut)
{
    AcDbDatabase& drawing = newDrawing();
    Opened<AcDbLayerTable> layers;
    ASSERT_EQ(drawing.getSymbolTable(layers.out(), AcDb::kForWrite), Acad::eOk);
    auto made = std::make_unique<AcDbLayerTableRecord>();
    made->setName(L"Weg");
    ASSERT_EQ(layers->add(made.get()), Acad::eOk);
    Opened<AcDbLayerTableRecord> layer(made.release());
    const AcDbObjectId id = layer->objectId();
    layers.close();
    EXPECT_EQ(recordName(id), std::nullopt) << "someone writes it";
    layer.close();
    EXPECT_EQ(joined(contentsOf(&drawing)->layers), "0,Weg");
    EXPECT_EQ(recordName(id), L"Weg");
    Opened<AcDbLayerTableRecord>(id, AcDb::kForWrite)->erase();
    EXPECT_EQ(joined(contentsOf(&drawing)->layers), "0");
    EXPECT_EQ(recordName(id), std::nullopt);
}

TEST_F(Contents, TellTheReferencesOfAllSpacesAndBlocks)
{
    EXPECT_EQ(described(of("r2000").references),
              "5A Plaat in *Model_Space\n"
              "5B *U1 in *Model_Space\n"
              "5C DEUR in *Model_Space\n"
              "63 DEUR in *Model_Space\n"
              "6A DEUR in *Model_Space\n"
              "71 DEUR in *Model_Space\n"
              "78 BOUT in *Model_Space\n"
              "79 BOUT in *Model_Space\n"
              "7A DEUR in *Model_Space\n"
              "84 DEUR in *Paper_Space\n"
              "30 BOUT in Plaat\n"
              "31 BOUT in Plaat\n");
}

TEST_F(Contents, TellTheReferencesOfADrawingWithoutBlockRecords)
{
    const DrawingContents contents = of("r12");
    EXPECT_EQ(joined(contents.blocks), "BOUT,Plaat,DEUR,*U1,*D1,*Model_Space,*Paper_Space");
    EXPECT_EQ(contents.references.size(), 12U);
    EXPECT_EQ(described({contents.references.front(), contents.references.back()}),
              "1D BOUT in Plaat\n6E DEUR in *Paper_Space\n");
}

TEST_F(Contents, TellReferencesThatLeadNowhereOrInACircle)
{
    EXPECT_EQ(described(of("damaged/insert_of_nothing").references), "30  in *Model_Space\n");
    EXPECT_EQ(described(of("damaged/blocks_insert_themselves").references),
              "30 A in *Model_Space\n34 B in A\n38 A in B\n39 B in B\n");
}

TEST_F(Contents, HoldTheSettingsOfEachFile)
{
    EXPECT_EQ(described(of("r2018").settings),
              "TOOL.INI\n"
              "  [Algemeen] Taal=NL|\n"
              "  [Tekst] Hoogte=2.5| Stijl=NOTITIE| Opschrift=日本 Ω 😀 ±|\n"
              "  [A=B] Gelijk=ja|\n"
              "  [Größe] Kleur=3|\n");
    EXPECT_EQ(described(of("r12").settings), "");
}

TEST_F(Contents, ShowSettingsThatAreHardToRead)
{
    std::string hundred;
    for (int i = 0; i < 10; ++i) {
        hundred += "0123456789";
    }
    EXPECT_EQ(described(of("settings").settings),
              "TOOL.INI\n"
              "  [Algemeen] Taal=NL| Leeg=| Blanco=  m² |\n"
              "  [Tekst] Hoogte=2.5| hoogte2=3.5| Lang="
                  + hundred + hundred + hundred
                  + "| Twee=eerste|\n"
                    "  [A=B] x=y=1| Regels=een\ntwee|\n"
                    "  [c:\\map\\*.ini] Pad=c:\\map|\n"
                    "  [Maßlinien 😀] Kleur=3|\n"
                    "  [] Naam=als een code|\n"
                    "  [Geen]\n"
                    "ANDER.INI\n"
                    "  [Tekst] Hoogte=5|\n");
}

TEST_F(Contents, SurviveDamagedTrees)
{
    EXPECT_EQ(described(of("damaged/cyclic_dictionaries").settings),
              "TOOL.INI\n  [Algemeen] Taal=NL|\n");
    EXPECT_EQ(described(of("damaged/setting_is_no_record").settings), "");
    EXPECT_EQ(described(of("damaged/dangling_handles").settings),
              "TOOL.INI\n  [Algemeen] Taal=NL|\n  [Tekst] Hoogte=2.5|\n");
    EXPECT_EQ(described(of("damaged/no_objects").settings), "");
}

TEST_F(Contents, PutChaptersOfOneDecodedNameTogether)
{
    AcDbDatabase& drawing = newDrawing();
    // Of a coded chapter only the low byte of each character comes back: U+0141 and U+0241 are "A".
    for (const wchar_t* chapter : {L"\u0141:", L"\u0241:"}) {
        for (const wchar_t* ident : {L"Een", chapter}) {
            ASSERT_EQ(writeToDrawing(L"a.ini", chapter, ident, chapter, &drawing), Acad::eOk);
        }
    }
    EXPECT_EQ(described(contentsOf(&drawing)->settings),
              "A.INI\n  [A:] Een=\u0141:| \u0141:=\u0141:| \u0241:=\u0241:|\n");
}

TEST_F(Contents, CountADictionaryOnce)
{
    AcDbDatabase& drawing = newDrawing();
    ASSERT_EQ(writeToDrawing(L"a.ini", L"B", L"Een", L"1", &drawing), Acad::eOk);
    Opened<AcDbDictionary> file;
    Opened<AcDbDictionary> chapter;
    ASSERT_EQ(xx_dictionaryFor(L"a.ini", L"", file.out(), false, &drawing), Acad::eOk);
    ASSERT_EQ(xx_dictionaryFor(L"a.ini", L"B", chapter.out(), false, &drawing), Acad::eOk);
    ASSERT_EQ(file->upgradeOpen(), Acad::eOk);
    AcDbObjectId id;
    ASSERT_EQ(file->setAt(L"C", chapter.get(), id), Acad::eOk);
    chapter.close();
    file.close();
    EXPECT_EQ(described(contentsOf(&drawing)->settings), "A.INI\n  [B] Een=1|\n");
}

TEST_F(Contents, KeepAChapterWithoutValues)
{
    AcDbDatabase& drawing = newDrawing();
    Opened<AcDbDictionary> chapter;
    ASSERT_EQ(xx_dictionaryFor(L"a.ini", L"Leeg", chapter.out(), true, &drawing), Acad::eOk);
    chapter.close();
    EXPECT_EQ(described(contentsOf(&drawing)->settings), "A.INI\n  [Leeg]\n");
}

TEST_F(Contents, RecordNameNeedsANamedRecord)
{
    AcDbDatabase& drawing = newDrawing();
    EXPECT_EQ(recordName(AcDbObjectId()), std::nullopt);
    EXPECT_EQ(recordName(drawing.layerTableId()), std::nullopt);
    EXPECT_EQ(recordName(drawing.namedObjectsDictionaryId()), std::nullopt);
}

} // namespace

} // namespace corma::testing
