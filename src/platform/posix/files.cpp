#include "platform/platform.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace corma::platform {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    [[nodiscard]] int get() const { return m_descriptor; }

    bool close()
    {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

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

// Reads until `size` bytes are there or the file ends; the count, or nothing on an error.
std::optional<std::size_t> readUpTo(int descriptor, char* bytes, std::size_t size)
{
    std::size_t got = 0;
    while (got < size) {
        const ssize_t count = ::read(descriptor, bytes + got, size - got);
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        got += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return got;
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
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
    const auto got = readUpTo(descriptor, content.bytes.get(), size);
    if (!got) {
        return std::nullopt;
    }
    content.size = *got;
    std::fill_n(content.bytes.get() + content.size, FileContent::kPadding, '\0');
    return content;
}

void flushFolder(const std::filesystem::path& folder)
{
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen()) {
        ::fsync(opened.get());
    }
}

// What a file that takes the place of another takes over from it.
struct Belongings
{
    mode_t mode = 0;
    uid_t owner = kAsItIs;
    gid_t group = kAsItIs;

    static constexpr auto kAsItIs = static_cast<uid_t>(-1); // what the folder gives to a new file
};

// A temporary file that goes away unless it was renamed.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::filesystem::path& target)
        : m_path(target.native() + ".XXXXXX")
        , m_descriptor(::mkostemp(m_path.data(), O_CLOEXEC))
        , m_isThere(m_descriptor.isOpen())
    {
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    ~TemporaryFile()
    {
        if (m_isThere) {
            ::unlink(m_path.c_str());
        }
    }

    // Only root can give a file to another owner; for anyone else the file is their own from now
    // on.
    bool take(const Belongings& belongings)
    {
        const int file = m_descriptor.get();
        const bool isGiven = ::fchown(file, belongings.owner, belongings.group) == 0;
        const mode_t asOwner = belongings.mode & 0777;
        return m_isThere && ::fchmod(file, isGiven ? belongings.mode : asOwner) == 0;
    }

    bool write(std::string_view bytes) { return writeAll(m_descriptor.get(), bytes); }

    bool takeNameOf(const std::filesystem::path& target)
    {
        if (::fsync(m_descriptor.get()) != 0 || !m_descriptor.close()
            || ::rename(m_path.c_str(), target.c_str()) != 0) {
            return false;
        }
        m_isThere = false;
        return true;
    }

private:
    std::string m_path;
    Descriptor m_descriptor;
    bool m_isThere;
};

// The file that a link means, so that the link itself stays; it need not be there. Nothing for
// links that go in a circle.
std::optional<std::filesystem::path> behindLinks(std::filesystem::path path)
{
    constexpr int kMostLinks = 40; // as the kernel follows
    std::error_code failed;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!std::filesystem::is_symlink(path, failed)) {
            return path;
        }
        path = path.parent_path() / std::filesystem::read_symlink(path, failed);
    }
    return std::nullopt;
}

mode_t modeOfNewFile()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// Nothing for a target that must not be replaced: a folder, a device or a pipe, and a file that may
// not be written, although its folder would allow to put another in its place.
std::optional<Belongings> belongingsOf(const std::filesystem::path& target)
{
    struct stat status = {};
    if (::stat(target.c_str(), &status) != 0) {
        return Belongings {modeOfNewFile()};
    }
    if (!S_ISREG(status.st_mode) || ::access(target.c_str(), W_OK) != 0) {
        return std::nullopt;
    }
    return Belongings {status.st_mode & 07777, status.st_uid, status.st_gid};
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

class FileReplacement::Target
{
public:
    explicit Target(std::wstring_view path)
        : m_path(behindLinks(locate(path)))
    {
        const auto belongings = m_path ? belongingsOf(*m_path) : std::nullopt;
        if (belongings) {
            m_file.emplace(*m_path);
            m_hasFailed = !note(m_file->take(*belongings));
        }
    }

    bool write(std::string_view bytes)
    {
        constexpr std::size_t kMostGathered = 0x10000;
        if (m_gathered.size() + bytes.size() > kMostGathered) {
            flush();
        }
        if (bytes.size() < kMostGathered) {
            m_gathered += bytes;
        } else if (!m_hasFailed) {
            m_hasFailed = !note(m_file->write(bytes));
        }
        return !m_hasFailed;
    }

    bool commit()
    {
        flush();
        if (!m_hasFailed) {
            m_hasFailed = !note(m_file->takeNameOf(*m_path));
        }
        m_file.reset();
        if (m_hasFailed) {
            return false;
        }
        m_hasFailed = true; // there is no file any more to write to
        flushFolder(m_path->has_parent_path() ? m_path->parent_path() : ".");
        return true;
    }

    [[nodiscard]] bool wasDiskFull() const { return m_wasDiskFull; }

private:
    void flush()
    {
        if (!m_hasFailed && !m_gathered.empty()) {
            m_hasFailed = !note(m_file->write(m_gathered));
        }
        m_gathered.clear();
    }

    // Of a failure the reason that can be told from the others.
    bool note(bool isDone)
    {
        m_wasDiskFull = !isDone && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG);
        return isDone;
    }

    std::optional<std::filesystem::path> m_path;
    std::optional<TemporaryFile> m_file;
    std::string m_gathered;
    bool m_hasFailed = true;
    bool m_wasDiskFull = false;
};

FileReplacement::FileReplacement(std::wstring_view path)
    : m_target(std::make_unique<Target>(path))
{
}

FileReplacement::~FileReplacement() = default;

bool FileReplacement::write(std::string_view bytes)
{
    return m_target->write(bytes);
}

bool FileReplacement::commit()
{
    return m_target->commit();
}

bool FileReplacement::wasDiskFull() const
{
    return m_target->wasDiskFull();
}

bool replaceFile(std::wstring_view path, std::string_view bytes)
{
    FileReplacement file(path);
    return file.write(bytes) && file.commit();
}

} // namespace corma::platform
