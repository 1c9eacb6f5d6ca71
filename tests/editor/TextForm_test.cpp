#include "editor/TextForm.h"
#include "editor/VisualFormTest.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <random>

using corma::TextForm;
using corma::toUtf8;
using corma::host::Opened;
using corma::testing::VisualFormTestOf;

namespace {

class TextFormTest : public VisualFormTestOf<TextForm>
{
protected:
    TextFormTest()
        : VisualFormTestOf("x")
    {
    }

    void SetUp() override
    {
        VisualFormTestOf::SetUp();
        drawHouse();
    }
};

// --- from a value to the inputs and back ---------------------------------------------------------

struct TextValueRow
{
    const char* sentence;
    const char* value;
    const char* style;
    const char* numbers; // height, width factor and oblique angle, each in brackets
    const char* built;
};

void PrintTo(const TextValueRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class TextFormValue : public TextFormTest, public ::testing::WithParamInterface<TextValueRow>
{
};

TEST_P(TextFormValue, IsShownAndBuilt)
{
    const TextValueRow& row = GetParam();
    const std::string before = tables();
    const TextForm& form = show(row.value);
    EXPECT_EQ(described(form.style()), row.style);
    EXPECT_EQ("[" + toUtf8(form.height()) + "][" + toUtf8(form.widthFactor()) + "]["
                  + toUtf8(form.oblique()) + "]",
              row.numbers);
    EXPECT_EQ(toUtf8(form.value()), row.built);
    EXPECT_EQ(tables(), before) << "nothing is added to the drawing";
}

// A value with fewer separators begins again at its beginning.
// clang-format off
const TextValueRow textValueRows[] = {
    {"AllOfTheDrawing", "0,1,Continuous,0.25,Standard,2.5,0.8,15", "chosen 0", "[2.5][0.8][15]",
     "0,1,Continuous,0.25,Standard,2.5,0.8,15"},
    {"AStyleInAnotherCase", "0,1,Continuous,0.25,SMAL,2.5,1,0", "chosen 1", "[2.5][1][0]",
     "0,1,Continuous,0.25,Smal,2.5,1,0"},
    {"AnUnknownStyle", "0,1,Continuous,0.25,Breed,2.5,1,0", "typed Breed", "[2.5][1][0]",
     "0,1,Continuous,0.25,Breed,2.5,1,0"},
    {"NumbersAsTheyStand", "0,1,Continuous,0.25,Smal,2.500,+1,abc", "chosen 1", "[2.500][+1][abc]",
     "0,1,Continuous,0.25,Smal,2.500,+1,abc"},
    {"EmptyOwnFields", "0,1,Continuous,0.25,,,,", "typed ", "[][][]", "0,1,Continuous,0.25,,,,"},
    {"SomeOwnFields", "0,1,Continuous,0.25,Smal,3", "chosen 1", "[3][][]",
     "0,1,Continuous,0.25,Smal,3,,"},
    {"EmptyFieldsBeforeThem", ",,,,Smal,3,1,0", "chosen 1", "[3][1][0]",
     ",ByBlock,,0.00,Smal,3,1,0"},
    {"AFieldTooMany", "0,1,Continuous,0.25,Smal,3,1,0,more", "chosen 1", "[3][1][0]",
     "0,1,Continuous,0.25,Smal,3,1,0"},
    {"OnlyTheVisualFields", "0,1,Continuous,0.25", "typed 0", "[1][Continuous][0.25]",
     "0,1,Continuous,0.25,0,1,Continuous,0.25"},
    {"ThreeFields", "0,1,Continuous", "typed 1", "[Continuous][][]",
     "0,1,Continuous,0.00,1,Continuous,,"},
    {"TwoFields", "0,1", "typed 0", "[1][][]", "0,1,,0.00,0,1,,"},
    {"OneField", "Smal", "chosen 1", "[][][]", "Smal,ByBlock,,0.00,Smal,,,"},
    {"NoField", "", "typed ", "[][][]", ",ByBlock,,0.00,,,,"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, TextFormValue, ::testing::ValuesIn(textValueRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(TextFormTest, WhatIsChosenAndTypedIsBuilt)
{
    TextForm& form = show("0,1,Continuous,0.25,Standard,2.5,0.8,15");
    form.style().choose(1);
    form.setColour(256);
    form.setHeight(L"2,5");
    form.setWidthFactor(L",8");
    form.setOblique(L"1,234,5");
    EXPECT_EQ(toUtf8(form.height()), "2,5") << "the field keeps what was typed";
    EXPECT_EQ(toUtf8(form.value()), "0,ByLayer,Continuous,0.25,Smal,2.5,.8,1.234.5");
    form.style().fromField();
    EXPECT_EQ(toUtf8(form.style().typed()), "Smal");
    form.style().type(L"Breed");
    form.setHeight(L"");
    EXPECT_EQ(toUtf8(form.value()), "0,ByLayer,Continuous,0.25,Breed,,.8,1.234.5");
    form.style().fromList();
    EXPECT_EQ(toUtf8(form.value()), "0,ByLayer,Continuous,0.25,Smal,,.8,1.234.5");
}

TEST_F(TextFormTest, AListWithNothingChosenBeginsWithItsFirst)
{
    TextForm& form = show("0,1,Continuous,0.25,Breed,2.5,1,0");
    form.style().fromList();
    EXPECT_EQ(described(form.style()), "chosen 0");
    form.style().fromField();
    EXPECT_EQ(described(form.style()), "typed Breed");
}

TEST_F(TextFormTest, TheListIsThatOfTheDrawing)
{
    EXPECT_EQ(show("").style().names(), (std::vector<std::wstring> {L"Standard", L"Smal"}));
}

// --- around the value ----------------------------------------------------------------------------

TEST_F(TextFormTest, HasTheNameOfItsType)
{
    EXPECT_EQ(toUtf8(show("").typeText()), "Textstyle");
    EXPECT_EQ(toUtf8(show("", Levels::global, 19).typeText()), "Tekststijl");
    attributes = "readonly=true";
    EXPECT_FALSE(show("").isEnabled());
}

TEST_F(TextFormTest, TheDefaultPictureWins)
{
    EXPECT_EQ(show("").picture(), L"");
    attributes = "bitmap=own.bmp";
    EXPECT_EQ(folder.homely(show("").picture()), "~/cfg/own.bmp");
    corma::DeskStart start = startAt(Levels::global);
    start.defaultBitmap = L"/pictures/default.bmp";
    open(start);
    EXPECT_EQ(toUtf8(showAgain().picture()), "/pictures/default.bmp");
    EXPECT_EQ(toUtf8(showHanded(L"", 1000).picture()), "/pictures/default.bmp");
}

TEST_F(TextFormTest, NumbersAreStoredUnchecked)
{
    TextForm& form = show("0,1,Continuous,0.25,Breed,2.5,1,0", Levels::local);
    const std::string before = tables();
    form.setHeight(L"2,5");
    form.setWidthFactor(L"wide");
    form.setOblique(L"-400");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(places(),
              "ini A=0,1,Continuous,0.25,Breed,2.5,1,0\n"
              "drawing A=0,1,Continuous,0.25,Breed,2.5,wide,-400\n");
}

TEST_F(TextFormTest, GoesIntoTheProjectInBothModes)
{
    writeIpr("");
    TextForm& form = show("0,1,Continuous,0.25,Smal,2.5,1,0", Levels::localProject);
    form.tickGlobally(true);
    form.setHeight(L"3");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(),
              "ini A=0,1,Continuous,0.25,Smal,3,1,0\n"
              "ipr A=0,1,Continuous,0.25,Smal,3,1,0\n"
              "drawing (none)");
}

TEST_F(TextFormTest, WithoutADrawingTheStyleIsTyped)
{
    corma::closeDocument();
    TextForm& form = show("0,1,Continuous,0.25,Standard,2.5,1,0");
    EXPECT_TRUE(form.style().names().empty());
    EXPECT_EQ(described(form.style()), "typed Standard");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "0,1,Continuous,0.25,Standard,2.5,1,0");
}

TEST_F(TextFormTest, ATableThatDoesNotOpenLeavesTheStyleTyped)
{
    Opened<AcDbTextStyleTable> styles;
    ASSERT_EQ(acdbHostApplicationServices()->workingDatabase()->getTextStyleTable(styles.out(),
                                                                                  AcDb::kForWrite),
              Acad::eOk);
    const TextForm& form = show("0,1,Continuous,0.25,Standard,2.5,1,0");
    EXPECT_FALSE(form.style().canChoose());
    EXPECT_EQ(described(form.style()), "typed Standard");
    EXPECT_EQ(described(form.layer()), "chosen 0");
}

TEST_F(TextFormTest, AHandedInValueIsHandedBackIfItFits)
{
    give("0,1,Continuous,0.25,Standard,2.5,1,0");
    const std::wstring value = L"0,2,Continuous,0.25,Smal,3,1,0";
    EXPECT_FALSE(showHanded(value, value.size() - 1).accept());
    EXPECT_EQ(
        messages(),
        "exclamation, CfgDesk: This is not a correct value for a setting of type Textstyle\n");
    TextForm& form = showHanded(value, value.size());
    EXPECT_FALSE(form.saveGlobally().isShown || form.saveInProject().isShown);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(form.accepted(), value);
    form.setHeight(L"30");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(form.accepted(), value);
    EXPECT_EQ(ini(), "A=0,1,Continuous,0.25,Standard,2.5,1,0\n");
    EXPECT_EQ(toUtf8(setting().value()), "0,1,Continuous,0.25,Standard,2.5,1,0");
}

// --- any value -----------------------------------------------------------------------------------

/// What is built of the own fields: a style of the drawing has its spelling there.
std::wstring builtText(std::vector<std::wstring> fields)
{
    for (const wchar_t* known : {L"Standard", L"Smal"}) {
        if (corma::upperCase(fields[0]) == corma::upperCase(known)) {
            fields[0] = known;
        }
    }
    return fields[0] + L"," + fields[1] + L"," + fields[2] + L"," + fields[3];
}

TEST_F(TextFormTest, AnyOwnFieldsAreBuiltAgainByTheRule)
{
    std::mt19937 random(1905); // the same numbers everywhere
    const std::vector<std::wstring> pieces
        = {L"", L"0", L"2.5", L"Standard", L"SMAL", L"smal", L"Breed", L"ByLayer", L" x", L"1e3"};
    give("");
    for (int i = 0; i < 500; ++i) {
        const std::wstring value = randomValue(random, pieces, 10);
        const std::wstring once = showHanded(value, 1000).value();
        ASSERT_TRUE(once.ends_with(L"," + builtText(ownFields(value, 4))))
            << toUtf8(value) << " became " << toUtf8(once);
        ASSERT_EQ(std::count(once.begin(), once.end(), L','), 7);
        ASSERT_EQ(showHanded(once, 1000).value(), once) << toUtf8(value);
    }
}

} // namespace
