#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/Record.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// Why a test of real drawings is skipped.
inline constexpr const char* kNoSamples
    = "no folder of real drawings: configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER";

/// A real drawing, taken apart.
struct SampleFile
{
    std::filesystem::path path;
    std::unique_ptr<Container> container;
    FileForm form;
    TypeTable types;

    /// A drawing of an earlier release than R2004 names its text in a code page.
    explicit SampleFile(std::filesystem::path file);

    /// Calls `take` with the bytes of each record, from its length on, in the order of the map.
    void eachRecord(const std::function<void(std::string_view bytes, Handle handle)>& take) const;
};

/// The DWG drawings of the folder of samples, in order; none when there is no such folder.
std::vector<std::filesystem::path> sampleDwgFiles();

} // namespace corma::host::dwg
