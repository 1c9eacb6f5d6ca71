// Real DWG drawings: that nothing of them is lost.

#include "host/dwg/SampleRecords.h"
#include "host/dwg/checksum.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>

namespace corma::host::dwg {

TEST(DwgSamples, EveryRecordHasAFrameThatIsUnderstood)
{
    const auto files = sampleDwgFiles();
    if (files.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    for (const auto& path : files) {
        const SampleFile file(path);
        std::map<std::string, std::pair<int, int>> depths; // of a type: all, understood
        file.eachRecord([&](std::string_view bytes, Handle handle) {
            const auto record = Record::read(bytes, file.form, file.types);
            ASSERT_TRUE(record) << path << " " << static_cast<std::uint64_t>(handle);
            const TypeInfo info = file.types.find(record->type());
            EXPECT_NE(record->depth(), Record::Depth::nothing)
                << path.filename() << " " << info.name << " " << std::hex
                << static_cast<std::uint64_t>(handle);
            auto& depth = depths[std::string(info.name)];
            ++depth.first;
            depth.second += record->depth() == Record::Depth::all ? 1 : 0;
        });
        if (std::getenv("CORMA_SHOW_TYPES") != nullptr) {
            for (const auto& [name, depth] : depths) {
                std::cout << path.filename().string() << " " << name << " " << depth.second << "/"
                          << depth.first << "\n";
            }
        }
    }
}

TEST(DwgSamples, TheChainOfEntitiesIsThatOfTheirFrames)
{
    const auto files = sampleDwgFiles();
    if (files.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    int count = 0;
    for (const auto& path : files) {
        const SampleFile file(path);
        if (file.form.version > DrawingVersion::r2000) {
            continue;
        }
        file.eachRecord([&](std::string_view bytes, Handle handle) {
            const auto head = readHead(bytes, file.form.version);
            const auto record = Record::peek(bytes, file.form, file.types);
            ASSERT_TRUE(head && record);
            if (record->frame().isEntity) {
                ++count;
                EXPECT_EQ(nextInChain(*head, file.form.version), record->frame().nextHandle())
                    << path.filename() << " " << std::hex << static_cast<std::uint64_t>(handle);
            }
        });
    }
    EXPECT_GT(count, 0);
}

} // namespace corma::host::dwg
