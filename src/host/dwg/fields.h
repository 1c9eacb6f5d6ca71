#pragma once

// The fields of a record, one name for each kind of field, in two directions: FieldsFromBits reads
// them, FieldsToBits writes them. A record type says once, as a template over the two, which fields
// it has:
//
//     template<class Io> void bits(Io& io)
//     {
//         io.point3(center);
//         io.bitDouble(radius);
//     }
//
// A field that is not in the file of a version is left out with `if (io.since(r2004))`.

#include "host/dwg/bits.h"
#include "host/dwg/values.h"
#include "host/dxf/CodePage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// What holds for all records of a drawing.
struct FileForm
{
    DrawingVersion version = DrawingVersion::r2000;
    dxf::CodePage page; // of texts before R2007
    int codePage = 0; // its number in the head of the file
    int maintenance = 0;

    [[nodiscard]] bool hasUnicode() const { return version >= DrawingVersion::r2007; }
};

/// The bits of a record, parted: those of its fields, its texts (from R2007 on) and its handles.
struct Streams
{
    std::string_view bytes; // the record without its length
    std::size_t dataEnd = 0; // of the bits of fields and texts, ahead of those of handles
    BitReader data;
    BitReader texts;
    BitReader handles;
};

/// What both directions know.
class Fields
{
public:
    Fields(const FileForm& form, Handle self)
        : m_form(&form)
        , m_self(self)
    {
    }

    [[nodiscard]] DrawingVersion version() const { return m_form->version; }

    [[nodiscard]] const FileForm& form() const { return *m_form; }

    [[nodiscard]] bool since(DrawingVersion first) const { return version() >= first; }

    [[nodiscard]] bool until(DrawingVersion last) const { return version() <= last; }

    /// The handle of the record itself.
    [[nodiscard]] Handle self() const { return m_self; }

private:
    const FileForm* m_form;
    Handle m_self;
};

/// From bits to values. Reading beyond an end gives zeros; ask isGood() behind the last field.
class FieldsFromBits : public Fields
{
public:
    static constexpr bool isReading = true;

    FieldsFromBits(const FileForm& form, Handle self, Streams streams)
        : Fields(form, self)
        , m_streams(streams)
    {
    }

    [[nodiscard]] bool isGood() const
    {
        return m_streams.data.isGood() && m_streams.texts.isGood() && m_streams.handles.isGood();
    }

    void fail() { m_streams.data.fail(); }

    Streams& streams() { return m_streams; }

    void bit(bool& value) { value = m_streams.data.bit(); }

    template<class Number> void bits(Number& value, unsigned count) // BB, 3B
    {
        value = static_cast<Number>(m_streams.data.bits(count));
    }

    template<class Number> void byte(Number& value) // RC
    {
        value = static_cast<Number>(m_streams.data.byte());
    }

    template<class Number> void rawShort(Number& value) // RS
    {
        value = static_cast<Number>(static_cast<std::int16_t>(m_streams.data.rawShort()));
    }

    template<class Number> void rawLong(Number& value) // RL
    {
        value = static_cast<Number>(static_cast<std::int32_t>(m_streams.data.rawLong()));
    }

    template<class Number> void bitShort(Number& value) // BS
    {
        value = static_cast<Number>(static_cast<std::int16_t>(m_streams.data.bitShort()));
    }

    template<class Number> void bitLong(Number& value) // BL
    {
        value = static_cast<Number>(static_cast<std::int32_t>(m_streams.data.bitLong()));
    }

    void bitLongLong(std::uint64_t& value) { value = m_streams.data.bitLongLong(); }

    void rawDouble(double& value) { value = m_streams.data.rawDouble(); } // RD

    void bitDouble(double& value) { value = m_streams.data.bitDouble(); } // BD

    void defaultDouble(double& value, double usual) // DD
    {
        value = m_streams.data.defaultDouble(usual);
    }

    void rawPoint2(Point2& value); // 2RD
    void point2(Point2& value); // 2BD
    void defaultPoint2(Point2& value, const Point2& usual); // 2DD
    void point3(Point& value); // 3BD
    void rawPoint3(Point& value); // 3RD
    void thickness(double& value); // BT
    void extrusion(Point& value); // BE
    void bytes(std::string& value, std::size_t count);
    void text(Text& value); // T, TV, TU
    void color(Color& value); // CMC
    void entityColor(Color& value); // CMC, from R2004 on ENC
    void handle(Ref& value, Bond bond);

    /// How many items a list has, as a bitLong ahead of it; makes room for them. `fewestBits` is
    /// the least that an item has, in the streams of fields or of handles.
    template<class Item> void count(std::vector<Item>& list, std::size_t fewestBits)
    {
        list.resize(m_streams.data.count(m_streams.data.bitLong(), fewestBits));
    }

    /// The same for items that are handles or have one each, as texts may stand in a stream of
    /// their own.
    template<class Item> void countOfHandles(std::vector<Item>& list)
    {
        constexpr std::size_t kFewestBits = 8;
        list.resize(m_streams.handles.count(m_streams.data.bitLong(), kFewestBits));
    }

    /// The same for a number that was read in another way.
    template<class Item>
    void resize(std::vector<Item>& list, std::uint64_t number, std::size_t fewestBits)
    {
        list.resize(m_streams.data.count(number, fewestBits));
    }

    /// As many handles as `number` says.
    void handles(std::vector<Ref>& list, std::uint64_t number, Bond bond);

private:
    Streams m_streams;
};

/// From values to bits.
class FieldsToBits : public Fields
{
public:
    static constexpr bool isReading = false;

    FieldsToBits(const FileForm& form, Handle self)
        : Fields(form, self)
    {
    }

    [[nodiscard]] const BitWriter& data() const { return m_data; }

    [[nodiscard]] const BitWriter& texts() const { return m_texts; }

    [[nodiscard]] const BitWriter& handleBits() const { return m_handles; }

    BitWriter& data() { return m_data; }

    BitWriter& handleBits() { return m_handles; }

    /// The rest of the fields with all texts, as one piece that is not understood.
    void setOpaque(const BitWriter& bits)
    {
        m_data.append(bits);
        m_isOpaque = true;
    }

    [[nodiscard]] bool isOpaque() const { return m_isOpaque; }

    void bit(const bool& value) { m_data.bit(value); }

    template<class Number> void bits(const Number& value, unsigned count)
    {
        m_data.bits(static_cast<std::uint32_t>(value), count);
    }

    template<class Number> void byte(const Number& value)
    {
        m_data.byte(static_cast<std::uint8_t>(value));
    }

    template<class Number> void rawShort(const Number& value)
    {
        m_data.rawShort(static_cast<std::uint16_t>(value));
    }

    template<class Number> void rawLong(const Number& value)
    {
        m_data.rawLong(static_cast<std::uint32_t>(value));
    }

    template<class Number> void bitShort(const Number& value)
    {
        m_data.bitShort(static_cast<std::uint16_t>(value));
    }

    template<class Number> void bitLong(const Number& value)
    {
        m_data.bitLong(static_cast<std::uint32_t>(value));
    }

    void bitLongLong(const std::uint64_t& value) { m_data.bitLongLong(value); }

    void rawDouble(const double& value) { m_data.rawDouble(value); }

    void bitDouble(const double& value) { m_data.bitDouble(value); }

    void defaultDouble(const double& value, double usual) { m_data.defaultDouble(value, usual); }

    void rawPoint2(const Point2& value);
    void point2(const Point2& value);
    void defaultPoint2(const Point2& value, const Point2& usual);
    void point3(const Point& value);
    void rawPoint3(const Point& value);
    void thickness(const double& value);
    void extrusion(const Point& value);
    void bytes(const std::string& value, std::size_t count); // of `count` bytes
    void text(const Text& value);
    void color(const Color& value);
    void entityColor(const Color& value);
    void handle(const Ref& value, Bond bond);

    template<class Item> void count(const std::vector<Item>& list, std::size_t /*fewestBits*/)
    {
        m_data.bitLong(static_cast<std::uint32_t>(list.size()));
    }

    template<class Item> void countOfHandles(const std::vector<Item>& list)
    {
        m_data.bitLong(static_cast<std::uint32_t>(list.size()));
    }

    template<class Item>
    void resize(const std::vector<Item>& /*list*/, std::uint64_t /*number*/,
                std::size_t /*fewestBits*/)
    {
    }

    void handles(const std::vector<Ref>& list, std::uint64_t number, Bond bond);

private:
    BitWriter m_data;
    BitWriter m_texts;
    BitWriter m_handles;
    bool m_isOpaque = false;
};

/// UTF-16 with the lower byte first; what is no half of a pair stays as it is.
std::wstring textFromUnicode(std::string_view bytes);
std::string textToUnicode(std::wstring_view text);

/// One handle from a stream of them.
Ref readRef(BitReader& from, Handle self);

void writeRef(const Ref& ref, Bond bond, BitWriter& to);

} // namespace corma::host::dwg
