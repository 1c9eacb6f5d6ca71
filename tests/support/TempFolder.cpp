#include "support/TempFolder.h"

#include "platform/platform.h"
#include "platform/text.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace corma::testing {

namespace fs = std::filesystem;

namespace {

fs::path native(std::wstring_view path)
{
    return platform::toNative(path);
}

} // namespace

TempFolder::TempFolder()
    : TempFolder(fs::temp_directory_path().native())
{
}

TempFolder::TempFolder(const std::string& parent)
{
    std::string pattern = (fs::path(parent) / "corma-test-XXXXXX").native();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    m_path = platform::fromNative(pattern);
}

TempFolder::~TempFolder()
{
    std::error_code failed;
    fs::remove_all(native(m_path), failed);
}

std::wstring TempFolder::path(std::wstring_view name) const
{
    return m_path + L'/' + std::wstring(name);
}

std::wstring TempFolder::write(std::wstring_view name, std::string_view bytes) const
{
    const std::wstring whole = path(name);
    fs::create_directories(native(whole).parent_path());
    std::ofstream(native(whole), std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return whole;
}

std::wstring TempFolder::replace(std::wstring_view name, std::string_view bytes) const
{
    const std::wstring other = write(std::wstring(name) + L".new", bytes);
    fs::rename(native(other), native(path(name)));
    return path(name);
}

std::wstring TempFolder::makeFolder(std::wstring_view name) const
{
    fs::create_directories(native(path(name)));
    return path(name);
}

std::string TempFolder::read(std::wstring_view name) const
{
    std::ifstream file(native(path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool TempFolder::has(std::wstring_view name) const
{
    return fs::exists(native(path(name)));
}

void TempFolder::remove(std::wstring_view name) const
{
    fs::remove(native(path(name)));
}

std::string memoryFolder()
{
    constexpr const char* kFolder = "/dev/shm";
    return ::access(kFolder, W_OK) == 0 ? kFolder : "";
}

std::string TempFolder::names() const
{
    std::set<std::string> inOrder;
    for (const auto& entry : fs::directory_iterator(platform::toNative(m_path))) {
        inOrder.insert(entry.path().filename().native());
    }
    std::string all;
    for (const std::string& name : inOrder) {
        all += (all.empty() ? "" : " ") + name;
    }
    return all;
}

std::string TempFolder::homely(std::wstring_view text) const
{
    std::string result = toUtf8(text);
    const std::string home = toUtf8(m_path);
    for (std::size_t at = 0; (at = result.find(home, at)) != std::string::npos;) {
        result.replace(at, home.size(), "~");
    }
    return result;
}

CurrentFolder::CurrentFolder(const std::wstring& path)
    : m_former(fs::current_path().native())
{
    fs::current_path(native(path));
}

CurrentFolder::~CurrentFolder()
{
    std::error_code failed;
    fs::current_path(m_former, failed);
}

namespace {

unsigned long limitFiles(unsigned long mostBytes)
{
    rlimit limit {};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlim_t former = std::exchange(limit.rlim_cur, mostBytes);
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        throw std::runtime_error("no limit for files");
    }
    return former;
}

} // namespace

FullDisk::FullDisk(std::size_t mostBytes)
    : m_formerLimit(limitFiles(mostBytes))
    , m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) // the write shall fail, not the process
{
}

FullDisk::~FullDisk()
{
    limitFiles(m_formerLimit);
    std::signal(SIGXFSZ, m_formerHandler);
}

void letFilesSettle()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
}

} // namespace corma::testing
