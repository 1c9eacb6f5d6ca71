// The records of blocks.

#include "host/dwg/bodies.h"
#include "host/dwg/types/EntryHead.h"

#include <algorithm>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct BlockRecord
{
    EntryHead head;
    bool isAnonymous = false;
    bool hasAttributes = false;
    bool isXref = false;
    bool isOverlay = false;
    bool isUnloaded = false; // from R2000 on
    Point base;
    Text path;
    std::string insertMarks; // these three from R2000 on; a byte that is not 0 for each reference
    Text description;
    std::string preview;
    std::int16_t units = 0; // these three from R2007 on
    bool isExplodable = true;
    std::uint8_t scaling = 0;
    Ref begin;
    std::vector<Ref> owned; // from R2004 on
    Ref first; // before it
    Ref last;
    Ref end;
    std::vector<Ref> references;
    Ref layout;

    [[nodiscard]] bool isExternal() const { return isXref || isOverlay; }

    template<class Io> void bits(Io& io)
    {
        auto ownedCount = static_cast<std::uint32_t>(owned.size());
        head.bits(io);
        io.bit(isAnonymous);
        io.bit(hasAttributes);
        io.bit(isXref);
        io.bit(isOverlay);
        if (io.since(r2000)) {
            io.bit(isUnloaded);
        }
        if (io.since(r2004) && !isExternal()) {
            io.bitLong(ownedCount);
        }
        io.point3(base);
        io.text(path);
        if (io.since(r2000)) {
            marks(io);
            io.text(description);
            previewBits(io);
        }
        if (io.since(r2007)) {
            io.bitShort(units);
            io.bit(isExplodable);
            io.byte(scaling);
        }
        handles(io, ownedCount);
    }

    template<class Io> void handles(Io& io, std::uint32_t ownedCount)
    {
        io.handle(begin, Bond::hardOwner);
        if (!isExternal()) {
            if (io.since(r2004)) {
                io.handles(owned, ownedCount, Bond::hardOwner);
            } else {
                io.handle(first, Bond::softPointer);
                io.handle(last, Bond::softPointer);
            }
        }
        io.handle(end, Bond::hardOwner);
        if (io.since(r2000)) {
            io.handles(references, insertMarks.size(), Bond::softPointer);
            io.handle(layout, Bond::hardPointer);
        }
    }

    template<class Io> void marks(Io& io)
    {
        if constexpr (Io::isReading) {
            insertMarks.clear();
            std::uint8_t mark = 0;
            for (io.byte(mark); mark != 0; io.byte(mark)) {
                insertMarks += static_cast<char>(mark);
            }
        } else {
            io.bytes(insertMarks, insertMarks.size());
            io.byte(0);
        }
    }

    template<class Io> void previewBits(Io& io)
    {
        auto size = static_cast<std::uint32_t>(preview.size());
        io.bitLong(size);
        io.bytes(preview, size);
    }

    static constexpr int kLayout = 340;
    static constexpr int kPreview = 310;
    static constexpr int kReference = 331;
    static constexpr int kExplodable = 280;
    static constexpr int kScaling = 281;

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbSymbolTableRecord");
        io.marker(L"AcDbBlockTableRecord");
        io.text(code::name, head.name);
        if (!io.since(r2000)) {
            return;
        }
        io.handle(kLayout, layout);
        constexpr std::size_t kChunk = 127;
        for (std::size_t at = 0; at < preview.size(); at += kChunk) {
            io.groups().add(Group(kPreview, GroupValue(preview.substr(at, kChunk))));
        }
        if (!references.empty()) {
            io.groups().add(Group(code::braces, L"{BLKREFS"));
            for (const Ref& ref : references) {
                io.handle(kReference, ref);
            }
            io.groups().add(Group(code::braces, L"}"));
        }
        if (io.since(r2007)) {
            io.integer(code::flags, units);
            io.integer(kExplodable, isExplodable);
            io.integer(kScaling, scaling);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        io.marker(L"AcDbBlockTableRecord");
        const std::wstring name = withoutNumber(io.groups().text(code::name, io.range()));
        if (head.name.value != name) {
            head.name.set(name);
            isAnonymous = name.starts_with(L'*') && !isSpace();
        }
        io.handle(kLayout, layout);
        if (io.since(r2007)) {
            io.integer(code::flags, units);
            io.integer(kExplodable, isExplodable, 1);
            io.integer(kScaling, scaling);
        }
        preview.clear();
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            if (io.groups()[i].code == kPreview) {
                preview += io.groups()[i].bytes();
            }
        }
        placeFrom(io.around());
    }

    [[nodiscard]] bool isSpace() const
    {
        const std::wstring folded = foldedName(head.name.value);
        return folded.starts_with(foldedName(L"*Model_Space"))
            || folded.starts_with(foldedName(L"*Paper_Space"));
    }

    void placeFrom(const Surroundings& around)
    {
        begin.set(around.begin);
        end.set(around.end);
        setHandles(owned, around.owned);
        first.set(around.owned.empty() ? Handle::none : around.owned.front());
        last.set(around.owned.empty() ? Handle::none : around.owned.back());
        setHandles(references, around.references);
        insertMarks.resize(references.size(), '\1');
    }

    [[nodiscard]] Owned ownedHandles() const
    {
        return {.members = handlesOf(owned),
                .first = first.target,
                .last = last.target,
                .begin = begin.target,
                .end = end.target,
                .references = handlesOf(references)};
    }

    [[nodiscard]] BlockFacts blockFacts() const
    {
        int flags = head.flags();
        flags |= isAnonymous ? kIsAnonymous : 0;
        flags |= hasAttributes ? kHasAttributes : 0;
        flags |= isXref ? kIsXref : 0;
        flags |= isOverlay ? kIsOverlay : 0;
        return {.name = head.name.value,
                .flags = static_cast<std::int16_t>(flags),
                .base = base,
                .path = path.value,
                .description = description.value};
    }

    void setBlockFacts(const BlockFacts& facts)
    {
        head.setFlags(facts.flags);
        isAnonymous = (facts.flags & kIsAnonymous) != 0;
        hasAttributes = (facts.flags & kHasAttributes) != 0;
        isXref = (facts.flags & kIsXref) != 0;
        isOverlay = (facts.flags & kIsOverlay) != 0;
        base = facts.base;
        FieldsFromGroups::setText(path, facts.path);
        FieldsFromGroups::setText(description, facts.description);
    }

    static constexpr int kIsAnonymous = 1;
    static constexpr int kHasAttributes = 2;
    static constexpr int kIsXref = 4;
    static constexpr int kIsOverlay = 8;
};

} // namespace

std::unique_ptr<Body> makeBlockRecord()
{
    return makeBody<BlockRecord>();
}

} // namespace corma::host::dwg
