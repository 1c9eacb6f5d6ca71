#include "platform/platform.h"
#include "platform/posix/system_calls.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corma::platform {

namespace {

constexpr int kPatience = 5000; // milliseconds that a display has for its answer

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

// The three functions of the X client library that are needed. It is loaded when it is asked, so
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
        m_disconnect = reinterpret_cast<Disconnect*>(::dlsym(m_library, "xcb_disconnect"));
    }

    XLibrary(const XLibrary&) = delete;
    XLibrary& operator=(const XLibrary&) = delete;

    ~XLibrary()
    {
        if (m_library != nullptr) {
            ::dlclose(m_library);
        }
    }

    [[nodiscard]] bool isThere() const
    {
        return m_connect != nullptr && m_hasError != nullptr && m_disconnect != nullptr;
    }

    [[nodiscard]] bool canConnect(const std::string& display) const
    {
        void* const connection = m_connect(display.c_str(), nullptr);
        const bool isGood = m_hasError(connection) == 0;
        m_disconnect(connection);
        return isGood;
    }

private:
    using Connect = void*(const char* display, int* screen);
    using HasError = int(void* connection);
    using Disconnect = void(void* connection);

    void* m_library;
    Connect* m_connect = nullptr;
    HasError* m_hasError = nullptr;
    Disconnect* m_disconnect = nullptr;
};

bool answersInTime(int descriptor)
{
    pollfd waiting {descriptor, POLLIN, 0};
    int ready = 0;
    do {
        ready = ::poll(&waiting, 1, kPatience);
    } while (ready < 0 && errno == EINTR);
    char answer = 0;
    return ready == 1 && calls::read(descriptor, &answer, 1) == 1 && answer == '1';
}

// Asked in a child process, since the library waits for a server that does not answer for as long
// as it takes, and nothing but the end of its process stops it.
bool canReachX(const XLibrary& library, const std::string& display)
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    const Descriptor in(ends[0]);
    Descriptor out(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        const char answer = library.canConnect(display) ? '1' : '0';
        ::_exit(::write(out.get(), &answer, 1) == 1 ? 0 : 1);
    }
    out.close(); // the end of a child that says nothing is then the end of the pipe
    if (child < 0) {
        return false;
    }
    const bool canReach = answersInTime(in.get());
    ::kill(child, SIGKILL); // it has answered, or never will
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) { }
    return canReach;
}

std::optional<std::wstring> xProblem()
{
    const std::string display = variable("DISPLAY");
    if (display.empty()) {
        return L"no display: DISPLAY is not set";
    }
    const XLibrary library;
    if (!library.isThere()) {
        return L"the display " + quoted(display) + L" cannot be used without libxcb.so.1";
    }
    if (!canReachX(library, display)) {
        return L"the display " + quoted(display) + L" cannot be reached";
    }
    return std::nullopt;
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

std::optional<std::wstring> waylandProblem()
{
    const std::string display = variable("WAYLAND_DISPLAY");
    if (display.empty()) {
        return L"no display: WAYLAND_DISPLAY is not set";
    }
    const bool isPath = display.front() == '/';
    if (canConnect(isPath ? display : variable("XDG_RUNTIME_DIR") + '/' + display)) {
        return std::nullopt;
    }
    return L"the Wayland display " + quoted(display) + L" cannot be reached";
}

// --- what Qt will choose -------------------------------------------------------------------------

std::optional<std::wstring> problemOfAny()
{
    const bool hasX = !variable("DISPLAY").empty();
    const bool hasWayland = !variable("WAYLAND_DISPLAY").empty();
    if (!hasX && !hasWayland) {
        return L"no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
    }
    if (!hasX || !hasWayland) {
        return hasX ? xProblem() : waylandProblem();
    }
    const auto ofWayland = waylandProblem();
    const auto ofX = ofWayland ? xProblem() : std::nullopt;
    return ofX ? std::optional(*ofWayland + L" and " + *ofX) : std::nullopt;
}

std::optional<std::wstring> problemOf(std::string_view platform)
{
    if (platform.starts_with("wayland")) {
        return waylandProblem();
    }
    return platform == "xcb" ? xProblem() : std::nullopt;
}

} // namespace

std::optional<std::wstring> displayProblem()
{
    const std::string platforms = variable("QT_QPA_PLATFORM");
    if (platforms.empty()) {
        return problemOfAny();
    }
    // Names with ";" between, the next for where the one before cannot be used, each with ":" and
    // more behind it or not.
    std::optional<std::wstring> first;
    std::string_view rest = platforms;
    while (!rest.empty()) {
        const std::string_view one = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(one.size() + 1, rest.size()));
        const auto problem = problemOf(one.substr(0, one.find(':')));
        if (!problem) {
            return std::nullopt;
        }
        first = first ? first : problem;
    }
    return first;
}

} // namespace corma::platform
