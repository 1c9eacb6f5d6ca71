#include "platform/platform.h"
#include "platform/posix/file_error.h"
#include "platform/posix/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corma::platform {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time)
{
    return static_cast<std::int64_t>(time.tv_sec) * kSecond + time.tv_nsec;
}

FileStamp stampOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

std::optional<FileStamp> stampOfKind(const NativePath& path, mode_t kind)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || (status.st_mode & S_IFMT) != kind) {
        return std::nullopt;
    }
    return stampOf(status);
}

// The bytes of an open file. A file that grows meanwhile is read as far as its size was at the
// start: its stamp differs at the next look, and it is read again then.
std::optional<FileContent> readOpen(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    FileContent content;
    content.stamp = stampOf(status);
    const std::size_t size = content.stamp.size;
    content.bytes = std::make_unique_for_overwrite<char[]>(size + FileContent::kPadding);
    const ssize_t got = readUpTo(descriptor, content.bytes.get(), size);
    if (got < 0) {
        return std::nullopt;
    }
    content.size = static_cast<std::size_t>(got);
    std::fill_n(content.bytes.get() + content.size, FileContent::kPadding, '\0');
    return content;
}

} // namespace

std::optional<FileStamp> fileStamp(const NativePath& path)
{
    return stampOfKind(path, S_IFREG);
}

std::optional<FileStamp> folderStamp(const NativePath& path)
{
    return stampOfKind(path, S_IFDIR);
}

bool couldHideAChange(const FileStamp& stamp, std::int64_t now)
{
    // The kernel stamps in steps of at most 10 ms. Whole seconds come from file systems that know
    // no finer time; the coarsest of them counts in steps of 2 s.
    const bool isCoarse = stamp.changed % kSecond == 0;
    const std::int64_t step = isCoarse ? 2 * kSecond : kSecond / 100;
    return now - stamp.changed < 2 * step;
}

std::int64_t fileClock()
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now);
}

LocalTime localTime(std::int64_t moment)
{
    const std::int64_t past = moment % kSecond < 0 ? 1 : 0; // seconds before 1970 begin earlier
    const auto seconds = static_cast<std::time_t>(moment / kSecond - past);
    std::tm fields = {};
    ::tzset(); // localtime_r() need not look at TZ
    if (::localtime_r(&seconds, &fields) == nullptr) {
        return {};
    }
    constexpr int kFirstYear = 1900;
    return {fields.tm_year + kFirstYear,
            fields.tm_mon + 1,
            fields.tm_mday,
            fields.tm_hour,
            fields.tm_min,
            fields.tm_sec};
}

bool exists(std::wstring_view path)
{
    struct stat status = {};
    const NativePath exact = toNative(nativeSeparators(path)); // most often it is this, at one call
    return ::stat(exact.c_str(), &status) == 0 || ::stat(locate(path).c_str(), &status) == 0;
}

namespace {

// A device or pipe is opened without waiting for it, only to be refused.
bool opensFile(std::wstring_view path, int flags)
{
    constexpr mode_t kAnyone = 0666; // less what the process masks
    const Descriptor file(
        ::open(locate(path).c_str(), flags | O_RDONLY | O_CLOEXEC | O_NONBLOCK, kAnyone));
    struct stat status = {};
    return file.isOpen() && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

bool isReadable(std::wstring_view path)
{
    return opensFile(path, 0);
}

bool ensureFile(std::wstring_view path)
{
    return opensFile(path, O_CREAT);
}

FileError readingError(std::wstring_view path)
{
    const NativePath native = locate(path);
    const Descriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) {
        return lastError(native);
    }
    return S_ISREG(status.st_mode) ? FileError {} : errorOf(EISDIR);
}

std::optional<FileContent> readFile(const NativePath& path)
{
    // Opening alone can do harm where the path is a device's, so it is looked at before.
    if (!fileStamp(path)) {
        return std::nullopt;
    }
    // Not blocking: what has become a pipe meanwhile is refused and not waited for.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    return file.isOpen() ? readOpen(file.get()) : std::nullopt;
}

} // namespace corma::platform
