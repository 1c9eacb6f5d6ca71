#include "model_checks.h"

#include "foundation/text_file.h"
#include "fuzz_support.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "settings/ReferenceModel.h"
#include "settings/RubriekenArray.h"

#include <cstdio>
#include <map>
#include <vector>

namespace corma::fuzzing {

namespace {

using testing::FileFamily;
using testing::ReferenceModel;

constexpr char kNextFile = '\x1E';
constexpr std::string_view kUsualGlobal = "A=1\nB=x,y\na b=2\nbitmap=3\nmin=4\n=5\n"
                                          "[T]\nA=1\nC=z\n[\xC3\xA9]\n\xC3\xA9=6\n[T]\nA=7\n";

/// Services that keep what the user is told.
class KeepingServices : public SilentServices
{
public:
    void print(const wchar_t* text) override { printed += text; }

    MessageAnswer messageBox(const wchar_t* text, const wchar_t* /*title*/, MessageIcon /*icon*/,
                             MessageButtons /*buttons*/) override
    {
        boxes.emplace_back(text);
        return MessageAnswer::ok;
    }

    std::wstring printed;
    std::vector<std::wstring> boxes;
};

// What is different is shown, as the process stops at it.
void requireSame(const char* what, const std::wstring& found, const std::wstring& expected)
{
    if (found != expected) {
        std::fprintf(stderr, "%s\n--- model\n%s\n--- rules\n%s\n", what, toUtf8(found).c_str(),
                     toUtf8(expected).c_str());
    }
    require(found == expected);
}

void checkSame(const RubriekenArray& model, const ReferenceModel& reference,
               const KeepingServices& told)
{
    requireSame("model", testing::asText(model), reference.asText());
    requireSame("command line", told.printed, reference.printed);
    require(told.boxes.size() == reference.boxes.size());
    for (std::size_t i = 0; i < told.boxes.size(); ++i) {
        requireSame("box", told.boxes[i], reference.boxes[i]);
    }
}

} // namespace

TwoFiles::TwoFiles(std::string_view input)
    : subject(input.substr(0, input.find(kNextFile)))
    , global(subject.size() == input.size() ? kUsualGlobal : input.substr(subject.size() + 1))
{
}

void checkModel(const ModelInput& input)
{
    static const MemoryFolder folder;
    const std::wstring path = platform::fromNative(folder.path(""));
    FileFamily family {.folder = path, .name = L"t.ini", .language = 9, .files = {}};
    family.files[L"t.ini"] = input.global;
    family.files[L"t.inr"] = input.definitions;
    family.files[L"LanEN/t.ind"] = input.descriptions;
    static std::map<std::wstring, std::string> written;
    for (const auto& [name, bytes] : family.files) {
        const auto [place, isNew] = written.try_emplace(name);
        if (isNew || place->second != bytes) {
            folder.write(toUtf8(name), bytes);
            place->second = bytes;
        }
    }
    const KeepingServices told;
    RubriekenArray model(FileNameSet::of(family.folder, family.name, family.language));
    ReferenceModel reference = ReferenceModel::load(family);
    checkSame(model, reference, told);
    if (input.project.empty()) {
        return;
    }
    folder.write("t.ipr", input.project);
    require(model.loadProjectFile(path + L"t.ipr"));
    reference.loadProjectFile(std::string(input.project));
    checkSame(model, reference, told);
}

void checkStream(std::string_view bytes)
{
    static const MemoryFolder folder;
    folder.write("t.ini", bytes);
    const auto stream = xx_openUnicode(platform::fromNative(folder.path("t.ini")), OpenMode::text);
    require(stream != nullptr);
    const KeepingServices told;
    const RubriekenArray model(stream.get());
    checkSame(model, ReferenceModel::loadStream(std::string(bytes)), told);
}

} // namespace corma::fuzzing
