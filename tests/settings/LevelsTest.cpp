#include "settings/LevelsTest.h"

#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "settings/texts.h"

#include <algorithm>
#include <filesystem>

using corma::host::Opened;

namespace corma::testing {

namespace {

std::string entriesOf(const AcDbDictionary& dictionary, const std::string& above)
{
    std::string text;
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary.newIterator());
    for (; !entry->done(); entry->next()) {
        const Opened<AcDbObject> object(entry->objectId());
        const std::string name = above + toUtf8(entry->name());
        if (const auto* const inner = AcDbDictionary::cast(object.get())) {
            text += name + "/\n" + entriesOf(*inner, name + "/");
        } else {
            text += name + "=" + toUtf8(textOfRecord(*object).value_or(L"(no text)")) + "\n";
        }
    }
    return text;
}

} // namespace

const char* nameOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::none:
        return "none";
    case MessageIcon::information:
        return "information";
    case MessageIcon::question:
        return "question";
    case MessageIcon::exclamation:
        return "exclamation";
    case MessageIcon::stop:
        return "stop";
    }
    return "";
}

std::string filesIn(const TempFolder& folder)
{
    namespace fs = std::filesystem;
    const fs::path root = platform::toNative(folder.path());
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file()) {
            names.push_back(entry.path().lexically_relative(root).native());
        }
    }
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) {
        all += (all.empty() ? "" : " ") + name;
    }
    return all;
}

int WriteWatch::before(platform::SystemCall call)
{
    if (call == platform::SystemCall::rename) {
        ++writes;
        files = filesIn(m_folder);
    }
    return 0;
}

void LevelsTest::SetUp()
{
    SettingsTest::SetUp();
    folder.makeFolder(L"cfg");
    folder.makeFolder(L"house");
}

FileNameSet LevelsTest::where() const
{
    FileNameSet names = FileNameSet::of(folder.path(L"cfg/"), L"tool.ini", 9);
    names.projectFolder = folder.path(L"house/");
    return names;
}

void LevelsTest::newDrawing() const
{
    ASSERT_TRUE(newDocument(folder.path(L"house/house.dxf").c_str()));
}

void LevelsTest::store(const wchar_t* chapter, const wchar_t* ident, const wchar_t* value)
{
    ASSERT_EQ(writeToDrawing(L"tool.ini", chapter, ident, value, nullptr), Acad::eOk);
}

std::string LevelsTest::drawing()
{
    Opened<AcDbDictionary> dictionary;
    if (xx_dictionaryFor(L"tool.ini", L"", dictionary.out(), false, nullptr) != Acad::eOk) {
        return "(none)";
    }
    return entriesOf(*dictionary, "");
}

std::unique_ptr<RubriekenArray> LevelsTest::model(int language) const
{
    setTextLanguage(language);
    auto loaded = std::make_unique<RubriekenArray>(where());
    if (folder.has(L"house/tool.ipr")) {
        EXPECT_TRUE(loaded->loadProjectFile(folder.path(L"house/tool.ipr")));
    }
    if (acDocManagerPtr()->curDocument() != nullptr) {
        loaded->loadDrawing(acdbHostApplicationServices()->workingDatabase(), where());
    }
    if (loaded->size() != 0) {
        (*loaded)[0].description.clear();
    }
    return loaded;
}

std::string LevelsTest::told()
{
    std::string text;
    for (std::size_t i = 0; i < services.boxes.size(); ++i) {
        text += nameOf(services.icons[i]) + std::string(": ") + toUtf8(services.boxes[i]) + "\n";
        EXPECT_EQ(services.titles[i], L"CfgDesk");
    }
    services.boxes.clear();
    services.icons.clear();
    services.titles.clear();
    return homely(text);
}

} // namespace corma::testing
