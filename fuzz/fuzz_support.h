#pragma once

// What the targets that read files share.

#include <corma/host.h>

#include <string>
#include <string_view>

namespace corma::fuzzing {

/// Stops the process when something does not hold; a fuzzer then keeps the input.
void require(bool holds);

/// Services that show nothing and depend on nothing of the machine. In force for as long as the
/// object lives.
class SilentServices : public Services
{
public:
    SilentServices();
    SilentServices(const SilentServices&) = delete;
    SilentServices& operator=(const SilentServices&) = delete;
    ~SilentServices() override;

    void print(const wchar_t* text) override;
    void alert(const wchar_t* text) override;
    const wchar_t* moduleFile() override;

    /// There is one variable, "FILE" with the value "b.ini".
    const wchar_t* environment(const wchar_t* name) override;

private:
    Services* m_former;
};

/// A folder of the process in memory, where the system has a place for that.
class MemoryFolder
{
public:
    MemoryFolder();
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;
    ~MemoryFolder();

    /// Full path of a name in it.
    std::string path(std::string_view name) const;

    /// Writes a file, with the folder it needs, in place of what was there.
    void write(std::string_view name, std::string_view bytes) const;

    void remove(std::string_view name) const;

private:
    std::string m_path;
};

} // namespace corma::fuzzing
