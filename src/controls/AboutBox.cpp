#include "controls/AboutBox.h"

#include "controls/menu_version.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "platform/platform.h"

namespace corma {

namespace {

// Who reads a log knows the report by these.
constexpr const wchar_t* kSource = L"xx_about.cpp";
constexpr int kReportLine = 117;
constexpr int kMenuNotFound = 6542;

constexpr std::size_t kLongestPath = 260;
constexpr std::size_t kLongestText = 255;

std::wstring versionText(const std::wstring& module, std::string_view key)
{
    return platform::versionText(module, key).value_or(std::wstring()).substr(0, kLongestText);
}

// Day, month, year: as it always was, whatever the language.
std::wstring dateOf(const std::wstring& module)
{
    const auto stamp = platform::fileStamp(platform::locate(module));
    if (!stamp) {
        return {};
    }
    const platform::LocalTime time = platform::localTime(stamp->modified);
    return formatted(L"%02d/%02d/%d %02d:%02d:%02d", time.day, time.month, time.year, time.hour,
                     time.minute, time.second);
}

std::vector<std::wstring> cellsOf(std::wstring_view text)
{
    constexpr wchar_t kTab = L'\t';
    std::vector<std::wstring> cells;
    while (cells.size() < AboutBox::kColumns) {
        const std::size_t begin = text.find_first_not_of(kTab);
        if (begin == std::wstring_view::npos) {
            break;
        }
        text.remove_prefix(begin);
        cells.emplace_back(text.substr(0, text.find(kTab)));
        text.remove_prefix(cells.back().size());
    }
    return cells;
}

} // namespace

void AboutBox::readModule(const wchar_t* moduleFile)
{
    const std::wstring module(length(moduleFile) > 0 ? moduleFile : view(xx_hostModuleName()));
    if (module.empty()) {
        return;
    }
    appDate = dateOf(module);
    appVersion = versionText(module, "FileVersion");
    appName = versionText(module, "FileDescription");
    copyright = versionText(module, "LegalCopyright");
}

void AboutBox::setRows(const std::vector<std::wstring>& texts)
{
    rows.clear();
    for (const std::wstring& text : texts) {
        if (auto cells = cellsOf(text); !cells.empty()) {
            rows.push_back(std::move(cells));
        }
    }
}

std::wstring versionOfMenu(const wchar_t* menuFile)
{
    std::array<wchar_t, kLongestPath + 1> path {}; // a path that fills it has no terminator
    if (xx_findfile(menuFile, path.data(), kLongestPath) == RTNORM) {
        return menuVersionOf(path.data());
    }
    const std::wstring text
        = formatted(L"Cannot find menufile %s", menuFile == nullptr ? L"" : menuFile);
    xx_reportError(kSource, kReportLine, text.c_str(), kMenuNotFound);
    return L"(menu file not found)";
}

} // namespace corma
