#include "platform/posix/TemporaryFile.h"

#include "platform/posix/file_error.h"

#include <array>
#include <fcntl.h>
#include <random>
#include <system_error>
#include <unistd.h>

namespace corma::platform {

namespace {

constexpr mode_t kOwnersAlone = 0600;

// A name in a shared folder may be somebody's link to another place: it is not followed.
int makeNew(const std::string& path)
{
    constexpr int kFlags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW;
    return calls::open(SystemCall::create, path, kFlags, kOwnersAlone);
}

constexpr std::size_t kCopiedAtOnce = 0x10000;

bool copyAll(int from, TemporaryFile& to)
{
    std::array<char, kCopiedAtOnce> bytes {};
    for (;;) {
        const ssize_t count = readUpTo(from, bytes.data(), bytes.size());
        if (count <= 0) {
            return count == 0;
        }
        if (!to.write({bytes.data(), static_cast<std::size_t>(count)})) {
            return true; // its own error tells
        }
    }
}

} // namespace

Belongings Belongings::ofNewFile()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return {static_cast<mode_t>(0666U & ~mask)};
}

Belongings Belongings::of(const struct ::stat& status)
{
    return {status.st_mode & 07777U, status.st_uid, status.st_gid};
}

TemporaryFile TemporaryFile::beside(const std::filesystem::path& target)
{
    constexpr int kMostTries = 100;
    std::random_device random;
    std::string path;
    int descriptor = -1;
    for (int i = 0; i < kMostTries && descriptor < 0; ++i) {
        path = target.native() + '.' + std::to_string(random());
        descriptor = makeNew(path);
        if (descriptor < 0 && errno != EEXIST) {
            break;
        }
    }
    return {std::move(path), descriptor};
}

TemporaryFile TemporaryFile::named(const std::filesystem::path& path)
{
    int descriptor = makeNew(path.native());
    if (descriptor < 0 && errno == EEXIST && calls::remove(path.native()) == 0) {
        descriptor = makeNew(path.native());
    }
    return {path.native(), descriptor};
}

TemporaryFile::TemporaryFile(std::string path, int descriptor)
    : m_path(std::move(path))
    , m_descriptor(descriptor)
    , m_isThere(m_descriptor.isOpen())
{
    note(m_isThere);
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : m_path(std::move(other.m_path))
    , m_descriptor(std::move(other.m_descriptor))
    , m_isThere(std::exchange(other.m_isThere, false))
    , m_error(other.m_error)
{
}

TemporaryFile::~TemporaryFile()
{
    m_descriptor.close();
    if (m_isThere) {
        calls::remove(m_path);
    }
}

bool TemporaryFile::note(bool isDone)
{
    if (!isDone) {
        m_error = lastError(m_path);
    }
    return isDone;
}

// Only root can give a file to another owner; for anyone else the file is their own from now on.
// A file system without modes keeps the one that it gives to every file.
bool TemporaryFile::take(const Belongings& belongings)
{
    if (m_error.isOne()) {
        return false;
    }
    const int file = m_descriptor.get();
    const bool isGiven = calls::changeOwner(file, belongings.owner, belongings.group) == 0;
    const mode_t mode = isGiven ? belongings.mode : belongings.mode & 0777U;
    if (calls::changeMode(file, mode) == 0) {
        return true;
    }
    const int error = errno;
    struct ::stat status = {};
    const bool hasMode = ::fstat(file, &status) == 0 && (status.st_mode & 07777U) == mode;
    errno = error;
    return note(hasMode);
}

bool TemporaryFile::write(std::string_view bytes)
{
    return !m_error.isOne() && note(writeAll(m_descriptor.get(), bytes));
}

bool TemporaryFile::flush()
{
    return !m_error.isOne() && note(calls::flush(m_descriptor.get()) == 0);
}

bool TemporaryFile::takeNameOf(const std::filesystem::path& target, const Belongings& belongings)
{
    if (m_error.isOne()) {
        return false;
    }
    if (takeNameInOneStep(target)) {
        return true;
    }
    return errno == EXDEV ? copyTo(target, belongings) : note(false);
}

bool TemporaryFile::takeNameInOneStep(const std::filesystem::path& target)
{
    if (calls::rename(m_path, target.native()) != 0) {
        return false;
    }
    m_isThere = false;
    m_descriptor.close();
    return true;
}

bool TemporaryFile::copyTo(const std::filesystem::path& target, const Belongings& belongings)
{
    const auto name = std::filesystem::path(m_path).filename();
    TemporaryFile copy = named(folderOf(target) / name);
    copy.take(belongings);
    const bool isRead
        = note(::lseek(m_descriptor.get(), 0, SEEK_SET) == 0 && copyAll(m_descriptor.get(), copy));
    if (isRead && copy.flush() && copy.note(copy.takeNameInOneStep(target))) {
        return true;
    }
    if (copy.error().isOne()) {
        m_error = copy.error();
    }
    return false;
}

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

std::filesystem::path folderOf(const std::filesystem::path& path)
{
    return path.has_parent_path() ? path.parent_path() : ".";
}

void flushFolder(const std::filesystem::path& folder, int opened)
{
    if (opened >= 0) {
        calls::flushFolder(opened);
        return;
    }
    const Descriptor own(
        calls::open(SystemCall::openFolder, folder.native(), O_RDONLY | O_DIRECTORY));
    if (own.isOpen()) {
        calls::flushFolder(own.get());
    }
}

} // namespace corma::platform
