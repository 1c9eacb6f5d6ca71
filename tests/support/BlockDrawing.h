#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// An attribute of a reference, or the definition of one.
struct DrawnAttribute
{
    std::string tag;
    std::string text {};
    bool isConstant = false; // counts for a definition only
    std::string handle {}; // empty: one of the builder's own
};

using DrawnAttributes = std::vector<DrawnAttribute>;

/// A reference of a block. `groups` are more of its groups, as lines such as "10 5.0".
struct DrawnReference
{
    std::string handle;
    std::string block;
    DrawnAttributes attributes {};
    std::string groups = "10 0.0\n20 0.0\n30 0.0\n";
};

using DrawnReferences = std::vector<DrawnReference>;

/// Puts together a drawing of blocks, attributes and references. Handles of the test's own must be
/// below 100 (hexadecimal) or above FFF.
class BlockDrawing
{
public:
    /// A block, with its definitions and what is inserted in it.
    BlockDrawing& block(const std::string& name, const DrawnAttributes& definitions = {},
                        const DrawnReferences& references = {});

    /// The handle of the record that the next block() gets.
    [[nodiscard]] std::string nextRecord() const;

    BlockDrawing& inModel(const DrawnReference& reference);
    BlockDrawing& inPaper(const DrawnReference& reference);

    /// A definition in model space, as a drawing has it that is to be a block.
    BlockDrawing& definitionInModel(const DrawnAttribute& definition);

    /// The drawing as a file: text DXF of R2000.
    [[nodiscard]] std::string bytes() const;

private:
    std::string newHandle();
    void definition(std::string& to, const DrawnAttribute& definition, const std::string& owner);
    void reference(std::string& to, const DrawnReference& reference, const std::string& owner);

    unsigned m_nextHandle = 0x100;
    unsigned m_nextRecord = 0x800;
    std::string m_records;
    std::string m_blocks;
    std::string m_model;
    std::string m_paper;
};

} // namespace corma::testing
