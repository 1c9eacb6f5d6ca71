#include "foundation/text_file.h"
#include "fuzz_support.h"
#include "inifile/Ident.h"
#include "inifile/IdentIndex.h"
#include "platform/platform.h"
#include "reader_checks.h"

#include <cstdint>

namespace {

using namespace corma;

// The index finds what the scan finds, and in the same place.
void checkIndex(const TextFile& file, const std::vector<std::wstring>& idents)
{
    const IdentIndex index(file);
    for (const std::wstring& text : idents) {
        const IdentKey key(Ident::parse(text));
        const auto scanned = findByScan(file, key);
        const auto indexed = index.find(file, key);
        fuzzing::require(scanned.has_value() == indexed.has_value());
        fuzzing::require(!scanned
                         || (scanned->at == indexed->at && scanned->value == indexed->value
                             && scanned->value.data() == indexed->value.data()));
    }
}

} // namespace

/// The first byte chooses the idents; the others are the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzzing::SilentServices services;
    static const fuzzing::MemoryFolder folder;
    if (size == 0) {
        return 0;
    }
    folder.write("t.ini", {reinterpret_cast<const char*>(data + 1), size - 1});
    fuzzing::OpenedText opened {platform::fromNative(folder.path("t.ini")), 0, {}};
    const auto file = xx_openUnicode(opened.path, OpenMode::text);
    fuzzing::require(file != nullptr);
    opened.text = decode(file->bytes(), file->encoding());
    const auto idents = fuzzing::identsIn(opened.text, data[0]);
    checkIndex(*file, idents);
    fuzzing::checkLookups(opened, idents);
    fuzzing::checkWildcards(opened);
    return 0;
}
