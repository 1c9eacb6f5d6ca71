#include "editor/SettingDialogTest.h"

#include "platform/text.h"

namespace corma::testing {

namespace {

std::string folderOf(int language)
{
    switch (language) {
    case 19:
        return "LanNL";
    case 12:
        return "LanFR";
    case 25:
        return "LanRU";
    default:
        return "LanEN";
    }
}

} // namespace

void SettingDialogTest::define(std::string_view definition) const
{
    folder.write(L"cfg/tool.inr", "A=" + std::string(definition) + "\n");
}

void SettingDialogTest::describe(std::string_view description) const
{
    for (const int language : {9, 12, 19, 25}) {
        folder.write(fromUtf8("cfg/" + folderOf(language) + "/tool.ind"),
                     "\xEF\xBB\xBF"
                     "A=" + std::string(description)
                         + "\n");
    }
}

void SettingDialogTest::open(const DeskStart& start)
{
    DeskTest::open(start);
    select({L"A"});
}

std::string SettingDialogTest::messages()
{
    std::string all;
    for (std::size_t i = 0; i < services.boxes.size(); ++i) {
        all += std::string(nameOf(services.icons[i])) + ", " + toUtf8(services.titles[i]) + ": "
            + toUtf8(services.boxes[i]) + "\n";
    }
    services.boxes.clear();
    services.icons.clear();
    services.titles.clear();
    return homely(all);
}

} // namespace corma::testing
