#include "editor/visual_value.h"

#include "foundation/messages.h"
#include "host/acdb_symbol_table.h"
#include "host/color_index.h"
#include "inifile/visual_words.h"

#include <algorithm>

namespace corma {

namespace {

constexpr int kVisualFields = 4;

} // namespace

std::vector<std::wstring> fieldsOf(std::wstring_view text, std::size_t count)
{
    std::vector<std::wstring> fields(count);
    for (std::wstring& field : fields) {
        const std::size_t end = std::min(text.find(kVisualSeparator), text.size());
        field = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return fields;
}

std::wstring_view behindVisualFields(std::wstring_view text)
{
    return text.substr(behindSeparators(text, kVisualFields));
}

std::wstring joinedFields(const std::vector<std::wstring>& fields)
{
    std::wstring text;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i != 0) {
            text += kVisualSeparator;
        }
        text += fields[i];
    }
    return text;
}

std::wstring withDecimalPoints(std::wstring text)
{
    std::replace(text.begin(), text.end(), kVisualSeparator, L'.');
    return text;
}

std::wstring colourText(int colour)
{
    if (colour == host::kColorByLayer) {
        return L"ByLayer";
    }
    return colour == host::kColorByBlock ? L"ByBlock" : std::to_wstring(colour);
}

std::wstring lineweightText(int weight)
{
    switch (weight) {
    case AcDb::kLnWtByLayer:
        return L"ByLayer";
    case AcDb::kLnWtByBlock:
        return L"ByBlock";
    case AcDb::kLnWtByLwDefault:
        return L"Default";
    default:
        constexpr double kMillimetre = 0.01;
        return formatted(L"%.2f", weight * kMillimetre);
    }
}

} // namespace corma
