#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

namespace corma::host {

namespace {

AcGePoint3d vectorMoved(const AcGeVector3d& vector)
{
    return AcGePoint3d::kOrigin + vector;
}

} // namespace

void transformExtendedData(Groups& groups, const Motion& motion)
{
    // The other kinds of points (1010) and numbers (1040) have no place in space.
    constexpr int kPosition = 1011;
    constexpr int kDisplacement = 1012;
    constexpr int kDirection = 1013;
    constexpr int kDistance = 1041;
    constexpr int kScaleFactor = 1042;

    const GroupRange range = extendedData(groups);
    for (std::size_t at = range.begin; at < range.end; ++at) {
        switch (groups[at].code) {
        case kPosition:
            setPointAt(groups, at, motion.point(pointAt(groups, at)));
            break;
        case kDisplacement:
            setPointAt(groups, at, vectorMoved(motion.vector(pointAt(groups, at).asVector())));
            break;
        case kDirection:
            setPointAt(groups, at, vectorMoved(motion.direction(pointAt(groups, at).asVector())));
            break;
        case kDistance:
        case kScaleFactor:
            setRealAt(groups, at, groups[at].real() * motion.lengthScale());
            break;
        default:
            break;
        }
    }
}

} // namespace corma::host
