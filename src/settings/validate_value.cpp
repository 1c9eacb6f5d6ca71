// What a value must look like for its type.

#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/numbers.h"
#include "inifile/visual_words.h"
#include "settings/Instelling.h"
#include "settings/messages.h"
#include "settings/texts.h"

#include <array>

namespace {

constexpr int kLargestAngle = 360; // degrees
constexpr int kFieldsBeforeAngle = 5;

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

// What a number may hold, wherever it stands in it: the editor lets people type on.
bool keepNumber(std::wstring& value, std::wstring_view otherCharacters)
{
    std::wstring kept;
    for (const wchar_t c : value) {
        if (isDigit(c) || otherCharacters.find(c) != std::wstring_view::npos) {
            kept.push_back(c == L',' ? L'.' : c);
        }
    }
    const bool isWhole = kept.size() == value.size();
    value = std::move(kept);
    return isWhole;
}

bool keepInteger(std::wstring& value)
{
    return keepNumber(value, L"-");
}

bool keepDecimal(std::wstring& value)
{
    return keepNumber(value, L".,-");
}

bool keepYesNo(std::wstring& value)
{
    if (value == L"1" || value == L"0") {
        return true;
    }
    value = L"0";
    return false;
}

bool keepHatch(std::wstring& value)
{
    // With too few fields these are others (test: AHatchOfFewFieldsIsReadFromItsBeginning).
    const std::size_t angleAt = corma::behindSeparators(value, kFieldsBeforeAngle);
    corma::Pieces fields(std::wstring_view(value).substr(angleAt), L",");
    const int angle = corma::toInt(fields.next());
    const int scale = corma::toInt(fields.next());
    const bool isAngle = angle >= 0 && angle <= kLargestAngle;
    const bool isScale = scale >= 0;
    if (!isAngle) {
        corma::showMessage(corma::text(corma::row::kAngleOutOfRange),
                           corma::MessageIcon::exclamation);
    }
    if (!isScale) {
        corma::showMessage(corma::text(corma::row::kScaleNegative),
                           corma::MessageIcon::exclamation);
    }
    if (!isAngle && !isScale) {
        value.clear();
    }
    return isAngle && isScale;
}

struct ValueRule
{
    int label;
    bool (*keep)(std::wstring& value);
};

constexpr std::array kRules = {
    ValueRule {corma::row::kInteger, keepInteger},
    ValueRule {corma::row::kDecimal, keepDecimal},
    ValueRule {corma::row::kYesNo, keepYesNo},
    ValueRule {corma::row::kHatch, keepHatch},
};

} // namespace

bool Instelling::validateValue(std::wstring& value, std::wstring_view typeLabel)
{
    for (const ValueRule& rule : kRules) {
        if (typeLabel == corma::text(rule.label)) {
            return rule.keep(value);
        }
    }
    return true;
}
