#include "inifile/visual_words.h"

#include "host/acdb_database.h"
#include "host/color_index.h"
#include "inifile/numbers.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace corma {

namespace {

struct WeightWord
{
    std::wstring_view word;
    AcDb::LineWeight weight;
};

constexpr std::array kWeightWords = {
    WeightWord {L"DEFAULT", AcDb::kLnWtByLwDefault},
    WeightWord {L"BYDEFAULT", AcDb::kLnWtByLwDefault},
    WeightWord {L"BYLAYER", AcDb::kLnWtByLayer},
    WeightWord {L"BYBLOCK", AcDb::kLnWtByBlock},
};

} // namespace

std::size_t behindSeparators(std::wstring_view text, int count)
{
    std::size_t at = 0;
    for (int i = 0; i < count; ++i) {
        const std::size_t separator = text.find(kVisualSeparator, at);
        at = separator == std::wstring_view::npos ? 0 : separator + 1;
    }
    return at;
}

int colourFromText(std::wstring_view text)
{
    const std::wstring word = upperCase(text);
    if (word == L"BYLAYER") {
        return host::kColorByLayer;
    }
    return word == L"BYBLOCK" ? host::kColorByBlock : toInt(word);
}

int lineweightFromText(std::wstring_view text)
{
    const std::wstring upper = upperCase(text);
    for (const WeightWord& row : kWeightWords) {
        if (row.word == upper) {
            return row.weight;
        }
    }
    // The bounds are far outside of all widths, and below the numbers of the words, which a bound
    // must not become; a number beyond them would have no int.
    constexpr double kFarOutside = 1000.0;
    const double hundredths = toDouble(upper) * 100.0;
    const double bounded = std::clamp(hundredths, -kFarOutside, kFarOutside);
    return AcDbDatabase::getNearestLineWeight(static_cast<int>(bounded));
}

} // namespace corma
