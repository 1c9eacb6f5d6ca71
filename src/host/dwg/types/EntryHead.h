#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <cstdint>

namespace corma::host::dwg {

/// What every entry of a symbol table has ahead of its own fields.
struct EntryHead
{
    // Of group 70.
    static constexpr std::int16_t kIsDependent = 16; // comes from an external reference
    static constexpr std::int16_t kIsResolved = 32; // ... which was found
    static constexpr std::int16_t kIsReferenced = 64;
    static constexpr std::int16_t kMask = kIsDependent | kIsResolved | kIsReferenced;

    Text name;
    bool isReferenced = false; // up to R2004
    std::int16_t xrefIndex = 0;
    bool isDependent = false; // from R2007 on the index says it
    Ref xref; // the block of the external reference

    template<class Io> void bits(Io& io)
    {
        io.text(name);
        if (io.until(DrawingVersion::r2004)) {
            io.bit(isReferenced);
        }
        io.bitShort(xrefIndex);
        if (io.until(DrawingVersion::r2004)) {
            io.bit(isDependent);
        } else if constexpr (Io::isReading) {
            isDependent = xrefIndex == kDependentIndex;
        }
        io.handle(xref, Bond::hardPointer);
    }

    /// The part of group 70 that all entries share.
    [[nodiscard]] std::int16_t flags() const
    {
        return static_cast<std::int16_t>((isDependent ? kIsDependent : 0)
                                         | (isDependent && xrefIndex != 0 ? kIsResolved : 0));
    }

    void setFlags(std::int64_t flags)
    {
        const bool depends = (flags & kIsDependent) != 0;
        if (depends != isDependent) {
            isDependent = depends;
            xrefIndex = depends ? kDependentIndex : 0;
        }
    }

    /// The name and the flags, with those that the type has of its own.
    void groups(FieldsToGroups& io, const wchar_t* marker, std::int64_t own) const
    {
        io.marker(L"AcDbSymbolTableRecord");
        io.marker(marker);
        io.text(code::name, name);
        io.integer(code::flags, flags() | own);
    }

    /// Gives the flags that the type has of its own.
    std::int64_t groups(FieldsFromGroups& io, const wchar_t* marker)
    {
        io.marker(marker);
        io.text(code::name, name);
        std::int64_t all = 0;
        io.integer(code::flags, all);
        setFlags(all);
        return all & ~std::int64_t {kMask};
    }

private:
    static constexpr std::int16_t kDependentIndex = 256;
};

} // namespace corma::host::dwg
