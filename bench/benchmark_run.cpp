#include "benchmark_run.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace corma::bench {

namespace {

constexpr std::string_view kRealTime = "/real_time"; // put behind a name by the framework

// Our defaults come before the arguments, so that these win.
std::vector<std::string> withDefaults(int argc, char** argv)
{
    std::vector<std::string> arguments
        = {argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.03",
           "--benchmark_enable_random_interleaving=true"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    return arguments;
}

} // namespace

void require(bool holds, const char* what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

std::string nameOf(std::string_view what, std::string_view form, std::size_t entries)
{
    return std::string(what).append("/").append(form).append("/") + std::to_string(entries);
}

bool Medians::ReportContext(const Context& /*context*/)
{
    return true;
}

void Medians::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration ? run.repetitions == 1
                                              : run.aggregate_name == "median") {
            const bool isReal = run.run_name.time_type == kRealTime.substr(1);
            m_times[run.run_name.function_name]
                = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        }
    }
}

std::optional<double> Medians::of(std::string_view what, std::string_view form,
                                  std::size_t entries) const
{
    const auto found = m_times.find(nameOf(what, form, entries));
    return found == m_times.end() ? std::nullopt : std::optional(found->second);
}

bool initialize(int argc, char** argv)
{
    std::vector<std::string> arguments = withDefaults(argc, argv);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    auto count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    return !benchmark::ReportUnrecognizedArguments(count, pointers.data());
}

int runProgram(const char* name, int (*run)(int argc, char** argv), int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", name, error.what());
        return EXIT_FAILURE;
    }
}

} // namespace corma::bench
