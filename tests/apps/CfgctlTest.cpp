#include "CfgctlTest.h"

#include "platform/platform.h"

#include <filesystem>
#include <unistd.h>

namespace corma::testing {

ProgramResult CfgctlTest::run(const Words& arguments) const
{
    const std::string home = platform::toNative(folder.path());
    return runProgram({CFGCTL_PROGRAM, arguments, workIn.empty() ? home : workIn, environment, ""});
}

ProgramResult CfgctlTest::runWithoutPrivilege(const Words& arguments) const
{
    if (::geteuid() != 0) {
        return run(arguments);
    }
    Words words {"--bounding-set=-dac_override,-dac_read_search", CFGCTL_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runProgram(
        {"/usr/bin/setpriv", words, platform::toNative(folder.path()), environment, ""});
}

std::string CfgctlTest::get(const Words& arguments) const
{
    Words all = arguments;
    all.insert(all.begin(), "get");
    const ProgramResult result = run(all);
    if (result.exitStatus != 0) {
        EXPECT_EQ(result.exitStatus, 1) << result.err;
        EXPECT_EQ(result.out, "");
        return "(none)";
    }
    EXPECT_TRUE(result.out.ends_with('\n')) << result.out;
    return result.out.substr(0, result.out.size() - 1);
}

std::string CfgctlTest::json(Words arguments) const
{
    arguments.emplace_back("--json");
    const ProgramResult result = run(arguments);
    EXPECT_TRUE(result.out.ends_with('\n')) << result.out << result.err;
    const Json document = Json::parse(result.out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result.out;
    return document.is_discarded() ? "(no JSON)" : document.dump();
}

void CfgctlTest::expectWrongUse(const Words& arguments, std::string message,
                                const Words& files) const
{
    Words before;
    for (const std::string& file : files) {
        before.push_back(read(file));
    }
    const ProgramResult result = run(arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    if (message.starts_with("$/")) {
        message.replace(0, 2, pathOf(""));
    }
    EXPECT_EQ(result.err, "cfgctl: " + message + "\n");
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(read(files[i]), before[i]) << files[i];
    }
}

std::string CfgctlTest::pathOf(std::string_view name) const
{
    return (std::filesystem::canonical(platform::toNative(folder.path())) / name).native();
}

SqliteFile CfgctlTest::database(std::string_view name) const
{
    return SqliteFile(platform::fromNative(pathOf(name)));
}

void CfgctlTest::write(std::string_view name, std::string_view bytes) const
{
    folder.write(platform::fromNative(name), bytes);
}

std::string CfgctlTest::read(std::string_view name) const
{
    return folder.read(platform::fromNative(name));
}

void CfgctlTest::setMode(std::string_view name, unsigned mode) const
{
    std::filesystem::permissions(pathOf(name), static_cast<std::filesystem::perms>(mode));
}

std::filesystem::file_time_type CfgctlTest::timeOf(std::string_view name) const
{
    return std::filesystem::last_write_time(pathOf(name));
}

void CfgctlTest::copyDrawing(const std::string& drawing, std::string_view name) const
{
    const std::string path = CORMA_TEST_DATA "/" + drawing + ".dxf";
    const auto content = platform::readFile(path);
    ASSERT_TRUE(content.has_value()) << path;
    write(name, content->view());
}

} // namespace corma::testing
