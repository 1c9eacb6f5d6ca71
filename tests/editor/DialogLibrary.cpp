#include "editor/DialogLibrary.h"

#include "platform/platform.h"

#include <algorithm>
#include <dlfcn.h>
#include <fstream>
#include <iterator>
#include <link.h>
#include <span>
#include <string>

namespace corma::testing {

namespace {

std::string builtLibrary()
{
    std::ifstream file(CORMA_TOLD_DIALOGS, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Each name with a "?" at its begin gets an "@" for each "$".
void decorate(std::span<char> names)
{
    bool isDecorated = false;
    char former = 0;
    for (char& c : names) {
        isDecorated = former == 0 ? c == '?' : isDecorated;
        former = c;
        if (isDecorated && c == '$') {
            c = '@';
        }
    }
}

// The places of names go by their letters. With one place for all, every name is looked at.
void putAllInOnePlace(std::span<ElfW(Word)> table)
{
    const ElfW(Word) symbols = table[1];
    table[0] = 1;
    table[2] = 1; // the first symbol is none
    const auto next = table.subspan(3, symbols);
    next[0] = 0;
    for (ElfW(Word) i = 1; i < symbols; ++i) {
        next[i] = i + 1 < symbols ? i + 1 : 0;
    }
}

std::string withDecoratedNames(std::string image)
{
    const auto& header = *reinterpret_cast<const ElfW(Ehdr)*>(image.data());
    const auto* const first = reinterpret_cast<const ElfW(Shdr)*>(image.data() + header.e_shoff);
    for (const ElfW(Shdr) & section : std::span(first, header.e_shnum)) {
        char* const begin = image.data() + section.sh_offset;
        if (section.sh_type == SHT_STRTAB && (section.sh_flags & SHF_ALLOC) != 0) {
            decorate({begin, section.sh_size});
        } else if (section.sh_type == SHT_HASH) {
            putAllInOnePlace(
                {reinterpret_cast<ElfW(Word)*>(begin), section.sh_size / sizeof(ElfW(Word))});
        }
    }
    return image;
}

} // namespace

DialogLibrary::DialogLibrary(const TempFolder& folder, Names names)
{
    std::string image = builtLibrary();
    if (names == Names::decorated) {
        image = withDecoratedNames(std::move(image));
    }
    const std::wstring path = folder.write(L"xx_corma_dotnet_acad.dll", image);
    m_handle = ::dlopen(platform::toNative(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

DialogLibrary::~DialogLibrary()
{
    if (m_handle != nullptr) {
        ::dlclose(m_handle);
    }
}

ToldDialogs& DialogLibrary::dialogs()
{
    return *static_cast<ToldDialogs*>(::dlsym(m_handle, "toldDialogs"));
}

} // namespace corma::testing
