#pragma once

// What the programs that measure times have in common.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::bench {

/// Throws when it does not hold.
void require(bool holds, const char* what);

/// The name of a benchmark: what is measured, in which form, at how many entries.
std::string nameOf(std::string_view what, std::string_view form, std::size_t entries);

/// Keeps the median of the repetitions of each benchmark, in ns. Times are of the processor, in
/// which whatever else runs on the machine counts least, unless a benchmark uses real time.
class Medians : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    [[nodiscard]] std::optional<double> of(std::string_view what, std::string_view form,
                                           std::size_t entries) const;

private:
    std::map<std::string, double> m_times;
};

/// Hands the arguments of the program to the measuring, with nine repetitions in random order
/// unless they say something else. False for an argument that it does not know.
bool initialize(int argc, char** argv);

/// What main() of such a program returns: the status of `run`, or failure with what it throws told
/// under the program's name.
int runProgram(const char* name, int (*run)(int argc, char** argv), int argc, char** argv);

} // namespace corma::bench
