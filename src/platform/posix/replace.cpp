// Files that take the place of others: whole, and in one step.

#include "platform/platform.h"
#include "platform/posix/FolderLock.h"
#include "platform/posix/TemporaryFile.h"
#include "platform/posix/file_error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corma::platform {

namespace {

constexpr std::size_t kMostGathered = 0x10000;

// The belongings for a file in the place of the target. Nothing for a target that must not be
// replaced: a folder, a device or a pipe, and a file that may not be written, although its folder
// would allow to put another in its place.
std::optional<Belongings> belongingsFor(const std::filesystem::path& target, FileError& error)
{
    struct stat status = {};
    if (::stat(target.c_str(), &status) != 0) {
        return Belongings::ofNewFile();
    }
    if (!S_ISREG(status.st_mode)) {
        error = errorOf(EISDIR);
        return std::nullopt;
    }
    if (::access(target.c_str(), W_OK) != 0) {
        error = lastError(target);
        return std::nullopt;
    }
    return Belongings::of(status);
}

// Where a file is, or is to be made: its folder may be known in another case of its letters.
std::filesystem::path placeOf(std::wstring_view path)
{
    NativePath found = locate(path);
    struct stat status = {};
    if (::lstat(found.c_str(), &status) == 0) {
        return found;
    }
    const PathParts parts = splitPath(path);
    return std::filesystem::path(locate(parts.folderPath())) / toNative(parts.fileName());
}

// The same for a file that is made anew whatever is there, so that nothing is looked for.
std::filesystem::path placeOfNew(std::wstring_view path)
{
    const PathParts parts = splitPath(path);
    return std::filesystem::path(locate(parts.folderPath())) / toNative(parts.fileName());
}

// Puts pieces together, so that small ones do not cost a call each.
class Gatherer
{
public:
    bool write(std::string_view bytes, TemporaryFile& file)
    {
        if (m_gathered.size() + bytes.size() > kMostGathered && !flush(file)) {
            return false;
        }
        if (bytes.size() >= kMostGathered) {
            return file.write(bytes);
        }
        m_gathered += bytes;
        return !file.error().isOne();
    }

    bool flush(TemporaryFile& file)
    {
        const bool isWritten = file.write(m_gathered);
        m_gathered.clear();
        return isWritten;
    }

private:
    std::string m_gathered;
};

} // namespace

class FileReplacement::Target
{
public:
    explicit Target(std::wstring_view path)
        : m_path(behindLinks(locate(path)))
        , m_error(m_path ? FileError {} : errorOf(ELOOP))
    {
        const auto belongings = m_path ? belongingsFor(*m_path, m_error) : std::nullopt;
        if (belongings) {
            m_belongings = *belongings;
            m_file.emplace(TemporaryFile::beside(*m_path));
            m_file->take(m_belongings);
        }
    }

    bool write(std::string_view bytes) { return m_file && m_pieces.write(bytes, *m_file); }

    bool commit()
    {
        if (!m_file) {
            return false;
        }
        const bool isDone = m_pieces.flush(*m_file) && m_file->flush()
            && m_file->takeNameOf(*m_path, m_belongings);
        if (isDone) {
            flushFolder(folderOf(*m_path));
        }
        m_error = m_file->error();
        m_file.reset(); // there is no file any more to write to
        return isDone;
    }

    [[nodiscard]] FileError error() const { return m_file ? m_file->error() : m_error; }

private:
    std::optional<std::filesystem::path> m_path;
    FileError m_error;
    Belongings m_belongings;
    std::optional<TemporaryFile> m_file;
    Gatherer m_pieces;
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

FileError FileReplacement::error() const
{
    return m_target->error();
}

bool replaceFile(std::wstring_view path, std::string_view bytes)
{
    FileReplacement file(path);
    return file.write(bytes) && file.commit();
}

class FileRewrite::Target
{
public:
    Target(std::wstring_view path, std::wstring_view temporary, Missing missing)
        : m_path(behindLinks(placeOf(path)))
        , m_temporary(placeOfNew(temporary))
    {
        if (!m_path) {
            m_error = errorOf(ELOOP);
            return;
        }
        m_lock.emplace(folderOf(*m_path), folderOf(m_temporary));
        if (!m_lock->isTaken()) {
            m_error = errorOf(EWOULDBLOCK);
            return;
        }
        open(missing);
    }

    [[nodiscard]] const FileError& error() const { return m_error; }

    [[nodiscard]] bool isThere() const { return m_isThere; }

    [[nodiscard]] std::string_view content() const
    {
        return m_isThere ? m_content.view() : std::string_view();
    }

    bool write(std::span<const std::string_view> pieces)
    {
        if (m_error.isOne()) {
            return false;
        }
        m_file.emplace(TemporaryFile::named(m_temporary));
        m_file->take(m_belongings);
        Gatherer gatherer;
        for (const std::string_view piece : pieces) {
            gatherer.write(piece, *m_file);
        }
        gatherer.flush(*m_file);
        m_file->flush();
        return noteOf(*m_file);
    }

    bool keepAs(std::wstring_view backup)
    {
        if (m_error.isOne() || !m_isThere) {
            return false;
        }
        const std::filesystem::path path = placeOf(backup);
        return keepByLink(path) || keepByCopy(path);
    }

    bool commit()
    {
        if (m_error.isOne() || !m_file) {
            return false;
        }
        if (m_file->takeNameOf(*m_path, m_belongings)) {
            flushFolder(folderOf(*m_path), m_lock->folder());
        }
        return noteOf(*m_file);
    }

private:
    bool noteOf(const TemporaryFile& file)
    {
        m_error = file.error();
        if (m_error.isOne()) {
            m_file.reset();
        }
        return !m_error.isOne();
    }

    // Opened for writing, although nothing is written through it: only that tells whether the file
    // may be written. A pipe or device is not waited for.
    void open(Missing missing)
    {
        const Descriptor file(
            calls::open(SystemCall::openTarget, m_path->native(), O_RDWR | O_NONBLOCK));
        if (file.isOpen()) {
            read(file.get());
            return;
        }
        m_error = lastError(*m_path);
        if (m_error.cause == FileError::Cause::notFound && missing == Missing::isEmpty) {
            m_error = {};
            m_belongings = Belongings::ofNewFile();
            keepApart();
        }
    }

    void read(int file)
    {
        struct stat status = {};
        if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
            m_error = errorOf(EISDIR);
            return;
        }
        const auto size = static_cast<std::size_t>(status.st_size);
        m_content.bytes = std::make_unique_for_overwrite<char[]>(size + FileContent::kPadding);
        const ssize_t got = readUpTo(file, m_content.bytes.get(), size);
        if (got < 0) {
            m_error = lastError(*m_path);
            return;
        }
        m_content.size = static_cast<std::size_t>(got);
        std::fill_n(m_content.bytes.get() + got, FileContent::kPadding, '\0');
        m_belongings = Belongings::of(status);
        m_isThere = true;
        keepApart();
    }

    // The file itself may bear the name of the temporary one.
    void keepApart()
    {
        std::error_code failed;
        if (m_path->filename() == m_temporary.filename()
            && std::filesystem::equivalent(folderOf(*m_path), folderOf(m_temporary), failed)) {
            m_temporary += ".new";
        }
    }

    // The file keeps its identity under the other name, as if it had been renamed.
    bool keepByLink(const std::filesystem::path& backup)
    {
        const std::string between = backup.native() + ".new";
        calls::remove(between);
        if (calls::link(m_path->native(), between) != 0) {
            return false;
        }
        if (calls::rename(between, backup.native()) == 0) {
            // Of two names of one file, rename leaves both.
            calls::remove(between);
            return true;
        }
        calls::remove(between);
        return false;
    }

    bool keepByCopy(const std::filesystem::path& backup)
    {
        TemporaryFile copy = TemporaryFile::beside(backup);
        return copy.take(m_belongings) && copy.write(content()) && copy.flush()
            && copy.takeNameOf(backup, m_belongings);
    }

    std::optional<std::filesystem::path> m_path;
    std::filesystem::path m_temporary;
    std::optional<FolderLock> m_lock;
    FileContent m_content;
    Belongings m_belongings;
    std::optional<TemporaryFile> m_file;
    FileError m_error;
    bool m_isThere = false;
};

FileRewrite::FileRewrite(std::wstring_view path, std::wstring_view temporary, Missing missing)
    : m_target(std::make_unique<Target>(path, temporary, missing))
{
}

FileRewrite::~FileRewrite() = default;

FileError FileRewrite::error() const
{
    return m_target->error();
}

bool FileRewrite::isThere() const
{
    return m_target->isThere();
}

std::string_view FileRewrite::content() const
{
    return m_target->content();
}

bool FileRewrite::write(std::span<const std::string_view> pieces)
{
    return m_target->write(pieces);
}

bool FileRewrite::keepAs(std::wstring_view backup)
{
    return m_target->keepAs(backup);
}

bool FileRewrite::commit()
{
    return m_target->commit();
}

} // namespace corma::platform
