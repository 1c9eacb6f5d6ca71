#include "support/BlockDrawing.h"

#include <sstream>

namespace corma::testing {

namespace {

constexpr const char* kRecordTable = "80";
constexpr const char* kModelRecord = "81";
constexpr const char* kPaperRecord = "82";

std::string hex(unsigned number)
{
    std::ostringstream text;
    text << std::uppercase << std::hex << number;
    return text.str();
}

std::string record(const std::string& handle, const std::string& name)
{
    return "0 BLOCK_RECORD\n5 " + handle + "\n330 " + kRecordTable
        + "\n100 AcDbSymbolTableRecord\n100 AcDbBlockTableRecord\n2 " + name + "\n340 0\n";
}

std::string entity(const std::string& type, const std::string& handle, const std::string& owner)
{
    return "0 " + type + "\n5 " + handle + "\n330 " + owner + "\n100 AcDbEntity\n"
        + (owner == kPaperRecord ? "67 1\n" : "") + "8 0\n";
}

std::string blockBegin(const std::string& handle, const std::string& owner, const std::string& name)
{
    return entity("BLOCK", handle, owner) + "100 AcDbBlockBegin\n2 " + name
        + "\n70 0\n10 0.0\n20 0.0\n30 0.0\n3 " + name + "\n1 \n";
}

std::string blockEnd(const std::string& handle, const std::string& owner)
{
    return entity("ENDBLK", handle, owner) + "100 AcDbBlockEnd\n";
}

// In a file each code and each value has a line of its own.
std::string asFile(const std::string& groups)
{
    std::istringstream lines(groups);
    std::string file;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t blank = line.find(' ');
        file += line.substr(0, blank) + '\n' + line.substr(blank + 1) + '\n';
    }
    return file;
}

} // namespace

std::string BlockDrawing::newHandle()
{
    return hex(m_nextHandle++);
}

std::string BlockDrawing::nextRecord() const
{
    return hex(m_nextRecord);
}

void BlockDrawing::definition(std::string& to, const DrawnAttribute& definition,
                              const std::string& owner)
{
    to += entity("ATTDEF", definition.handle.empty() ? newHandle() : definition.handle, owner)
        + "100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n40 2.5\n1 " + definition.text
        + "\n100 AcDbAttributeDefinition\n3 \n2 " + definition.tag + "\n70 "
        + (definition.isConstant ? "2" : "0") + '\n';
}

void BlockDrawing::reference(std::string& to, const DrawnReference& reference,
                             const std::string& owner)
{
    to += entity("INSERT", reference.handle, owner) + "100 AcDbBlockReference\n"
        + (reference.attributes.empty() ? "" : "66 1\n") + "2 " + reference.block + '\n'
        + reference.groups;
    for (const DrawnAttribute& attribute : reference.attributes) {
        to += entity("ATTRIB", attribute.handle.empty() ? newHandle() : attribute.handle,
                     reference.handle)
            + "100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n40 2.5\n1 " + attribute.text
            + "\n100 AcDbAttribute\n2 " + attribute.tag + "\n70 0\n";
    }
    if (!reference.attributes.empty()) {
        to += entity("SEQEND", newHandle(), reference.handle);
    }
}

BlockDrawing& BlockDrawing::block(const std::string& name, const DrawnAttributes& definitions,
                                  const DrawnReferences& references)
{
    const std::string owner = hex(m_nextRecord++);
    m_records += record(owner, name);
    m_blocks += blockBegin(newHandle(), owner, name);
    for (const DrawnAttribute& attribute : definitions) {
        definition(m_blocks, attribute, owner);
    }
    for (const DrawnReference& nested : references) {
        reference(m_blocks, nested, owner);
    }
    m_blocks += blockEnd(newHandle(), owner);
    return *this;
}

BlockDrawing& BlockDrawing::inModel(const DrawnReference& drawn)
{
    reference(m_model, drawn, kModelRecord);
    return *this;
}

BlockDrawing& BlockDrawing::inPaper(const DrawnReference& drawn)
{
    reference(m_paper, drawn, kPaperRecord);
    return *this;
}

BlockDrawing& BlockDrawing::definitionInModel(const DrawnAttribute& drawn)
{
    definition(m_model, drawn, kModelRecord);
    return *this;
}

std::string BlockDrawing::bytes() const
{
    const std::string spaces = blockBegin("83", kModelRecord, "*Model_Space")
        + blockEnd("84", kModelRecord) + blockBegin("85", kPaperRecord, "*Paper_Space")
        + blockEnd("86", kPaperRecord);
    return asFile("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1015\n9 $HANDSEED\n5 10000\n0 ENDSEC\n"
                  "0 SECTION\n2 TABLES\n0 TABLE\n2 BLOCK_RECORD\n5 "
                  + std::string(kRecordTable) + "\n100 AcDbSymbolTable\n70 2\n"
                  + record(kModelRecord, "*Model_Space") + record(kPaperRecord, "*Paper_Space")
                  + m_records + "0 ENDTAB\n0 ENDSEC\n0 SECTION\n2 BLOCKS\n" + spaces + m_blocks
                  + "0 ENDSEC\n0 SECTION\n2 ENTITIES\n" + m_model + m_paper + "0 ENDSEC\n0 EOF\n");
}

} // namespace corma::testing
