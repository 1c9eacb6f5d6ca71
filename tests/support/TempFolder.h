#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corma::testing {

/// A folder of the test's own that goes away with the object.
class TempFolder
{
public:
    TempFolder();

    /// In a folder other than that for temporary files.
    explicit TempFolder(const std::string& parent);
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    /// Full path, without a separator at its end.
    const std::wstring& path() const { return m_path; }

    /// Full path of a name in it; the name may have folders.
    std::wstring path(std::wstring_view name) const;

    /// Writes a file, with the folders it needs, in place of what was there. Returns its path.
    std::wstring write(std::wstring_view name, std::string_view bytes) const;

    /// The same through a new file that is renamed over the old one.
    std::wstring replace(std::wstring_view name, std::string_view bytes) const;

    /// Makes a folder. Returns its path.
    std::wstring makeFolder(std::wstring_view name) const;

    std::string read(std::wstring_view name) const;
    bool has(std::wstring_view name) const;
    void remove(std::wstring_view name) const;

    /// What is in it, in order, a blank between the names.
    [[nodiscard]] std::string names() const;

    /// A text in UTF-8 with "~" in the place of the path.
    [[nodiscard]] std::string homely(std::wstring_view text) const;

private:
    std::wstring m_path;
};

/// The folder of a file system in memory that anyone may write; empty where there is none.
std::string memoryFolder();

/// Makes a folder the current one for the life of the object.
class CurrentFolder
{
public:
    explicit CurrentFolder(const std::wstring& path);
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder();

private:
    std::string m_former;
};

/// For the life of the object a file that grows beyond a size finds the disk full.
class FullDisk
{
public:
    explicit FullDisk(std::size_t mostBytes);
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk();

private:
    unsigned long m_formerLimit;
    void (*m_formerHandler)(int);
};

/// Waits until what was written last can be told from a later change by its time.
void letFilesSettle();

} // namespace corma::testing
