#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <cmath>
#include <numbers>

namespace corma::host {

namespace {

constexpr int kHeight = 40;
constexpr int kWidthFactor = 41;
constexpr int kObliquing = 51;
constexpr int kGeneration = 71;
constexpr std::int64_t kBackward = 2;
constexpr std::int64_t kUpsideDown = 4;
constexpr int kSecondPoint = 11;

/// How the letters of a line of text stand in its plane. Angles are in degrees.
struct Lettering
{
    double height = 0.0;
    double widthFactor = 1.0;
    double rotation = 0.0;
    double obliquing = 0.0;
    std::int64_t generation = 0;
};

Lettering letteringOf(const RecordPart& part)
{
    return {.height = part.real(kHeight),
            .widthFactor = part.real(kWidthFactor, 1.0),
            .rotation = part.real(code::rotation),
            .obliquing = part.real(kObliquing),
            .generation = part.integer(kGeneration)};
}

Lettering movedSimilarly(Lettering text, const PlaneMotion& plane)
{
    text.height *= plane.scale();
    if (!plane.mirrors()) {
        text.rotation = plane.direction(text.rotation);
        return text;
    }
    text.rotation = normalizedDegrees(plane.turn() - text.rotation);
    text.generation ^= kBackward;
    return text;
}

constexpr double kMostObliquing = 85.0;

/// A text may be stretched and slanted, the latter within kMostObliquing. The letters are drawn by
/// turning * flipping * slanting; the image of that by the plane's motion is brought to the same
/// form again.
Lettering stretched(Lettering text, const PlaneMotion& plane)
{
    const double side = plane.mirrors() ? -1.0 : 1.0;
    const double angle = text.rotation * kRadians;
    const AcGeVector3d along = plane.vector({std::cos(angle), std::sin(angle), 0.0}) * side;
    const AcGeVector3d up = plane.vector({-std::sin(angle), std::cos(angle), 0.0});
    const AcGeVector3d xAxis = along.normal();
    const AcGeVector3d yAxis {-xAxis.y, xAxis.x, 0.0};

    const bool flipsX = (text.generation & kBackward) != 0;
    const bool flipsY = (text.generation & kUpsideDown) != 0;
    const double flip = (flipsX != flipsY ? -1.0 : 1.0) * side;
    const double wide = along.length();
    const double high = up.dotProduct(yAxis);
    const double slant
        = (wide * std::tan(text.obliquing * kRadians) + flip * up.dotProduct(xAxis)) / high;

    text.height *= high;
    text.widthFactor *= wide / high;
    text.rotation = degreesWithoutNoise(degreesOf(xAxis));
    text.obliquing = degreesWithoutNoise(std::atan(slant) / kRadians);
    if (plane.mirrors()) {
        text.generation ^= kBackward;
    }
    return text;
}

void setLettering(RecordPart& part, const Lettering& text)
{
    part.setReal(kHeight, text.height);
    part.setReal(code::rotation, text.rotation);
    part.setReal(kWidthFactor, text.widthFactor, 1.0);
    part.setReal(kObliquing, text.obliquing);
    part.setInteger(kGeneration, text.generation);
}

/// The line of text in a TEXT, ATTRIB or ATTDEF; the code for its vertical alignment differs.
Acad::ErrorStatus moveText(Groups& groups, const Motion& motion, int verticalAlignment)
{
    constexpr int kHorizontalAlignment = 72;
    RecordPart part(groups, L"AcDbText");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    Lettering after = plane.isSimilar() ? movedSimilarly(letteringOf(part), plane)
                                        : stretched(letteringOf(part), plane);
    const bool isTooSlanted = !plane.isSimilar() && std::abs(after.obliquing) > kMostObliquing;
    const bool leans = !part.moveThickness(plane);
    if ((isTooSlanted || leans) && !motion.approximatesLetters()) {
        return Acad::eCannotScaleNonUniformly;
    }
    if (isTooSlanted) {
        after.obliquing = std::copysign(kMostObliquing, after.obliquing);
    }
    part.movePoints(10, plane);
    setLettering(part, after);
    part.movePlane(plane);

    RecordPart whole(groups, groups.body());
    const bool isAligned
        = part.integer(kHorizontalAlignment) != 0 || whole.integer(verticalAlignment) != 0;
    const GroupRange embedded = embeddedObject(groups);
    if (isAligned || embedded.begin < embedded.end) {
        whole.movePoints(kSecondPoint, plane); // else it has no meaning and is mostly 0, 0, 0
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus transformText(Groups& groups, const Motion& motion)
{
    return moveText(groups, motion, 73);
}

Acad::ErrorStatus transformAttribute(Groups& groups, const Motion& motion)
{
    const Acad::ErrorStatus status = moveText(groups, motion, 74);
    return status == Acad::eOk ? transformEmbeddedText(groups, motion) : status;
}

Acad::ErrorStatus transformShape(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbShape");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::turnedOver);
    if (!plane.isSimilar() || !part.moveThickness(plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    // R12, which has no markers, gives the position in the shape's own coordinates.
    if (groups.find(code::subclass)) {
        part.movePoints(10, motion);
    } else {
        part.movePoints(10, plane);
    }
    part.scale(kHeight, plane.scale());
    part.setReal(code::rotation, plane.direction(part.real(code::rotation)));
    part.movePlane(plane);
    return Acad::eOk;
}

} // namespace corma::host
