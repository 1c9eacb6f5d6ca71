#include "platform/posix/file_error.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace corma::platform {

namespace {

struct Meaning
{
    int number;
    FileError::Cause cause;
};

using Cause = FileError::Cause;

constexpr std::array kMeanings = {
    Meaning {ENOENT, Cause::notFound},    Meaning {ENOTDIR, Cause::badPath},
    Meaning {ELOOP, Cause::badPath},      Meaning {ENAMETOOLONG, Cause::badPath},
    Meaning {EMFILE, Cause::tooManyOpen}, Meaning {ENFILE, Cause::tooManyOpen},
    Meaning {EACCES, Cause::denied},      Meaning {EPERM, Cause::denied},
    Meaning {EROFS, Cause::denied},       Meaning {EISDIR, Cause::denied},
    Meaning {ETXTBSY, Cause::denied},     Meaning {ENXIO, Cause::denied},
    Meaning {EIO, Cause::hardware},       Meaning {EWOULDBLOCK, Cause::inUse},
    Meaning {ENOSPC, Cause::diskFull},    Meaning {EDQUOT, Cause::diskFull},
    Meaning {EFBIG, Cause::diskFull},
};

} // namespace

FileError errorOf(int number)
{
    for (const Meaning& meaning : kMeanings) {
        if (meaning.number == number) {
            return {meaning.cause, number};
        }
    }
    return {Cause::other, number};
}

FileError lastError(const std::filesystem::path& path)
{
    FileError error = errorOf(errno);
    std::error_code failed;
    if (error.cause == Cause::notFound && path.has_parent_path()
        && !std::filesystem::is_directory(path.parent_path(), failed)) {
        error.cause = Cause::badPath;
    }
    return error;
}

std::wstring FileError::text() const
{
    return fromNative(std::generic_category().message(number));
}

} // namespace corma::platform
