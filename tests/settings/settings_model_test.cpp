#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/LevelsTest.h"
#include <corma/settings_model.h>
#include <corma/texts.h>

using corma::AppliedValue;
using corma::CategoryContents;
using corma::ModelRequest;
using corma::SaveBoxes;
using corma::SettingContents;
using corma::SettingsModel;
using corma::ValueEditor;
using corma::testing::filesIn;
using corma::testing::LevelsTest;
using corma::testing::SettingsTest;

namespace {

/// Keeps the rows of a list.
class RecordingList : public corma::SettingList
{
public:
    [[nodiscard]] short accessLevel() const override { return access; }

    std::wstring translateKey(const std::wstring& word) override { return L"<" + word + L">"; }

    [[nodiscard]] int selectionMark() const override { return mark; }

    void setSelectionMark(int row) override { mark = row; }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(rows.size()); }

    void deleteAllRows() override { rows.clear(); }

    void appendRow(const corma::SettingRow& row) override { rows.push_back(row); }

    void setFocus() override { hasFocus = true; }

    /// The rows, one a line.
    [[nodiscard]] std::string text() const
    {
        std::string all;
        for (const corma::SettingRow& row : rows) {
            all += std::to_string(row.image) + " " + corma::toUtf8(row.name) + " "
                + corma::toUtf8(row.type) + " " + corma::toUtf8(row.value) + " "
                + corma::toUtf8(row.description) + " " + std::to_string(row.rgb) + "\n";
        }
        return all;
    }

    std::vector<corma::SettingRow> rows;
    int mark = -1;
    short access = 0;
    bool hasFocus = false;
};

class SettingsModelTest : public SettingsTest
{
protected:
    ModelRequest request(std::string_view text)
    {
        return {.file = folder.write(L"tool.ini", text)};
    }
};

TEST_F(SettingsModelTest, TellsWhichFileItIsLoadedFrom)
{
    const auto fileOf = [](const std::wstring& name) {
        return SettingsModel({.file = name}).configurationFile();
    };
    folder.write(L"tool.ini", "A=1\n");
    folder.write(L"plain", "A=1\n");
    EXPECT_EQ(fileOf(folder.path(L"tool")), folder.path(L"tool.ini"));
    EXPECT_EQ(fileOf(folder.path(L"weg.ini")), folder.path(L"weg.ini"));
    const corma::testing::CurrentFolder here(folder.path());
    EXPECT_EQ(fileOf(L"tool.ini"), folder.path(L"tool.ini"));
    EXPECT_EQ(fileOf(L"plain"), folder.path(L"plain"));
}

TEST_F(SettingsModelTest, TellsAllThatTheFilesTell)
{
    folder.write(L"tool.inr",
                 "Hoogte=d min=0 max=9 level=d readonly=true access=1,2 rgb=255,1,0 filetypes=f "
                 "choices={a,b} bitmap=h.bmp\n");
    folder.write(L"LanEN/tool.ind", "Hoogte=Height§of a text\n[Tekst]=All of text\n");
    const SettingsModel model(request("Hoogte=2.5\n[Tekst]\nStijl=x\n"));
    EXPECT_TRUE(model.isComplete());
    EXPECT_FALSE(model.projectMode());
    EXPECT_FALSE(model.localMode());
    const std::vector<CategoryContents> contents = model.contents();
    ASSERT_EQ(contents.size(), 2U);
    EXPECT_EQ(contents[0].name, L"Algemeen");
    EXPECT_EQ(contents[0].description, L"General settings");
    EXPECT_EQ(contents[1].name, L"Tekst");
    EXPECT_EQ(contents[1].description, L"All of text");
    ASSERT_EQ(contents[0].settings.size(), 1U);
    const SettingContents& setting = contents[0].settings[0];
    EXPECT_EQ(setting.name, L"Hoogte");
    EXPECT_EQ(setting.longDescription, L"Height§of a text");
    EXPECT_EQ(setting.shortDescription, L"Height of a text");
    EXPECT_EQ(setting.bitmap, folder.path(L"h.bmp"));
    EXPECT_EQ(setting.type, 3U);
    EXPECT_EQ(setting.value, L"2.5");
    EXPECT_EQ(setting.choices, L"a,b");
    EXPECT_EQ(setting.maxValue, L"9");
    EXPECT_EQ(setting.minValue, L"0");
    EXPECT_EQ(setting.readOnly, L"true");
    EXPECT_EQ(setting.level, L"d");
    EXPECT_EQ(setting.fileTypes, L"f");
    EXPECT_EQ(setting.globalValue, L"***KV_BESTAAT_NIET***");
    EXPECT_EQ(setting.projectValue, L"***KV_BESTAAT_NIET***");
    EXPECT_FALSE(setting.isProject);
    EXPECT_FALSE(setting.isLocal);
    EXPECT_EQ(setting.rgb, 0x0001FFU);
    EXPECT_EQ(setting.viewAccess, 1);
    EXPECT_EQ(setting.editAccess, 2);
    ASSERT_EQ(contents[1].settings.size(), 1U);
    EXPECT_EQ(contents[1].settings[0].name, L"Stijl");
    EXPECT_EQ(contents[1].settings[0].value, L"x");
}

TEST_F(SettingsModelTest, HasACategoryOfExactlyThatName)
{
    const SettingsModel model(request("[Tekst]\n"));
    EXPECT_TRUE(model.hasCategory(L"Tekst"));
    EXPECT_TRUE(model.hasCategory(L"Algemeen"));
    EXPECT_FALSE(model.hasCategory(L"tekst"));
    EXPECT_FALSE(model.hasCategory(L""));
}

TEST_F(SettingsModelTest, HasASettingOfExactlyThatNameInExactlyThatCategory)
{
    const SettingsModel model(request("Taal=nl\n[Tekst]\nHoogte=3\n"));
    EXPECT_TRUE(model.hasSetting(L"Tekst", L"Hoogte"));
    EXPECT_TRUE(model.hasSetting(L"Algemeen", L"Taal"));
    EXPECT_FALSE(model.hasSetting(L"Tekst", L"hoogte"));
    EXPECT_FALSE(model.hasSetting(L"Tekst", L"Taal"));
    EXPECT_FALSE(model.hasSetting(L"tekst", L"Taal")) << "no other category stands in for it";
}

TEST_F(SettingsModelTest, WithoutItsFileIsIncompleteAndEmpty)
{
    const SettingsModel model({.file = folder.path(L"none.ini")});
    EXPECT_FALSE(model.isComplete());
    EXPECT_TRUE(model.contents().empty());
    EXPECT_FALSE(model.hasCategory(L"Algemeen"));
    EXPECT_EQ(boxes(), "~/none.ini was not found.\n");
    RecordingList list;
    list.appendRow({});
    model.fillList(L"Algemeen", list, L"", {});
    EXPECT_EQ(list.rowCount(), 1) << "there is no category to fill it with";
}

TEST_F(SettingsModelTest, LoadsTheProjectFileOfTheRequest)
{
    ModelRequest some = request("X=G\n");
    some.projectFile = folder.write(L"house/garden.ipr", "X=P\n");
    const SettingsModel model(some);
    EXPECT_TRUE(model.isComplete());
    EXPECT_TRUE(model.projectMode());
    EXPECT_FALSE(model.localMode());
    const SettingContents setting = model.contents()[0].settings[0];
    EXPECT_EQ(setting.value, L"P");
    EXPECT_EQ(setting.globalValue, L"G");
    EXPECT_TRUE(setting.isProject);
}

TEST_F(SettingsModelTest, WithoutItsProjectFileIsIncomplete)
{
    ModelRequest some = request("X=G\n");
    some.projectFile = folder.path(L"none/garden.ipr");
    const SettingsModel model(some);
    EXPECT_FALSE(model.isComplete());
    EXPECT_TRUE(model.projectMode());
    EXPECT_EQ(model.contents()[0].settings[0].value, L"G");
    EXPECT_EQ(boxes(), "~/none/garden.ipr was not found.\n");
}

TEST_F(SettingsModelTest, WithoutItsFileIsIncompleteWhateverTheProjectHolds)
{
    ModelRequest some {.file = folder.path(L"none.ini")};
    some.projectFile = folder.write(L"garden.ipr", "X=P\n");
    const SettingsModel model(some);
    EXPECT_FALSE(model.isComplete());
    ASSERT_EQ(model.contents().size(), 1U);
    EXPECT_EQ(model.contents()[0].settings[0].value, L"P");
}

TEST_F(SettingsModelTest, LooksAtTheDrawingWhenAskedTo)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"drawings/house.dxf").c_str()));
    folder.write(L"drawings/tool.ipr", "X=P\n");
    ASSERT_EQ(corma::writeToDrawing(L"tool.ini", L"", L"X", L"D", nullptr), Acad::eOk);
    ModelRequest some = request("X=G\n");
    EXPECT_EQ(SettingsModel(some).contents()[0].settings[0].value, L"G");
    some.withDrawing = true;
    some.projectFile = folder.path(L"not/looked.at");
    const SettingsModel model(some);
    EXPECT_TRUE(model.isComplete());
    EXPECT_TRUE(model.projectMode());
    EXPECT_TRUE(model.localMode());
    const SettingContents setting = model.contents()[0].settings[0];
    EXPECT_EQ(setting.value, L"D");
    EXPECT_EQ(setting.projectValue, L"P");
    EXPECT_EQ(setting.globalValue, L"G");
    EXPECT_TRUE(setting.isLocal);
    EXPECT_EQ(boxes(), "");
}

TEST_F(SettingsModelTest, WithoutADrawingHasNoLevelOfIt)
{
    ModelRequest some = request("X=G\n");
    some.withDrawing = true;
    const SettingsModel model(some);
    EXPECT_TRUE(model.isComplete());
    EXPECT_FALSE(model.localMode());
}

TEST_F(SettingsModelTest, SetsTheLanguageOfTheTexts)
{
    folder.write(L"LanN/tool.ind", "X=hoogte\n");
    ModelRequest some = request("X=1\nlos\n");
    some.language = 19;
    const SettingsModel model(some);
    EXPECT_EQ(corma::textLanguage(), 19);
    EXPECT_EQ(model.contents()[0].description, L"Algemene instellingen");
    EXPECT_EQ(model.contents()[0].settings[0].shortDescription, L"hoogte");
    EXPECT_EQ(boxes(), "Regel overgeslagen! Verwacht: \"=\" (ini:1) (los)\n");
    RecordingList list;
    model.fillList(L"Algemeen", list, L"", {});
    EXPECT_EQ(list.text(), "0 X Tekst 1 hoogte 0\n");
}

TEST_F(SettingsModelTest, FillsAListWithACategory)
{
    folder.write(L"tool.inr", "[Tekst]\nStijl=c rgb=1,0,0\nAan=t\n");
    folder.write(L"LanEN/tool.ind", "[Tekst]\nStijl=Style§of text\n");
    const SettingsModel model(request("Kop=1\n[Tekst]\nStijl=x\nAan=0\nHoogte=3\n"));
    RecordingList list;
    model.fillList(L"Tekst", list, L"", {});
    EXPECT_EQ(list.text(),
              "0 Stijl Option <x> Style of text 1\n0 Aan Yes/No No  0\n0 Hoogte String 3  0\n");
    EXPECT_TRUE(list.hasFocus);
    EXPECT_EQ(list.mark, 0);
    model.fillList(L"Tekst", list, L"OF T", {});
    EXPECT_EQ(list.text(), "0 Stijl Option <x> Style of text 1\n");
    model.fillList(L"Tekst", list, std::nullopt, {});
    EXPECT_EQ(list.text(), "");
    model.fillList(L"Tekst", list, L"", {.global = false});
    EXPECT_EQ(list.text(), "");
    model.fillList(L"unknown", list, L"", {});
    EXPECT_EQ(list.text(), "0 Kop String 1  0\n") << "the first category";
}

TEST_F(SettingsModelTest, AccessLevelsMakeSettingsReadOnlyFromTheNextFillOn)
{
    folder.write(L"tool.inr", "Beheer=s access=5,10\n");
    const SettingsModel model(request("Beheer=1\n"));
    RecordingList list;
    list.access = 4;
    model.fillList(L"Algemeen", list, L"", {});
    EXPECT_EQ(list.text(), "");
    EXPECT_EQ(model.contents()[0].settings[0].readOnly, L"false");
    list.access = 5;
    model.fillList(L"Algemeen", list, L"", {});
    EXPECT_EQ(list.text(), "0 Beheer String 1  0\n");
    EXPECT_EQ(model.contents()[0].settings[0].readOnly, L"true");
    model.fillList(L"Algemeen", list, L"", {});
    EXPECT_EQ(list.text(), "8 Beheer String 1  0\n");
}

// --- changes -------------------------------------------------------------------------------------

class SettingsModelChanges : public LevelsTest
{
protected:
    /// The files of the folders cfg and house; the drawing is looked at when there is one.
    [[nodiscard]] ModelRequest files() const
    {
        return {.file = folder.path(L"cfg/tool.ini"),
                .projectFile = folder.has(L"house/tool.ipr")
                    ? std::optional(folder.path(L"house/tool.ipr"))
                    : std::nullopt,
                .withDrawing = acDocManagerPtr()->curDocument() != nullptr};
    }

    /// The values in force, an entry a line behind its chapter.
    static std::string valuesIn(const SettingsModel& model)
    {
        std::string text;
        for (const CategoryContents& category : model.contents()) {
            text += "[" + corma::toUtf8(category.name) + "]";
            for (const SettingContents& setting : category.settings) {
                text += " " + corma::toUtf8(setting.name) + "=" + corma::toUtf8(setting.value)
                    + (setting.isProject ? " (project)" : "")
                    + (setting.isLocal ? " (drawing)" : "");
            }
            text += "\n";
        }
        return text;
    }

    /// What became of a value, as a text.
    static std::string textOf(const AppliedValue& applied)
    {
        return std::string(applied.accepted ? "accepted" : "refused")
            + (applied.stored ? ", stored" : "")
            + (applied.value ? ", \"" + corma::toUtf8(*applied.value) + "\"" : "");
    }
};

TEST_F(SettingsModelChanges, AValueIsWrittenWhereTheModesTell)
{
    writeIni("A=1\n[X]\nB=2\n");
    SettingsModel model(files());
    EXPECT_EQ(textOf(model.apply(L"X", L"B", L"3", ValueEditor::generic, {})),
              "accepted, stored, \"3\"");
    EXPECT_EQ(ini(), "A=1\n[X]\nB=3\n");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=1\n[X] B=3\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_F(SettingsModelChanges, AValueIsWrittenIntoTheProject)
{
    writeIni("A=1\n");
    writeIpr("");
    SettingsModel model(files());
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"A", L"3", ValueEditor::generic, {})),
              "accepted, stored, \"3\"");
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "A=3\n");
    EXPECT_EQ(
        textOf(model.apply(L"Algemeen", L"A", L"4", ValueEditor::generic, {.globally = true})),
        "accepted, stored, \"4\"");
    EXPECT_EQ(ini(), "A=4\n");
    EXPECT_EQ(ipr(), "A=4\n");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=4 (project)\n");
}

TEST_F(SettingsModelChanges, AValueIsWrittenIntoTheDrawing)
{
    writeIni("A=1\n");
    newDrawing();
    SettingsModel model(files());
    ASSERT_TRUE(model.localMode());
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"A", L"3", ValueEditor::visual, {})),
              "accepted, stored, \"3\"");
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(drawing(), "A=3\n");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=3 (drawing)\n");
}

TEST_F(SettingsModelChanges, AValueIsKeptAsItsTypeMakesIt)
{
    folder.write(L"cfg/tool.inr", "Getal=d max=2\nAan=t\n");
    writeIni("Getal=1\nAan=1\n");
    SettingsModel model(files());
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"Getal", L"3,5", ValueEditor::generic, {})),
              "accepted, stored, \"3.5\"")
        << "limits are the dialog's to look at";
    EXPECT_EQ(ini(), "Getal=3.5\nAan=1\n");
}

TEST_F(SettingsModelChanges, AValueThatIsNoneOfItsTypeIsRefusedAndNothingWritten)
{
    folder.write(L"cfg/tool.inr", "Getal=i\nAan=t\nRaster=h\n");
    writeIni("Getal=1\nAan=1\nRaster=x");
    SettingsModel model(files());
    const SaveBoxes all {.globally = true, .inProject = true};
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"Getal", L"3x5", ValueEditor::generic, all)),
              "refused, \"35\"");
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"Aan", L"ja", ValueEditor::generic, all)),
              "refused, \"0\"");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(
        textOf(model.apply(L"Algemeen", L"Raster", L"1,2,3,4,5,400,1", ValueEditor::visual, all)),
        "refused, \"1,2,3,4,5,400,1\"");
    EXPECT_EQ(boxes(), "The degrees of the angle must lie between 0\xC2\xB0 and 360\xC2\xB0\n");
    EXPECT_EQ(ini(), "Getal=1\nAan=1\nRaster=x");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini cfg/tool.inr");
    EXPECT_EQ(valuesIn(model), "[Algemeen] Getal=1 Aan=1 Raster=x\n");
}

TEST_F(SettingsModelChanges, AValueThatCannotBeWrittenIsAcceptedAndNotStored)
{
    writeIni("A=1\n");
    SettingsModel model(files());
    folder.remove(L"cfg/tool.ini");
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"A", L"3", ValueEditor::generic, {})),
              "accepted, \"3\"");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=3\n");
    EXPECT_EQ(told(),
              "stop: ~/cfg/tool.ini : Ini-file not found: \n"
              "stop: ~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is present and "
              "\nif the file is not read-only\n");
}

TEST_F(SettingsModelChanges, AnUnknownSettingOrCategoryIsRefusedAndNoOtherTaken)
{
    writeIni("A=1\n[X]\nB=2");
    newDrawing();
    store(L"", L"A", L"D");
    SettingsModel model(files());
    const std::string before = valuesIn(model);
    for (const auto& [category, name] : {std::pair {L"none", L"A"},
                                         {L"", L"A"},
                                         {L"x", L"B"},
                                         {L"X", L"A"},
                                         {L"Algemeen", L"a"},
                                         {L"Algemeen", L""}}) {
        EXPECT_EQ(textOf(model.apply(category, name, L"3", ValueEditor::generic,
                                     {.globally = true, .inProject = true})),
                  "refused");
        EXPECT_FALSE(model.remove(category, name));
    }
    for (const wchar_t* const category : {L"none", L"", L"x"}) {
        EXPECT_FALSE(model.removeCategory(category));
    }
    EXPECT_EQ(valuesIn(model), before);
    EXPECT_EQ(ini(), "A=1\n[X]\nB=2");
    EXPECT_EQ(drawing(), "A=D\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SettingsModelChanges, OfAModelWithoutItsFileAreRefused)
{
    SettingsModel model(files());
    services.boxes.clear();
    EXPECT_EQ(textOf(model.apply(L"Algemeen", L"A", L"3", ValueEditor::generic, {})), "refused");
    EXPECT_FALSE(model.remove(L"Algemeen", L"A"));
    EXPECT_FALSE(model.removeCategory(L"Algemeen"));
    EXPECT_EQ(filesIn(folder), "");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SettingsModelChanges, ARemovedSettingLeavesTheConfigurationFile)
{
    writeIni("A=1\n[X]\nA=2\n");
    SettingsModel model(files());
    EXPECT_TRUE(model.remove(L"X", L"A"));
    EXPECT_EQ(ini(), "A=1\n[X]\n");
    EXPECT_FALSE(model.remove(L"X", L"A"));
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=1\n[X]\n");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SettingsModelChanges, ARemovedSettingLeavesTheProjectFirst)
{
    writeIni("A=1\n");
    writeIpr("A=2\n");
    SettingsModel model(files());
    EXPECT_TRUE(model.remove(L"Algemeen", L"A"));
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=1\n");
}

TEST_F(SettingsModelChanges, ARemovedSettingLeavesTheDrawingAloneWhereThatIsLoaded)
{
    writeIni("A=1\nB=2\n");
    newDrawing();
    store(L"", L"A", L"3");
    SettingsModel model(files());
    EXPECT_TRUE(model.remove(L"Algemeen", L"A"));
    EXPECT_EQ(drawing(), "");
    EXPECT_EQ(valuesIn(model), "[Algemeen] A=1 B=2\n");
    EXPECT_FALSE(model.remove(L"Algemeen", L"B"));
    EXPECT_EQ(told(), "information: Can not remove setting in Local Mode\n");
    EXPECT_EQ(ini(), "A=1\nB=2\n");
}

constexpr const char* kCategoryRemoved = "information: Rubriek succesvol verwijderd.\n";

TEST_F(SettingsModelChanges, ARemovedCategoryLeavesTheFiles)
{
    writeIni("A=1\n[X]\nB=2\n");
    writeIpr("[X]\nC=3\n");
    SettingsModel model(files());
    EXPECT_TRUE(model.removeCategory(L"X"));
    EXPECT_FALSE(model.hasCategory(L"X"));
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "[X]\n");
    EXPECT_EQ(told(), kCategoryRemoved);
}

TEST_F(SettingsModelChanges, ARemovedCategoryLeavesTheDrawing)
{
    writeIni("[X]\n");
    newDrawing();
    store(L"X", L"A", L"1");
    SettingsModel model(files());
    ASSERT_FALSE(model.projectMode());
    EXPECT_TRUE(model.removeCategory(L"X"));
    EXPECT_EQ(drawing(), "");
    EXPECT_EQ(ini(), "");
    EXPECT_EQ(told(), kCategoryRemoved);
}

TEST_F(SettingsModelChanges, InAProjectARemovedCategoryLeavesTheFilesWhateverTheDrawingHolds)
{
    writeIni("");
    writeIpr("[X]\nA=2\n");
    newDrawing();
    store(L"Y", L"A", L"1");
    SettingsModel model(files());
    ASSERT_TRUE(model.projectMode() && model.localMode());
    EXPECT_FALSE(model.removeCategory(L"Y")) << "its setting is in no file";
    EXPECT_EQ(drawing(), "Y/\nY/A=1\n");
    EXPECT_TRUE(told().starts_with("exclamation: Een van de onderliggende instellingen"));
    EXPECT_TRUE(model.removeCategory(L"X"));
    EXPECT_EQ(ipr(), "[X]\n");
    EXPECT_EQ(told(), kCategoryRemoved);
}

} // namespace
