#pragma once

// host/model/ - the model of a drawing: records, their groups, and the order and tables in which
// they stand. It knows no file format; host/dxf/ does.

#include <cstddef>
#include <cstdint>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corma::host {

/// The name of an object in its drawing, unique there and kept for good; 0 is none.
enum class Handle : std::uint64_t
{
    none = 0
};

/// What a group's value is, by its code.
enum class ValueKind : std::uint8_t
{
    text,
    real,
    int16,
    int32,
    int64,
    boolean,
    handle,
    binary
};

/// The kind of value that a group code has in every record; text for codes without a meaning.
ValueKind valueKindOf(int code);

/// Codes with a meaning in every record.
namespace code {
inline constexpr int opaqueVersion = -12; // of a record that is not understood: of its file
inline constexpr int opaqueSize = -11; // how many bits it has
inline constexpr int opaqueBits = -10; // the bits; groups with the handles of it follow
inline constexpr int type = 0;
inline constexpr int handle = 5;
inline constexpr int dimStyleHandle = 105;
inline constexpr int name = 2;
inline constexpr int linetype = 6;
inline constexpr int layer = 8;
inline constexpr int variable = 9; // name of a header variable
inline constexpr int position = 10; // its x
inline constexpr int thickness = 39;
inline constexpr int bulge = 42;
inline constexpr int rotation = 50;
inline constexpr int color = 62;
inline constexpr int paperSpace = 67;
inline constexpr int flags = 70;
inline constexpr int subclass = 100;
inline constexpr int embeddedObject = 101;
inline constexpr int braces = 102; // "{NAME" opens, "}" closes
inline constexpr int normal = 210;
inline constexpr int owner = 330;
inline constexpr int layoutName = 410;
inline constexpr int comment = 999;
inline constexpr int firstExtended = 1000;
inline constexpr int application = 1001; // begins the extended data of one application
inline constexpr int extendedHandle = 1005;
} // namespace code

/// What begins the part of a record that all entities have.
inline constexpr wchar_t kEntityMarker[] = L"AcDbEntity";

inline constexpr int kCoordinateStep = 10; // from the code of x to that of y, and on to z

inline constexpr double kRadians = std::numbers::pi / 180.0; // of a degree, which groups count in

/// Text; a real number; a whole number or flag; a handle; bytes.
using GroupValue = std::variant<std::wstring, double, std::int64_t, Handle, std::string>;

/// One code with its value.
struct Group
{
    int code = 0;
    GroupValue value;

    // The whole group as it stands in the file, for as long as its value is that of the file.
    // It is what gets written then; empty for a new value. The format that read it owns the bytes.
    std::string_view raw {};

    Group() = default;

    Group(int groupCode, GroupValue groupValue)
        : code(groupCode)
        , value(std::move(groupValue))
    {
    }

    Group(int groupCode, double number)
        : Group(groupCode, GroupValue(number))
    {
    }

    Group(int groupCode, Handle named)
        : Group(groupCode, GroupValue(named))
    {
    }

    Group(int groupCode, int number)
        : Group(groupCode, GroupValue(std::int64_t {number}))
    {
    }

    Group(int groupCode, const wchar_t* text)
        : Group(groupCode, GroupValue(std::wstring(text)))
    {
    }

    // The value as a kind; of another kind it is empty, 0 or none.
    [[nodiscard]] const std::wstring& text() const;
    [[nodiscard]] double real() const; // a whole number, too
    [[nodiscard]] std::int64_t integer() const;
    [[nodiscard]] Handle handle() const;
    [[nodiscard]] const std::string& bytes() const;

    [[nodiscard]] bool isText(std::wstring_view wanted) const { return text() == wanted; }

    void set(GroupValue newValue)
    {
        value = std::move(newValue);
        raw = {};
    }
};

struct Point
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const Point&) const = default;
};

/// Some neighbouring groups of a record, by position.
struct GroupRange
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The groups of one record, in order; the first is its type (code 0).
class Groups
{
public:
    Groups() = default;

    explicit Groups(std::vector<Group> groups)
        : m_groups(std::move(groups))
    {
    }

    [[nodiscard]] std::size_t size() const { return m_groups.size(); }

    [[nodiscard]] bool empty() const { return m_groups.empty(); }

    Group& operator[](std::size_t at) { return m_groups[at]; }

    const Group& operator[](std::size_t at) const { return m_groups[at]; }

    auto begin() { return m_groups.begin(); }

    auto end() { return m_groups.end(); }

    [[nodiscard]] auto begin() const { return m_groups.begin(); }

    [[nodiscard]] auto end() const { return m_groups.end(); }

    void add(Group group) { m_groups.push_back(std::move(group)); }

    /// A group without a value, to be filled in at once.
    Group& addEmpty(int code)
    {
        Group& group = m_groups.emplace_back();
        group.code = code;
        return group;
    }

    void reserve(std::size_t count) { m_groups.reserve(count); }

    void clear() { m_groups.clear(); }

    [[nodiscard]] std::size_t capacity() const { return m_groups.capacity(); }

    void insert(std::size_t at, Group group);
    void insert(std::size_t at, std::vector<Group> groups);
    void erase(std::size_t at, std::size_t count = 1);

    /// Everything.
    [[nodiscard]] GroupRange all() const { return {0, size()}; }

    /// What belongs to the record itself: without type, embedded objects and extended data.
    [[nodiscard]] GroupRange body() const;

    /// The groups behind a subclass marker (code 100) up to the next one. A record that has no
    /// markers at all, as those of R12, is one subclass; a missing marker gives an empty range.
    [[nodiscard]] GroupRange subclass(std::wstring_view marker) const;

    /// The groups between `102 {NAME` and its `102 }`; empty when there are none.
    [[nodiscard]] GroupRange braces(std::wstring_view name) const;

    /// Position of the first group with a code in a range, if there is one.
    [[nodiscard]] std::optional<std::size_t> find(int code, GroupRange in) const;

    [[nodiscard]] std::optional<std::size_t> find(int code) const { return find(code, body()); }

    /// The first value with that code in a range, else the fallback.
    [[nodiscard]] std::wstring_view text(int code, GroupRange in,
                                         std::wstring_view fallback = {}) const;
    [[nodiscard]] double real(int code, GroupRange in, double fallback = 0.0) const;
    [[nodiscard]] std::int64_t integer(int code, GroupRange in, std::int64_t fallback = 0) const;
    [[nodiscard]] Handle handle(int code, GroupRange in) const;

    /// The coordinates code, code + 10 and code + 20; a missing one is that of the fallback.
    [[nodiscard]] Point point(int code, GroupRange in, Point fallback = {}) const;

    /// Gives the first group with that code in a range a value; it is put at the range's end when
    /// there is none. Ranges worked out before are then out of date.
    void set(int code, GroupRange in, GroupValue value);
    void setPoint(int code, GroupRange in, Point value); // all three coordinates

    /// Takes the first group with that code out of a range, if there is one.
    void remove(int code, GroupRange in);

    /// False for a record of which a part is known as bits only.
    [[nodiscard]] bool isUnderstood() const { return !find(code::opaqueVersion); }

    /// Its own handle, ahead of the first subclass: code 5, or for a DIMSTYLE code 105.
    [[nodiscard]] Handle ownHandle() const;

    /// The handle of its owner: the 330 outside braces and ahead of the first subclass.
    [[nodiscard]] Handle ownerHandle() const;
    void setOwnerHandle(Handle owner);

private:
    std::vector<Group> m_groups;
};

/// Hexadecimal, in capitals and without leading zeros.
std::wstring toText(Handle handle);

/// Nothing for a text that is no hexadecimal number of 1 to 16 digits.
std::optional<Handle> handleFrom(std::wstring_view text);
std::optional<Handle> handleFrom(std::string_view text);

} // namespace corma::host
