// Memory of a drawing beside the size of its file, each case measured in a process of its own.

#include "bench_table.h"
#include "drawing_work.h"
#include "process_memory.h"
#include <corma/xx_Inifile.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array kMeasured
    = {DrawingFile {10, 10'000}, DrawingFile {100, 10'000}, DrawingFile {1, 100'000}};
constexpr double kMostOfFile = 3; // aim, of drawings of 10 MB and more
constexpr int kAimedSize = 10; // MB
constexpr double kMegabyte = 1e6;
constexpr int kLongestValue = 500; // characters, the terminator counted

// What is measured, in the order in which the measuring process prints it.
constexpr std::array kMeasures = {"heap in use, loaded", "heap in use, after one lookup",
                                  "peak growth, to one lookup", "heap in use, all looked up"};

std::string workIn(const std::string& folder)
{
    return folder + "/memory-work";
}

void lookUp(xx_Inifile& settings, std::wstring ident)
{
    wchar_t value[kLongestValue];
    if (settings.getString(ident.data(), value, kLongestValue, 0) != RTNORM) {
        throw std::runtime_error("lookup");
    }
}

// The measuring process: what its libraries set up once was set up for a new drawing.
int measure(const std::string& folder, const DrawingFile& file)
{
    std::wstring configuration = makeConfigurationFile(workIn(folder));
    xx_Inifile settings(configuration.data(), 0, nullptr);
    {
        const WorkingDrawing warmUp;
        std::wstring ident = L"[Hoofdstuk]Instelling";
        settings.writeString(ident.data(), ident.data());
        lookUp(settings, ident);
    }
    const std::vector<std::wstring> idents = identsOf(file);
    forgetPeak(); // that of setting up the process is not ours
    const double residentBefore = residentBytes();
    const double heapBefore = heapInUse();
    const WorkingDrawing drawing(file.in(folder));
    std::printf("%.0f ", heapInUse() - heapBefore);
    lookUp(settings, idents.back());
    std::printf("%.0f %.0f ", heapInUse() - heapBefore, peakBytes() - residentBefore);
    for (const std::wstring& ident : idents) {
        lookUp(settings, ident);
    }
    std::printf("%.0f\n", heapInUse() - heapBefore);
    return EXIT_SUCCESS;
}

void addRows(std::vector<Row>& rows, const std::string& folder, const DrawingFile& file)
{
    const std::vector<double> measured = numbersFromNewProcess(
        {folder, std::to_string(file.megabytes), std::to_string(file.settings)}, kMeasures.size());
    const auto size = static_cast<double>(std::filesystem::file_size(file.in(folder)));
    for (std::size_t i = 0; i < measured.size(); ++i) {
        Row row {kMeasures[i],     file.form(), file.settings, measured[i] / kMegabyte,
                 size / kMegabyte, {}};
        if (file.megabytes >= kAimedSize) {
            row.aim = kMostOfFile * *row.floor;
        }
        rows.push_back(row);
    }
}

int run(const std::string& folder)
{
    std::filesystem::create_directory(workIn(folder));
    std::vector<Row> rows;
    for (const DrawingFile& file : kMeasured) {
        addRows(rows, folder, file);
    }
    std::filesystem::remove_all(workIn(folder));
    printTable(rows, "MB");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

// With the folder of the drawings it measures all cases; with megabytes and settings of one, that.
int main(int argc, char** argv)
{
    using namespace corma;
    try {
        if (argc == 4) {
            return bench::measure(argv[1], {std::atoi(argv[2]), std::stoul(argv[3])});
        }
        if (argc == 2) {
            return bench::run(argv[1]);
        }
        std::fputs("usage: corma_bench_drawing_memory FOLDER_OF_DRAWINGS\n", stderr);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_bench_drawing_memory: %s\n", error.what());
    }
    return EXIT_FAILURE;
}
