#include "tag_scan.h"

#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corma::bench {

namespace {

constexpr std::size_t kUsualSizeOfTag = 12;
constexpr int kHandleCode = 5;
constexpr int kDimStyleHandleCode = 105;

std::uint64_t handleFrom(const Tag& tag)
{
    std::uint64_t handle = 0;
    for (const char c : std::string_view(tag.value, tag.size)) {
        const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
        handle = handle * 16 + static_cast<std::uint64_t>(digit);
    }
    return handle;
}

} // namespace

TagScan::TagScan(const std::string& path)
{
    map(path);
    scan();
    indexHandles();
}

TagScan::~TagScan()
{
    ::munmap(const_cast<char*>(m_bytes), m_size);
}

void TagScan::map(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file < 0 || ::fstat(file, &status) != 0) {
        throw std::runtime_error("cannot open " + path);
    }
    m_size = static_cast<std::size_t>(status.st_size);
    void* const bytes = ::mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
    ::close(file);
    if (bytes == MAP_FAILED) {
        throw std::runtime_error("cannot map " + path);
    }
    m_bytes = static_cast<const char*>(bytes);
}

// Codes are taken for numbers without a look.
void TagScan::scan()
{
    m_tags.reserve(m_size / kUsualSizeOfTag);
    const char* const end = m_bytes + m_size;
    const auto lineEnd = [end](const char* at) {
        const auto* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        return found == nullptr ? end : static_cast<const char*>(found);
    };
    for (const char* at = m_bytes; at < end;) {
        while (*at == ' ') {
            ++at;
        }
        int code = 0;
        for (; *at >= '0' && *at <= '9'; ++at) {
            code = code * 10 + (*at - '0');
        }
        const char* const codeEnd = lineEnd(at);
        if (codeEnd == end) {
            return;
        }
        const char* const value = codeEnd + 1;
        const char* const valueEnd = lineEnd(value);
        const bool hasReturn = valueEnd > value && valueEnd[-1] == '\r';
        m_tags.push_back(
            {code, static_cast<std::uint32_t>(valueEnd - value - (hasReturn ? 1 : 0)), value});
        at = valueEnd + 1;
    }
}

// The handle stands among the first groups of a record.
void TagScan::indexHandles()
{
    constexpr std::size_t kMostAhead = 6;
    m_records.reserve(m_tags.size() / kUsualSizeOfTag);
    for (std::size_t i = 0; i < m_tags.size(); ++i) {
        if (m_tags[i].code != 0) {
            continue;
        }
        for (std::size_t j = i + 1; j < m_tags.size() && j < i + kMostAhead && m_tags[j].code != 0;
             ++j) {
            if (m_tags[j].code == kHandleCode || m_tags[j].code == kDimStyleHandleCode) {
                m_records.emplace(handleFrom(m_tags[j]), static_cast<std::uint32_t>(i));
                break;
            }
        }
    }
}

} // namespace corma::bench
