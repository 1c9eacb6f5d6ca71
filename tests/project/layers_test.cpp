// The layers of the source tree: a file includes from its own layer and from those below it only.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Lowest first.
const std::vector<std::string> kLayers = {"platform", "host",    "foundation", "data",  "inifile",
                                          "settings", "drawing", "controls",   "editor"};

std::size_t rankOf(const std::string& layer)
{
    return static_cast<std::size_t>(std::find(kLayers.begin(), kLayers.end(), layer)
                                    - kLayers.begin());
}

std::vector<std::string> includesOf(const fs::path& file)
{
    static const std::regex kInclude(R"re(^\s*#\s*include\s*[<"]([^>"]+)[>"])re");
    std::vector<std::string> found;
    std::ifstream lines(file);
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_search(line, match, kInclude)) {
            found.push_back(match[1]);
        }
    }
    return found;
}

std::vector<fs::path> sourcesBelow(const fs::path& folder)
{
    std::vector<fs::path> sources;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const auto extension = entry.path().extension();
        if (extension == ".h" || extension == ".cpp") {
            sources.push_back(entry.path());
        }
    }
    return sources;
}

const fs::path kRoot = CORMA_SOURCE_FOLDER;

TEST(Layers, NoFileIncludesUpwards)
{
    std::size_t arrows = 0;
    for (const auto& folder : fs::directory_iterator(kRoot / "src")) {
        if (!folder.is_directory()) {
            continue;
        }
        const std::string layer = folder.path().filename();
        ASSERT_LT(rankOf(layer), kLayers.size()) << layer << " is no layer";
        for (const auto& source : sourcesBelow(folder.path())) {
            for (const auto& include : includesOf(source)) {
                const std::string other = include.substr(0, include.find('/'));
                if (rankOf(other) < kLayers.size()) {
                    ++arrows;
                    EXPECT_LE(rankOf(other), rankOf(layer)) << source << " includes " << include;
                }
            }
        }
    }
    EXPECT_GT(arrows, 50U) << "the test must have seen the tree";
}

TEST(Layers, PublicHeadersIncludeNothingPrivate)
{
    std::size_t seen = 0;
    for (const auto& header : sourcesBelow(kRoot / "include")) {
        for (const auto& include : includesOf(header)) {
            ++seen;
            const bool isStandard = include.find('/') == std::string::npos;
            EXPECT_TRUE(isStandard || include.starts_with("corma/")) << header << ": " << include;
        }
    }
    EXPECT_GT(seen, 5U);
}

TEST(Layers, OnlyThePlatformSeesTheOperatingSystem)
{
    const std::vector<std::string> systemHeaders
        = {"unistd.h", "fcntl.h", "windows.h", "sys/stat.h", "link.h", "dlfcn.h", "time.h"};
    for (const auto& source : sourcesBelow(kRoot / "src")) {
        if (source.string().find("/src/platform/") != std::string::npos) {
            continue;
        }
        for (const auto& include : includesOf(source)) {
            EXPECT_EQ(std::count(systemHeaders.begin(), systemHeaders.end(), include), 0)
                << source << " includes " << include;
        }
    }
}

} // namespace
