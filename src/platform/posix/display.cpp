#include "platform/platform.h"
#include "platform/posix/system_calls.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corma::platform {

namespace {

constexpr int kPatience = 3000; // milliseconds that a display has for its answer

// Of an environment variable; an empty one says nothing either.
std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::wstring quoted(const std::string& text)
{
    return L"\"" + fromNative(text) + L"\"";
}

// --- X11 -----------------------------------------------------------------------------------------

// The two functions of the X client library that are needed. It is loaded when it is asked, so
// that programs without windows do not need it.
class XLibrary
{
public:
    XLibrary()
        : m_library(::dlopen("libxcb.so.1", RTLD_LAZY | RTLD_LOCAL))
    {
        if (m_library == nullptr) {
            return;
        }
        m_connect = reinterpret_cast<Connect*>(::dlsym(m_library, "xcb_connect"));
        m_hasError = reinterpret_cast<HasError*>(::dlsym(m_library, "xcb_connection_has_error"));
    }

    XLibrary(const XLibrary&) = delete;
    XLibrary& operator=(const XLibrary&) = delete;

    ~XLibrary()
    {
        if (m_library != nullptr) {
            ::dlclose(m_library);
        }
    }

    [[nodiscard]] bool isThere() const { return m_connect != nullptr && m_hasError != nullptr; }

    /// The connection stays until the process ends.
    [[nodiscard]] bool canConnect(const std::string& display) const
    {
        return m_hasError(m_connect(display.c_str(), nullptr)) == 0;
    }

private:
    using Connect = void*(const char* display, int* screen);
    using HasError = int(void* connection);

    void* m_library;
    Connect* m_connect = nullptr;
    HasError* m_hasError = nullptr;
};

/// A client of an X server that lives in a child process: the library waits for a server that does
/// not answer for as long as it takes, and nothing but the end of its process stops it.
class XClient
{
public:
    XClient(const XLibrary& library, const std::string& display)
    {
        std::array<int, 2> ends {};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
            return;
        }
        m_end = Descriptor(ends[0]);
        Descriptor childsEnd(ends[1]);
        m_process = ::fork();
        if (m_process == 0) {
            m_end.close();
            stay(library, display, childsEnd.get());
        }
    }

    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    ~XClient()
    {
        if (m_process <= 0) {
            return;
        }
        ::kill(m_process, SIGKILL);
        while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) { }
    }

    [[nodiscard]] bool isConnected() const
    {
        pollfd waiting {m_end.get(), POLLIN, 0};
        int ready = 0;
        do {
            ready = m_process > 0 ? ::poll(&waiting, 1, kPatience) : 0;
        } while (ready < 0 && errno == EINTR);
        char answer = 0;
        return ready == 1 && calls::read(m_end.get(), &answer, 1) == 1;
    }

private:
    // One byte tells of the connection, which is kept until the other end is closed.
    [[noreturn]] static void stay(const XLibrary& library, const std::string& display, int end)
    {
        char byte = 1;
        if (library.canConnect(display) && ::write(end, &byte, 1) == 1) {
            calls::read(end, &byte, 1);
        }
        ::_exit(0);
    }

    Descriptor m_end;
    pid_t m_process = -1;
};

struct Finding
{
    std::optional<std::wstring> problem;
    std::unique_ptr<XClient> client = nullptr;
};

Finding findX()
{
    const std::string display = variable("DISPLAY");
    if (display.empty()) {
        return {L"no display: DISPLAY is not set"};
    }
    const XLibrary library;
    if (!library.isThere()) {
        return {L"the display " + quoted(display) + L" cannot be used without libxcb.so.1"};
    }
    auto client = std::make_unique<XClient>(library, display);
    if (!client->isConnected()) {
        return {L"the display " + quoted(display) + L" cannot be reached"};
    }
    return {std::nullopt, std::move(client)};
}

// --- Wayland -------------------------------------------------------------------------------------

bool canConnect(const std::string& socketFile)
{
    sockaddr_un address {};
    if (socketFile.size() >= sizeof(address.sun_path)) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, socketFile.c_str(), socketFile.size() + 1);
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    return socket.isOpen()
        && ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address)
        == 0;
}

Finding findWayland()
{
    const std::string display = variable("WAYLAND_DISPLAY");
    if (display.empty()) {
        return {L"no display: WAYLAND_DISPLAY is not set"};
    }
    const bool isPath = display.front() == '/';
    if (canConnect(isPath ? display : variable("XDG_RUNTIME_DIR") + '/' + display)) {
        return {};
    }
    return {L"the Wayland display " + quoted(display) + L" cannot be reached"};
}

// --- what Qt will choose -------------------------------------------------------------------------

Finding findAny()
{
    const bool hasX = !variable("DISPLAY").empty();
    const bool hasWayland = !variable("WAYLAND_DISPLAY").empty();
    if (!hasX && !hasWayland) {
        return {L"no display: neither DISPLAY nor WAYLAND_DISPLAY is set"};
    }
    if (!hasX || !hasWayland) {
        return hasX ? findX() : findWayland();
    }
    const Finding ofWayland = findWayland();
    if (!ofWayland.problem) {
        return {};
    }
    Finding ofX = findX();
    if (ofX.problem) {
        ofX.problem = *ofWayland.problem + L" and " + *ofX.problem;
    }
    return ofX;
}

Finding findPlatform(std::string_view platform)
{
    if (platform.starts_with("wayland")) {
        return findWayland();
    }
    return platform == "xcb" ? findX() : Finding {};
}

// Of names with ";" between, the next for where the one before cannot be used, each with ":" and
// more behind it or not.
Finding findFirst(std::string_view platforms)
{
    std::optional<std::wstring> problem;
    while (!platforms.empty()) {
        const std::string_view one = platforms.substr(0, platforms.find(';'));
        platforms.remove_prefix(std::min(one.size() + 1, platforms.size()));
        Finding found = findPlatform(one.substr(0, one.find(':')));
        if (!found.problem) {
            return found;
        }
        problem = problem ? problem : found.problem;
    }
    return {problem};
}

} // namespace

class DisplayProbe::Client
{
public:
    explicit Client(std::unique_ptr<XClient> client)
        : m_client(std::move(client))
    {
    }

private:
    std::unique_ptr<XClient> m_client;
};

DisplayProbe::DisplayProbe()
{
    const std::string platforms = variable("QT_QPA_PLATFORM");
    Finding found = platforms.empty() ? findAny() : findFirst(platforms);
    m_problem = std::move(found.problem);
    m_client = std::make_unique<Client>(std::move(found.client));
}

DisplayProbe::~DisplayProbe() = default;

} // namespace corma::platform
