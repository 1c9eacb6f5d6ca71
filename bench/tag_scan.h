#pragma once

// What no reader of a drawing can do without: where its groups stand, and which handle is whose.

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace corma::bench {

/// One group of a text DXF file.
struct Tag
{
    std::int32_t code;
    std::uint32_t size; // of the value
    const char* value;
};

/// The groups of a file, whose bytes are mapped into memory for as long as the object lives, and
/// the place of the record of each handle among them.
class TagScan
{
public:
    explicit TagScan(const std::string& path);
    TagScan(const TagScan&) = delete;
    TagScan& operator=(const TagScan&) = delete;
    ~TagScan();

    [[nodiscard]] std::size_t tagCount() const { return m_tags.size(); }

    [[nodiscard]] std::size_t handleCount() const { return m_records.size(); }

private:
    void map(const std::string& path);
    void scan();
    void indexHandles();

    const char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::vector<Tag> m_tags;
    std::unordered_map<std::uint64_t, std::uint32_t> m_records;
};

} // namespace corma::bench
