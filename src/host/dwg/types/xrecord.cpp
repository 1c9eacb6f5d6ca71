// Records of data that programs keep in a drawing.

#include "host/dwg/bodies.h"
#include "host/dxf/dxf_text.h"

#include <algorithm>
#include <optional>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr int kAxes = 3;
constexpr std::size_t kHandleSize = 8;
constexpr std::size_t kMostOfBinary = 0xFF;
constexpr std::size_t kMostOfText = 0xFFFF;

/// How the value of a group stands in the data.
enum class Item : std::uint8_t
{
    text,
    point, // three groups
    real,
    byte,
    int16,
    int32,
    int64,
    binary,
    handle
};

bool isIn(int code, int first, int last)
{
    return code >= first && code <= last;
}

Item itemOf(int code)
{
    if (isIn(code, 10, 17) || isIn(code, 110, 112) || isIn(code, 210, 219)
        || isIn(code, 1010, 1013)) {
        return Item::point;
    }
    if (isIn(code, 280, 299)) {
        return Item::byte;
    }
    if (code == code::handle || code == code::dimStyleHandle) {
        return Item::text; // these two are names, not references
    }
    switch (valueKindOf(code)) {
    case ValueKind::real:
        return Item::real;
    case ValueKind::int16:
        return Item::int16;
    case ValueKind::int32:
        return Item::int32;
    case ValueKind::int64:
        return Item::int64;
    case ValueKind::binary:
        return Item::binary;
    case ValueKind::handle:
        return Item::handle;
    default:
        return Item::text;
    }
}

std::int64_t int64From(BitReader& from)
{
    const std::uint64_t low = from.rawLong();
    constexpr unsigned kHalf = 32;
    return static_cast<std::int64_t>(low | std::uint64_t {from.rawLong()} << kHalf);
}

void writeInt64(std::uint64_t value, BitWriter& to)
{
    constexpr unsigned kHalf = 32;
    to.rawLong(static_cast<std::uint32_t>(value));
    to.rawLong(static_cast<std::uint32_t>(value >> kHalf));
}

std::wstring textFrom(BitReader& from, const FileForm& form)
{
    const std::size_t length = from.rawShort();
    if (form.hasUnicode()) {
        return textFromUnicode(from.bytes(length * kUnicodeSize));
    }
    from.byte(); // the code page, which is that of the drawing
    return dxf::decodeText(from.bytes(length), form.page, dxf::Caret::isItself);
}

GroupValue textValue(int code, std::wstring text)
{
    if (valueKindOf(code) == ValueKind::handle) {
        if (const auto handle = handleFrom(std::wstring_view(text))) {
            return *handle;
        }
    }
    return text;
}

GroupValue plainValue(Item item, BitReader& from)
{
    switch (item) {
    case Item::real:
        return from.rawDouble();
    case Item::byte:
        return std::int64_t {from.byte()};
    case Item::int16:
        return std::int64_t {static_cast<std::int16_t>(from.rawShort())};
    case Item::int32:
        return std::int64_t {static_cast<std::int32_t>(from.rawLong())};
    case Item::int64:
        return int64From(from);
    case Item::binary:
        return from.bytes(from.byte());
    default:
        return Handle {static_cast<std::uint64_t>(int64From(from))};
    }
}

// Angles are radians in data and degrees in groups.
bool isAngle(int code)
{
    return isIn(code, 50, 58);
}

/// The groups of some data; nothing when it cannot be understood to its end.
std::optional<std::vector<Group>> decoded(std::string_view data, const FileForm& form)
{
    std::vector<Group> groups;
    BitReader from(data);
    while (from.left() != 0) {
        const int code = static_cast<std::int16_t>(from.rawShort());
        const Item item = itemOf(code);
        if (item == Item::point) {
            for (int axis = 0; axis < kAxes; ++axis) {
                groups.emplace_back(code + axis * kCoordinateStep, from.rawDouble());
            }
        } else if (item == Item::text) {
            groups.emplace_back(code, textValue(code, textFrom(from, form)));
        } else {
            groups.emplace_back(code, plainValue(item, from));
            if (isAngle(code)) {
                groups.back().value = degreesFrom(groups.back().real());
            }
        }
        if (!from.isGood()) {
            return std::nullopt;
        }
    }
    return groups;
}

/// From groups to data.
class DataWriter
{
public:
    explicit DataWriter(const FileForm& form)
        : m_form(form)
    {
    }

    [[nodiscard]] const std::string& bytes() const { return m_to.bytes(); }

    void add(const Groups& groups, GroupRange range)
    {
        for (std::size_t i = range.begin; i < range.end; ++i) {
            const int code = groups[i].code;
            m_to.rawShort(static_cast<std::uint16_t>(code));
            if (itemOf(code) == Item::point) {
                i = addPoint(groups, i, range.end);
            } else {
                addPlain(groups[i]);
            }
        }
    }

private:
    // A coordinate that is not there is 0.
    std::size_t addPoint(const Groups& groups, std::size_t at, std::size_t end)
    {
        const int code = groups[at].code;
        m_to.rawDouble(groups[at].real());
        std::size_t last = at;
        for (int axis = 1; axis < kAxes; ++axis) {
            const bool isThere
                = last + 1 < end && groups[last + 1].code == code + axis * kCoordinateStep;
            last += isThere ? 1 : 0;
            m_to.rawDouble(isThere ? groups[last].real() : 0.0);
        }
        return last;
    }

    void addPlain(const Group& group)
    {
        switch (itemOf(group.code)) {
        case Item::text:
            addText(group);
            return;
        case Item::real:
            m_to.rawDouble(isAngle(group.code) ? radiansFrom(group.real()) : group.real());
            return;
        case Item::byte:
            m_to.byte(static_cast<std::uint8_t>(group.integer()));
            return;
        case Item::int16:
            m_to.rawShort(static_cast<std::uint16_t>(group.integer()));
            return;
        case Item::int32:
            m_to.rawLong(static_cast<std::uint32_t>(group.integer()));
            return;
        case Item::int64:
            writeInt64(static_cast<std::uint64_t>(group.integer()), m_to);
            return;
        case Item::binary:
            m_to.byte(static_cast<std::uint8_t>(group.bytes().size()));
            m_to.bytes(group.bytes());
            return;
        default:
            writeInt64(static_cast<std::uint64_t>(group.handle()), m_to);
        }
    }

    void addText(const Group& group)
    {
        const auto* const handle = std::get_if<Handle>(&group.value);
        const std::wstring text = handle != nullptr ? toText(*handle) : group.text();
        const bool isUnicode = m_form.hasUnicode();
        const std::string bytes = isUnicode
            ? textToUnicode(text)
            : dxf::encodeText(text, m_form.page, dxf::Caret::isItself);
        const std::size_t length = bytes.size() / (isUnicode ? kUnicodeSize : 1);
        m_to.rawShort(static_cast<std::uint16_t>(length));
        if (!isUnicode) {
            m_to.byte(static_cast<std::uint8_t>(m_form.codePage));
        }
        m_to.bytes(bytes);
    }

    const FileForm& m_form;
    BitWriter m_to;
};

struct Xrecord
{
    std::string data; // as the file has it, for as long as the items are what it has
    bool isFromFile = false;
    Groups items;
    std::int16_t cloning = 1;
    std::vector<Ref> references; // what some programs put behind the data; new data has none

    template<class Io> void bits(Io& io)
    {
        if constexpr (Io::isReading) {
            readData(io);
        } else {
            writeData(io);
        }
        if (io.since(r2000)) {
            io.bitShort(cloning);
        }
        if constexpr (Io::isReading) {
            while (io.streams().handles.left() >= kByteBits && io.isGood()) {
                io.handle(references.emplace_back(), Bond::softPointer);
            }
        } else {
            for (const Ref& ref : references) {
                io.handle(ref, ref.bond);
            }
        }
    }

    void readData(FieldsFromBits& io)
    {
        std::uint32_t size = 0;
        io.bitLong(size);
        io.bytes(data, size);
        auto all = decoded(data, io.form());
        const auto isApplication = [](const Group& item) { return item.code == code::application; };
        // That code would begin the extended data in groups.
        if (all && std::none_of(all->begin(), all->end(), isApplication)) {
            items = Groups(std::move(*all));
        } else {
            io.fail();
        }
        isFromFile = true;
    }

    void writeData(FieldsToBits& io) const
    {
        DataWriter writer(io.form());
        if (!isFromFile) {
            writer.add(items, items.all());
        }
        const std::string& bytes = isFromFile ? data : writer.bytes();
        io.bitLong(bytes.size());
        io.bytes(bytes, bytes.size());
    }

    static constexpr int kCloning = 280;

    void groups(FieldsToGroups& io) const
    {
        io.marker(kMarker);
        if (io.since(r2000)) {
            io.integer(kCloning, cloning);
        }
        for (const Group& item : items) {
            io.groups().add(item);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        const Groups& all = io.groups();
        std::size_t at = 0;
        while (at < all.size() && (all[at].code != code::subclass || !all[at].isText(kMarker))) {
            ++at;
        }
        at = std::min(at + 1, all.size());
        if (io.since(r2000)) {
            cloning = 1;
            if (at < all.size() && all[at].code == kCloning) {
                cloning = static_cast<std::int16_t>(all[at++].integer());
            }
        }
        Groups wanted;
        for (; at < all.size() && all[at].code != code::application; ++at) {
            if (!fits(all[at])) {
                io.fail(L"one of its values is too long for a DWG file");
                return;
            }
            wanted.add(Group(all[at].code, all[at].value));
        }
        setItems(std::move(wanted));
    }

    static constexpr wchar_t kMarker[] = L"AcDbXrecord";

    static bool fits(const Group& group)
    {
        constexpr std::size_t kMostBytes = 4; // of a character in any code page
        return itemOf(group.code) == Item::binary ? group.bytes().size() <= kMostOfBinary
                                                  : group.text().size() <= kMostOfText / kMostBytes;
    }

    void setItems(Groups wanted)
    {
        const bool isSame = std::equal(wanted.begin(), wanted.end(), items.begin(), items.end(),
                                       [](const Group& a, const Group& b) {
                                           return a.code == b.code && isSameValue(a.value, b.value);
                                       });
        if (isSame) {
            return;
        }
        isFromFile = false;
        data.clear();
        items = std::move(wanted);
        references.clear();
    }
};

} // namespace

std::unique_ptr<Body> makeXrecord()
{
    return makeBody<Xrecord>();
}

} // namespace corma::host::dwg
