#include "DrawingChanges.h"

#include "host/acdb_database.h"
#include "host/dxf/DxfFormat.h"
#include "host/model/Store.h"
#include "platform/platform.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace corma::testing {

namespace {

struct Record
{
    std::string type; // empty for the header
    std::string_view bytes;
};

class RecordsOf
{
public:
    explicit RecordsOf(const std::string& file)
        : m_isRead(m_database.readDwgFile(platform::fromNative(file).c_str()) == Acad::eOk)
    {
        if (!m_isRead) {
            return;
        }
        const host::Store& store = m_database.store();
        const auto bytes = dynamic_cast<const host::dxf::DxfFormat&>(*store.format()).bytes();
        for (const AcDbStub* stub = store.first(); stub != nullptr; stub = stub->next) {
            const bool isHeader = stub->kind == host::RecordKind::header;
            m_all.push_back({isHeader ? "" : std::string(store.nameOf(stub->type)),
                             bytes.substr(stub->offset, stub->size)});
            m_size += stub->size;
        }
        m_isRead = m_size == bytes.size();
    }

    [[nodiscard]] bool isRead() const { return m_isRead; }

    [[nodiscard]] const std::vector<Record>& all() const { return m_all; }

private:
    AcDbDatabase m_database {false};
    std::vector<Record> m_all;
    std::size_t m_size = 0;
    bool m_isRead;
};

// The header without the number of $HANDSEED.
std::string withoutSeed(std::string_view header)
{
    constexpr std::string_view kSeed = "$HANDSEED";
    const std::size_t begin = header.find(kSeed);
    if (begin == std::string_view::npos) {
        return std::string(header);
    }
    // The group code 5 stands in one or two bytes, or on a line of its own; behind it the digits.
    std::size_t at = begin + kSeed.size();
    const auto skip = [&](std::string_view set) {
        at = std::min(header.find_first_not_of(set, at), header.size());
    };
    skip(std::string_view("\0\r\n \5", 5));
    if (header.substr(at, 1) == "5") { // a text file
        ++at;
        skip("\r\n");
    }
    const std::size_t digits = at;
    skip("0123456789ABCDEFabcdef");
    return std::string(header.substr(0, digits)) + std::string(header.substr(at));
}

std::vector<std::string> textsOf(const RecordsOf& records)
{
    std::vector<std::string> texts;
    for (const Record& record : records.all()) {
        texts.push_back(record.type.empty() ? withoutSeed(record.bytes)
                                            : std::string(record.bytes));
    }
    return texts;
}

// For each record of a file whether the other one has it, too.
std::vector<bool> sharedWith(const std::vector<std::string>& texts,
                             const std::vector<std::string>& other)
{
    std::map<std::string_view, int> there;
    for (const std::string& text : other) {
        ++there[text];
    }
    std::vector<bool> shared;
    for (const std::string& text : texts) {
        shared.push_back(there[text]-- > 0);
    }
    return shared;
}

} // namespace

std::string drawingChanges(const std::string& before, const std::string& after)
{
    const RecordsOf first(before);
    const RecordsOf second(after);
    if (!first.isRead() || !second.isRead()) {
        return "no drawing\n";
    }
    const auto texts = textsOf(first);
    const auto newTexts = textsOf(second);
    std::string changes;
    std::vector<std::string_view> kept;
    std::vector<std::string_view> keptNow;
    const auto compare = [&](const RecordsOf& records, const auto& own, const auto& other,
                             const char* sign, auto& both) {
        const auto shared = sharedWith(own, other);
        for (std::size_t i = 0; i < own.size(); ++i) {
            if (shared[i]) {
                both.push_back(own[i]);
            } else {
                changes += sign + records.all()[i].type + '\n';
            }
        }
    };
    compare(first, texts, newTexts, "- ", kept);
    compare(second, newTexts, texts, "+ ", keptNow);
    return changes + (kept == keptNow ? "" : "another order\n");
}

} // namespace corma::testing
