#pragma once

// host/dwg/ - how a drawing stands in a DWG file. From the outside in: the container of a release
// (sections, pages, compression), the object map, the frame that every record has, and the fields
// of the types that the library works on. What is not understood stays the bits that it was.

#include "host/drawing_files.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Group.h"
#include "platform/platform.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corma::host::dwg {

/// What a file holds, taken out of its container. All of it belongs to the container.
struct Parts
{
    DrawingVersion version = DrawingVersion::unknown;
    int maintenance = 0; // the number of the maintenance release that wrote the file
    int codePage = 0; // its number in the head of the file

    // From the begin of the sentinel ahead to the end of the one behind.
    std::string_view header; // the header variables
    std::string_view classes;

    std::string_view map; // where each object stands, from the first piece to the empty last one
    std::string_view objects; // what the places in the map count in: up to R2000 the whole file
};

/// A record with its length ahead and its checksum behind, or bytes that stand between two records
/// and belong to none; those have no handle.
struct ObjectBytes
{
    Handle handle = Handle::none;
    std::string_view bytes;
};

/// What a file gets in place of what it had.
struct NewParts
{
    std::string_view header; // with sentinels, as in Parts; empty: what it was
    std::string_view classes;
    std::vector<ObjectBytes> objects; // all of them, in the order of the file
    Handle seed = Handle::none; // the first handle that was never used
};

using TakeBytes = std::function<bool(std::string_view)>;

/// The file around the parts. It keeps the bytes of the file that it was read from, and all that
/// it does not know goes into a new one as it is.
class Container
{
public:
    Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    virtual ~Container() = default;

    [[nodiscard]] virtual const Parts& parts() const = 0;

    /// The whole file, as it was read; empty for a new one.
    [[nodiscard]] virtual std::string_view bytes() const = 0;

    /// eOk when this release can be written here.
    [[nodiscard]] virtual Acad::ErrorStatus canWrite() const { return Acad::eOk; }

    /// Hands the bytes of a file with these parts over, piece by piece in order. False as soon as
    /// `take` says so.
    [[nodiscard]] virtual bool write(const NewParts& parts, const TakeBytes& take) const = 0;
};

using ContainerOrTrouble = std::variant<std::unique_ptr<Container>, ReadResult>;

/// Takes a file apart: R13 to R2018. Of a file that is damaged or older the trouble says what is
/// wrong and at which byte; `path` is for the message only. What it needs of memory is bounded by
/// a small multiple of the file's size, whatever the file says.
ContainerOrTrouble readContainer(platform::FileContent content, const std::wstring& path);

/// A file without any parts yet, for a drawing that was in none. Null for a release that cannot be
/// written here; R2000, R2004, R2010, R2013 and R2018 can.
std::unique_ptr<Container> newContainer(DrawingVersion version, int codePage);

// --- by release; called by the two above
// ----------------------------------------------------------

ContainerOrTrouble readFlatContainer(platform::FileContent content, const std::wstring& path);
std::unique_ptr<Container> newFlatContainer(int codePage); // R2000

ContainerOrTrouble readPagedContainer(platform::FileContent content, const std::wstring& path);
std::unique_ptr<Container> newPagedContainer(DrawingVersion version, int codePage);

ContainerOrTrouble readR2007Container(platform::FileContent content, const std::wstring& path);

} // namespace corma::host::dwg
