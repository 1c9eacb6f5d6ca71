#include "host/host.h"
#include "platform/faults.h"
#include "platform/text.h"
#include "settings/LevelsTest.h"
#include "settings/apply_value.h"
#include "support/RefusedCalls.h"

#include <cerrno>

using corma::SaveBoxes;
using corma::ValueEditor;
using corma::platform::SystemCall;
using corma::testing::filesIn;
using corma::testing::LevelsTest;
using corma::testing::RefusedCalls;
using corma::testing::WriteWatch;

namespace {

/// Where a value is given.
struct ApplyCase
{
    bool isProject = false;
    bool isLocal = false;
    bool projectMode = false;
    bool localMode = false;
    SaveBoxes boxes {};
    ValueEditor editor = ValueEditor::generic;
};

std::string nameOf(const ApplyCase& given)
{
    std::string name = given.editor == ValueEditor::visual ? "Visual" : "Generic";
    name += given.isProject ? "OfProject" : "";
    name += given.isLocal ? "OfDrawing" : "";
    name += given.projectMode || given.localMode ? "In" : "";
    name += given.projectMode ? "Project" : "";
    name += given.localMode ? "Local" : "";
    name += given.projectMode || given.localMode ? "Mode" : "WithoutModes";
    name += given.boxes.globally ? "Globally" : "";
    name += given.boxes.inProject ? "InProject" : "";
    return name;
}

void PrintTo(const ApplyCase& given, std::ostream* out)
{
    *out << nameOf(given);
}

std::vector<ApplyCase> allCases()
{
    constexpr unsigned kCases = 1U << 7U;
    std::vector<ApplyCase> cases;
    for (unsigned bits = 0; bits < kCases; ++bits) {
        const auto bit = [&](unsigned number) { return (bits >> number & 1U) != 0; };
        cases.push_back({.isProject = bit(0),
                         .isLocal = bit(1),
                         .projectMode = bit(2),
                         .localMode = bit(3),
                         .boxes = {.globally = bit(4), .inProject = bit(5)},
                         .editor = bit(6) ? ValueEditor::visual : ValueEditor::generic});
    }
    return cases;
}

// --- the rule, written down a second time --------------------------------------------------------

/// A setting and the three places that hold it, as texts.
struct World
{
    std::string value = "V";
    std::string globalValue = "G";
    std::string projectValue = "P";
    bool isProject = false;
    bool isLocal = false;
    std::string inGlobalFile = "file";
    std::string inProjectFile = "project";
    std::string inDrawing = "drawing";
    int filesWritten = 0;

    void setProjectValue(const std::string& text)
    {
        globalValue = value;
        value = text;
        isProject = true;
        isLocal = false;
    }

    void setLocalValue(const std::string& text)
    {
        (isProject ? projectValue : globalValue) = value;
        value = text;
        isProject = false;
        isLocal = true;
    }

    void saveToFile(bool toGlobal)
    {
        (toGlobal ? inGlobalFile : inProjectFile) = value;
        ++filesWritten;
    }

    void writeToDrawing() { inDrawing = value; }

    [[nodiscard]] std::string text() const
    {
        return "value " + value + ", global " + globalValue + ", project " + projectValue
            + (isProject ? ", of the project" : "") + (isLocal ? ", of the drawing" : "")
            + "; in the configuration file " + inGlobalFile + ", in the project file "
            + inProjectFile + ", in the drawing " + inDrawing + "; files written "
            + std::to_string(filesWritten);
    }
};

void storeGeneric(World& world, const ApplyCase& given, const std::string& text)
{
    if (!world.isProject && given.projectMode && (!given.localMode || given.boxes.inProject)) {
        world.setProjectValue(text);
        world.saveToFile(false);
        if (given.localMode) {
            world.setLocalValue(text);
            world.writeToDrawing();
        }
    } else if (!world.isLocal && given.localMode) {
        world.setLocalValue(text);
        world.writeToDrawing();
    } else if (world.isLocal && given.localMode) {
        world.value = text;
        world.writeToDrawing();
    } else if (!given.projectMode && !given.localMode) {
        world.value = text;
        world.saveToFile(true);
    } else if (world.isProject && given.projectMode) {
        world.value = text;
        world.saveToFile(false);
    }
}

void storeVisual(World& world, const ApplyCase& given, const std::string& text)
{
    if (!world.isProject && given.projectMode) {
        world.setProjectValue(text);
        world.saveToFile(false);
    } else if (!world.isLocal && given.localMode) {
        world.setLocalValue(text);
        world.writeToDrawing();
    } else if (world.isLocal && given.localMode) {
        world.value = text;
        world.writeToDrawing();
    } else if (!given.projectMode && !given.localMode) {
        world.value = text;
        world.saveToFile(false);
    } else if (world.isProject && given.projectMode) {
        world.value = text;
        world.saveToFile(false);
    }
}

World worldAfter(const ApplyCase& given, const std::string& text)
{
    World world;
    world.isProject = given.isProject;
    world.isLocal = given.isLocal;
    if (given.editor == ValueEditor::visual) {
        storeVisual(world, given, text);
    } else {
        storeGeneric(world, given, text);
    }
    if (given.boxes.globally) {
        world.saveToFile(true);
        world.globalValue = text;
    }
    if (given.boxes.inProject) {
        world.saveToFile(false);
        world.projectValue = text;
    }
    return world;
}

// --- the rule in force ---------------------------------------------------------------------------

class ApplyValue : public LevelsTest
{
protected:
    void SetUp() override
    {
        LevelsTest::SetUp();
        writeIni("[X]\nA=file\n");
        writeIpr("[X]\nA=project\n");
        root = std::make_unique<RubriekenArray>(where());
        newDrawing();
        store(L"X", L"A", L"drawing");
        setting.setCategory(&category);
        setting.setGlobalValue(L"G");
        setting.setProjectCopy(L"P");
    }

    bool apply(const ApplyCase& given)
    {
        setting.setIsProject(given.isProject);
        setting.setIsLocal(given.isLocal);
        root->projectMode = given.projectMode;
        root->localMode = given.localMode;
        const FileNameSet names = where();
        return corma::applyValue(setting, L"new", {*root, names}, given.editor, given.boxes);
    }

    /// What stands behind "A=" in a text that is all of a file.
    static std::string valueIn(const std::string& file)
    {
        const std::string head = "[X]\nA=";
        EXPECT_TRUE(file.starts_with(head) && file.ends_with('\n')) << file;
        return file.substr(head.size(), file.size() - head.size() - 1);
    }

    static std::string valueInDrawing()
    {
        const std::string head = "X/\nX/A=";
        const std::string all = drawing();
        EXPECT_TRUE(all.starts_with(head) && all.ends_with('\n')) << all;
        return all.substr(head.size(), all.size() - head.size() - 1);
    }

    [[nodiscard]] World world(int filesWritten) const
    {
        return {.value = corma::toUtf8(setting.value()),
                .globalValue = corma::toUtf8(setting.globalValue()),
                .projectValue = corma::toUtf8(setting.projectValue()),
                .isProject = setting.isProject(),
                .isLocal = setting.isLocal(),
                .inGlobalFile = valueIn(ini()),
                .inProjectFile = valueIn(ipr()),
                .inDrawing = valueInDrawing(),
                .filesWritten = filesWritten};
    }

    Rubriek category {L"X"};
    Instelling setting {L"A", L"V"};
    std::unique_ptr<RubriekenArray> root; // only its modes count
};

class ApplyValueIn : public ApplyValue, public ::testing::WithParamInterface<ApplyCase>
{
};

TEST_P(ApplyValueIn, WritesByTheRule)
{
    const WriteWatch watch(folder);
    EXPECT_TRUE(apply(GetParam()));
    EXPECT_EQ(world(watch.writes).text(), worldAfter(GetParam(), "new").text());
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
    EXPECT_EQ(boxes(), "");
}

INSTANTIATE_TEST_SUITE_P(All, ApplyValueIn, ::testing::ValuesIn(allCases()),
                         [](const auto& row) { return nameOf(row.param); });

// --- some of it in plain words -------------------------------------------------------------------

TEST_F(ApplyValue, AVisualValueWithoutModesGoesIntoAProjectFile)
{
    folder.remove(L"house/tool.ipr");
    const FileNameSet names = FileNameSet::of(folder.path(L"cfg/"), L"tool.ini", 9);
    EXPECT_TRUE(corma::applyValue(setting, L"new", {*root, names}, ValueEditor::visual, {}));
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini cfg/tool.ipr");
    EXPECT_EQ(ini(), "[X]\nA=file\n");
    EXPECT_EQ(folder.read(L"cfg/tool.ipr"), "[X]\nA=new");
    EXPECT_TRUE(corma::applyValue(setting, L"new", {*root, names}, ValueEditor::visual,
                                  {.globally = true}));
    EXPECT_EQ(ini(), "[X]\nA=new\n");
}

TEST_F(ApplyValue, AGenericValueWithoutModesGoesIntoTheConfigurationFile)
{
    EXPECT_TRUE(apply({}));
    EXPECT_EQ(world(1).text(),
              "value new, global G, project P; in the configuration file new, in the project file "
              "project, in the drawing drawing; files written 1");
}

TEST_F(ApplyValue, InBothModesAGenericValueReachesTheProjectOnlyWhenAskedTo)
{
    EXPECT_TRUE(apply({.projectMode = true, .localMode = true}));
    EXPECT_EQ(world(0).text(),
              "value new, global V, project P, of the drawing; in the configuration file file, in "
              "the project file project, in the drawing new; files written 0");
    setting.setValue(L"V");
    EXPECT_TRUE(apply({.projectMode = true, .localMode = true, .boxes = {.inProject = true}}));
    EXPECT_EQ(world(2).text(),
              "value new, global V, project new, of the drawing; in the configuration file file, "
              "in the project file new, in the drawing new; files written 2");
}

TEST_F(ApplyValue, InBothModesAVisualValueGoesIntoTheProjectAlone)
{
    EXPECT_TRUE(apply({.projectMode = true, .localMode = true, .editor = ValueEditor::visual}));
    EXPECT_EQ(world(1).text(),
              "value new, global V, project P, of the project; in the configuration file file, in "
              "the project file new, in the drawing drawing; files written 1");
}

// --- failures ------------------------------------------------------------------------------------

TEST_F(ApplyValue, ThatCannotBeWrittenIsFalseAndTheSettingHasItAllTheSame)
{
    const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
    EXPECT_FALSE(apply({}));
    EXPECT_EQ(setting.value(), L"new");
    EXPECT_EQ(ini(), "[X]\nA=file\n");
    EXPECT_EQ(told(),
              "stop: ~/cfg/tool.ini : Could not open file for write \n"
              "stop: ~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is present and "
              "\nif the file is not read-only\n");
}

TEST_F(ApplyValue, ThatFailsAtOneLevelIsWrittenAtTheOthers)
{
    folder.remove(L"cfg/tool.ini");
    for (const ValueEditor editor : {ValueEditor::generic, ValueEditor::visual}) {
        writeIpr("[X]\nA=project\n");
        EXPECT_FALSE(apply({.projectMode = true,
                            .boxes = {.globally = true, .inProject = true},
                            .editor = editor}));
        EXPECT_EQ(ipr(), "[X]\nA=new\n");
        EXPECT_EQ(setting.globalValue(), L"new");
        EXPECT_EQ(setting.projectValue(), L"new");
    }
    EXPECT_EQ(filesIn(folder), "house/tool.ipr");
}

TEST_F(ApplyValue, WithoutADrawingIsFalseWhereOneIsWanted)
{
    corma::closeDocument();
    for (const bool isLocal : {false, true}) {
        EXPECT_FALSE(apply({.isLocal = isLocal, .localMode = true}));
        EXPECT_EQ(setting.value(), L"new");
    }
    EXPECT_FALSE(apply({.projectMode = true, .localMode = true, .boxes = {.inProject = true}}));
    EXPECT_EQ(ipr(), "[X]\nA=new\n");
    EXPECT_TRUE(setting.isLocal());
}

} // namespace
