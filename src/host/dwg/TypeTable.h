#pragma once

#include "host/dwg/Body.h"
#include "host/dwg/fields.h"
#include "host/model/Group.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corma::host::dwg {

/// A type of record.
struct TypeInfo
{
    std::string_view name; // as DXF names it
    bool isEntity = false;
    MakeBody makeBody = nullptr; // null for one that is not understood
};

/// A type that a drawing has a number of its own for.
struct ClassInfo
{
    unsigned number = 0;
    int proxyFlags = 0;
    Text application;
    Text cppName;
    Text dxfName;
    bool wasZombie = false;
    bool isEntity = false;
    std::int32_t count = 0; // from R2004 on: how many records of it the drawing has
    std::int32_t version = 0;
    std::int32_t maintenance = 0;
    std::int32_t unknown1 = 0;
    std::int32_t unknown2 = 0;
};

/// The numbers that types have in a drawing: those that all drawings share, and those of classes.
class TypeTable
{
public:
    TypeTable() = default;

    explicit TypeTable(DrawingVersion version, std::vector<ClassInfo> classes = {});

    /// What a number means; a type without a name when the drawing does not say it.
    [[nodiscard]] TypeInfo find(unsigned number) const;

    /// The number for a record with these groups; nothing when the drawing has none for it.
    [[nodiscard]] std::optional<unsigned> numberFor(const Groups& groups) const;

    [[nodiscard]] const std::vector<ClassInfo>& classes() const { return m_classes; }

    /// Gives a class the next free number.
    void add(ClassInfo added);

private:
    void enter(std::size_t position);

    DrawingVersion m_version = DrawingVersion::r2018;
    std::vector<ClassInfo> m_classes;
    std::unordered_map<unsigned, std::size_t> m_byNumber; // positions
    std::unordered_map<std::string, unsigned> m_byName;
    std::deque<std::string> m_names; // in UTF-8, of the classes
};

/// The body of a type by its name in DXF, for types whose body needs no more to be known; null for
/// one that is not understood.
MakeBody bodyNamed(std::string_view name);

} // namespace corma::host::dwg
