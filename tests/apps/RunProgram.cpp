#include "RunProgram.h"

#include "platform/platform.h"
#include "support/TempFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace corma::testing {

namespace {

void check(int error, const std::string& what)
{
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

// Where the program starts and where its output goes.
class Surroundings
{
public:
    Surroundings() { check(::posix_spawn_file_actions_init(&m_actions), "spawn"); }

    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    ~Surroundings() { ::posix_spawn_file_actions_destroy(&m_actions); }

    void setFolder(const std::string& folder)
    {
        check(::posix_spawn_file_actions_addchdir_np(&m_actions, folder.c_str()), "folder");
    }

    void sendTo(int descriptor, const std::string& file)
    {
        check(::posix_spawn_file_actions_addopen(&m_actions, descriptor, file.c_str(),
                                                 O_WRONLY | O_CREAT | O_TRUNC, 0600),
              "output");
    }

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions {};
};

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentOf(const ProgramCall& call)
{
    std::vector<std::string> all;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string entry = *each;
        if (call.environment.count(entry.substr(0, entry.find('='))) == 0) {
            all.push_back(entry);
        }
    }
    for (const auto& [name, value] : call.environment) {
        all.push_back(name + '=' + value);
    }
    return all;
}

int waitFor(pid_t process)
{
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) {
            check(errno, "wait");
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

ProgramResult runProgram(const ProgramCall& call)
{
    const TempFolder caught;
    const std::string out = platform::toNative(caught.path(L"out"));
    Surroundings surroundings;
    surroundings.sendTo(STDOUT_FILENO, call.outTo.empty() ? out : call.outTo);
    surroundings.sendTo(STDERR_FILENO, platform::toNative(caught.path(L"err")));
    surroundings.setFolder(call.folder);

    std::vector<std::string> words = call.arguments;
    words.insert(words.begin(), call.program);
    std::vector<std::string> environment = environmentOf(call);
    pid_t process = 0;
    check(::posix_spawn(&process, call.program.c_str(), surroundings.get(), nullptr,
                        pointersTo(words).data(), pointersTo(environment).data()),
          call.program);
    ProgramResult result;
    result.exitStatus = waitFor(process);
    result.out = call.outTo.empty() ? caught.read(L"out") : "";
    result.err = caught.read(L"err");
    return result;
}

} // namespace corma::testing
