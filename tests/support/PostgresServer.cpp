#include "support/PostgresServer.h"

#include "platform/platform.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <netinet/in.h>
#include <optional>
#include <pwd.h>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace corma::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* kUser = "corma"; // of the database
constexpr int kMostTries = 5; // of ports, each of which somebody else may take meanwhile
constexpr int kCannotStart = 127;
constexpr auto kStartTime = std::chrono::seconds(60);
constexpr auto kStopTime = std::chrono::seconds(10);
constexpr auto kStep = std::chrono::milliseconds(10);

/// Who the processes run as.
struct Identity
{
    uid_t user = 0;
    gid_t group = 0;
};

bool isProgram(const fs::path& path)
{
    return ::access(path.c_str(), X_OK) == 0;
}

std::vector<fs::path> foldersOfPrograms()
{
    std::vector<fs::path> folders;
    std::error_code failed;
    for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", failed)) {
        folders.push_back(version.path() / "bin");
    }
    std::sort(folders.rbegin(), folders.rend());
    const char* const path = std::getenv("PATH");
    std::istringstream parts(path != nullptr ? path : "");
    for (std::string part; std::getline(parts, part, ':');) {
        folders.emplace_back(part);
    }
    return folders;
}

/// The folder with the programs of the server; nothing when there is none.
std::optional<fs::path> programs()
{
    for (const fs::path& folder : foldersOfPrograms()) {
        if (isProgram(folder / "initdb") && isProgram(folder / "postgres")) {
            return folder;
        }
    }
    return std::nullopt;
}

/// Somebody else than root, as whom the server refuses to run; nothing for anyone else.
std::optional<Identity> otherIdentity()
{
    if (::geteuid() != 0) {
        return std::nullopt;
    }
    for (const char* const name : {"postgres", "nobody"}) {
        if (const passwd* const found = ::getpwnam(name)) {
            return Identity {found->pw_uid, found->pw_gid};
        }
    }
    throw std::runtime_error("there is no user but root to run a server");
}

/// A port of this machine that nobody uses now.
int freePort()
{
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    const bool isFound
        = ::bind(listener, place, size) == 0 && ::getsockname(listener, place, &size) == 0;
    const int error = errno;
    ::close(listener);
    if (!isFound) {
        throw std::system_error(error, std::generic_category(), "no free port");
    }
    return ntohs(address.sin_port);
}

/// A program to be run by the server's user, in its folder.
struct Program
{
    std::vector<std::string> words;
    std::string folder;
    std::string log; // takes what it prints
};

[[noreturn]] void become(const Program& program, const std::optional<Identity>& identity)
{
    const int log = ::open(program.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    ::dup2(log, STDOUT_FILENO);
    ::dup2(log, STDERR_FILENO);
    const char* refused = program.folder.c_str();
    const bool isOther = !identity
        || (::setgroups(0, nullptr) == 0 && ::setgid(identity->group) == 0
            && ::setuid(identity->user) == 0);
    // It must not outlive the test program, however that ends. A change of the user undoes this.
    ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
    if (isOther && ::chdir(program.folder.c_str()) == 0) {
        std::vector<char*> words;
        for (const std::string& word : program.words) {
            words.push_back(const_cast<char*>(word.c_str()));
        }
        words.push_back(nullptr);
        ::execv(words.front(), words.data());
        refused = words.front();
    }
    ::perror(refused);
    ::_exit(kCannotStart);
}

pid_t startProgram(const Program& program, const std::optional<Identity>& identity)
{
    const pid_t process = ::fork();
    if (process < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (process == 0) {
        become(program, identity);
    }
    return process;
}

/// Waits for the end of a process for some time. False when it did not end.
bool hasEnded(pid_t process, std::chrono::milliseconds time, int& status)
{
    for (auto waited = std::chrono::milliseconds(0); waited <= time; waited += kStep) {
        const pid_t ended = ::waitpid(process, &status, WNOHANG);
        if (ended == process || (ended < 0 && errno != EINTR)) {
            return true;
        }
        std::this_thread::sleep_for(kStep);
    }
    return false;
}

} // namespace

PostgresServer::PostgresServer()
{
    try {
        makeData();
        int tries = 1;
        while (!startOnAFreePort()) {
            if (++tries > kMostTries) {
                throw std::runtime_error("it ended at once");
            }
        }
    } catch (const std::exception& error) {
        kill();
        const std::string log = m_folder.has(L"log") ? m_folder.read(L"log") : "";
        throw std::runtime_error(std::string("PostgreSQL does not start: ") + error.what() + "\n"
                                 + log);
    }
}

PostgresServer::~PostgresServer()
{
    kill();
}

std::string PostgresServer::missing()
{
    return programs() ? "" : "the package postgresql is not installed";
}

std::wstring PostgresServer::connectionText() const
{
    return L"Server=127.0.0.1;Port=" + std::to_wstring(m_port) + L";Database=postgres;UID=corma";
}

void PostgresServer::kill()
{
    if (m_process <= 0) {
        return;
    }
    int status = 0;
    ::kill(m_process, SIGQUIT); // by which it takes its connections along
    if (!hasEnded(m_process, kStopTime, status)) {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, &status, 0);
    }
    m_process = 0;
}

void PostgresServer::makeData()
{
    const auto bin = programs();
    if (!bin) {
        throw std::runtime_error(missing());
    }
    const auto identity = otherIdentity();
    const std::string home = platform::toNative(folder());
    if (identity && ::chown(home.c_str(), identity->user, identity->group) != 0) {
        throw std::system_error(errno, std::generic_category(), home);
    }
    int status = 0;
    const pid_t making
        = startProgram({{*bin / "initdb", "-D", home + "/data", "-U", kUser, "-A", "trust", "-E",
                         "UTF8", "--locale=C", "--no-sync", "--no-instructions"},
                        home,
                        home + "/log"},
                       identity);
    if (!hasEnded(making, kStartTime, status) || status != 0) {
        ::kill(making, SIGKILL);
        throw std::runtime_error("initdb failed");
    }
}

// False when it ended at once, as it does on a port that was taken meanwhile.
bool PostgresServer::startOnAFreePort()
{
    m_port = freePort();
    const std::string home = platform::toNative(folder());
    m_process = startProgram(
        {{*programs() / "postgres", "-D", home + "/data", "-c", "listen_addresses=127.0.0.1", "-p",
          std::to_string(m_port), "-c", "unix_socket_directories=", "-c", "fsync=off", "-c",
          "shared_buffers=4MB", "-c", "max_connections=20"},
         home,
         home + "/log"},
        otherIdentity());
    int status = 0;
    for (int steps = 0; steps < kStartTime / kStep; ++steps) {
        if (hasEnded(m_process, {}, status)) {
            m_process = 0;
            return false;
        }
        const std::wstring state = L"data/postmaster.pid";
        if (m_folder.has(state) && m_folder.read(state).find("ready") != std::string::npos) {
            return true;
        }
    }
    throw std::runtime_error("it takes too long");
}

} // namespace corma::testing
