#include "editor/SettingDialogTest.h"

#include "host/host.h"
#include "platform/text.h"

#include <algorithm>

namespace corma::testing {

namespace {

const char* nameOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::exclamation:
        return "exclamation";
    case MessageIcon::stop:
        return "stop";
    default:
        return "other";
    }
}

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

void SettingDialogTest::TearDown()
{
    desk.reset();
    LevelsTest::TearDown();
}

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

DeskStart SettingDialogTest::startAt(Levels levels, int language) const
{
    DeskStart start {.request = {.iniFile = folder.path(L"cfg/tool.ini"), .language = language}};
    if (levels == Levels::project) {
        start.request.projectFile = folder.path(L"house/tool.ipr");
    }
    if (levels == Levels::local || levels == Levels::localProject) {
        if (acDocManagerPtr()->curDocument() == nullptr) {
            newDrawing();
        }
        start.request.document = acDocManagerPtr()->curDocument();
    }
    return start;
}

void SettingDialogTest::open(const DeskStart& start)
{
    static NoPreferences preferences;
    static HiddenView view;
    desk = std::make_unique<Desk>(start, preferences);
    desk->open(view);
    select(L"A");
}

void SettingDialogTest::select(const wchar_t* name)
{
    const auto& rows = desk->rows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const SettingRow& each) { return each.name == name; });
    if (row == rows.end()) {
        desk->selectRows({}, -1);
        return;
    }
    const int place = static_cast<int>(row - rows.begin());
    desk->selectRows({place}, place);
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
