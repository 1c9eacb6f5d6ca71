// What the README shows is what is built and run.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

const std::filesystem::path kRoot = CORMA_SOURCE_FOLDER;

std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(kRoot / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Readme, ShowsTheExampleProgramToTheLetter)
{
    const std::string program = contentOf("examples/first_lookup.cpp");
    ASSERT_FALSE(program.empty());
    EXPECT_NE(contentOf("README.md").find("```cpp\n" + program + "```\n"), std::string::npos);
}

} // namespace
