#include "editor/HatchForm.h"
#include "editor/VisualFormTest.h"
#include "editor/hatch_swatch.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <optional>
#include <random>

using corma::HatchForm;
using corma::swatchLines;
using corma::toUtf8;
using corma::testing::CurrentFolder;
using corma::testing::VisualFormTestOf;

namespace {

constexpr double kSpacing = 3.175; // of the lines of ANSI31, in millimetres

class HatchFormTest : public VisualFormTestOf<HatchForm>
{
protected:
    HatchFormTest()
        : VisualFormTestOf("h")
    {
    }

    void SetUp() override
    {
        VisualFormTestOf::SetUp();
        services.module = folder.makeFolder(L"Module") + L"/host.bin";
        corma::forgetModuleFolder();
        m_there.emplace(folder.makeFolder(L"work"));
        drawHouse();
    }

    void TearDown() override
    {
        m_there.reset();
        VisualFormTestOf::TearDown();
        corma::forgetModuleFolder();
    }

    static void setMeasurement(short value)
    {
        resbuf variable {};
        variable.restype = RTSHORT;
        variable.resval.rint = value;
        ASSERT_EQ(acedSetVar(L"MEASUREMENT", &variable), RTNORM);
    }

    /// The names of the patterns for a hatch that has none, a blank between.
    std::string names()
    {
        std::string all;
        for (const std::wstring& name : show("0,1,Continuous,0.25,,0,1").patterns()) {
            all += (all.empty() ? "" : " ") + toUtf8(name);
        }
        return all;
    }

    /// A form on one of the host's own patterns.
    HatchForm& showPattern(const std::string& pattern, const std::string& angle = "0",
                           const std::string& scale = "1")
    {
        return show("0,1,Continuous,0.25," + pattern + "," + angle + "," + scale);
    }

private:
    std::optional<CurrentFolder> m_there;
};

// --- the pattern file ----------------------------------------------------------------------------

TEST_F(HatchFormTest, TheHostsOwnFileIsThereWithoutAnother)
{
    EXPECT_TRUE(names().starts_with("SOLID ANGLE ANSI31 ANSI32 "));
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(HatchFormTest, TheFileGoesByTheMeasurementOfTheDrawing)
{
    folder.write(L"work/acad.pat", "*INCH, in inches\n0,0,0,0,1\n");
    folder.write(L"work/acadiso.pat", "*MM, in millimetres\n0,0,0,0,1\n");
    setMeasurement(0);
    EXPECT_EQ(names(), "INCH");
    setMeasurement(1);
    EXPECT_EQ(names(), "MM");
    setMeasurement(2);
    EXPECT_EQ(names(), "MM");
    corma::closeDocument();
    EXPECT_EQ(names(), "MM") << "without a drawing";
    setMeasurement(0);
    EXPECT_EQ(names(), "INCH");
}

TEST_F(HatchFormTest, AFileThatIsFoundGoesBeforeTheHostsOwn)
{
    folder.makeFolder(L"support");
    services.variables[L"ACAD"] = folder.path(L"nowhere") + L";" + folder.path(L"support");
    folder.write(L"house/acadiso.pat", "*DRAWING, beside the drawing\n0,0,0,0,1\n");
    EXPECT_EQ(names(), "DRAWING");
    folder.write(L"support/acadiso.pat", "*SUPPORT, in a support folder\n0,0,0,0,1\n");
    EXPECT_EQ(names(), "SUPPORT");
    folder.write(L"Module/acadiso.pat", "*MODULE, beside the module\n0,0,0,0,1\n");
    EXPECT_EQ(names(), "MODULE");
    EXPECT_EQ(folder.homely(showPattern("module").previewSource()), "~/Module/acadiso.pat(MODULE)");
}

TEST_F(HatchFormTest, AFileThatCannotBeReadHasNoPatternsAndNothingIsTold)
{
    folder.makeFolder(L"Module/acadiso.pat");
    HatchForm& form = showPattern("ANSI31", "45", "2");
    EXPECT_TRUE(form.patterns().empty());
    EXPECT_EQ(form.chosen(), std::nullopt);
    EXPECT_FALSE(form.preview());
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "0,1,Continuous,0.25,,45,2");
}

TEST_F(HatchFormTest, AnEmptyFileHasNoPatterns)
{
    folder.write(L"work/acadiso.pat", "");
    EXPECT_EQ(names(), "");
}

TEST_F(HatchFormTest, TheListHasWhatTheLinesWithAStarHave)
{
    folder.write(L"work/acadiso.pat",
                 ";; *NONE, a comment\r\n"
                 "*ONE, the first\r\n"
                 "0,0,0,0,1\r\n"
                 "*TWO\r\n"
                 "*1234567890123456789\r\n"
                 "0,0,0,0,1\r\n"
                 "*abcdefghijklmnopqrstuvwxyz, too long\r\n"
                 "0,0,0,0,1\r\n"
                 "*ONE, again\r\n"
                 "0,0,0,0,2\r\n"
                 "*LAST");
    EXPECT_EQ(names(), "ONE TWO 1234567890123456789 abcdefghijklmnopqrs ONE LAST");
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(HatchFormTest, OfEqualNamesTheFirstIsChosen)
{
    folder.write(L"work/acadiso.pat", "*A\n0,0,0,0,1\n*B\n0,0,0,0,2\n*b\n0,0,0,0,3\n");
    HatchForm& form = showPattern("b");
    EXPECT_EQ(form.chosen(), 1U);
    form.choosePattern(2);
    EXPECT_EQ(toUtf8(form.value()), "0,1,Continuous,0.25,b,0,1");
}

// --- from a value to the inputs and back ---------------------------------------------------------

struct HatchValueRow
{
    const char* sentence;
    const char* value;
    const char* pattern; // "(none)" where none is chosen
    const char* numbers; // angle and scale, each in brackets
    const char* built;
};

void PrintTo(const HatchValueRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class HatchFormValue : public HatchFormTest, public ::testing::WithParamInterface<HatchValueRow>
{
};

TEST_P(HatchFormValue, IsShownAndBuilt)
{
    const HatchValueRow& row = GetParam();
    const std::string before = tables();
    const HatchForm& form = show(row.value);
    EXPECT_EQ(form.chosen() ? toUtf8(form.patterns()[*form.chosen()]) : "(none)", row.pattern);
    EXPECT_EQ("[" + toUtf8(form.angle()) + "][" + toUtf8(form.scale()) + "]", row.numbers);
    EXPECT_EQ(toUtf8(form.value()), row.built);
    EXPECT_EQ(tables(), before) << "nothing is added to the drawing";
}

// A value with fewer separators begins again at its beginning.
// clang-format off
const HatchValueRow hatchValueRows[] = {
    {"AllThatThereIs", "0,1,Continuous,0.25,ANSI31,45.00,1.50", "ANSI31", "[45.00][1.50]",
     "0,1,Continuous,0.25,ANSI31,45.00,1.50"},
    {"APatternInAnotherCase", "0,1,Continuous,0.25,ansi31,45,1", "ANSI31", "[45][1]",
     "0,1,Continuous,0.25,ANSI31,45,1"},
    {"AnUnknownPatternIsLost", "0,1,Continuous,0.25,KLINKER,45,1", "(none)", "[45][1]",
     "0,1,Continuous,0.25,,45,1"},
    {"NoPattern", "0,1,Continuous,0.25,,45,1", "(none)", "[45][1]", "0,1,Continuous,0.25,,45,1"},
    {"NumbersAsTheyStand", "0,1,Continuous,0.25,NET,abc,+1.0", "NET", "[abc][+1.0]",
     "0,1,Continuous,0.25,NET,abc,+1.0"},
    {"EmptyNumbers", "0,1,Continuous,0.25,NET,,", "NET", "[][]", "0,1,Continuous,0.25,NET,,"},
    {"NoNumbers", "0,1,Continuous,0.25,NET", "NET", "[][]", "0,1,Continuous,0.25,NET,,"},
    {"AFieldTooMany", "0,1,Continuous,0.25,NET,45,1,9", "NET", "[45][1]",
     "0,1,Continuous,0.25,NET,45,1"},
    {"EmptyFieldsBefore", ",,,,NET,45,1", "NET", "[45][1]", ",ByBlock,,0.00,NET,45,1"},
    {"OnlyTheVisualFields", "0,1,Continuous,0.25", "(none)", "[1][Continuous]",
     "0,1,Continuous,0.25,,1,Continuous"},
    {"ThreeFields", "0,NET,45", "NET", "[45][]", "0,ByBlock,45,0.00,NET,45,"},
    {"TwoFields", "NET,45", "NET", "[45][]", "NET,45,,0.00,NET,45,"},
    {"OneField", "NET", "NET", "[][]", "NET,ByBlock,,0.00,NET,,"},
    {"NoField", "", "(none)", "[][]", ",ByBlock,,0.00,,,"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, HatchFormValue, ::testing::ValuesIn(hatchValueRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(HatchFormTest, WhatIsChosenAndTypedIsBuilt)
{
    HatchForm& form = showPattern("ANSI31");
    form.choosePattern(1);
    form.setAngle(L"22,5");
    form.setScale(L"1,5");
    form.setColour(256);
    EXPECT_EQ(toUtf8(form.scale()), "1,5") << "the field keeps what was typed";
    EXPECT_EQ(toUtf8(form.value()), "0,ByLayer,Continuous,0.25,ANGLE,22.5,1.5");
    form.choosePattern(form.patterns().size());
    EXPECT_EQ(form.chosen(), std::nullopt);
    EXPECT_EQ(toUtf8(form.value()), "0,ByLayer,Continuous,0.25,,22.5,1.5");
}

TEST_F(HatchFormTest, TheListsOfAnglesAndScales)
{
    EXPECT_EQ(HatchForm::angles(),
              (std::vector<std::wstring> {L"0.00", L"45.00", L"90.00", L"135.00", L"180.00",
                                          L"225.00", L"270.00", L"315.00", L"360.00"}));
    EXPECT_EQ(HatchForm::scales(),
              (std::vector<std::wstring> {L"0.25", L"0.50", L"0.75", L"1.00", L"1.25", L"1.50",
                                          L"1.75", L"2.00"}));
}

TEST_F(HatchFormTest, AReadOnlyHatchHasClosedInputs)
{
    attributes = "readonly=true";
    EXPECT_FALSE(showPattern("NET").isEnabled());
}

TEST_F(HatchFormTest, TheDefaultPictureWins)
{
    attributes = "bitmap=own.bmp";
    EXPECT_EQ(folder.homely(showPattern("NET").picture()), "~/cfg/own.bmp");
    corma::DeskStart start = startAt(Levels::global);
    start.defaultBitmap = L"/pictures/default.bmp";
    open(start);
    EXPECT_EQ(toUtf8(showAgain().picture()), "/pictures/default.bmp");
}

// --- angle and scale that are none ---------------------------------------------------------------

struct NumberRow
{
    const char* sentence;
    const wchar_t* angle;
    const wchar_t* scale;
    const char* stored; // null for a value that is refused
    bool isAngleTold;
    bool isScaleTold;
};

void PrintTo(const NumberRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class HatchFormNumbers : public HatchFormTest, public ::testing::WithParamInterface<NumberRow>
{
};

TEST_P(HatchFormNumbers, AreReadAsWholeOnes)
{
    const NumberRow& row = GetParam();
    HatchForm& form = show("0,1,Continuous,0.25,NET,10,1", Levels::local);
    form.setAngle(row.angle);
    form.setScale(row.scale);
    EXPECT_EQ(form.accept(), row.stored != nullptr);
    std::vector<std::wstring> told;
    if (row.isAngleTold) {
        told.emplace_back(L"The degrees of the angle must lie between 0\u00B0 and 360\u00B0");
    }
    if (row.isScaleTold) {
        told.emplace_back(L"The scale must be positif");
    }
    if (row.stored == nullptr) {
        told.emplace_back(L"This is not a correct value for a setting of type Hatch");
    }
    EXPECT_EQ(services.boxes, told);
    EXPECT_EQ(toUtf8(form.accepted()), row.stored == nullptr ? "" : row.stored);
    EXPECT_EQ(form.angle(), row.angle);
    EXPECT_EQ(form.scale(), row.scale);
    EXPECT_EQ(places(),
              "ini A=0,1,Continuous,0.25,NET,10,1\n"
              "drawing "
                  + (row.stored == nullptr ? "(none)" : "A=" + std::string(row.stored) + "\n"));
}

// clang-format off
const NumberRow numberRows[] = {
    {"TheLeastAngle", L"0", L"1", "0,1,Continuous,0.25,NET,0,1", false, false},
    {"TheLargestAngle", L"360", L"1", "0,1,Continuous,0.25,NET,360,1", false, false},
    {"AFractionBehindTheLargestAngle", L"360.9", L"1", "0,1,Continuous,0.25,NET,360.9,1", false, false},
    {"ACommaBehindTheLargestAngle", L"360,9", L"1", "0,1,Continuous,0.25,NET,360.9,1", false, false},
    {"AnAngleThatIsTooLarge", L"361", L"1", nullptr, true, false},
    {"AnAngleBelowZero", L"-1", L"1", nullptr, true, false},
    {"AFractionBelowZero", L"-0.9", L"1", "0,1,Continuous,0.25,NET,-0.9,1", false, false},
    {"AnAngleThatIsNoNumber", L"steep", L"1", "0,1,Continuous,0.25,NET,steep,1", false, false},
    {"AScaleOfZero", L"45", L"0", "0,1,Continuous,0.25,NET,45,0", false, false},
    {"AScaleOfHalfBelowZero", L"45", L"-0.5", "0,1,Continuous,0.25,NET,45,-0.5", false, false},
    {"AScaleBelowZero", L"45", L"-1", nullptr, false, true},
    {"AScaleWithAComma", L"45", L"1,5", "0,1,Continuous,0.25,NET,45,1.5", false, false},
    {"AScaleThatIsNoNumber", L"45", L"large", "0,1,Continuous,0.25,NET,45,large", false, false},
    {"BothWrong", L"400", L"-1", nullptr, true, true},
    {"BothEmpty", L"", L"", "0,1,Continuous,0.25,NET,,", false, false},
    {"AnEmptyAngleLetsTheScaleCountAsOne", L"", L"400", nullptr, true, false},
    {"AnEmptyAngleLeavesTheScaleUnchecked", L"", L"-1", nullptr, true, false},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, HatchFormNumbers, ::testing::ValuesIn(numberRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct MessagesRow
{
    const char* sentence;
    int language;
    const char* angle;
    const char* scale;
    const char* wrong;
};

void PrintTo(const MessagesRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class HatchFormMessages : public HatchFormTest, public ::testing::WithParamInterface<MessagesRow>
{
};

TEST_P(HatchFormMessages, AreThoseOfTheLanguage)
{
    const MessagesRow& row = GetParam();
    HatchForm& form = show("0,1,Continuous,0.25,NET,400,-1", Levels::global, row.language);
    EXPECT_FALSE(form.accept());
    ASSERT_EQ(services.boxes.size(), 3U);
    EXPECT_EQ(toUtf8(services.boxes[0]), row.angle);
    EXPECT_EQ(toUtf8(services.boxes[1]), row.scale);
    EXPECT_EQ(toUtf8(services.boxes[2]), row.wrong);
    EXPECT_EQ(services.icons[2], corma::MessageIcon::exclamation);
    EXPECT_EQ(ini(), "A=0,1,Continuous,0.25,NET,400,-1\n");
    form.setAngle(L"40");
    form.setScale(L"1");
    EXPECT_TRUE(form.accept()) << "it stayed open";
    EXPECT_EQ(services.boxes.size(), 3U);
    EXPECT_EQ(toUtf8(setting().value()), "0,1,Continuous,0.25,NET,40,1");
}

// clang-format off
const MessagesRow messagesRows[] = {
    {"English", 9, "The degrees of the angle must lie between 0° and 360°",
     "The scale must be positif", "This is not a correct value for a setting of type Hatch"},
    {"Spanish", 10, "Los grados del ángulo deben estar entre 0° y 360°",
     "La escala debe ser positiva",
     "Este valor no es correcto para un parámetro de tipo Sombreado"},
    {"French", 12, "L'angle doit être compris entre 0° et 360°", "L'échelle doit être positive",
     "Cette valeur n'est pas correcte pour un paramètre de type Hachures"},
    {"Dutch", 19, "De hoek moet tussen 0° en 360° liggen", "De schaal moet positief zijn",
     "Dit is geen juiste waarde voor een instelling van het type Arcering"},
    {"Polish", 21, "Kąt musi mieścić się w zakresie od 0° do 360°", "Skala musi być dodatnia",
     "To nie jest poprawna wartość dla ustawienia typu Kreskowanie"},
    {"Russian", 25, "Угол должен быть в пределах от 0° до 360°",
     "Масштаб должен быть положительным", "Недопустимое значение для параметра типа Штриховка"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(In, HatchFormMessages, ::testing::ValuesIn(messagesRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(HatchFormTest, AGoodOneGoesIntoTheProjectInBothModes)
{
    writeIpr("");
    HatchForm& form = show("0,1,Continuous,0.25,NET,0,1", Levels::localProject);
    form.setScale(L"2");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(),
              "ini A=0,1,Continuous,0.25,NET,0,1\n"
              "ipr A=0,1,Continuous,0.25,NET,0,2\n"
              "drawing (none)");
}

TEST_F(HatchFormTest, AHandedInValueIsCheckedAndMustFit)
{
    give("0,1,Continuous,0.25,NET,0,1");
    const std::wstring value = L"0,2,Continuous,0.25,NET,45,1";
    EXPECT_TRUE(showHanded(value, value.size()).accept());
    EXPECT_TRUE(showHanded(value, value.size() + 1).accept());
    EXPECT_EQ(messages(), "");
    EXPECT_FALSE(showHanded(value, value.size() - 1).accept());
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: This is not a correct value for a setting of type Hatch\n");
    HatchForm& form = showHanded(value, value.size());
    EXPECT_FALSE(form.saveGlobally().isShown || form.saveInProject().isShown);
    form.setAngle(L"99");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(toUtf8(form.accepted()), "0,2,Continuous,0.25,NET,99,1");
    form.setScale(L"-1");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(services.boxes.size(), 2U);
    EXPECT_EQ(toUtf8(form.accepted()), "0,2,Continuous,0.25,NET,99,1");
    EXPECT_EQ(ini(), "A=0,1,Continuous,0.25,NET,0,1\n");
}

// --- the preview ---------------------------------------------------------------------------------

TEST_F(HatchFormTest, ThePreviewTellsTheFileAndThePattern)
{
    EXPECT_EQ(folder.homely(showPattern("ansi31").previewSource()), "acadiso.pat(ANSI31)");
    folder.write(
        L"Module/acadiso.pat",
        "*gravel, small letters\n0,0,0,0,1\n*GRAVEL, stones\n0,0,0,0,1\n*SAND\n0,0,0,0,1\n");
    HatchForm& form = showPattern("SAND");
    EXPECT_EQ(form.previewKind(), 3);
    EXPECT_EQ(folder.homely(form.previewSource()), "~/Module/acadiso.pat(SAND)");
    form.choosePattern(1);
    EXPECT_EQ(form.previewKind(), 0);
    EXPECT_EQ(folder.homely(form.previewSource()), "~/Module/acadiso.pat(GRAVEL)");
    form.choosePattern(0);
    EXPECT_EQ(form.previewKind(), 3) << "that is another name";
}

TEST_F(HatchFormTest, ThePreviewStaysWhileNothingIsChosen)
{
    HatchForm& none = showPattern("KLINKER");
    EXPECT_EQ(none.previewKind(), 3);
    EXPECT_EQ(toUtf8(none.previewSource()), "");
    EXPECT_FALSE(none.preview());
    HatchForm& form = showPattern("NET");
    form.choosePattern(form.patterns().size());
    EXPECT_EQ(toUtf8(form.previewSource()), "acadiso.pat(NET)");
}

TEST_F(HatchFormTest, ThePreviewTurnsWithTheAngle)
{
    for (const auto& [typed, angle] : {std::pair {L"0", 45.0},
                                       {L"45", 90.0},
                                       {L"22.5", 67.5},
                                       {L"22,5", 67.5},
                                       {L"-45", 0.0},
                                       {L"steep", 45.0},
                                       {L"", 45.0}}) {
        HatchForm& form = showPattern("ANSI31");
        form.setAngle(typed);
        const auto preview = form.preview();
        ASSERT_TRUE(preview);
        EXPECT_DOUBLE_EQ(preview->pattern.families.at(0).angle, angle) << toUtf8(typed);
    }
}

struct ScaleRow
{
    const wchar_t* typed;
    double scale; // of the lines
    double side; // of the square, in those of scale 1
};

TEST_F(HatchFormTest, ThePreviewGrowsInASquareThatStaysForTheScalesOfTheList)
{
    constexpr double kSide = 6 * kSpacing;
    for (const ScaleRow& row : {ScaleRow {L"1", 1.0, 1.0},
                                {L"0.25", 0.25, 1.0},
                                {L"2.00", 2.0, 1.0},
                                {L"1,5", 1.5, 1.0},
                                {L"0.125", 0.125, 0.5},
                                {L"4", 4.0, 2.0},
                                {L"1e6", 1e6, 500000.0},
                                {L"1e-6", 1e-6, 4e-6},
                                {L"0", 1.0, 1.0},
                                {L"-2", 1.0, 1.0},
                                {L"large", 1.0, 1.0},
                                {L"", 1.0, 1.0}}) {
        HatchForm& form = showPattern("ANSI31");
        form.setScale(row.typed);
        const auto preview = form.preview();
        ASSERT_TRUE(preview);
        EXPECT_DOUBLE_EQ(preview->pattern.families.at(0).across, kSpacing * row.scale)
            << toUtf8(row.typed);
        EXPECT_DOUBLE_EQ(preview->side, kSide * row.side) << toUtf8(row.typed);
        EXPECT_FALSE(swatchLines(preview->pattern, preview->side).empty()) << toUtf8(row.typed);
    }
}

TEST_F(HatchFormTest, StonesAreShownFromNearer)
{
    folder.write(L"work/acadiso.pat", "*GRAVEL, stones\n0,0,0,0,2\n*SAND\n0,0,0,0,2\n");
    EXPECT_DOUBLE_EQ(showPattern("SAND").preview().value().side, 12.0);
    EXPECT_DOUBLE_EQ(showPattern("GRAVEL").preview().value().side, 6.0);
}

TEST_F(HatchFormTest, ThePreviewBearsAnyNumbers)
{
    HatchForm& form = showPattern("HEX");
    for (const wchar_t* angle : {L"0", L"1e308", L"-1e308", L"1e999", L"-1e999", L"1e-320"}) {
        for (const wchar_t* scale : {L"1", L"1e308", L"1e999", L"1e-308", L"1e-320", L"-1e999"}) {
            form.setAngle(angle);
            form.setScale(scale);
            const auto preview = form.preview();
            ASSERT_TRUE(preview);
            EXPECT_LE(swatchLines(preview->pattern, preview->side).size(), corma::kMostSwatchLines);
        }
    }
}

TEST_F(HatchFormTest, EveryPatternOfTheHostsOwnFilesHasAPreview)
{
    for (const short measurement : {short {0}, short {1}}) {
        setMeasurement(measurement);
        HatchForm& form = showPattern("SOLID");
        ASSERT_EQ(form.patterns().size(), 17U);
        for (std::size_t i = 0; i < form.patterns().size(); ++i) {
            form.choosePattern(i);
            const auto preview = form.preview();
            ASSERT_TRUE(preview) << toUtf8(form.patterns()[i]);
            EXPECT_EQ(preview->pattern.name, form.patterns()[i]);
            EXPECT_FALSE(swatchLines(preview->pattern, preview->side).empty());
        }
    }
}

TEST_F(HatchFormTest, APatternWithoutLinesHasNoPreview)
{
    folder.write(L"work/acadiso.pat", "*EMPTY, nothing below\n*FULL\n0,0,0,0,1\n");
    EXPECT_FALSE(showPattern("EMPTY").preview());
    EXPECT_EQ(showPattern("EMPTY").chosen(), 0U);
    EXPECT_TRUE(showPattern("FULL").preview());
}

TEST_F(HatchFormTest, ALongNameHasAPreviewUnderItsShortForm)
{
    folder.write(L"work/acadiso.pat",
                 "*abcdefghijklmnopqrstuvwxyz, too long\n0,0,0,0,5\n*abcdefghijklm\n0,0,0,0,1\n");
    const auto preview = showPattern("abcdefghijklmnopqrs").preview();
    ASSERT_TRUE(preview);
    EXPECT_EQ(preview->pattern.families.at(0).across, 5.0);
    EXPECT_EQ(showPattern("abcdefghijklm").preview().value().pattern.families.at(0).across, 1.0);
}

TEST_F(HatchFormTest, BlanksAroundANameDoNotHideItsPreview)
{
    folder.write(L"work/acadiso.pat",
                 "*A , a\n0,0,0,0,1\n* AB , b\n0,0,0,0,2\n*  abcdefghijklmnopqrstuvwxyz\n"
                 "0,0,0,0,3\n");
    HatchForm& form = showPattern("A ");
    EXPECT_EQ(toUtf8(form.value()), "0,1,Continuous,0.25,A ,0,1");
    double across = 1.0;
    for (const std::size_t index : {0U, 1U, 2U}) {
        form.choosePattern(index);
        const auto preview = form.preview();
        ASSERT_TRUE(preview) << index;
        EXPECT_EQ(preview->pattern.families.at(0).across, across++);
    }
}

// --- any value -----------------------------------------------------------------------------------

/// What is built of the own fields: a pattern that the file lacks is none.
std::wstring builtHatch(const std::vector<std::wstring>& fields)
{
    std::wstring pattern;
    for (const wchar_t* known : {L"ONE", L"Two"}) {
        if (corma::upperCase(fields[0]) == corma::upperCase(known)) {
            pattern = known;
        }
    }
    return pattern + L"," + fields[1] + L"," + fields[2];
}

TEST_F(HatchFormTest, AnyOwnFieldsAreBuiltAgainByTheRule)
{
    folder.write(L"work/acadiso.pat", "*ONE\n0,0,0,0,1\n*Two\n0,0,0,0,1\n");
    std::mt19937 random(2024); // the same numbers everywhere
    const std::vector<std::wstring> pieces
        = {L"", L"0", L"45.00", L"ONE", L"one", L"TWO", L"Three", L"ByLayer", L" x", L"-1e3"};
    give("");
    for (int i = 0; i < 300; ++i) {
        const std::wstring value = randomValue(random, pieces, 9);
        const std::wstring once = showHanded(value, 1000).value();
        ASSERT_TRUE(once.ends_with(L"," + builtHatch(ownFields(value, 3))))
            << toUtf8(value) << " became " << toUtf8(once);
        ASSERT_EQ(std::count(once.begin(), once.end(), L','), 6);
        ASSERT_EQ(showHanded(once, 1000).value(), once) << toUtf8(value);
    }
}

} // namespace
