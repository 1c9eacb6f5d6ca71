#include "support/TestDrawing.h"

#include "host/drawing_files.h"
#include "host/dxf/DxfFormat.h"

#include <sstream>
#include <stdexcept>

namespace corma::testing {

namespace {

std::string fileFrom(std::string_view groups)
{
    std::istringstream lines {std::string(groups)};
    std::string file;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t space = line.find(' ');
        file += line.substr(0, space) + '\n'
            + (space == std::string::npos ? "" : line.substr(space + 1)) + '\n';
    }
    return file;
}

std::string groupsFrom(const std::string& file)
{
    std::istringstream lines(file);
    std::string groups;
    std::string value;
    for (std::string code; std::getline(lines, code) && std::getline(lines, value);) {
        groups += code.substr(code.find_first_not_of(' ')) + ' ' + value + '\n';
    }
    return groups;
}

} // namespace

TestDrawing::TestDrawing(std::string_view groups)
    : m_store(std::make_unique<host::Store>(nullptr))
{
    const auto result
        = host::readDrawing(host::textContent(fileFrom(groups)), L"test.dxf", *m_store);
    if (result.status != Acad::eOk) {
        throw std::runtime_error("the drawing of the test cannot be read");
    }
}

AcDbStub& TestDrawing::stub(std::string_view handle)
{
    AcDbStub* const found = m_store->find(host::handleFrom(handle).value_or(host::Handle::none));
    if (found == nullptr) {
        throw std::runtime_error("the drawing has no record " + std::string(handle));
    }
    return *found;
}

std::string TestDrawing::file() const
{
    std::string bytes;
    const auto& format = dynamic_cast<const host::dxf::DxfFormat&>(*m_store->format());
    format.eachPiece(*m_store, [&](std::string_view piece) {
        bytes += piece;
        return true;
    });
    return bytes;
}

std::string TestDrawing::saved() const
{
    return groupsFrom(file());
}

std::string TestDrawing::savedRecord(std::string_view handle) const
{
    const std::string groups = "\n" + saved();
    const std::size_t at = groups.find("\n5 " + std::string(handle) + '\n');
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t begin = groups.rfind("\n0 ", at) + 1;
    const std::size_t end = groups.find("\n0 ", at);
    return groups.substr(begin, end + 1 - begin);
}

std::string withSections(std::string_view version, std::string_view sections)
{
    std::string text = "0 SECTION\n2 HEADER\n9 $ACADVER\n1 ";
    text += version;
    text += "\n9 $HANDLING\n70 1\n9 $HANDSEED\n5 1000\n0 ENDSEC\n";
    text += sections;
    text += "0 EOF\n";
    return text;
}

} // namespace corma::testing
