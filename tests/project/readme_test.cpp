// What the README shows is what is built and run.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

const std::filesystem::path kReadmeFolder = CORMA_SOURCE_FOLDER;

std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(kReadmeFolder / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Readme, ShowsTheExampleProgramsToTheLetter)
{
    for (const char* file :
         {"examples/first_lookup.cpp", "examples/translated_words.cpp", "examples/newer_doors.cpp",
          "examples/edit_settings.cpp", "examples/about_box.cpp"}) {
        const std::string program = contentOf(file);
        ASSERT_FALSE(program.empty()) << file;
        EXPECT_NE(contentOf("README.md").find("```cpp\n" + program + "```\n"), std::string::npos)
            << file;
    }
}

} // namespace
