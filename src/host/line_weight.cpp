#include "host/acdb_database.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kLegalWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

} // namespace

AcDb::LineWeight AcDbDatabase::getNearestLineWeight(int weight)
{
    const bool isWord = AcDb::kLnWtByLwDefault <= weight && weight <= AcDb::kLnWtByLayer;
    if (isWord) {
        return static_cast<AcDb::LineWeight>(weight);
    }
    const int* const above
        = std::lower_bound(std::begin(kLegalWeights), std::end(kLegalWeights) - 1, weight);
    if (above == std::begin(kLegalWeights)) {
        return AcDb::kLnWt000;
    }
    const int below = above[-1];
    const bool isNearerToBelow = weight - below < *above - weight;
    return static_cast<AcDb::LineWeight>(isNearerToBelow ? below : *above);
}
