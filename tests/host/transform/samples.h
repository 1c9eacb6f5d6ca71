#pragma once

// What entities look like: points and directions in world coordinates, worked out from their
// records by the rules of the format and by nothing of what is tested.

#include "host/model/Group.h"
#include <corma/geometry.h>

#include <string>
#include <string_view>
#include <vector>

namespace corma::host::test {

/// A record from lines of a code, a space and a value; the first line is the type.
Groups recordFrom(std::wstring_view lines);

/// The groups in the same form, numbers rounded to nine decimals.
std::wstring textOf(const Groups& groups);

AcGeMatrix3d moved(double x, double y, double z);

/// About the axes of the world.
AcGeMatrix3d stretched(double x, double y, double z);

/// A circle or an ellipse as a whole: u * u' + v * v' of its half axes u and v.
struct Tensor
{
    double entry[3][3] = {};

    static Tensor of(const AcGeVector3d& u, const AcGeVector3d& v);
    [[nodiscard]] Tensor transformed(const AcGeMatrix3d& matrix) const;
};

struct Samples
{
    std::vector<AcGePoint3d> points {};
    std::vector<AcGeVector3d> directions {};
    std::vector<AcGeVector3d> lines {}; // directions that may as well be the opposite ones
    std::vector<double> lengths {};
    std::vector<Tensor> rings {};
    bool isOrdered = true; // false: the points may come in any order

    /// What they must become. Lengths only where the matrix scales all lengths alike.
    [[nodiscard]] Samples transformed(const AcGeMatrix3d& matrix) const;
};

/// Of an entity of one of the types that can be transformed. A POLYLINE comes with its vertices.
Samples samplesOf(const Groups& entity, const std::vector<Groups>& vertices = {});

/// Fails the test with what differs.
void expectSame(const Samples& actual, const Samples& expected);

} // namespace corma::host::test
