#include "fuzz_support.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace corma::fuzzing {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

SilentServices::SilentServices()
    : m_former(setServices(this))
{
}

SilentServices::~SilentServices()
{
    setServices(m_former);
}

void SilentServices::print(const wchar_t* /*text*/) { }

void SilentServices::alert(const wchar_t* /*text*/) { }

const wchar_t* SilentServices::moduleFile()
{
    return L"";
}

const wchar_t* SilentServices::environment(const wchar_t* name)
{
    return std::wstring_view(name) == L"FILE" ? L"b.ini" : nullptr;
}

MemoryFolder::MemoryFolder()
{
    const std::filesystem::path memory = "/dev/shm";
    const auto parent
        = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    m_path = (parent / "corma_fuzz.XXXXXX").native();
    require(::mkdtemp(m_path.data()) != nullptr);
}

MemoryFolder::~MemoryFolder()
{
    std::error_code failed;
    std::filesystem::remove_all(m_path, failed);
}

std::string MemoryFolder::path(std::string_view name) const
{
    return m_path + "/" + std::string(name);
}

void MemoryFolder::write(std::string_view name, std::string_view bytes) const
{
    const std::filesystem::path target = path(name);
    std::filesystem::create_directories(target.parent_path());
    std::ofstream out(target, std::ios::binary);
    out << bytes;
    require(!out.flush().fail());
}

void MemoryFolder::remove(std::string_view name) const
{
    std::filesystem::remove_all(path(name));
}

} // namespace corma::fuzzing
