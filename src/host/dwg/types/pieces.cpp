#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

Owned Sequence::owned() const
{
    return {
        .members = handlesOf(all), .first = first.target, .last = last.target, .end = end.target};
}

void Sequence::take(const Surroundings& around)
{
    setHandles(all, around.owned);
    first.set(around.owned.empty() ? Handle::none : around.owned.front());
    last.set(around.owned.empty() ? Handle::none : around.owned.back());
    end.set(around.end);
}

} // namespace corma::host::dwg
