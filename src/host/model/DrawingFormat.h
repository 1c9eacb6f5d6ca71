#pragma once

#include "host/error_status.h"
#include "host/model/Group.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class AcDbStub;

namespace corma::platform {
struct FileContent;
}

namespace corma::host {

class Store;

/// Versions of drawings by the number behind "AC" in $ACADVER.
enum class DrawingVersion : short
{
    unknown = 0,
    r10 = 1006,
    r12 = 1009,
    r13 = 1012,
    r14 = 1014,
    r2000 = 1015,
    r2004 = 1018,
    r2007 = 1021,
    r2010 = 1024,
    r2013 = 1027,
    r2018 = 1032
};

/// What has to be the same where a record is taken over as the bits that it is.
struct BitsForm
{
    DrawingVersion version = DrawingVersion::unknown;
    int codePage = 0; // of its texts, where they are not Unicode

    bool operator==(const BitsForm&) const = default;
};

/// How the writing of a drawing went.
struct WriteResult
{
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring message {}; // why it failed, where the status does not say enough
};

/// How a drawing stands in its file. A format keeps the bytes of the file that it read; a record
/// is decoded from them when it is asked for.
class DrawingFormat
{
public:
    DrawingFormat() = default;
    DrawingFormat(const DrawingFormat&) = delete;
    DrawingFormat& operator=(const DrawingFormat&) = delete;
    virtual ~DrawingFormat() = default;

    /// The groups of a record as it stands in the file. Never fails: what cannot be understood in a
    /// group comes as an empty value that keeps its bytes.
    [[nodiscard]] Groups decode(const AcDbStub& stub) const
    {
        Groups groups;
        decode(stub, groups);
        return groups;
    }

    /// The same in the place of what `groups` has, whose memory is used again.
    virtual void decode(const AcDbStub& stub, Groups& groups) const = 0;

    /// Where the bits of records that are not understood mean what they mean here; nothing for a
    /// format without such records.
    [[nodiscard]] virtual std::optional<BitsForm> bitsForm() const { return std::nullopt; }

    /// Writes the drawing in this format, in one step: the file is the old or the new one. Records
    /// that were not changed are written as the bytes that they were.
    [[nodiscard]] virtual WriteResult write(const Store& store, const std::wstring& path) const = 0;
};

} // namespace corma::host
