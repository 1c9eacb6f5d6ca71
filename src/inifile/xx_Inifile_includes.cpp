#include "foundation/expand.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"

#include <algorithm>
#include <cwchar>
#include <utility>

namespace {

constexpr const wchar_t* kInclude = L"#INCLUDE";
constexpr const wchar_t* kSeparators = L",;";
constexpr int kLongestList = 3000; // characters, the terminator counted
constexpr std::size_t kPathSize = corma::kLongestPath + 1;

// Links between folders can make a tree of includes that never ends, since each turn gives a path
// of its own. No real tree comes near these numbers.
constexpr int kDeepestInclude = 100;
constexpr int kMostIncluded = 1000;
constexpr const wchar_t* kTooDeep = L"Inifile \"%s\" not included: more than %d levels of includes";
constexpr const wchar_t* kTooMany = L"Inifile \"%s\" not included: more than %d files in the tree";

struct PlaceInTree
{
    const xx_Inifile* root;
    int depth; // includes between the root and a new child

    [[nodiscard]] xx_IniPrivate& rootPrivate() const
    {
        return *corma::InifileInside::privateOf(*root);
    }
};

PlaceInTree placeBelow(const xx_Inifile& file)
{
    PlaceInTree place {&file, 1};
    while (const xx_Inifile* parent = place.rootPrivate().parent) {
        place.root = parent;
        ++place.depth;
    }
    return place;
}

// A tree that reaches a limit does so in many places; it is told once.
bool isWithinLimits(const PlaceInTree& place, const wchar_t* path)
{
    const bool isTooDeep = place.depth > kDeepestInclude;
    if (!isTooDeep && place.rootPrivate().treeSize < kMostIncluded) {
        return true;
    }
    if (!std::exchange(place.rootPrivate().wasLimited, true)) {
        const std::wstring text = isTooDeep ? corma::formatted(kTooDeep, path, kDeepestInclude)
                                            : corma::formatted(kTooMany, path, kMostIncluded);
        xx_reportError(corma::kInifileSource, __LINE__, text.c_str(), 0);
    }
    return false;
}

} // namespace

xx_Inifile::xx_Inifile(xx_Inifile* parent)
    : scrambled(parent->scrambled)
{
    allocPrivateData();
    if (priv != nullptr) {
        priv->parent = parent;
    }
}

// The repeated path keeps its empty slot: callers count names
// (test: ARepeatedNameKeepsItsEmptySlot).
void xx_Inifile::initIncludedInifiles()
{
    std::wstring list(kLongestList, L'\0');
    if (priv == nullptr || getStringOneIdentOld(kInclude, list.data(), kLongestList, 0) != RTNORM) {
        return;
    }
    if (priv->parent == nullptr) {
        priv->treeFiles.emplace(filename);
    }
    corma::Pieces names(corma::view(list.c_str()), kSeparators);
    while (!names.atEnd()) {
        const auto expanded = corma::expandEnvironment(names.next(), corma::kLongestPath);
        priv->included.emplace_back();
        if (expanded) {
            wchar_t path[kPathSize];
            corma::copyBounded(path, kPathSize, *expanded);
            makePathAbsolute(path, kPathSize);
            includeFile(path);
        }
    }
}

// The child takes its slot before it is opened, so that the files which it includes itself find it
// in the tree: that is what ends cycles.
void xx_Inifile::includeFile(const wchar_t* path)
{
    const PlaceInTree place = placeBelow(*this);
    if (place.root->hasIncludedFileName(path) || !isWithinLimits(place, path)) {
        return;
    }
    ++place.rootPrivate().treeSize;
    auto& slot = priv->included.back();
    slot.reset(new xx_Inifile(this));
    slot->open(path);
    place.rootPrivate().treeFiles.emplace(slot->filename);
    slot->initIncludedInifiles();
}

// Names are compared exactly, as they are written.
bool xx_Inifile::hasIncludedFileName(const wchar_t* path) const
{
    return priv->treeFiles.contains(path);
}

void xx_Inifile::makePathAbsolute(wchar_t* path, size_t size) const
{
    const std::wstring folder = corma::platform::splitPath(filename).folderPath();
    const std::wstring whole
        = corma::platform::isAbsolute(path) ? path : corma::platform::joinPath(folder, path);
    corma::copyBounded(path, size, corma::platform::fullPath(whole));
}

int xx_Inifile::getIncludedFiles() const
{
    return priv == nullptr ? 0 : static_cast<int>(priv->included.size());
}

void xx_Inifile::getIncludedFileName(int index, wchar_t* name, size_t length) const
{
    if (index < 0 || index >= getIncludedFiles()) {
        return;
    }
    if (const auto& child = priv->included[static_cast<size_t>(index)]) {
        std::wcsncpy(name, child->filename, length);
    }
}

namespace corma {

std::unique_ptr<IncludedFile> includeTree(const xx_Inifile& file)
{
    auto tree = std::make_unique<IncludedFile>();
    const xx_IniPrivate* priv = InifileInside::privateOf(file);
    tree->path = file.getFilename();
    tree->found = priv != nullptr && priv->file != nullptr;
    if (priv != nullptr) {
        for (const auto& child : priv->included) {
            tree->included.push_back(child ? includeTree(*child) : nullptr);
        }
    }
    return tree;
}

} // namespace corma
