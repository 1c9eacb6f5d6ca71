#include "host/model/Group.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace corma::host {

namespace {

struct KindOfCodes
{
    int first;
    int last;
    ValueKind kind;
};

// In order; codes between the rows are texts.
constexpr std::array kKinds = {
    KindOfCodes {5, 5, ValueKind::handle},       KindOfCodes {10, 59, ValueKind::real},
    KindOfCodes {60, 79, ValueKind::int16},      KindOfCodes {90, 99, ValueKind::int32},
    KindOfCodes {105, 105, ValueKind::handle},   KindOfCodes {110, 149, ValueKind::real},
    KindOfCodes {160, 169, ValueKind::int64},    KindOfCodes {170, 179, ValueKind::int16},
    KindOfCodes {210, 239, ValueKind::real},     KindOfCodes {270, 289, ValueKind::int16},
    KindOfCodes {290, 299, ValueKind::boolean},  KindOfCodes {310, 319, ValueKind::binary},
    KindOfCodes {320, 369, ValueKind::handle},   KindOfCodes {370, 389, ValueKind::int16},
    KindOfCodes {390, 399, ValueKind::handle},   KindOfCodes {400, 409, ValueKind::int16},
    KindOfCodes {420, 429, ValueKind::int32},    KindOfCodes {440, 459, ValueKind::int32},
    KindOfCodes {460, 469, ValueKind::real},     KindOfCodes {480, 481, ValueKind::handle},
    KindOfCodes {1004, 1004, ValueKind::binary}, KindOfCodes {1005, 1005, ValueKind::handle},
    KindOfCodes {1010, 1059, ValueKind::real},   KindOfCodes {1060, 1070, ValueKind::int16},
    KindOfCodes {1071, 1071, ValueKind::int32},
};

// The same, a kind for each code: every group that is read asks.
constexpr auto kKindOfEach = [] {
    std::array<ValueKind, kKinds.back().last + 1> kinds {}; // texts
    for (const KindOfCodes& row : kKinds) {
        for (int code = row.first; code <= row.last; ++code) {
            kinds[static_cast<std::size_t>(code)] = row.kind;
        }
    }
    return kinds;
}();

template<class Character> std::optional<Handle> parseHandle(std::basic_string_view<Character> text)
{
    constexpr std::size_t kMostDigits = 16;
    if (text.empty() || text.size() > kMostDigits) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const Character c : text) {
        const auto letter = static_cast<unsigned>(c) | 0x20U;
        unsigned digit = 0;
        if (c >= '0' && c <= '9') {
            digit = static_cast<unsigned>(c) - '0';
        } else if (letter >= 'a' && letter <= 'f') {
            digit = letter - 'a' + 10;
        } else {
            return std::nullopt;
        }
        number = number * 16 + digit;
    }
    return Handle {number};
}

} // namespace

ValueKind valueKindOf(int code)
{
    const auto at = static_cast<std::size_t>(code); // of a negative one it is beyond all
    return at < kKindOfEach.size() ? kKindOfEach[at] : ValueKind::text;
}

const std::wstring& Group::text() const
{
    static const std::wstring kNone;
    const auto* held = std::get_if<std::wstring>(&value);
    return held == nullptr ? kNone : *held;
}

double Group::real() const
{
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    const auto* held = std::get_if<double>(&value);
    return held == nullptr ? 0.0 : *held;
}

std::int64_t Group::integer() const
{
    const auto* held = std::get_if<std::int64_t>(&value);
    return held == nullptr ? 0 : *held;
}

Handle Group::handle() const
{
    const auto* held = std::get_if<Handle>(&value);
    return held == nullptr ? Handle::none : *held;
}

const std::string& Group::bytes() const
{
    static const std::string kNone;
    const auto* held = std::get_if<std::string>(&value);
    return held == nullptr ? kNone : *held;
}

void Groups::insert(std::size_t at, Group group)
{
    m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(at), std::move(group));
}

void Groups::insert(std::size_t at, std::vector<Group> groups)
{
    m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(at),
                    std::make_move_iterator(groups.begin()), std::make_move_iterator(groups.end()));
}

void Groups::erase(std::size_t at, std::size_t count)
{
    const auto first = m_groups.begin() + static_cast<std::ptrdiff_t>(at);
    m_groups.erase(first, first + static_cast<std::ptrdiff_t>(count));
}

GroupRange Groups::body() const
{
    const std::size_t begin = !empty() && m_groups.front().code == code::type ? 1 : 0;
    std::size_t end = begin;
    while (end < size() && m_groups[end].code != code::embeddedObject
           && m_groups[end].code < code::firstExtended) {
        ++end;
    }
    return {begin, end};
}

GroupRange Groups::subclass(std::wstring_view marker) const
{
    const GroupRange whole = body();
    GroupRange found {whole.end, whole.end};
    bool hasMarkers = false;
    for (std::size_t i = whole.begin; i < whole.end; ++i) {
        if (m_groups[i].code != code::subclass) {
            continue;
        }
        hasMarkers = true;
        if (found.begin != whole.end) {
            found.end = i;
            break;
        }
        if (m_groups[i].isText(marker)) {
            found.begin = i + 1;
        }
    }
    return hasMarkers ? found : whole;
}

GroupRange Groups::braces(std::wstring_view name) const
{
    const GroupRange whole = body();
    for (std::size_t i = whole.begin; i < whole.end; ++i) {
        const std::wstring& text = m_groups[i].text();
        if (m_groups[i].code != code::braces || text.empty() || text.front() != L'{'
            || std::wstring_view(text).substr(1) != name) {
            continue;
        }
        std::size_t end = i + 1;
        while (end < whole.end && m_groups[end].code != code::braces) {
            ++end;
        }
        return {i + 1, end};
    }
    return {whole.end, whole.end};
}

std::optional<std::size_t> Groups::find(int code, GroupRange in) const
{
    for (std::size_t i = in.begin; i < in.end; ++i) {
        if (m_groups[i].code == code) {
            return i;
        }
    }
    return std::nullopt;
}

std::wstring_view Groups::text(int code, GroupRange in, std::wstring_view fallback) const
{
    const auto at = find(code, in);
    return at ? std::wstring_view(m_groups[*at].text()) : fallback;
}

double Groups::real(int code, GroupRange in, double fallback) const
{
    const auto at = find(code, in);
    return at ? m_groups[*at].real() : fallback;
}

std::int64_t Groups::integer(int code, GroupRange in, std::int64_t fallback) const
{
    const auto at = find(code, in);
    return at ? m_groups[*at].integer() : fallback;
}

Handle Groups::handle(int code, GroupRange in) const
{
    const auto at = find(code, in);
    return at ? m_groups[*at].handle() : Handle::none;
}

Point Groups::point(int code, GroupRange in, Point fallback) const
{
    return {real(code, in, fallback.x), real(code + kCoordinateStep, in, fallback.y),
            real(code + 2 * kCoordinateStep, in, fallback.z)};
}

void Groups::set(int code, GroupRange in, GroupValue value)
{
    const auto at = find(code, in);
    if (!at) {
        insert(in.end, Group(code, std::move(value)));
    } else if (m_groups[*at].value != value) {
        m_groups[*at].set(std::move(value));
    }
}

void Groups::setPoint(int code, GroupRange in, Point value)
{
    const std::array coordinates = {value.x, value.y, value.z};
    std::size_t behind = in.end;
    for (std::size_t i = 0; i < coordinates.size(); ++i) {
        const int coordinate = code + static_cast<int>(i) * kCoordinateStep;
        if (const auto at = find(coordinate, in)) {
            if (m_groups[*at].value != GroupValue(coordinates[i])) {
                m_groups[*at].set(coordinates[i]);
            }
            behind = *at + 1;
        } else {
            insert(behind, Group(coordinate, coordinates[i]));
            ++behind;
            ++in.end;
        }
    }
}

void Groups::remove(int code, GroupRange in)
{
    if (const auto at = find(code, in)) {
        erase(*at);
    }
}

Handle Groups::ownHandle() const
{
    const bool isDimStyle = !empty() && m_groups.front().isText(L"DIMSTYLE");
    const int wanted = isDimStyle ? code::dimStyleHandle : code::handle;
    for (const Group& group : m_groups) {
        if (group.code == wanted) {
            return group.handle();
        }
        if (group.code == code::subclass) {
            break;
        }
    }
    return Handle::none;
}

namespace {

// Position of the owner's handle, or where it belongs: behind braces, ahead of the first subclass.
std::pair<std::size_t, bool> placeOfOwner(const Groups& groups)
{
    const GroupRange whole = groups.body();
    bool inBraces = false;
    std::size_t i = whole.begin;
    for (; i < whole.end && groups[i].code != code::subclass; ++i) {
        if (groups[i].code == code::braces) {
            inBraces = groups[i].text().starts_with(L'{');
        } else if (groups[i].code == code::owner && !inBraces) {
            return {i, true};
        }
    }
    return {i, false};
}

} // namespace

Handle Groups::ownerHandle() const
{
    const auto [at, isThere] = placeOfOwner(*this);
    return isThere ? m_groups[at].handle() : Handle::none;
}

void Groups::setOwnerHandle(Handle owner)
{
    const auto [at, isThere] = placeOfOwner(*this);
    if (!isThere) {
        insert(at, Group(code::owner, owner));
    } else if (m_groups[at].handle() != owner) {
        m_groups[at].set(owner);
    }
}

std::wstring toText(Handle handle)
{
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    std::wstring text;
    for (auto rest = static_cast<std::uint64_t>(handle); rest != 0; rest /= 16) {
        text.push_back(kDigits[rest % 16]);
    }
    if (text.empty()) {
        return L"0";
    }
    std::reverse(text.begin(), text.end());
    return text;
}

std::optional<Handle> handleFrom(std::wstring_view text)
{
    return parseHandle(text);
}

std::optional<Handle> handleFrom(std::string_view text)
{
    return parseHandle(text);
}

} // namespace corma::host
