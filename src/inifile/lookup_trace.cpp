#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "inifile/xx_Inifile_private.h"
#include <corma/lookup_trace.h>

#include <algorithm>
#include <optional>

namespace corma {

namespace {

bool isIncluded(const xx_Inifile& file)
{
    return InifileInside::privateOf(file)->parent != nullptr;
}

// The sources of one file, strongest first.
std::vector<LevelValue> ownLevels(xx_Inifile& file, const Ident& ident)
{
    std::vector<LevelValue> levels;
    SourceWalk walk(file, ident);
    for (const Source source : SourceWalk::kSources) {
        if (walk.applies(source)) {
            const bool found = walk.ask(source);
            levels.push_back({walk.asked(), found ? walk.value() : std::wstring(), false});
        }
    }
    return levels;
}

template<class Levels> auto firstFound(Levels& levels)
{
    return std::find_if(levels.begin(), levels.end(),
                        [](const auto& level) { return level.where.found; });
}

// An included file is looked up whole: what it gives is what its strongest source gives.
LevelValue strongest(const std::vector<LevelValue>& levels)
{
    const auto found = firstFound(levels);
    LevelValue whole = found == levels.end() ? levels.back() : *found;
    whole.where.source = Source::included;
    return whole;
}

void addLevels(xx_Inifile& file, const Ident& ident, std::vector<LevelValue>& all)
{
    const xx_IniPrivate* priv = InifileInside::privateOf(file);
    if (priv == nullptr) {
        return;
    }
    for (const auto& child : priv->included) {
        if (child) {
            addLevels(*child, ident, all);
        }
    }
    const auto own = ownLevels(file, ident);
    if (isIncluded(file)) {
        all.push_back(strongest(own));
    } else {
        all.insert(all.end(), own.begin(), own.end());
    }
}

} // namespace

const char* nameOf(Source source)
{
    switch (source) {
    case Source::included:
        return "included";
    case Source::cache:
        return "cache";
    case Source::drawing:
        return "drawing";
    case Source::project:
        return "project";
    case Source::file:
        break;
    }
    return "file";
}

LookupTrace::LookupTrace(xx_Inifile& file)
    : m_file(file)
{
    if (xx_IniPrivate* priv = InifileInside::privateOf(m_file)) {
        priv->trace = this;
    }
}

LookupTrace::~LookupTrace()
{
    if (xx_IniPrivate* priv = InifileInside::privateOf(m_file)) {
        priv->trace = nullptr;
    }
}

const std::vector<SourceAsked>& LookupTrace::asked() const
{
    return m_asked;
}

LookupTrace* InifileInside::traceOf(const xx_Inifile& file)
{
    const xx_IniPrivate* priv = privateOf(file);
    while (priv != nullptr && priv->parent != nullptr) {
        priv = privateOf(*priv->parent);
    }
    return priv == nullptr ? nullptr : priv->trace;
}

// An included file counts as one source: a hit at any of its levels, or a miss at the last of them.
void InifileInside::note(LookupTrace& trace, const xx_Inifile& file, const SourceWalk& walk)
{
    SourceAsked asked = walk.asked();
    if (isIncluded(file)) {
        if (!asked.found && asked.source != Source::file) {
            return;
        }
        asked.source = Source::included;
    }
    trace.m_asked.push_back(std::move(asked));
}

std::vector<LevelValue> levelsOf(xx_Inifile& file, const wchar_t* ident)
{
    std::vector<LevelValue> levels;
    addLevels(file, Ident::parse(view(ident)), levels);
    const auto found = firstFound(levels);
    if (found != levels.end()) {
        found->inForce = true;
    }
    return levels;
}

} // namespace corma
