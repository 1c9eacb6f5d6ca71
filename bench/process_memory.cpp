#include "process_memory.h"

#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <unistd.h>

namespace corma::bench {

namespace {

// A number of kB in the kernel's status of this process, in bytes.
double statusBytes(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field + ":")) {
            return 1024.0 * std::stod(line.substr(field.size() + 1));
        }
    }
    throw std::runtime_error("no " + field + " in /proc/self/status");
}

} // namespace

double heapInUse()
{
    const auto info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double residentBytes()
{
    return statusBytes("VmRSS");
}

double peakBytes()
{
    return statusBytes("VmHWM");
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

std::vector<double> numbersFromNewProcess(const std::vector<std::string>& arguments,
                                          std::size_t count)
{
    std::string command = "/proc/" + std::to_string(::getpid()) + "/exe";
    for (const std::string& argument : arguments) {
        command.append(" '").append(argument).append("'");
    }
    std::FILE* output = ::popen(command.c_str(), "r");
    if (output == nullptr) {
        throw std::runtime_error("cannot start the measuring process");
    }
    std::vector<double> numbers;
    for (double number = 0; numbers.size() < count && std::fscanf(output, "%lf", &number) == 1;) {
        numbers.push_back(number);
    }
    if (::pclose(output) != 0 || numbers.size() != count) {
        throw std::runtime_error("the measuring process failed");
    }
    return numbers;
}

} // namespace corma::bench
