#include "host/host.h"
#include "host/result_list.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace corma::host {

namespace {

struct MemberOfTypes
{
    int first;
    int last;
    ResultMember member;
};

// In order. Group codes between the rows have no meaning in a record's chain, or one that is not a
// value. A lone y or z, which is not behind its x, is a real number.
constexpr std::array kMembers = {
    MemberOfTypes {0, 9, ResultMember::text},
    MemberOfTypes {10, 19, ResultMember::point},
    MemberOfTypes {20, 59, ResultMember::real},
    MemberOfTypes {60, 79, ResultMember::int16},
    MemberOfTypes {90, 99, ResultMember::int32},
    MemberOfTypes {100, 102, ResultMember::text},
    MemberOfTypes {105, 105, ResultMember::text},
    MemberOfTypes {110, 119, ResultMember::point},
    MemberOfTypes {120, 149, ResultMember::real},
    MemberOfTypes {160, 169, ResultMember::int64},
    MemberOfTypes {170, 179, ResultMember::int16},
    MemberOfTypes {210, 219, ResultMember::point},
    MemberOfTypes {220, 239, ResultMember::real},
    MemberOfTypes {270, 299, ResultMember::int16},
    MemberOfTypes {300, 309, ResultMember::text},
    MemberOfTypes {310, 319, ResultMember::binary},
    MemberOfTypes {320, 329, ResultMember::text}, // a handle that names nothing of this drawing
    MemberOfTypes {330, 369, ResultMember::id},
    MemberOfTypes {370, 389, ResultMember::int16},
    MemberOfTypes {390, 399, ResultMember::id},
    MemberOfTypes {400, 409, ResultMember::int16},
    MemberOfTypes {410, 419, ResultMember::text},
    MemberOfTypes {420, 429, ResultMember::int32},
    MemberOfTypes {430, 439, ResultMember::text},
    MemberOfTypes {440, 459, ResultMember::int32},
    MemberOfTypes {460, 469, ResultMember::real},
    MemberOfTypes {470, 479, ResultMember::text},
    MemberOfTypes {480, 481, ResultMember::id},
    MemberOfTypes {1000, 1003, ResultMember::text},
    MemberOfTypes {1004, 1004, ResultMember::binary},
    MemberOfTypes {1005, 1009, ResultMember::text},
    MemberOfTypes {1010, 1019, ResultMember::point},
    MemberOfTypes {1020, 1059, ResultMember::real},
    MemberOfTypes {1060, 1070, ResultMember::int16},
    MemberOfTypes {1071, 1071, ResultMember::int32},
    MemberOfTypes {RTREAL, RTREAL, ResultMember::real},
    MemberOfTypes {RTPOINT, RTPOINT, ResultMember::point},
    MemberOfTypes {RTSHORT, RTSHORT, ResultMember::int16},
    MemberOfTypes {RTSTR, RTSTR, ResultMember::text},
    MemberOfTypes {RT3DPOINT, RT3DPOINT, ResultMember::point},
    MemberOfTypes {RTLONG, RTLONG, ResultMember::int32},
};

} // namespace

ResultMember resultMemberOf(int type)
{
    const auto* const row = std::lower_bound(
        kMembers.begin(), kMembers.end(), type,
        [](const MemberOfTypes& member, int wanted) { return member.last < wanted; });
    return row != kMembers.end() && row->first <= type ? row->member : ResultMember::none;
}

ACHAR* heapCopy(std::wstring_view text)
{
    auto* copy = static_cast<ACHAR*>(std::malloc((text.size() + 1) * sizeof(ACHAR)));
    if (copy != nullptr) {
        *std::copy(text.begin(), text.end(), copy) = 0;
    }
    return copy;
}

} // namespace corma::host

resbuf* acutNewRb(int type)
{
    auto* node = static_cast<resbuf*>(std::calloc(1, sizeof(resbuf)));
    if (node != nullptr) {
        node->restype = static_cast<short>(type);
    }
    return node;
}

int acutRelRb(resbuf* list)
{
    using corma::host::ResultMember;
    while (list != nullptr) {
        resbuf* next = list->rbnext;
        const ResultMember member = corma::host::resultMemberOf(list->restype);
        if (member == ResultMember::text) {
            std::free(list->resval.rstring);
        } else if (member == ResultMember::binary) {
            std::free(list->resval.rbinary.buf);
        }
        std::free(list);
        list = next;
    }
    return RTNORM;
}

void acutDelString(ACHAR*& text)
{
    std::free(text);
    text = nullptr;
}

void acutDelBuffer(ACHAR*& text)
{
    acutDelString(text);
}
