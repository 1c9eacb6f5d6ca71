#include "fuzz_support.h"
#include "platform/platform.h"
#include <corma/lookup_trace.h>
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace {

using namespace corma;

constexpr char kNextFile = '\x1E'; // separates the files of an input
constexpr std::array kNames = {"a.ini", "b.ini",     "c.ini", "d.ini",     "e.ini", "sub/f.ini",
                               "g.ini", "sub/h.ini", "i.ini", "sub/j.ini", "k.ini", "l.ini"};

// A device that an input names is opened; these are the only ones that nothing happens to.
bool isHarmless(std::string_view input)
{
    constexpr std::string_view kDevices = "/dev/";
    for (std::size_t at = 0; (at = input.find(kDevices, at)) != std::string_view::npos;) {
        at += kDevices.size();
        const std::string_view device = input.substr(at);
        if (!device.starts_with("null") && !device.starts_with("zero")) {
            return false;
        }
    }
    return true;
}

// Writes the files of an input; the others are not there. One bit for each of the first eight
// makes it unreadable (for a user other than root).
void writeFiles(const fuzzing::MemoryFolder& folder, unsigned unreadable, std::string_view input)
{
    bool more = true;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        folder.remove(kNames[i]);
        if (!more) {
            continue;
        }
        const std::size_t end = input.find(kNextFile);
        folder.write(kNames[i], input.substr(0, end));
        if (((unreadable >> i) & 1U) != 0 && i != 0) {
            std::filesystem::permissions(folder.path(kNames[i]), std::filesystem::perms::none);
        }
        more = end != std::string_view::npos;
        input.remove_prefix(more ? end + 1 : input.size());
    }
}

// Slots, names and tree tell the same.
void checkSlots(const xx_Inifile& file, const IncludedFile& tree)
{
    fuzzing::require(file.getIncludedFiles() == static_cast<int>(tree.included.size()));
    for (int i = 0; i < file.getIncludedFiles(); ++i) {
        const IncludedFile* child = tree.included[static_cast<std::size_t>(i)].get();
        wchar_t name[264] = L"?";
        file.getIncludedFileName(i, name, 263);
        fuzzing::require(std::wstring_view(name) == (child == nullptr ? L"?" : child->path));
    }
}

int filesIn(const IncludedFile& tree)
{
    int count = 1;
    for (const auto& child : tree.included) {
        fuzzing::require(!child || !child->path.empty() || !child->found);
        count += child ? filesIn(*child) : 0;
    }
    return count;
}

void checkLookups(xx_Inifile& file)
{
    for (const wchar_t* ident : {L"a", L"[a]a", L"#INCLUDE", L"[b]", L"nothing,a"}) {
        std::wstring text = ident;
        std::array<wchar_t, 100> first {};
        const int status = file.getString(text.data(), first.data(), 100, 0);
        for (int i = 0; i < 2; ++i) {
            std::array<wchar_t, 100> again {};
            fuzzing::require(file.getString(text.data(), again.data(), 100, 0) == status);
            fuzzing::require(std::wstring_view(first.data()) == again.data());
        }
        for (const LevelValue& level : levelsOf(file, ident)) {
            fuzzing::require(!level.inForce || level.where.found);
        }
    }
}

} // namespace

/// The first byte tells which files cannot be read; the others are the files a.ini to l.ini, of
/// which some lie in a folder, with a byte 1E between two. The first is the root.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzzing::SilentServices services;
    static const fuzzing::MemoryFolder folder;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.empty() || !isHarmless(input)) {
        return 0;
    }
    writeFiles(folder, data[0], input.substr(1));
    std::wstring root = platform::fromNative(folder.path(kNames[0]));
    xx_Inifile file(root.data(), 0, nullptr);
    const auto tree = includeTree(file);
    fuzzing::require(tree->found && tree->path == file.getFilename());
    fuzzing::require(filesIn(*tree) <= 1 + 3000 * 1000); // names in a list, files in a tree
    checkSlots(file, *tree);
    checkLookups(file);
    return 0;
}
