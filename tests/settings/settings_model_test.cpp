#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/SettingsTest.h"
#include <corma/settings_model.h>
#include <corma/texts.h>

using corma::CategoryContents;
using corma::ModelRequest;
using corma::SettingContents;
using corma::SettingsModel;
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

} // namespace
