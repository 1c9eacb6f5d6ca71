#include "editor/VisForm.h"
#include "editor/VisualFormTest.h"
#include "host/host.h"
#include "platform/text.h"
#include "support/RefusedCalls.h"

#include <array>
#include <cerrno>
#include <cwchar>
#include <random>

using corma::toUtf8;
using corma::VisForm;
using corma::host::Opened;
using corma::host::Rgb;
using corma::platform::SystemCall;
using corma::testing::filesIn;
using corma::testing::RefusedCalls;
using corma::testing::VisualFormTestOf;

namespace {

constexpr std::size_t kPlenty = 1000; // characters

int& callbackCalls()
{
    static int calls = 0;
    return calls;
}

int refusingCallback(const wchar_t* /*value*/, const wchar_t* /*name*/, const wchar_t* /*label*/)
{
    ++callbackCalls();
    return 0;
}

class VisFormTest : public VisualFormTestOf<VisForm>
{
protected:
    VisFormTest()
        : VisualFormTestOf("v")
    {
    }

    void SetUp() override
    {
        VisualFormTestOf::SetUp();
        drawHouse();
    }

    std::string valueOf(const std::string& value) { return toUtf8(show(value).value()); }
};

// --- from a value to the inputs and back ---------------------------------------------------------

struct VisualValueRow
{
    const char* sentence;
    const char* value;
    const char* layer;
    int colour;
    const char* linetype;
    int lineweight;
    const char* built;
};

void PrintTo(const VisualValueRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class VisFormValue : public VisFormTest, public ::testing::WithParamInterface<VisualValueRow>
{
};

TEST_P(VisFormValue, IsShownAndBuilt)
{
    const VisualValueRow& row = GetParam();
    const std::string before = tables();
    const VisForm& form = show(row.value);
    EXPECT_EQ(described(form.layer()), row.layer);
    EXPECT_EQ(form.colour(), row.colour);
    EXPECT_EQ(described(form.linetype()), row.linetype);
    EXPECT_EQ(form.lineweight(), row.lineweight);
    EXPECT_EQ(toUtf8(form.value()), row.built);
    EXPECT_EQ(tables(), before) << "nothing is added to the drawing";
}

// clang-format off
const VisualValueRow visualValueRows[] = {
    {"AllOfTheDrawing", "0,ByLayer,Continuous,0.25", "chosen 0", 256, "chosen 2", 25,
     "0,ByLayer,Continuous,0.25"},
    {"NamesInAnotherCase", "gevel,3,dashed,0.50", "chosen 1", 3, "chosen 3", 50,
     "Gevel,3,DASHED,0.50"},
    {"AnUnknownLayer", "Dak,1,Continuous,0.25", "typed Dak", 1, "chosen 2", 25,
     "Dak,1,Continuous,0.25"},
    {"AnUnknownLinetype", "0,1,Kronkel,0.25", "chosen 0", 1, "typed Kronkel", 25,
     "0,1,Kronkel,0.25"},
    {"WordsInSmallLetters", "0,bylayer,bylayer,bylayer", "chosen 0", 256, "chosen 1", -1,
     "0,ByLayer,ByLayer,ByLayer"},
    {"WordsInCapitals", "0,BYBLOCK,BYBLOCK,BYBLOCK", "chosen 0", 0, "chosen 0", -2,
     "0,ByBlock,ByBlock,ByBlock"},
    {"TheDefault", "0,7,ByLayer,DEFAULT", "chosen 0", 7, "chosen 1", -3, "0,7,ByLayer,Default"},
    {"TheOtherWordOfTheDefault", "0,7,ByLayer,ByDefault", "chosen 0", 7, "chosen 1", -3,
     "0,7,ByLayer,Default"},
    {"NumbersOfTheWords", "0,256,ByLayer,0", "chosen 0", 256, "chosen 1", 0,
     "0,ByLayer,ByLayer,0.00"},
    {"TheNumberOfTheBlock", "0,0,ByLayer,0", "chosen 0", 0, "chosen 1", 0,
     "0,ByBlock,ByLayer,0.00"},
    {"AColourThatThereIsNot", "0,257,ByLayer,0.25", "chosen 0", 257, "chosen 1", 25,
     "0,257,ByLayer,0.25"},
    {"AColourThatIsNoNumber", "0,rood,ByLayer,0.25", "chosen 0", 0, "chosen 1", 25,
     "0,ByBlock,ByLayer,0.25"},
    {"AWeightBetweenTwo", "0,1,ByLayer,0.31", "chosen 0", 1, "chosen 1", 30, "0,1,ByLayer,0.30"},
    {"AWeightBeyondAll", "0,1,ByLayer,9", "chosen 0", 1, "chosen 1", 211, "0,1,ByLayer,2.11"},
    {"AWeightWithoutItsZero", "0,1,ByLayer,.5", "chosen 0", 1, "chosen 1", 50, "0,1,ByLayer,0.50"},
    {"TwoFields", "0,1", "chosen 0", 1, "typed ", 0, "0,1,,0.00"},
    {"OneField", "Gevel", "chosen 1", 0, "typed ", 0, "Gevel,ByBlock,,0.00"},
    {"NoField", "", "typed ", 0, "typed ", 0, ",ByBlock,,0.00"},
    {"EmptyFieldsInBetween", "0,,,0.25", "chosen 0", 0, "typed ", 25, "0,ByBlock,,0.25"},
    {"AFieldTooMany", "0,1,ByLayer,0.25,Standard,5", "chosen 0", 1, "chosen 1", 25,
     "0,1,ByLayer,0.25"},
    {"BlanksBelongToNames", "0, 1, ByLayer, 0.25", "chosen 0", 1, "typed  ByLayer", 25,
     "0,1, ByLayer,0.25"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, VisFormValue, ::testing::ValuesIn(visualValueRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(VisFormTest, WhatIsChosenIsBuilt)
{
    VisForm& form = show("0,ByLayer,Continuous,0.25");
    form.layer().choose(2);
    form.setColour(12);
    form.linetype().choose(3);
    form.setLineweight(AcDb::kLnWtByBlock);
    EXPECT_EQ(toUtf8(form.value()), "MUUR,12,DASHED,ByBlock");
    form.layer().fromField();
    form.layer().type(L"Nieuw");
    form.linetype().fromField();
    form.linetype().type(L"Kronkel");
    form.setColour(0);
    form.setLineweight(5);
    EXPECT_EQ(toUtf8(form.value()), "Nieuw,ByBlock,Kronkel,0.05");
    form.layer().fromList();
    form.linetype().fromList();
    EXPECT_EQ(toUtf8(form.value()), "MUUR,ByBlock,DASHED,0.05");
}

TEST_F(VisFormTest, AListWithNothingChosenBeginsWithItsFirst)
{
    VisForm& form = show("Dak,1,Kronkel,0.25");
    form.layer().fromList();
    form.linetype().fromList();
    EXPECT_EQ(toUtf8(form.value()), "0,1,ByBlock,0.25");
    form.layer().fromField();
    EXPECT_EQ(toUtf8(form.value()), "Dak,1,ByBlock,0.25");
}

TEST_F(VisFormTest, TheLineweightsAreTheWordsAndTheLegalWidths)
{
    EXPECT_EQ(VisForm::lineweights(),
              (std::vector<int> {-1, -2, -3, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211}));
}

TEST_F(VisFormTest, TheListsAreThoseOfTheDrawing)
{
    const VisForm& form = show("0,1,Continuous,0");
    std::string layers;
    for (const auto& layer : form.layers()) {
        layers += toUtf8(layer.name) + "=" + std::to_string(layer.colour) + " ";
    }
    EXPECT_EQ(layers, "0=7 Gevel=3 MUUR=5 ");
    std::string linetypes;
    for (const auto& linetype : form.linetypes()) {
        linetypes += toUtf8(linetype.name) + (linetype.dashes.empty() ? " " : "... ");
    }
    EXPECT_EQ(linetypes, "ByBlock ByLayer Continuous DASHED... ");
}

// --- colour --------------------------------------------------------------------------------------

TEST_F(VisFormTest, ByLayerLooksLikeTheChosenLayer)
{
    VisForm& form = show("Gevel,ByLayer,Continuous,0");
    const Rgb green {0, 255, 0};
    const Rgb blue {0, 0, 255};
    EXPECT_EQ(form.colourOfLayer(), green);
    EXPECT_EQ(form.shownColour(), green);
    form.layer().choose(2);
    EXPECT_EQ(form.shownColour(), blue);
    form.layer().fromField();
    EXPECT_EQ(form.colourOfLayer(), std::nullopt);
    EXPECT_EQ(form.shownColour(), std::nullopt);
    form.layer().type(L"Gevel");
    EXPECT_EQ(form.shownColour(), std::nullopt) << "a typed name has no link to a layer";
    form.layer().fromList();
    EXPECT_EQ(form.shownColour(), blue);
}

TEST_F(VisFormTest, AColourOfItsOwnDoesNotFollowTheLayer)
{
    VisForm& form = show("Gevel,1,Continuous,0");
    const Rgb red {255, 0, 0};
    EXPECT_EQ(form.shownColour(), red);
    form.layer().choose(2);
    EXPECT_EQ(form.colour(), 1);
    EXPECT_EQ(form.shownColour(), red);
    form.layer().fromField();
    EXPECT_EQ(form.shownColour(), red);
    form.setColour(256);
    EXPECT_EQ(form.shownColour(), std::nullopt);
    form.layer().fromList();
    EXPECT_EQ(form.shownColour(), (Rgb {0, 0, 255}));
}

TEST_F(VisFormTest, AnUnknownColourLooksLikeNothing)
{
    EXPECT_EQ(show("Dak,ByLayer,Continuous,0").shownColour(), std::nullopt);
    EXPECT_EQ(show("Gevel,ByBlock,Continuous,0").shownColour(), std::nullopt);
    EXPECT_EQ(show("Gevel,300,Continuous,0").shownColour(), std::nullopt);
    EXPECT_EQ(show("Gevel,-5,Continuous,0").shownColour(), std::nullopt);
}

// --- around the value ----------------------------------------------------------------------------

TEST_F(VisFormTest, TheUpperPartIsThatOfEverySetting)
{
    writeIpr("A=0,2,Continuous,0\n");
    describe("Lijnen");
    attributes = "bitmap=own.bmp";
    const VisForm& form = show("0,1,Continuous,0", Levels::project, 19);
    EXPECT_EQ(toUtf8(form.caption()), "Instellingen - A");
    EXPECT_EQ(toUtf8(form.typeText()), "Visualisatie");
    EXPECT_EQ(toUtf8(form.levelText()), "Projectinstelling");
    EXPECT_EQ(form.levelIcon(), 1);
    EXPECT_EQ(toUtf8(form.globalValue().value_or(L"(none)")), "0,1,Continuous,0");
    EXPECT_EQ(form.projectValue(), std::nullopt);
    EXPECT_EQ(folder.homely(form.picture()), "~/cfg/own.bmp");
}

TEST_F(VisFormTest, ThePictureOfTheSettingGoesBeforeTheDefault)
{
    corma::DeskStart start = startAt(Levels::global);
    start.defaultBitmap = L"/pictures/default.bmp";
    give("0,1,Continuous,0");
    open(start);
    EXPECT_EQ(toUtf8(showAgain().picture()), "/pictures/default.bmp");
    attributes = "bitmap=own.bmp";
    give("0,1,Continuous,0");
    open(start);
    EXPECT_EQ(folder.homely(showAgain().picture()), "~/cfg/own.bmp");
}

TEST_F(VisFormTest, AReadOnlySettingHasClosedInputs)
{
    attributes = "readonly=true";
    EXPECT_FALSE(show("0,1,Continuous,0").isEnabled());
    attributes = "readonly=false";
    EXPECT_TRUE(show("0,1,Continuous,0").isEnabled());
    attributes = "";
    EXPECT_TRUE(show("0,1,Continuous,0").isEnabled());
}

std::string boxesOf(const VisForm& form)
{
    const auto text = [](const VisForm::TickBox& box, const char* on, const char* off) {
        return std::string(box.isShown ? "+" : "-") + (box.isEnabled ? on : off)
            + (box.isTicked ? "*" : "");
    };
    return text(form.saveGlobally(), "GLOBAL", "global") + " "
        + text(form.saveInProject(), "PROJECT", "project");
}

TEST_F(VisFormTest, TheBoxesGoByTheModesAlone)
{
    for (const char* each : {"", "level=p", "level=d", "readonly=true"}) {
        attributes = each;
        folder.remove(L"house/tool.ipr");
        EXPECT_EQ(boxesOf(show("0,1,Continuous,0", Levels::global)), "-GLOBAL -PROJECT") << each;
        EXPECT_EQ(boxesOf(show("0,1,Continuous,0", Levels::local)), "+GLOBAL -PROJECT") << each;
        writeIpr("");
        EXPECT_EQ(boxesOf(show("0,1,Continuous,0", Levels::project)), "+GLOBAL -PROJECT") << each;
        EXPECT_EQ(boxesOf(show("0,1,Continuous,0", Levels::localProject)), "+GLOBAL +PROJECT")
            << each;
    }
}

TEST_F(VisFormTest, TheBoxesOfAnIncludeAreAsOfAnyOther)
{
    folder.write(L"cfg/more.ini", "");
    writeIni("#INCLUDE=more.ini\nA=5\n");
    writeIpr("");
    DeskTest::open(Levels::localProject);
    select({L"#INCLUDE"});
    EXPECT_EQ(boxesOf(showAgain()), "+GLOBAL +PROJECT");
}

TEST_F(VisFormTest, NoCallbackIsAsked)
{
    callbackCalls() = 0;
    give("0,1,Continuous,0");
    corma::DeskStart start = startAt(Levels::global);
    start.callback = refusingCallback;
    open(start);
    EXPECT_TRUE(showAgain().accept());
    EXPECT_EQ(callbackCalls(), 0);
    EXPECT_EQ(toUtf8(setting().value()), "0,1,Continuous,0.00");
    EXPECT_EQ(messages(), "");
}

TEST_F(VisFormTest, NoLimitHolds)
{
    attributes = "max=-1 min=1";
    VisForm& form = show("5,1,Continuous,0");
    EXPECT_EQ(form.maximumText(), L"");
    EXPECT_EQ(form.minimumText(), L"");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(toUtf8(form.accepted()), "5,1,Continuous,0.00");
}

// --- where it goes -------------------------------------------------------------------------------

/// Where the value is before, and what is asked for. The colours tell the values apart: 1 is that
/// of the configuration file, 2 of the project, 4 of the drawing, 3 the new one.
struct StoreCase
{
    bool projectMode = false;
    bool localMode = false;
    bool isInProject = false;
    bool isInDrawing = false;
    bool globally = false;
    bool inProject = false;
};

std::string nameOf(const StoreCase& given)
{
    std::string name = given.projectMode ? "Project" : "";
    name += given.localMode ? "Local" : "";
    name += given.projectMode || given.localMode ? "" : "Global";
    name += given.isInProject ? "WithProjectValue" : "";
    name += given.isInDrawing ? "WithLocalValue" : "";
    name += given.globally ? "Globally" : "";
    name += given.inProject ? "InProject" : "";
    return name;
}

void PrintTo(const StoreCase& given, std::ostream* out)
{
    *out << nameOf(given);
}

std::vector<StoreCase> storeCases()
{
    constexpr unsigned kCases = 1U << 6U;
    std::vector<StoreCase> cases;
    for (unsigned bits = 0; bits < kCases; ++bits) {
        const auto bit = [&](unsigned number) { return (bits >> number & 1U) != 0; };
        const StoreCase each {.projectMode = bit(0),
                              .localMode = bit(1),
                              .isInProject = bit(2),
                              .isInDrawing = bit(3),
                              .globally = bit(4),
                              .inProject = bit(5)};
        const bool isBoxShown = each.projectMode || each.localMode;
        const bool areBothShown = each.projectMode && each.localMode;
        if ((each.projectMode || !each.isInProject) && (isBoxShown || !each.globally)
            && (areBothShown || !each.inProject)) {
            cases.push_back(each);
        }
    }
    return cases;
}

std::string textWith(const std::string& colour)
{
    return "A=0," + colour + ",Continuous,0.25\n";
}

/// What stands where, as the rule of the dialog tells it.
std::string placesAfter(const StoreCase& given)
{
    const bool isLocal = given.localMode && given.isInDrawing;
    const bool isProject = given.isInProject && !isLocal;
    std::string ini = "1";
    std::string ipr = given.isInProject ? "2" : "";
    std::string besideIni;
    std::string drawing = given.isInDrawing ? "4" : "";
    if (!isProject && given.projectMode) {
        ipr = "3";
    } else if (given.localMode) {
        drawing = "3";
    } else if (given.projectMode) {
        ipr = "3";
    } else {
        besideIni = "3";
    }
    if (given.globally) {
        ini = "3";
    }
    if (given.inProject) {
        ipr = "3";
    }
    return "ini " + textWith(ini)
        + (given.projectMode ? "ipr " + (ipr.empty() ? "" : textWith(ipr)) : "")
        + (besideIni.empty() ? "" : "cfg ipr " + textWith(besideIni)) + "drawing "
        + (drawing.empty() ? "(none)" : textWith(drawing));
}

class VisFormStore : public VisFormTest, public ::testing::WithParamInterface<StoreCase>
{
protected:
    static Levels levelsOf(const StoreCase& given)
    {
        if (given.localMode) {
            return given.projectMode ? Levels::localProject : Levels::local;
        }
        return given.projectMode ? Levels::project : Levels::global;
    }
};

TEST_P(VisFormStore, GoesWhereTheRuleTells)
{
    const StoreCase& given = GetParam();
    if (given.projectMode) {
        writeIpr(given.isInProject ? textWith("2") : "");
    }
    if (given.isInDrawing) {
        store(L"", L"A", L"0,4,Continuous,0.25");
    }
    VisForm& form = show("0,1,Continuous,0.25", levelsOf(given));
    form.setColour(3);
    form.tickGlobally(given.globally);
    form.tickInProject(given.inProject);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(setting().value()), "0,3,Continuous,0.25");
    EXPECT_EQ(toUtf8(form.accepted()), "0,3,Continuous,0.25");
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(places(), placesAfter(given));
}

INSTANTIATE_TEST_SUITE_P(In, VisFormStore, ::testing::ValuesIn(storeCases()),
                         [](const auto& row) { return nameOf(row.param); });

TEST_F(VisFormTest, TheSettingRemembersTheLevelsBelow)
{
    writeIpr("");
    VisForm& form = show("0,1,Continuous,0.25", Levels::localProject);
    form.setColour(3);
    EXPECT_TRUE(form.accept());
    EXPECT_TRUE(setting().isProject()) << "the drawing is not reached at once";
    EXPECT_FALSE(setting().isLocal());
    EXPECT_EQ(toUtf8(setting().globalValue()), "0,1,Continuous,0.25");
    form.setColour(4);
    EXPECT_TRUE(form.accept());
    EXPECT_TRUE(setting().isLocal());
    EXPECT_EQ(toUtf8(setting().globalValue()), "0,1,Continuous,0.25");
    EXPECT_EQ(toUtf8(setting().projectValue()), "0,3,Continuous,0.25");
    EXPECT_EQ(places(),
              "ini " + textWith("1") + "ipr " + textWith("3") + "drawing " + textWith("4"));
}

TEST_F(VisFormTest, NothingIsWrittenBeforeTheEnd)
{
    VisForm& form = show("0,1,Continuous,0.25");
    form.setColour(3);
    form.tickGlobally(true);
    EXPECT_EQ(ini(), textWith("1"));
    EXPECT_EQ(toUtf8(setting().value()), "0,1,Continuous,0.25");
    EXPECT_EQ(form.accepted(), L"");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini cfg/tool.inr");
}

TEST_F(VisFormTest, AnUnknownNameIsStoredAndNotMade)
{
    const std::string before = tables();
    VisForm& form = show("Dak,3,Kronkel,0.25", Levels::local);
    form.setColour(1);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(places(), "ini A=Dak,3,Kronkel,0.25\ndrawing A=Dak,1,Kronkel,0.25\n");
    EXPECT_EQ(tables(), before);
}

TEST_F(VisFormTest, AWriteThatFailsEndsTheDialog)
{
    writeIpr("");
    VisForm& form = show("0,1,Continuous,0.25", Levels::project);
    form.setColour(3);
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        EXPECT_TRUE(form.accept());
    }
    EXPECT_EQ(ipr(), "");
    EXPECT_EQ(toUtf8(setting().value()), "0,3,Continuous,0.25");
    EXPECT_EQ(messages(),
              "stop, CfgDesk: ~/cfg/tool.ini : Could not open file for write \n"
              "stop, CfgDesk: ~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is "
              "present and \nif the file is not read-only\n");
}

TEST_F(VisFormTest, ASettingThatIsGoneMeanwhileEndsTheDialog)
{
    VisForm& form = show("0,1,Continuous,0.25");
    writeIni("B=5\n");
    desk().run(corma::MenuCommand::globalSettings);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "B=5\n");
    EXPECT_EQ(messages(), "");
}

TEST_F(VisFormTest, WithoutASettingTheInputsAreEmpty)
{
    give("0,1,Continuous,0.25");
    desk().selectRows({}, -1);
    VisForm& form = showAgain();
    EXPECT_EQ(described(form.layer()), "typed ");
    EXPECT_EQ(described(form.linetype()), "typed ");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), textWith("1"));
}

// --- a value that was handed in ------------------------------------------------------------------

TEST_F(VisFormTest, AHandedInValueIsHandedBackAndNotStored)
{
    writeIpr("");
    give("0,1,Continuous,0.25", Levels::localProject);
    VisForm& form = showHanded(L"muur,bylayer,dashed,0.5", kPlenty);
    EXPECT_EQ(boxesOf(form), "-GLOBAL -PROJECT");
    EXPECT_EQ(toUtf8(form.caption()), "Settings - A");
    EXPECT_EQ(toUtf8(form.value()), "MUUR,ByLayer,DASHED,0.50");
    form.setColour(3);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "MUUR,3,DASHED,0.50");
    EXPECT_EQ(toUtf8(setting().value()), "0,1,Continuous,0.25");
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(places(), "ini " + textWith("1") + "ipr drawing (none)");
}

TEST_F(VisFormTest, AHandedInValueMustFitIntoItsPlace)
{
    give("0,1,Continuous,0.25");
    const std::size_t length = std::wstring_view(L"0,12,Continuous,0.25").size();
    for (const std::size_t most : {length, length + 1}) {
        VisForm& form = showHanded(L"0,1,Continuous,0.25", most);
        form.setColour(12);
        EXPECT_TRUE(form.accept()) << most;
        EXPECT_EQ(toUtf8(form.accepted()), "0,12,Continuous,0.25");
    }
    EXPECT_EQ(messages(), "");
    VisForm& form = showHanded(L"0,1,Continuous,0.25", length - 1);
    form.setColour(12);
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(form.accepted(), L"");
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: This is not a correct value for a setting of type "
              "Visualisation\n");
    form.setColour(1);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "0,1,Continuous,0.25");
}

TEST_F(VisFormTest, AHandedInValueMayHaveNoPlaceAtAll)
{
    give("0,1,Continuous,0.25");
    EXPECT_FALSE(showHanded(L"", 0).accept());
    EXPECT_EQ(ini(), textWith("1"));
}

TEST_F(VisFormTest, AStoredValueHasNoSuchBound)
{
    const std::string longName(600, 'x');
    VisForm& form = show(longName + ",1,Continuous,0.25");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), longName + ",1,Continuous,0.25");
}

// --- drawings that do not help -------------------------------------------------------------------

TEST_F(VisFormTest, WithoutADrawingAllNamesAreTyped)
{
    corma::closeDocument();
    VisForm& form = show("0,ByLayer,Continuous,0.25");
    EXPECT_TRUE(form.layers().empty());
    EXPECT_TRUE(form.linetypes().empty());
    EXPECT_FALSE(form.layer().canChoose());
    EXPECT_FALSE(form.linetype().canChoose());
    EXPECT_EQ(described(form.layer()), "typed 0");
    EXPECT_EQ(described(form.linetype()), "typed Continuous");
    EXPECT_EQ(form.shownColour(), std::nullopt);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "0,ByLayer,Continuous,0.25");
    EXPECT_EQ(messages(), "");
}

TEST_F(VisFormTest, ATableThatDoesNotOpenLeavesItsNamesTyped)
{
    Opened<AcDbLayerTable> layers;
    Opened<AcDbLinetypeTable> linetypes;
    AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
    ASSERT_EQ(database.getLayerTable(layers.out(), AcDb::kForWrite), Acad::eOk);
    const VisForm& one = show("0,ByLayer,Continuous,0.25");
    EXPECT_EQ(described(one.layer()), "typed 0");
    EXPECT_EQ(described(one.linetype()), "chosen 2");
    EXPECT_EQ(toUtf8(one.value()), "0,ByLayer,Continuous,0.25");
    ASSERT_EQ(database.getLinetypeTable(linetypes.out(), AcDb::kForWrite), Acad::eOk);
    const VisForm& both = show("0,ByLayer,Continuous,0.25");
    EXPECT_EQ(described(both.linetype()), "typed Continuous");
    EXPECT_EQ(toUtf8(both.value()), "0,ByLayer,Continuous,0.25");
    EXPECT_EQ(messages(), "");
}

// --- any value -----------------------------------------------------------------------------------

/// The rule once more, for values of the drawing of these tests.
std::wstring rebuilt(const std::wstring& value)
{
    std::array<std::wstring, 4> fields;
    std::size_t field = 0;
    for (const wchar_t c : value) {
        if (c == L',') {
            ++field;
        } else if (field < fields.size()) {
            fields.at(field) += c;
        }
    }
    const auto named = [](const std::wstring& name, std::initializer_list<const wchar_t*> known) {
        for (const wchar_t* each : known) {
            if (corma::upperCase(name) == corma::upperCase(each)) {
                return std::wstring(each);
            }
        }
        return name;
    };
    const std::wstring colourWord = corma::upperCase(fields[1]);
    const long number = std::wcstol(fields[1].c_str(), nullptr, 10);
    std::wstring colour = std::to_wstring(number);
    if (colourWord == L"BYLAYER" || number == 256) {
        colour = L"ByLayer";
    } else if (number == 0) {
        colour = L"ByBlock"; // also for the word, which is no number
    }
    const std::wstring weightWord = corma::upperCase(fields[3]);
    std::wstring weight;
    if (weightWord == L"BYLAYER") {
        weight = L"ByLayer";
    } else if (weightWord == L"BYBLOCK") {
        weight = L"ByBlock";
    } else if (weightWord == L"DEFAULT" || weightWord == L"BYDEFAULT") {
        weight = L"Default";
    } else {
        const auto hundredths = static_cast<int>(std::wcstod(fields[3].c_str(), nullptr) * 100.0);
        std::array<wchar_t, 20> text {};
        const int nearest = AcDbDatabase::getNearestLineWeight(hundredths);
        std::swprintf(text.data(), text.size(), L"%.2f", nearest / 100.0);
        weight = text.data();
    }
    return named(fields[0], {L"0", L"Gevel", L"MUUR"}) + L"," + colour + L","
        + named(fields[2], {L"ByBlock", L"ByLayer", L"Continuous", L"DASHED"}) + L"," + weight;
}

class Dice
{
public:
    explicit Dice(unsigned seed)
        : m_random(seed)
    {
    }

    unsigned upTo(unsigned most) { return static_cast<unsigned>(m_random() % (most + 1)); }

    std::wstring field()
    {
        static const std::array<const wchar_t*, 30> kFields = {
            L"",       L"0",      L"1",    L"7",       L"12",      L"255",
            L"256",    L"257",    L"-7",   L"0.25",    L"0.31",    L"0.50",
            L"2.11",   L"99.9",   L"1e5",  L"bylayer", L"ByBlock", L"BYLAYER",
            L"Gevel",  L"gevel",  L"MUUR", L"muur",    L"default", L"BYDEFAULT",
            L"dashed", L"DASHED", L"Dak",  L"Kronkel", L" 0",      L"x y",
        };
        return kFields.at(upTo(kFields.size() - 1));
    }

    std::wstring value()
    {
        std::wstring text;
        for (unsigned more = upTo(6); more != 0; --more) {
            text += field() + L",";
        }
        return text + field();
    }

private:
    std::mt19937 m_random; // the same numbers everywhere
};

TEST_F(VisFormTest, AnyValueIsBuiltAgainByTheRuleAndStaysThen)
{
    Dice dice(4711);
    give("0,1,Continuous,0.25");
    for (int i = 0; i < 500; ++i) {
        const std::wstring value = dice.value();
        const std::wstring once = showHanded(value, kPlenty).value();
        ASSERT_EQ(once, rebuilt(value)) << toUtf8(value);
        ASSERT_EQ(showHanded(once, kPlenty).value(), once) << toUtf8(value);
    }
}

} // namespace
