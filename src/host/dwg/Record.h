#pragma once

#include "host/dwg/Body.h"
#include "host/dwg/Frame.h"
#include "host/dwg/TypeTable.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corma::host::dwg {

/// One record, taken apart. It is understood when it can be put together again to the same bits.
class Record
{
public:
    /// How much of a record is understood.
    enum class Depth : std::uint8_t
    {
        nothing, // all that is known are its type and its handle
        frame, // its body is opaque
        all
    };

    /// A new record of a type; none of its fields has a value yet. One that is not understood takes
    /// the bits that its groups have.
    Record(const FileForm& form, const TypeTable& types, unsigned type, bool isUnderstood = true);

    /// `bytes` has the record with its length ahead and its checksum behind. Nothing when not even
    /// the type and the handle can be read.
    static std::optional<Record> read(std::string_view bytes, const FileForm& form,
                                      const TypeTable& types);

    /// The same without putting it together again: for what it owns, and nothing that is written.
    static std::optional<Record> peek(std::string_view bytes, const FileForm& form,
                                      const TypeTable& types);

    [[nodiscard]] unsigned type() const { return m_type; }

    [[nodiscard]] Depth depth() const { return m_depth; }

    [[nodiscard]] const Frame& frame() const { return m_frame; }

    Frame& frame() { return m_frame; }

    /// The groups that a DXF file would have for it.
    void toGroups(const Names& names, Groups& groups) const;

    /// Takes the values of groups over. Nothing when that worked, else what the trouble is, as a
    /// part of a sentence.
    std::optional<std::wstring> fromGroups(const Names& names, const Groups& groups,
                                           const Surroundings& around);

    /// What it names that groups have by their order; nothing when it owns no others or when its
    /// body is opaque.
    [[nodiscard]] std::optional<Owned> owned() const { return m_body->owned(); }

    /// The block that it is a reference of; none for other records.
    [[nodiscard]] Handle referencedBlock() const { return m_body->referencedBlock(); }

    /// What groups have in BLOCK, of the record of a block.
    [[nodiscard]] std::optional<BlockFacts> blockFacts() const { return m_body->blockFacts(); }

    void setBlockFacts(const BlockFacts& facts) { m_body->setBlockFacts(facts); }

    /// The record with its length ahead and its checksum behind.
    [[nodiscard]] std::string bytes() const;

private:
    /// What a reading is for.
    enum class Check : std::uint8_t
    {
        no,
        bitsAreTheSame
    };

    static std::optional<Record> read(std::string_view bytes, const FileForm& form,
                                      const TypeTable& types, Check check);
    bool readFrame(FieldsFromBits& io);
    void readBody(const FieldsFromBits& behindFrame, std::string_view bytes, Check check);

    const FileForm* m_form;
    const TypeTable* m_types;
    unsigned m_type = 0;
    Depth m_depth = Depth::nothing;
    Frame m_frame;
    std::unique_ptr<Body> m_body;
    char m_lastByte = 0; // of the file's; the bits behind the last handle mean nothing
};

/// What can be told of a record without taking it apart.
struct RecordHead
{
    unsigned type = 0;
    Handle handle = Handle::none;
    std::size_t size = 0; // bytes, with the length ahead and the checksum behind

    // For what stands behind, within the bits of the record.
    std::string_view bits;
    std::size_t behind = 0; // position behind the handle
    std::size_t handlesBegin = 0; // of R2000 to R2007
};

/// Nothing when the record would go beyond the end of the bytes, which begin with it, or when its
/// checksum is not that of its bytes.
std::optional<RecordHead> readHead(std::string_view bytes, DrawingVersion version);

/// The entity behind one in the chain that its file has up to R2000; none at the end. Reads of the
/// frame only what stands ahead of it.
Handle nextInChain(const RecordHead& entity, DrawingVersion version);

} // namespace corma::host::dwg
