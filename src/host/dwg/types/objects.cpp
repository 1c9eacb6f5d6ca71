// Dictionaries, and objects that hold little.

#include "host/dwg/bodies.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct Dictionary
{
    struct Entry
    {
        Text name;
        Ref value;
    };

    std::vector<Entry> entries;
    std::uint8_t unknown = 0; // R14
    std::uint16_t cloning = 1;
    bool isHardOwner = false;

    template<class Io> void bits(Io& io)
    {
        io.countOfHandles(entries);
        if (io.since(r14) && io.until(r14)) {
            io.byte(unknown);
        }
        if (io.since(r2000)) {
            io.bitShort(cloning);
            io.byte(isHardOwner);
        }
        for (Entry& entry : entries) {
            io.text(entry.name);
        }
        for (Entry& entry : entries) {
            io.handle(entry.value, isHardOwner ? Bond::hardOwner : Bond::softOwner);
        }
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kIsHardOwner = 280;
        constexpr int kCloning = 281;
        io.marker(L"AcDbDictionary");
        if (io.since(r2000)) {
            io.integer(kIsHardOwner, isHardOwner, 0);
            io.integer(kCloning, cloning);
        }
        entryGroups(io);
    }

    static constexpr int kName = 3;
    static constexpr int kSoftOwner = 350;
    static constexpr int kHardOwner = 360;

    void entryGroups(FieldsToGroups& io) const
    {
        for (const Entry& entry : entries) {
            io.text(kName, entry.name);
            io.handle(isHardOwner ? kHardOwner : kSoftOwner, entry.value);
        }
    }

    // A name belongs to the handle behind it.
    void entryGroups(FieldsFromGroups& io)
    {
        const Groups& all = io.groups();
        std::size_t count = 0;
        std::wstring_view name;
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            if (all[i].code == kName) {
                name = all[i].text();
            } else if (all[i].code == kSoftOwner || all[i].code == kHardOwner) {
                if (count == entries.size()) {
                    entries.emplace_back();
                }
                FieldsFromGroups::setText(entries[count].name, name);
                entries[count].value.set(all[i].handle());
                ++count;
            }
        }
        entries.resize(count);
    }
};

struct DictionaryWithDefault
{
    Dictionary dictionary;
    Ref usual;

    template<class Io> void bits(Io& io)
    {
        dictionary.bits(io);
        io.handle(usual, Bond::hardPointer);
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kUsual = 340;
        dictionary.groups(io);
        io.marker(L"AcDbDictionaryWithDefault");
        io.handle(kUsual, usual);
    }
};

struct Placeholder
{
    template<class Io> void bits(Io& /*io*/) { }

    template<class Io> void groups(Io& /*io*/) { }
};

} // namespace

std::unique_ptr<Body> makeDictionary()
{
    return makeBody<Dictionary>();
}

std::unique_ptr<Body> makeDictionaryWithDefault()
{
    return makeBody<DictionaryWithDefault>();
}

std::unique_ptr<Body> makePlaceholder()
{
    return makeBody<Placeholder>();
}

} // namespace corma::host::dwg
