#pragma once

#include <memory>

class AcDbObject;
class AcDbStub;

namespace corma::host {

/// An object, without groups yet, of the class that a record is one of.
std::unique_ptr<AcDbObject> newObjectFor(const AcDbStub& stub);

} // namespace corma::host
