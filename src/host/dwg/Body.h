#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// The records that follow one in groups and that it names in bits: what Surroundings says when a
/// record is written. `none` and empty where a type or a version does not have them.
struct Owned
{
    // Of a table, a block, a reference, a polyline, in order; those of a table have empty places.
    std::vector<Handle> members;
    Handle first = Handle::none; // up to R2000: the ends of a chain of entities in place of members
    Handle last = Handle::none;
    Handle begin = Handle::none; // BLOCK
    Handle end = Handle::none; // ENDBLK or SEQEND
    std::vector<Handle> references {}; // of a block: what is a copy of it

    // Of the table of blocks and of that of linetypes: the two that are no members.
    Handle firstSpecial = Handle::none; // *Model_Space or ByBlock
    Handle secondSpecial = Handle::none; // *Paper_Space or ByLayer
};

/// What bits say in the record of a block and groups in its BLOCK.
struct BlockFacts
{
    std::wstring name {}; // in both
    std::int16_t flags = 0; // group 70
    Point base;
    std::wstring path; // of the file of an external reference
    std::wstring description;
};

/// The fields of a record behind those that every record has.
class Body
{
public:
    Body() = default;
    Body(const Body&) = delete;
    Body& operator=(const Body&) = delete;
    virtual ~Body() = default;

    virtual void read(FieldsFromBits& io) = 0;
    virtual void write(FieldsToBits& io) const = 0;
    virtual void toGroups(FieldsToGroups& io) const = 0;
    virtual void fromGroups(FieldsFromGroups& io) = 0;

    /// The name that groups have behind the type ahead of all others; empty for most.
    [[nodiscard]] virtual std::wstring_view headName() const { return {}; }

    /// Nothing for a type that owns no others.
    [[nodiscard]] virtual std::optional<Owned> owned() const { return std::nullopt; }

    /// The block that it is a reference of; none for most.
    [[nodiscard]] virtual Handle referencedBlock() const { return Handle::none; }

    /// Nothing for a type that is no block.
    [[nodiscard]] virtual std::optional<BlockFacts> blockFacts() const { return std::nullopt; }

    virtual void setBlockFacts(const BlockFacts& /*facts*/) { }
};

using MakeBody = std::unique_ptr<Body> (*)();

/// The body of a type that is described by a struct: `bits(io)` and `groups(io)`, both templates
/// over the direction. What else a body can tell the struct may tell: headName(), ownedHandles(),
/// blockFacts() and setBlockFacts().
template<class Fields> class BodyOf : public Body
{
public:
    void read(FieldsFromBits& io) override { m_fields.bits(io); }

    void write(FieldsToBits& io) const override
    {
        const_cast<Fields&>(m_fields).bits(io); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }

    void toGroups(FieldsToGroups& io) const override
    {
        const_cast<Fields&>(m_fields).groups(io); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }

    void fromGroups(FieldsFromGroups& io) override { m_fields.groups(io); }

    [[nodiscard]] std::wstring_view headName() const override
    {
        if constexpr (requires(const Fields& fields) { fields.headName(); }) {
            return m_fields.headName();
        } else { // NOLINT(readability-else-after-return): the other way does not compile
            return {};
        }
    }

    [[nodiscard]] std::optional<Owned> owned() const override
    {
        if constexpr (requires(const Fields& fields) { fields.ownedHandles(); }) {
            return m_fields.ownedHandles();
        } else { // NOLINT(readability-else-after-return)
            return std::nullopt;
        }
    }

    [[nodiscard]] Handle referencedBlock() const override
    {
        if constexpr (requires(const Fields& fields) { fields.referencedBlock(); }) {
            return m_fields.referencedBlock();
        } else { // NOLINT(readability-else-after-return)
            return Handle::none;
        }
    }

    [[nodiscard]] std::optional<BlockFacts> blockFacts() const override
    {
        if constexpr (requires(const Fields& fields) { fields.blockFacts(); }) {
            return m_fields.blockFacts();
        } else { // NOLINT(readability-else-after-return)
            return std::nullopt;
        }
    }

    void setBlockFacts(const BlockFacts& facts) override
    {
        if constexpr (requires(Fields & fields) { fields.setBlockFacts(facts); }) {
            m_fields.setBlockFacts(facts);
        }
    }

private:
    Fields m_fields; // a direction that only looks at them takes them as const
};

template<class Fields> std::unique_ptr<Body> makeBody()
{
    return std::make_unique<BodyOf<Fields>>();
}

/// What a list of handles names, in order and without the empty ones.
std::vector<Handle> handlesOf(const std::vector<Ref>& refs);

/// Makes a list name these; it stays as it is when it does so already.
void setHandles(std::vector<Ref>& refs, const std::vector<Handle>& handles);

/// The body of a type that is not understood: its bits as they are. The handles in it are known,
/// as they stand in a stream of their own.
class OpaqueBody : public Body
{
public:
    void read(FieldsFromBits& io) override;
    void write(FieldsToBits& io) const override;
    void toGroups(FieldsToGroups& io) const override;
    void fromGroups(FieldsFromGroups& io) override;

private:
    BitWriter m_data; // the texts with it
    std::vector<Ref> m_handles;
};

} // namespace corma::host::dwg
