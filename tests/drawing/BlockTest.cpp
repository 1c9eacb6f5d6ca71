#include "BlockTest.h"

#include "platform/platform.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

namespace corma::testing {

namespace {

std::string lineOf(int length)
{
    return "0 LINE\n8 0\n10 0.0\n20 0.0\n30 0.0\n11 " + std::to_string(length)
        + ".0\n21 0.0\n31 0.0\n";
}

std::string section(std::string_view name, std::string_view content)
{
    return content.empty()
        ? ""
        : "0 SECTION\n2 " + std::string(name) + "\n" + std::string(content) + "\n0 ENDSEC\n";
}

} // namespace

BlockTest::BlockTest()
{
    services.module = folder.makeFolder(L"module") + L"/host.bin";
    services.variables[L"ACAD"] = folder.makeFolder(L"support");
}

std::string BlockTest::lineDrawing(int length)
{
    return dxfText(section("ENTITIES", lineOf(length)) + "0 EOF\n");
}

std::string BlockTest::lineLibrary(std::string_view block, int length)
{
    const std::string begin = "0 BLOCK\n8 0\n2 " + std::string(block)
        + "\n70 0\n10 0.0\n20 0.0\n30 0.0\n3 " + std::string(block) + "\n1\n";
    return dxfText(section("BLOCKS", begin + lineOf(length) + "0 ENDBLK\n8 0\n") + "0 EOF\n");
}

std::string BlockTest::line(int length)
{
    return "LINE 10=0 20=0 30=0 11=" + std::to_string(length) + " 21=0 31=0\n";
}

std::string BlockTest::drawingOf(const DrawingText& text)
{
    const std::string version = "9 $ACADVER\n1 " + std::string(text.version) + "\n";
    return dxfText(section("HEADER", version + std::string(text.header))
                   + section("CLASSES", text.classes) + section("TABLES", text.tables)
                   + section("BLOCKS", text.blocks) + section("ENTITIES", text.entities)
                   + section("OBJECTS", text.objects) + "0 EOF\n");
}

std::wstring BlockTest::copyData(const std::string& drawing, std::wstring_view name) const
{
    const std::string path = CORMA_TEST_DATA "/" + drawing + ".dxf";
    const auto content = platform::readFile(path);
    EXPECT_TRUE(content.has_value()) << path;
    return content ? folder.write(name, content->view()) : std::wstring();
}

std::string BlockTest::printed()
{
    std::string all = folder.homely(services.allPrinted());
    services.printed.clear();
    return all;
}

std::string BlockTest::alerts()
{
    std::string all;
    for (const std::wstring& alert : services.alerts) {
        all += (all.empty() ? "" : "|") + toUtf8(alert);
    }
    services.alerts.clear();
    return all;
}

} // namespace corma::testing
