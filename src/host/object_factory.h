#pragma once

#include <memory>

class AcDbObject;
class AcDbStub;

namespace corma::host {

/// An object, without groups yet, of the class that a record is one of. One that is not understood
/// is an entity or an object and no more, so nothing can be asked of it that it could not answer.
std::unique_ptr<AcDbObject> newObjectFor(const AcDbStub& stub, bool isUnderstood);

} // namespace corma::host
