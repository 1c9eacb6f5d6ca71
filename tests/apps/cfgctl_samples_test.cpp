// What must hold for every drawing, held against those of CAD programs in a folder that the
// developer names.

#include "CfgctlTest.h"
#include "DrawingChanges.h"
#include "platform/platform.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace corma::testing {

namespace {

class CfgctlSamples : public CfgctlTest
{
protected:
    // Copies of the drawings as "0.dxf" and so on; their names.
    std::vector<std::string> copySamples() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(CORMA_SAMPLE_DRAWINGS)) {
            if (entry.path().extension() == ".dxf") {
                fs::copy_file(entry.path(), nameOf(names.size()));
                fs::permissions(nameOf(names.size()), fs::perms::owner_write,
                                fs::perm_options::add);
                names.push_back(entry.path().filename().native());
            }
        }
        return names;
    }

    std::string nameOf(std::size_t number) const { return pathOf(std::to_string(number) + ".dxf"); }

    // The versions of the drawings that have a place for settings.
    static bool hasPlace(const Json& drawing)
    {
        return drawing["version"].get<std::string>() >= "AC1012";
    }

    void checkSetting(const std::string& file) const
    {
        EXPECT_EQ(run({"set", "tool.ini", "[Wand: 1]Dikte", "3.5", "--drawing", file,
                       "--save-as=een.dxf"})
                      .exitStatus,
                  0);
        EXPECT_EQ(get({"tool.ini", "[Wand: 1]Dikte", "--drawing=een.dxf"}), "3.5");
        EXPECT_EQ(drawingChanges(file, pathOf("een.dxf")),
                  "- DICTIONARY\n+ DICTIONARY\n+ DICTIONARY\n+ DICTIONARY\n+ DICTIONARY\n"
                  "+ XRECORD\n");
        run({"set", "tool.ini", "[Wand: 1]Dikte", "4", "--drawing=een.dxf", "--save-as=twee.dxf"});
        EXPECT_EQ(drawingChanges(pathOf("een.dxf"), pathOf("twee.dxf")),
                  "- DICTIONARY\n- XRECORD\n+ DICTIONARY\n+ XRECORD\n");
    }
};

TEST_F(CfgctlSamples, KeepAllButTheRecordsOfAValue)
{
    if (fs::path(CORMA_SAMPLE_DRAWINGS).empty()) {
        GTEST_SKIP() << "no folder of real drawings: configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER";
    }
    write("tool.ini", "");
    const auto names = copySamples();
    ASSERT_FALSE(names.empty());
    std::size_t checked = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i]);
        const auto drawing = Json::parse(json({"drawing", "--drawing", nameOf(i)}));
        if (hasPlace(drawing)) {
            checkSetting(nameOf(i));
            ++checked;
        }
    }
    EXPECT_GT(checked, 0U);
}

} // namespace

} // namespace corma::testing
