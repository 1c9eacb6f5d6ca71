#include "host/dwg/Container.h"

#include "host/dwg/release.h"

namespace corma::host::dwg {

ContainerOrTrouble readContainer(platform::FileContent content, const std::wstring& path)
{
    switch (releaseOf(content.view())) {
    case DrawingVersion::r13:
    case DrawingVersion::r14:
    case DrawingVersion::r2000:
        return readFlatContainer(std::move(content), path);
    case DrawingVersion::r2004:
    case DrawingVersion::r2010:
    case DrawingVersion::r2013:
    case DrawingVersion::r2018:
        return readPagedContainer(std::move(content), path);
    case DrawingVersion::r2007:
        return readR2007Container(std::move(content), path);
    default:
        return refusal(content.view(), path);
    }
}

std::unique_ptr<Container> newContainer(DrawingVersion version, int codePage)
{
    switch (version) {
    case DrawingVersion::r2000:
        return newFlatContainer(codePage);
    case DrawingVersion::r2004:
    case DrawingVersion::r2010:
    case DrawingVersion::r2013:
    case DrawingVersion::r2018:
        return newPagedContainer(version, codePage);
    default:
        return nullptr;
    }
}

} // namespace corma::host::dwg
