// What the host hands out as result nodes, put where its owner wants it.

#include "drawing/host_variables.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr const wchar_t* kAssignValue2Source = L"xx_assign_value2.cpp";
constexpr int kBadTypeLine = 41; // where a value of another type is reported
constexpr const wchar_t* kBadType = L"ASSIGN bad type";

// Result types of the host that only lists have.
constexpr int kEntityName = 5006; // RTENAME
constexpr int kSelection = 5007; // RTPICKS
constexpr int kListBegin = 5016; // RTLB
constexpr int kListEnd = 5017; // RTLE
constexpr int kNothing = 5019; // RTNIL

// The chain from behind a list's begin up to its end, whose node stays; null for a chain without
// one.
resbuf* endOfList(resbuf& begin)
{
    int depth = 1;
    for (resbuf* at = begin.rbnext; at != nullptr; at = at->rbnext) {
        depth += at->restype == kListBegin ? 1 : at->restype == kListEnd ? -1 : 0;
        if (depth == 0) {
            return at;
        }
    }
    return nullptr;
}

int detachList(resbuf& begin, resbuf*& list)
{
    resbuf* const end = endOfList(begin);
    if (end == nullptr) {
        return RTCAN;
    }
    if (begin.rbnext == end) {
        list = nullptr;
        return RTNORM;
    }
    list = begin.rbnext;
    begin.rbnext = end;
    resbuf* last = list;
    while (last->rbnext != end) {
        last = last->rbnext;
    }
    last->rbnext = nullptr;
    return RTNORM;
}

int refuse(const resbuf& node, int report)
{
    if (report != 0) {
        xx_reportError(kAssignValue2Source, kBadTypeLine, kBadType, node.restype);
    }
    return RTCAN;
}

void copyText(const wchar_t* text, const VariableTarget& value)
{
    if (text != nullptr) {
        corma::copyBounded(static_cast<wchar_t*>(value.target), value.size, text);
    }
}

} // namespace

int xx_assign_value2(resbuf& node, const VariableTarget& value, int report)
{
    if (node.restype != value.type) {
        return refuse(node, report);
    }
    switch (node.restype) {
    case RTREAL:
    case kEntityName:
    case kSelection:
        std::memcpy(value.target, &node.resval, sizeof(std::int64_t));
        return RTNORM;
    case RTPOINT:
        std::memcpy(value.target, node.resval.rpoint, 2 * sizeof(double));
        return RTNORM;
    case RT3DPOINT:
        std::memcpy(value.target, node.resval.rpoint, 3 * sizeof(double));
        return RTNORM;
    case RTSHORT:
        *static_cast<std::int32_t*>(value.target) = node.resval.rint;
        return RTNORM;
    case RTLONG:
        *static_cast<std::int32_t*>(value.target) = node.resval.rlong;
        return RTNORM;
    case RTSTR:
        copyText(node.resval.rstring, value);
        return RTNORM;
    case kListBegin:
        return detachList(node, *static_cast<resbuf**>(value.target));
    case kNothing:
        return RTNORM;
    default:
        return refuse(node, report);
    }
}
