#include "host/dwg/extended_data.h"

#include "host/dxf/dxf_text.h"

namespace corma::host::dwg {

namespace {

// The kinds of items, as the byte ahead of each says; a group has 1000 more.
enum DataItem : std::uint8_t
{
    kText = 0,
    kBrace = 2,
    kLayer = 3,
    kBinary = 4,
    kHandle = 5,
    kFirstPoint = 10,
    kLastPoint = 13,
    kFirstReal = 40,
    kLastReal = 42,
    kShort = 70,
    kLong = 71
};

constexpr std::size_t kMostOfData = 0xFFFF;
constexpr std::size_t kMostOfShortText = 0xFF;

// A handle has all of its bytes here, the highest first.
Handle handleOf(BitReader& from)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) {
        number = number << kByteBits | from.byte();
    }
    return Handle {number};
}

void writeHandle(Handle handle, BitWriter& to)
{
    const auto number = static_cast<std::uint64_t>(handle);
    for (std::size_t i = sizeof number; i > 0; --i) {
        to.byte(static_cast<std::uint8_t>(number >> ((i - 1) * kByteBits)));
    }
}

class ItemReader
{
public:
    ItemReader(std::string_view bytes, const FileForm& form, const Names& names, Groups& groups)
        : m_bytes(bytes)
        , m_from(bytes)
        , m_form(form)
        , m_names(names)
        , m_groups(groups)
    {
    }

    void readAll()
    {
        while (m_from.left() != 0) {
            const std::size_t begin = m_from.position() / kByteBits;
            const std::size_t count = m_groups.size();
            if (!readItem() || !m_from.isGood()) {
                while (m_groups.size() > count) {
                    m_groups.erase(m_groups.size() - 1);
                }
                add(kBinary, std::string(m_bytes.substr(begin)));
                return;
            }
        }
    }

private:
    void add(int item, GroupValue value)
    {
        m_groups.add(Group(code::firstExtended + item, std::move(value)));
    }

    bool readItem()
    {
        const unsigned item = m_from.byte();
        if (item >= kFirstPoint && item <= kLastPoint) {
            for (int axis = 0; axis < 3; ++axis) {
                add(static_cast<int>(item) + axis * kCoordinateStep, m_from.rawDouble());
            }
            return true;
        }
        if (item >= kFirstReal && item <= kLastReal) {
            add(static_cast<int>(item), m_from.rawDouble());
            return true;
        }
        return readOther(item);
    }

    bool readOther(unsigned item)
    {
        switch (item) {
        case kText:
            add(kText, readText());
            return true;
        case kBrace:
            add(kBrace, std::wstring(m_from.byte() == 0 ? L"{" : L"}"));
            return true;
        case kLayer:
            add(kLayer, m_names.nameOf(handleOf(m_from)));
            return true;
        case kBinary:
            add(kBinary, m_from.bytes(m_from.byte()));
            return true;
        case kHandle:
            add(kHandle, handleOf(m_from));
            return true;
        case kShort:
            add(kShort, std::int64_t {static_cast<std::int16_t>(m_from.rawShort())});
            return true;
        case kLong:
            add(kLong, std::int64_t {static_cast<std::int32_t>(m_from.rawLong())});
            return true;
        default:
            return false;
        }
    }

    std::wstring readText()
    {
        if (m_form.hasUnicode()) {
            return textFromUnicode(m_from.bytes(std::size_t {m_from.rawShort()} * kUnicodeSize));
        }
        const std::size_t length = m_from.byte();
        m_from.rawShort(); // its code page, which is that of the drawing
        std::wstring text
            = dxf::decodeText(m_from.bytes(length), m_form.page, dxf::Caret::isItself);
        while (text.ends_with(L'\0')) {
            text.pop_back();
        }
        return text;
    }

    std::string_view m_bytes;
    BitReader m_from;
    const FileForm& m_form;
    const Names& m_names;
    Groups& m_groups;
};

class ItemWriter
{
public:
    ItemWriter(const FileForm& form, const Names& names)
        : m_form(form)
        , m_names(names)
    {
    }

    [[nodiscard]] const std::string& bytes() const { return m_to.bytes(); }

    bool write(const Groups& groups, GroupRange range)
    {
        for (std::size_t i = range.begin; i < range.end; ++i) {
            const int item = groups[i].code - code::firstExtended;
            if (item >= kFirstPoint && item <= kLastPoint) {
                m_to.byte(static_cast<std::uint8_t>(item));
                i = writePoint(groups, i, range.end);
            } else if (!writeItem(item, groups[i])) {
                return false;
            }
        }
        return m_to.bytes().size() <= kMostOfData;
    }

private:
    // Returns the position of the last group that belongs to it.
    std::size_t writePoint(const Groups& groups, std::size_t at, std::size_t end)
    {
        constexpr int kAxes = 3;
        const int first = groups[at].code;
        m_to.rawDouble(groups[at].real());
        for (int axis = 1; axis < kAxes; ++axis) {
            const bool isThere
                = at + 1 < end && groups[at + 1].code == first + axis * kCoordinateStep;
            at += isThere ? 1 : 0;
            m_to.rawDouble(isThere ? groups[at].real() : 0.0);
        }
        return at;
    }

    bool writeItem(int item, const Group& group)
    {
        m_to.byte(static_cast<std::uint8_t>(item));
        switch (item) {
        case kText:
            return writeText(group.text());
        case kBrace:
            m_to.byte(group.isText(L"}") ? 1 : 0);
            return true;
        case kLayer:
            writeHandle(m_names.find(TableKind::layer, group.text()), m_to);
            return true;
        case kBinary:
            m_to.byte(static_cast<std::uint8_t>(group.bytes().size()));
            m_to.bytes(group.bytes());
            return group.bytes().size() <= kMostOfShortText;
        case kHandle:
            writeHandle(group.handle(), m_to);
            return true;
        case kShort:
            m_to.rawShort(static_cast<std::uint16_t>(group.integer()));
            return true;
        case kLong:
            m_to.rawLong(static_cast<std::uint32_t>(group.integer()));
            return true;
        default:
            m_to.rawDouble(group.real());
            return item >= kFirstReal && item <= kLastReal;
        }
    }

    bool writeText(const std::wstring& text)
    {
        if (m_form.hasUnicode()) {
            const std::string raw = textToUnicode(text);
            m_to.rawShort(static_cast<std::uint16_t>(raw.size() / kUnicodeSize));
            m_to.bytes(raw);
            return raw.size() / kUnicodeSize <= kMostOfData;
        }
        const std::string raw = dxf::encodeText(text, m_form.page, dxf::Caret::isItself);
        m_to.byte(static_cast<std::uint8_t>(raw.size()));
        m_to.rawShort(static_cast<std::uint16_t>(m_form.codePage));
        m_to.bytes(raw);
        return raw.size() <= kMostOfShortText;
    }

    const FileForm& m_form;
    const Names& m_names;
    BitWriter m_to;
};

bool isSame(const Groups& groups, GroupRange range, const Groups& others)
{
    if (range.end - range.begin != others.size()) {
        return false;
    }
    for (std::size_t i = 0; i < others.size(); ++i) {
        const Group& group = groups[range.begin + i];
        if (group.code != others[i].code || !isSameValue(group.value, others[i].value)) {
            return false;
        }
    }
    return true;
}

} // namespace

void extendedDataToGroups(std::string_view bytes, const FileForm& form, const Names& names,
                          Groups& groups)
{
    ItemReader(bytes, form, names, groups).readAll();
}

bool extendedDataFromGroups(const Groups& groups, GroupRange range, const FileForm& form,
                            const Names& names, std::string& bytes)
{
    Groups former;
    extendedDataToGroups(bytes, form, names, former);
    if (isSame(groups, range, former)) {
        return true;
    }
    ItemWriter writer(form, names);
    if (!writer.write(groups, range)) {
        return false;
    }
    bytes = writer.bytes();
    return true;
}

} // namespace corma::host::dwg
