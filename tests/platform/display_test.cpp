#include "platform/platform.h"
#include "support/TempFolder.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using corma::testing::TempFolder;

namespace corma::platform {
namespace {

using Variables = std::map<std::string, std::string>;

// The variables that tell of displays are these and no others for the life of the object.
class DisplayVariables
{
public:
    explicit DisplayVariables(const Variables& variables)
    {
        for (const char* name : kNames) {
            if (const char* const value = std::getenv(name)) {
                m_former[name] = value;
            }
        }
        set(variables);
    }

    DisplayVariables(const DisplayVariables&) = delete;
    DisplayVariables& operator=(const DisplayVariables&) = delete;

    ~DisplayVariables() { set(m_former); }

private:
    static constexpr std::array kNames
        = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"};

    static void set(const Variables& variables)
    {
        for (const char* name : kNames) {
            const auto found = variables.find(name);
            if (found == variables.end()) {
                ::unsetenv(name);
            } else {
                ::setenv(name, found->second.c_str(), 1);
            }
        }
    }

    Variables m_former;
};

std::wstring problemWith(const Variables& variables)
{
    const DisplayVariables inForce(variables);
    return DisplayProbe().problem().value_or(L"none");
}

std::size_t openDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// A socket that takes connections and says nothing.
class SilentServer
{
public:
    // On a port that is free.
    SilentServer()
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address {};
        socklen_t size = sizeof address;
        m_isGood = ::listen(m_socket, 5) == 0
            && ::getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
        m_port = ntohs(address.sin_port);
    }

    explicit SilentServer(const std::wstring& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const std::string name = toNative(path);
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, name.c_str(), sizeof(address.sun_path) - 1);
        m_isGood
            = ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
            && ::listen(m_socket, 5) == 0;
    }

    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    ~SilentServer() { ::close(m_socket); }

    [[nodiscard]] bool isGood() const { return m_isGood; }

    // The display of X that has this port.
    [[nodiscard]] std::string display() const
    {
        constexpr int kPortOfTheFirst = 6000;
        return "127.0.0.1:" + std::to_string(m_port - kPortOfTheFirst);
    }

private:
    int m_socket;
    int m_port = 0;
    bool m_isGood;
};

struct ProblemRow
{
    const char* sentence;
    Variables variables;
    const wchar_t* problem;
};

class NoDisplay : public ::testing::TestWithParam<ProblemRow>
{
};

TEST_P(NoDisplay, IsToldInAClearSentence)
{
    EXPECT_EQ(problemWith(GetParam().variables), GetParam().problem);
}

// No server has the number 59999: such a display would be TCP port 65999, which there is none of.
INSTANTIATE_TEST_SUITE_P(
    Platform, NoDisplay,
    ::testing::Values(
        ProblemRow {"NoneIsSet", {}, L"no display: neither DISPLAY nor WAYLAND_DISPLAY is set"},
        ProblemRow {"EmptyOnesAreNotSet",
                    {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}},
                    L"no display: neither DISPLAY nor WAYLAND_DISPLAY is set"},
        ProblemRow {"NobodyAnswersThere",
                    {{"DISPLAY", ":59999"}},
                    L"the display \":59999\" cannot be reached"},
        ProblemRow {"ANameThatIsNoDisplay",
                    {{"DISPLAY", "nonsense"}},
                    L"the display \"nonsense\" cannot be reached"},
        ProblemRow {"NoSocketOfWayland",
                    {{"WAYLAND_DISPLAY", "wayland-59999"}, {"XDG_RUNTIME_DIR", "/nowhere"}},
                    L"the Wayland display \"wayland-59999\" cannot be reached"},
        ProblemRow {"NeitherAnswers",
                    {{"WAYLAND_DISPLAY", "/nowhere/w"}, {"DISPLAY", ":59999"}},
                    L"the Wayland display \"/nowhere/w\" cannot be reached and the display "
                    L"\":59999\" cannot be reached"},
        ProblemRow {"XIsWantedAndNotSet",
                    {{"QT_QPA_PLATFORM", "xcb"}, {"WAYLAND_DISPLAY", "w"}},
                    L"no display: DISPLAY is not set"},
        ProblemRow {"WaylandIsWantedAndNotSet",
                    {{"QT_QPA_PLATFORM", "wayland-egl"}, {"DISPLAY", ":59999"}},
                    L"no display: WAYLAND_DISPLAY is not set"},
        ProblemRow {"TheFirstOfManyIsToldOf",
                    {{"QT_QPA_PLATFORM", "wayland;xcb:x=y"}},
                    L"no display: WAYLAND_DISPLAY is not set"},
        ProblemRow {"OffscreenNeedsNone", {{"QT_QPA_PLATFORM", "offscreen"}}, L"none"},
        ProblemRow {
            "OffscreenWithMoreNeedsNone", {{"QT_QPA_PLATFORM", "offscreen:size=1x1"}}, L"none"},
        ProblemRow {"ALaterPlatformNeedsNone",
                    {{"QT_QPA_PLATFORM", "xcb;minimal"}, {"DISPLAY", ":59999"}},
                    L"none"}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(DisplayProblem, IsNoneWhereWaylandTakesConnections)
{
    const TempFolder folder;
    const SilentServer server(folder.path(L"wayland-7"));
    ASSERT_TRUE(server.isGood());
    const std::string path = toNative(folder.path());
    EXPECT_EQ(problemWith({{"WAYLAND_DISPLAY", "wayland-7"}, {"XDG_RUNTIME_DIR", path}}), L"none");
    EXPECT_EQ(problemWith({{"WAYLAND_DISPLAY", path + "/wayland-7"}}), L"none");
    EXPECT_EQ(problemWith({{"WAYLAND_DISPLAY", path + "/wayland-7"}, {"DISPLAY", ":59999"}}),
              L"none")
        << "one of them is enough";
}

TEST(DisplayProblem, IsToldInTimeOfAServerThatSaysNothing)
{
    const SilentServer server;
    ASSERT_TRUE(server.isGood());
    const std::size_t descriptors = openDescriptors();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(problemWith({{"DISPLAY", server.display()}}),
              L"the display \"" + fromNative(server.display()) + L"\" cannot be reached");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no process stays behind";
    EXPECT_EQ(errno, ECHILD);
}

// A server of X without a screen that anyone sees, on a display of its own choice.
class VirtualServer
{
public:
    VirtualServer()
    {
        std::array<int, 2> ends {};
        if (::pipe(ends.data()) != 0) {
            return;
        }
        m_process = ::fork();
        if (m_process == 0) {
            ::dup2(ends[1], STDERR_FILENO + 1);
            ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO);
            ::execlp("Xvfb", "Xvfb", "-displayfd", "3", "-nolisten", "tcp", "-screen", "0",
                     "64x64x24", nullptr);
            ::_exit(127);
        }
        ::close(ends[1]);
        read(ends[0]);
        ::close(ends[0]);
    }

    VirtualServer(const VirtualServer&) = delete;
    VirtualServer& operator=(const VirtualServer&) = delete;

    ~VirtualServer()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGTERM);
            ::waitpid(m_process, nullptr, 0);
        }
    }

    // Such as ":3"; empty when there is no such program.
    [[nodiscard]] const std::string& display() const { return m_display; }

private:
    void read(int descriptor)
    {
        constexpr int kLongestStart = 20'000; // milliseconds
        std::string number;
        char digit = 0;
        pollfd waiting {descriptor, POLLIN, 0};
        while (::poll(&waiting, 1, kLongestStart) == 1 && ::read(descriptor, &digit, 1) == 1) {
            if (digit == '\n') {
                m_display = ':' + number;
                return;
            }
            number += digit;
        }
    }

    pid_t m_process = -1;
    std::string m_display;
};

TEST(DisplayProblem, IsNoneWhereXAnswers)
{
    const VirtualServer server;
    if (server.display().empty()) {
        GTEST_SKIP() << "no Xvfb that could be asked";
    }
    const std::size_t descriptors = openDescriptors();
    {
        // One probe outlives the others, so that the server does not start anew between them.
        const DisplayVariables inForce({{"DISPLAY", server.display()}});
        const DisplayProbe first;
        EXPECT_EQ(first.problem(), std::nullopt);
        EXPECT_EQ(DisplayProbe().problem(), std::nullopt);
        EXPECT_EQ(problemWith({{"DISPLAY", server.display()}, {"QT_QPA_PLATFORM", "xcb"}}),
                  L"none");
        EXPECT_EQ(problemWith({{"DISPLAY", server.display()}, {"WAYLAND_DISPLAY", "/nowhere/w"}}),
                  L"none");
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), 0) << "of the children only the server goes on";
}

} // namespace
} // namespace corma::platform
