#pragma once

// platform/ - what the operating system gives: paths, files, the environment, the program itself.
// One header for all systems, one folder of sources for each; everything above calls only these.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corma::platform {

// --- paths ---------------------------------------------------------------------------------------

#ifdef _WIN32
inline constexpr wchar_t kSeparator = L'\\';
#else
inline constexpr wchar_t kSeparator = L'/';
#endif

/// Both separators are separators in every input.
constexpr bool isSeparator(wchar_t c)
{
    return c == L'/' || c == L'\\';
}

/// The path with the platform's own separators.
std::wstring nativeSeparators(std::wstring_view path);

/// True for a path that no folder needs to be put before: with a drive, or from the root.
bool isAbsolute(std::wstring_view path);

/// The pieces of a path; put one behind the other they are the path.
struct PathParts
{
    std::wstring drive; // "C:", or empty
    std::wstring folder; // with its last separator
    std::wstring base; // file name without extension
    std::wstring extension; // with its dot, or empty

    [[nodiscard]] std::wstring folderPath() const { return drive + folder; }

    [[nodiscard]] std::wstring fileName() const { return base + extension; }
};

PathParts splitPath(std::wstring_view path);

/// Name behind folder, with one separator between; an absolute name stands for itself.
std::wstring joinPath(std::wstring_view folder, std::wstring_view name);

/// The absolute path without "." and ".." steps, worked out from the text alone.
std::wstring fullPath(std::wstring_view path);

/// The path in the form that the system's calls take.
using NativePath = std::string;

NativePath toNative(std::wstring_view path);

/// Text from the system, such as a path or an argument. Bytes that are no text survive the way back
/// through toNative().
std::wstring fromNative(std::string_view text);

/// The file or folder that a path means: the exact name where there is one, else the name that
/// differs only in case, component by component; the exact name again where there is none.
NativePath locate(std::wstring_view path);

// --- files ---------------------------------------------------------------------------------------

/// What tells one state of a file from another.
struct FileStamp
{
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    std::uint64_t size = 0; // bytes
    std::int64_t modified = 0; // ns since 1970
    std::int64_t changed = 0; // ns since 1970, of content or attributes

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of a regular file; nothing for anything else and for what cannot be looked at.
std::optional<FileStamp> fileStamp(const NativePath& path);

/// The same for a folder; it changes when a name comes or goes in it.
std::optional<FileStamp> folderStamp(const NativePath& path);

/// True when a file changed so shortly before `now` that a further change could bear the same
/// stamp, because file times move in steps.
bool couldHideAChange(const FileStamp& stamp, std::int64_t now);

/// Now, by the clock that stamps files, in ns since 1970.
std::int64_t fileClock();

/// A moment as the clocks of this place show it.
struct LocalTime
{
    int year = 0;
    int month = 1; // from 1 on
    int day = 1; // from 1 on
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const LocalTime&) const = default;
};

/// The local time of a moment in ns since 1970, as a FileStamp has it.
LocalTime localTime(std::int64_t moment);

/// True when there is a file, folder or device of that name, in any case of its letters.
bool exists(std::wstring_view path);

/// True when there is a regular file that can be opened for reading.
bool isReadable(std::wstring_view path);

/// Makes an empty file unless there is one of that name, which stays as it is. True when there is
/// then a file that can be read.
[[nodiscard]] bool ensureFile(std::wstring_view path);

/// A whole file in memory.
struct FileContent
{
    std::unique_ptr<char[]> bytes; // kPadding zero bytes stand behind the last one
    std::size_t size = 0;
    FileStamp stamp; // of the file as it was before the reading began

    static constexpr std::size_t kPadding = 16;

    [[nodiscard]] std::string_view view() const { return {bytes.get(), size}; }
};

/// Reads a regular file. Nothing when it cannot be opened or read, or is no regular file.
std::optional<FileContent> readFile(const NativePath& path);

/// Why a call for a file failed.
struct FileError
{
    enum class Cause // the numbers are told to users
    {
        none = 0,
        other = 1,
        notFound = 2, // its folder is there
        badPath = 3, // so is no folder
        tooManyOpen = 4,
        denied = 5, // also for what is no file, such as a folder
        hardware = 10,
        inUse = 11, // another process kept it for too long
        diskFull = 13
    };

    Cause cause = Cause::none;
    int number = 0; // of the operating system

    [[nodiscard]] bool isOne() const { return cause != Cause::none; }

    /// What the operating system says of it, in English.
    [[nodiscard]] std::wstring text() const;
};

/// Why a file cannot be read; none for one that can.
FileError readingError(std::wstring_view path);

/// Puts new content in the place of a file, or makes the file: through a temporary file beside it
/// that is flushed to disk and then takes its name in one step. A link stays a link; mode bits
/// stay, and so does the owner where the system allows it. False when that fails, when the path is
/// that of a folder, a device or a pipe, and when the file may not be written; what was there is
/// then untouched and nothing is left behind.
[[nodiscard]] bool replaceFile(std::wstring_view path, std::string_view bytes);

/// The same for content that comes in pieces. What was not committed goes away with the object.
class FileReplacement
{
public:
    explicit FileReplacement(std::wstring_view path);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement();

    /// Puts bytes behind those before. Small ones are gathered. False once something failed.
    bool write(std::string_view bytes);

    /// The file takes its place; nothing can be written any more. False, and what was there is
    /// untouched, when anything failed since the beginning.
    [[nodiscard]] bool commit();

    /// Why it failed.
    [[nodiscard]] FileError error() const;

private:
    class Target;
    std::unique_ptr<Target> m_target;
};

/// One change of a whole file, safe from other changes meanwhile: from the beginning to the end of
/// the object no other process, and no other object of this one, can begin to change a file in the
/// folder of the file or in that of the temporary one. The lock is the kernel's, so nothing of it
/// outlives a process. Where a folder cannot be locked, the change is made without.
///
/// What was there stays whole until the new content is on disk and takes its name in one step. A
/// link stays a link; mode bits stay, and so does the owner where the system allows it.
class FileRewrite
{
public:
    enum class Missing
    {
        isFailure,
        isEmpty // a file that is not there is made
    };

    /// Reads the file, which must be one that may be written. The new content will be gathered in
    /// the temporary file, in whatever folder; what else bears its name goes away.
    FileRewrite(std::wstring_view path, std::wstring_view temporary, Missing missing);
    FileRewrite(const FileRewrite&) = delete;
    FileRewrite& operator=(const FileRewrite&) = delete;
    ~FileRewrite();

    /// What has failed. Nothing is done from then on.
    [[nodiscard]] FileError error() const;

    [[nodiscard]] bool isThere() const; ///< the file was there and could be opened
    [[nodiscard]] std::string_view content() const; ///< good for the life of the object

    /// Writes the new content to the temporary file and flushes it to disk.
    bool write(std::span<const std::string_view> pieces);

    /// Gives what the file holds another name in its folder, which it takes from whatever has it.
    bool keepAs(std::wstring_view backup);

    /// The new content takes the place of the file. Only this changes the file. Where that cannot
    /// be done in one step from the temporary file, since it is on another file system, it is done
    /// through a copy beside the file.
    [[nodiscard]] bool commit();

private:
    class Target;
    std::unique_ptr<Target> m_target;
};

// --- environment ---------------------------------------------------------------------------------

std::optional<std::wstring> environmentVariable(std::wstring_view name);

/// The current folder, without a separator at its end.
std::wstring currentFolder();

/// Makes a folder the current one. False, and it stays as it was, when that fails.
[[nodiscard]] bool setCurrentFolder(std::wstring_view path);

/// The folder for temporary files, without a separator at its end.
std::wstring temporaryFolder();

/// Full path of the running program; empty when the system does not tell.
std::wstring programFile();

/// Full path of a loaded library of that file name; nothing when none is loaded.
std::optional<std::wstring> loadedLibrary(std::wstring_view name);

/// A text of the version block of a module file, which need not be loaded: "FileDescription",
/// "FileVersion" or "LegalCopyright", to the letter. Nothing when it has none, when the file has no
/// such block, and for what is no module. Only the parts of the file are read that tell it. How a
/// module gets the block: corma/version_note.h.
std::optional<std::wstring> versionText(std::wstring_view moduleFile, std::string_view key);

using LibraryFunction = void (*)();

/// The function that a library of that file name exports under exactly this symbol; the caller
/// gives it the type that it knows it to have. Null when the process has not loaded the library,
/// which is never done here, and when it has no such symbol itself. A "name.dll" is also looked for
/// as the systems here call it: "name.so" and "libname.so".
LibraryFunction loadedFunction(std::wstring_view library, const char* symbol);

/// Writes text for programmers to where the system keeps that, as it stands. Where it has no such
/// place, as here, the text goes to standard error, but only when CORMA_DEBUG is set and not empty.
void debugOutput(std::wstring_view text);

/// False when debugOutput() would write nowhere; so a caller can spare itself the making of text.
bool hasDebugOutput();

/// Tells whether a window can be shown. A program asks before it makes its first object of Qt,
/// which ends the process where there is no display, and keeps the object until it has made that: a
/// server may start anew when its last client leaves, and would then refuse the next one. The
/// variables count that Qt goes by: QT_QPA_PLATFORM, where anything but xcb and wayland needs no
/// display, DISPLAY and WAYLAND_DISPLAY. A display that does not answer within some seconds cannot
/// be reached. Nothing stays behind in the process.
class DisplayProbe
{
public:
    DisplayProbe();
    DisplayProbe(const DisplayProbe&) = delete;
    DisplayProbe& operator=(const DisplayProbe&) = delete;
    ~DisplayProbe();

    /// Why no window can be shown, in English and without a full stop; nothing when one can.
    [[nodiscard]] const std::optional<std::wstring>& problem() const { return m_problem; }

private:
    class Client;
    std::unique_ptr<Client> m_client; // of the X server
    std::optional<std::wstring> m_problem;
};

/// For the life of the object narrow text in this thread is UTF-8 to other libraries, whatever the
/// locale of the program. Where the system has no locale for that, nothing changes.
class Utf8Locale
{
public:
    Utf8Locale();
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
    ~Utf8Locale();

private:
    class Scope;
    std::unique_ptr<Scope> m_scope; // null where nothing changed
};

} // namespace corma::platform
