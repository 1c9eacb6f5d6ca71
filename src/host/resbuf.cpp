#include "host/host.h"

#include <cstdlib>

namespace {

// Texts carry either the host's result type or, in the chains of records, a group code of text.
bool ownsText(short type)
{
    return type == RTSTR || (type >= 0 && type <= 9);
}

} // namespace

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
    while (list != nullptr) {
        resbuf* next = list->rbnext;
        if (ownsText(list->restype)) {
            std::free(list->resval.rstring);
        }
        std::free(list);
        list = next;
    }
    return RTNORM;
}
