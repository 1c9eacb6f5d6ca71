// The heads of the symbol tables.

#include "host/dwg/bodies.h"

#include <unordered_set>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr int kEntryCount = 70;

struct Control
{
    std::vector<Ref> entries;

    template<class Io> void bits(Io& io)
    {
        io.countOfHandles(entries);
        io.handles(entries, entries.size(), Bond::softOwner);
    }

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbSymbolTable");
        io.integer(kEntryCount, handlesOf(entries).size());
    }

    // An entry that is gone leaves its place empty, as blocks without a name of their own are
    // numbered by their places; new ones come behind all others.
    void groups(FieldsFromGroups& io)
    {
        const std::vector<Handle>& wanted = io.around().owned;
        std::unordered_set<Handle> missing(wanted.begin(), wanted.end());
        for (Ref& entry : entries) {
            if (missing.erase(entry.target) == 0) {
                entry.set(Handle::none);
            }
        }
        for (const Handle handle : wanted) {
            if (missing.contains(handle)) {
                entries.emplace_back().set(handle);
            }
        }
    }

    [[nodiscard]] Owned ownedHandles() const
    {
        Owned all;
        for (const Ref& entry : entries) {
            all.members.push_back(entry.target);
        }
        return all;
    }
};

/// With two entries that every drawing has and that are not counted.
struct ControlWithSpecials : Control
{
    Ref first;
    Ref second;

    template<class Io> void bits(Io& io)
    {
        Control::bits(io);
        io.handle(first, Bond::hardOwner);
        io.handle(second, Bond::hardOwner);
    }

    using Control::groups;

    void groups(FieldsFromGroups& io)
    {
        Control::groups(io);
        first.set(io.around().first);
        second.set(io.around().second);
    }

    [[nodiscard]] Owned ownedHandles() const
    {
        Owned all = Control::ownedHandles();
        all.firstSpecial = first.target;
        all.secondSpecial = second.target;
        return all;
    }
};

struct BlockControl : ControlWithSpecials
{
    [[nodiscard]] std::wstring_view headName() const { return L"BLOCK_RECORD"; }
};

struct LinetypeControl : ControlWithSpecials
{
    [[nodiscard]] std::wstring_view headName() const { return L"LTYPE"; }
};

struct LayerControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"LAYER"; }
};

struct StyleControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"STYLE"; }
};

struct ViewControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"VIEW"; }
};

struct UcsControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"UCS"; }
};

struct ViewportControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"VPORT"; }
};

struct AppIdControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"APPID"; }
};

/// Of the viewports of paper space; groups have nothing of the kind.
struct PaperViewportControl : Control
{
    [[nodiscard]] std::wstring_view headName() const { return L"VX"; }
};

struct DimStyleControl : Control
{
    static constexpr int kMore = 340;
    static constexpr std::size_t kMostOfByte = 0xFF;

    std::vector<Ref> more; // styles again, in an order of their own

    template<class Io> void bits(Io& io)
    {
        auto count = static_cast<std::uint8_t>(more.size());
        io.countOfHandles(entries);
        if (io.since(r2000)) {
            io.byte(count);
        }
        io.handles(entries, entries.size(), Bond::softOwner);
        io.handles(more, count, Bond::hardPointer);
    }

    void groups(FieldsToGroups& io) const
    {
        constexpr int kMoreCount = 71;
        Control::groups(io);
        if (!io.since(r2000)) {
            return;
        }
        io.marker(L"AcDbDimStyleTable");
        io.integer(kMoreCount, more.size(), 0);
        for (const Ref& ref : more) {
            io.handle(kMore, ref);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        Control::groups(io);
        io.marker(L"AcDbDimStyleTable");
        std::vector<Handle> handles;
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            if (io.groups()[i].code == kMore && handles.size() < kMostOfByte) {
                handles.push_back(io.groups()[i].handle());
            }
        }
        setHandles(more, handles);
    }

    [[nodiscard]] std::wstring_view headName() const { return L"DIMSTYLE"; }
};

} // namespace

std::unique_ptr<Body> makeBlockControl()
{
    return makeBody<BlockControl>();
}

std::unique_ptr<Body> makeLayerControl()
{
    return makeBody<LayerControl>();
}

std::unique_ptr<Body> makeStyleControl()
{
    return makeBody<StyleControl>();
}

std::unique_ptr<Body> makeLinetypeControl()
{
    return makeBody<LinetypeControl>();
}

std::unique_ptr<Body> makeViewControl()
{
    return makeBody<ViewControl>();
}

std::unique_ptr<Body> makeUcsControl()
{
    return makeBody<UcsControl>();
}

std::unique_ptr<Body> makeViewportControl()
{
    return makeBody<ViewportControl>();
}

std::unique_ptr<Body> makeAppIdControl()
{
    return makeBody<AppIdControl>();
}

std::unique_ptr<Body> makeDimStyleControl()
{
    return makeBody<DimStyleControl>();
}

std::unique_ptr<Body> makePaperViewportControl()
{
    return makeBody<PaperViewportControl>();
}

} // namespace corma::host::dwg
