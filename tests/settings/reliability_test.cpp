// Each way to change a file of settings, with every one of its system calls failing in turn, and
// with the process killed before and behind every one of them: the file is always whole, and the
// next change works.

#include "inifile/scrambling.h"
#include "platform/faults.h"
#include "platform/platform.h"
#include "settings/Instelling.h"
#include "settings/SettingsTest.h"
#include "support/Child.h"
#include "support/FaultPlan.h"
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <set>
#include <utility>

using corma::platform::SystemCall;
using corma::testing::BoxServices;
using corma::testing::ChildEnd;
using corma::testing::FaultPlan;
using corma::testing::inChild;
using corma::testing::memoryFolder;
using corma::testing::OpenObjects;
using corma::testing::TempFolder;
using ::testing::AnyOf;
using ::testing::ElementsAreArray;
namespace fs = std::filesystem;

namespace {

using Fault = FaultPlan::Fault;

constexpr int kKey = 7; // of the scrambled file
constexpr int kNormal = 5100; // RTNORM
constexpr const char* kNoSuchFile = "(none)";

constexpr const char* kOldSettings = "; settings\n"
                                     "Taal=nl\n"
                                     "[A]\n"
                                     "Kleur=rood\n"
                                     "Dikte=2\n"
                                     "[B]\n"
                                     "Hoogte=3\n"
                                     "Breedte=4\n"
                                     "[C]\n"
                                     "X=1\n";

constexpr const char* kUpdated = "; settings\n"
                                 "Taal=nl\n"
                                 "\n"
                                 "[A]\n"
                                 "Kleur=rood\n"
                                 "Nieuw=9\n"
                                 "Dikte=2\n"
                                 "\n"
                                 "[B]\n"
                                 "Hoogte=3\n"
                                 "Breedte=4\n"
                                 "\n"
                                 "[C]\n"
                                 "X=1\n"
                                 "\n"
                                 "[E]\n"
                                 "Z=1\n";

std::string withChange(std::string text, std::string_view former, std::string_view other)
{
    return text.replace(text.find(former), former.size(), other);
}

// Where a writer works, and what it may tell there.
struct Site
{
    TempFolder folder;
    std::unique_ptr<TempFolder> memory; // on another file system; null for none
    BoxServices services;

    [[nodiscard]] bool isQuiet() const
    {
        return services.boxes.empty() && services.printed.empty() && services.alerts.empty();
    }
};

using FileWriting = std::function<bool()>; // false when it tells that it failed

/// A way to change a file.
struct Writer
{
    std::string name;
    std::vector<std::pair<std::wstring, std::string>> files; // that are there before
    std::vector<std::string> states; // of the file that it changes; each but the last may be left
    std::function<FileWriting(Site&)> open; // all that comes before the change itself
    std::wstring file = L"tool.ini";
    std::wstring backup {}; // what holds the former content behind it
    bool isAcross = false; // with the temporary file on another file system
    std::function<bool(SystemCall, int)> isSilent // what it may fail at without telling
        = [](SystemCall, int) { return false; };
};

std::ostream& operator<<(std::ostream& out, const Writer& writer)
{
    return out << writer.name;
}

// --- the writers ---------------------------------------------------------------------------------

FileWriting writeString(Site& site, const std::wstring& file, const std::wstring& ident, int level)
{
    std::wstring path = site.folder.path(file);
    const int key = file == L"tool7.ini" ? kKey : 0;
    auto opened = std::make_shared<xx_Inifile>(path.data(), key, nullptr);
    return [&site, opened, ident, level] {
        std::wstring name = ident.substr(0, ident.find(L'='));
        std::wstring value = ident.substr(ident.find(L'=') + 1);
        opened->writeString(name.data(), value.data(), level);
        return site.isQuiet();
    };
}

Writer stringWriter(const char* name, const std::wstring& entry, const std::string& behind)
{
    return {.name = name,
            .files = {{L"tool.ini", kOldSettings}},
            .states = {kOldSettings, behind},
            .open = [entry](Site& site) { return writeString(site, L"tool.ini", entry, 0); }};
}

Writer projectWriter(const char* name, const std::string& before)
{
    Writer writer {
        .name = name,
        .files = {{L"tool.ini", kOldSettings}},
        .states = {before, before == kNoSuchFile ? "[A]\nKleur=blauw" : "[A]\nKleur=blauw\n"},
        .open = [](Site& site) { return writeString(site, L"tool.ini", L"[A]Kleur=blauw", 1); }};
    writer.file = L"tool.ipr";
    if (before != kNoSuchFile) {
        writer.files.emplace_back(L"tool.ipr", before);
    }
    // A project file that does not take its name is not told.
    writer.isSilent = [](SystemCall call, int) { return call == SystemCall::rename; };
    return writer;
}

Writer scrambledWriter()
{
    const std::string text = "[A]\nKleur=rood\nDikte=2\n";
    const std::string before = corma::scrambledForm(text, kKey);
    Writer writer {
        .name = "ScrambledString",
        .files = {{L"tool7.ini", before}},
        .states = {before, corma::scrambledForm(withChange(text, "rood", "blauw"), kKey)},
        .open = [](Site& site) { return writeString(site, L"tool7.ini", L"[A]Kleur=blauw", 0); }};
    writer.file = L"tool7.ini";
    // Nor is a temporary file that may not be made, for a scrambled one.
    writer.isSilent
        = [](SystemCall call, int error) { return call == SystemCall::create && error == EACCES; };
    return writer;
}

// A setting whose file is rewritten by way of a project folder on another file system.
Writer acrossWriter()
{
    Writer writer = stringWriter("SettingAcrossFileSystems", L"",
                                 withChange(kOldSettings, "Kleur=rood", "Kleur=blauw"));
    writer.isAcross = true;
    writer.open = [](Site& site) -> FileWriting {
        FileNameSet names = FileNameSet::of(site.folder.path(L""), L"tool.ini", corma::kEnglish);
        names.projectFolder = site.memory->path(L"");
        return [&site, names] {
            Rubriek category(L"A");
            Instelling setting(L"Kleur", L"blauw");
            setting.setCategory(&category);
            return setting.writeToFile(names, true, true) && site.isQuiet();
        };
    };
    return writer;
}

Writer updateWriter()
{
    Writer writer {.name = "Update",
                   .files = {{L"tool.ini", kOldSettings},
                             {L"defaults.txt", "[A]\nKleur=geel\nNieuw=9\n[E]\nZ=1\n"},
                             {L"tool.ino", "older\n"}},
                   .states = {kOldSettings, kUpdated},
                   .open = [](Site& site) -> FileWriting {
                       std::wstring path = site.folder.path(L"tool.ini");
                       std::wstring defaults = site.folder.path(L"defaults.txt");
                       auto opened = std::make_shared<xx_Inifile>(path.data(), 0, nullptr);
                       return [opened, defaults]() mutable {
                           return opened->update(defaults.data(), nullptr) == kNormal;
                       };
                   }};
    writer.backup = L"tool.ino";
    return writer;
}

Writer replaceWriter()
{
    return {.name = "ReplaceNew",
            .files
            = {{L"tool.ini", kOldSettings}, {L"new.txt", "[A]\nKleur=geel\n[B]\nHoogte=30\n"}},
            .states = {kOldSettings,
                       withChange(withChange(kOldSettings, "Kleur=rood", "Kleur=geel"), "Hoogte=3",
                                  "Hoogte=30")},
            .open = [](Site& site) -> FileWriting {
                std::wstring path = site.folder.path(L"tool.ini");
                const std::wstring values = site.folder.path(L"new.txt");
                auto opened = std::make_shared<xx_Inifile>(path.data(), 0, nullptr);
                return [&site, opened, values] {
                    return opened->replaceNew(values.c_str()) == kNormal && site.isQuiet();
                };
            }};
}

struct OpenModel
{
    explicit OpenModel(const Site& site)
        : names(FileNameSet::of(site.folder.path(L""), L"tool.ini", corma::kEnglish))
        , model(names)
    {
    }

    FileNameSet names;
    RubriekenArray model;
};

Writer removeWriter()
{
    return {.name = "RemoveFromFile",
            .files = {{L"tool.ini", kOldSettings}},
            .states = {kOldSettings, withChange(kOldSettings, "Kleur=rood\n", "")},
            .open = [](Site& site) -> FileWriting {
                auto opened = std::make_shared<OpenModel>(site);
                return [opened] {
                    return opened->model.findCategory(L"A")->settings().removeFromFile(
                        L"Kleur", opened->names);
                };
            }};
}

Writer removeCategoryWriter()
{
    const std::string oneLess = withChange(kOldSettings, "Hoogte=3\n", "");
    const std::string twoLess = withChange(oneLess, "Breedte=4\n", "");
    return {.name = "RemoveCategory",
            .files = {{L"tool.ini", kOldSettings}},
            .states = {kOldSettings, oneLess, twoLess, withChange(twoLess, "[B]\n", "")},
            .open = [](Site& site) -> FileWriting {
                auto opened = std::make_shared<OpenModel>(site);
                return [opened] {
                    return opened->model.removeCategory(L"B", opened->names, false, false, nullptr);
                };
            }};
}

std::vector<Writer> writers()
{
    return {stringWriter("AddedString", L"[A]Nieuw=5",
                         withChange(kOldSettings, "Dikte=2\n", "Dikte=2\nNieuw=5\n")),
            stringWriter("ReplacedString", L"[A]Kleur=blauw",
                         withChange(kOldSettings, "Kleur=rood", "Kleur=blauw")),
            stringWriter("StringOfANewChapter", L"[D]Y=1", kOldSettings + std::string("[D]\nY=1")),
            projectWriter("StringOfTheProject", "[A]\nKleur=groen\n"),
            projectWriter("StringOfANewProject", kNoSuchFile),
            scrambledWriter(),
            acrossWriter(),
            updateWriter(),
            replaceWriter(),
            removeWriter(),
            removeCategoryWriter()};
}

// The errors that a call can fail with.
std::vector<int> errorsOf(SystemCall call)
{
    switch (call) {
    case SystemCall::create:
        return {EIO, ENOSPC, EACCES};
    case SystemCall::write:
    case SystemCall::flush:
        return {EIO, ENOSPC};
    case SystemCall::openTarget:
    case SystemCall::openFolder:
        return {EIO, EACCES};
    case SystemCall::rename:
        return {EIO, EXDEV};
    case SystemCall::link:
        return {EIO, EPERM};
    default:
        return {EIO};
    }
}

std::size_t openDescriptors()
{
    const fs::directory_iterator open("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(open), end(open)));
}

class ReliabilityTest : public OpenObjects, public ::testing::WithParamInterface<Writer>
{
protected:
    void SetUp() override
    {
        OpenObjects::SetUp();
        if (writer.isAcross && memoryFolder().empty()) {
            GTEST_SKIP() << "there is no second file system to write to";
        }
        if (writer.isAcross) {
            site.memory = std::make_unique<TempFolder>(memoryFolder());
        }
    }

    // The files as they are before the writer.
    void prepare()
    {
        for (const TempFolder* const folder : {&site.folder, site.memory.get()}) {
            for (const std::string& name : folder == nullptr ? Names() : namesIn(*folder)) {
                fs::remove_all(fs::path(corma::platform::toNative(folder->path())) / name);
            }
        }
        for (const auto& [name, bytes] : writer.files) {
            site.folder.write(name, bytes);
        }
        forget();
    }

    void forget()
    {
        site.services.boxes.clear();
        site.services.printed.clear();
        site.services.alerts.clear();
    }

    using Names = std::set<std::string>;

    static Names namesIn(const TempFolder& folder)
    {
        Names names;
        for (const auto& entry : fs::directory_iterator(corma::platform::toNative(folder.path()))) {
            names.insert(entry.path().filename().native());
        }
        return names;
    }

    // The names that are there when nothing is left over.
    [[nodiscard]] Names expectedNames() const
    {
        Names names;
        for (const auto& [name, bytes] : writer.files) {
            names.insert(corma::platform::toNative(name));
        }
        names.insert(corma::platform::toNative(writer.file));
        return names;
    }

    [[nodiscard]] std::string state() const
    {
        return site.folder.has(writer.file) ? site.folder.read(writer.file) : kNoSuchFile;
    }

    [[nodiscard]] const std::string& done() const { return writer.states.back(); }

    // What must hold behind any fault; all of the former content must be somewhere.
    void expectWhole() const
    {
        const std::string now = state();
        EXPECT_THAT(writer.states, ::testing::Contains(now));
        if (!writer.backup.empty()) {
            const std::string kept = site.folder.read(writer.backup);
            EXPECT_THAT(kept, AnyOf("older\n", writer.states.front()));
            EXPECT_TRUE(now != done() || kept == writer.states.front());
        }
    }

    // The same change, unless it was done, and another one behind it.
    void expectNextWrites()
    {
        forget();
        if (state() != done()) {
            const FileWriting again = writer.open(site);
            EXPECT_TRUE(timed(again));
        }
        EXPECT_EQ(state(), done());
        forget();
        const bool isScrambled = writer.file == L"tool7.ini";
        const int level = writer.file == L"tool.ipr" ? 1 : 0;
        const FileWriting next = writeString(site, isScrambled ? writer.file : L"tool.ini",
                                             isScrambled ? L"[A]Kleur=geel" : L"[Z]Next=1", level);
        EXPECT_TRUE(timed(next));
        EXPECT_EQ(state(),
                  isScrambled ? corma::scrambledForm("[A]\nKleur=geel\nDikte=2\n", kKey)
                              : withLineEnd(done()) + "[Z]\nNext=1");
        EXPECT_EQ(namesIn(site.folder), expectedNames());
    }

    static std::string withLineEnd(const std::string& text)
    {
        return text.ends_with('\n') ? text : text + "\n";
    }

    bool timed(const FileWriting& write)
    {
        const auto begin = std::chrono::steady_clock::now();
        const bool isDone = write();
        slowest = std::max(slowest, std::chrono::steady_clock::now() - begin);
        return isDone;
    }

    // The calls of an undisturbed write.
    std::vector<SystemCall> countCalls()
    {
        prepare();
        const FileWriting write = writer.open(site);
        std::vector<SystemCall> calls;
        {
            const FaultPlan plan;
            EXPECT_TRUE(write());
            calls = plan.calls();
        }
        EXPECT_EQ(state(), done());
        expectWhole();
        return calls;
    }

    // A file that was written a moment ago is read once more, so that a slow machine makes fewer
    // calls than were counted; a plan for a call that is not made leaves the write undisturbed.
    void failAt(FaultPlan::Plan plan)
    {
        SCOPED_TRACE("call " + std::to_string(plan.call) + " fails with error "
                     + std::to_string(plan.error));
        prepare();
        std::optional<SystemCall> failed;
        {
            const FileWriting write = writer.open(site);
            const std::size_t openBefore = openDescriptors();
            bool isTold = false;
            {
                const FaultPlan faults(plan);
                isTold = !write();
                if (faults.calls().size() > plan.call) {
                    failed = faults.calls()[plan.call];
                    EXPECT_GE(faults.failures(), 1U);
                }
                injected += faults.failures();
            }
            SCOPED_TRACE(failed ? nameOf(*failed) : "not made");
            EXPECT_LE(openDescriptors(), openBefore);
            expectWhole();
            EXPECT_TRUE(!isTold || state() != done()) << "what was done was told as failed";
            EXPECT_TRUE(isTold || state() == done()
                        || (failed && writer.isSilent(*failed, plan.error)))
                << "a failure was not told";
        }
        // Who fails clears up; but for a remove() that fails itself.
        if (failed != SystemCall::remove) {
            Names names = namesIn(site.folder);
            names.insert(corma::platform::toNative(writer.file));
            EXPECT_EQ(names, expectedNames());
        }
        expectNextWrites();
    }

    void killAt(std::size_t call, Fault moment)
    {
        SCOPED_TRACE("killed at call " + std::to_string(call));
        prepare();
        const ChildEnd end = inChild([&] {
            const FileWriting write = writer.open(site);
            const FaultPlan faults({.fault = moment, .call = call});
            return write() && faults.calls().size() <= call;
        });
        EXPECT_TRUE(end.wasKilled() || end.isGood());
        injected += end.wasKilled() ? 1 : 0;
        expectWhole();
        expectNextWrites();
    }

    const Writer& writer = GetParam();
    Site site;
    std::size_t injected = 0;
    std::chrono::steady_clock::duration slowest {};
};

TEST_P(ReliabilityTest, NoFaultOfASystemCallLosesAnything)
{
    const std::vector<SystemCall> calls = countCalls();
    for (std::size_t call = 0; call < calls.size(); ++call) {
        for (const int error : errorsOf(calls[call])) {
            failAt({.fault = Fault::failure, .call = call, .error = error});
            failAt({.fault = Fault::failuresFromHere, .call = call, .error = error});
        }
        killAt(call, Fault::endBefore);
        killAt(call, Fault::endBehind);
    }
    constexpr std::size_t kFewestCalls = 10; // of any change of a file
    EXPECT_GE(calls.size(), kFewestCalls);
    EXPECT_GE(injected, 4 * calls.size());
    RecordProperty("calls", static_cast<int>(calls.size()));
    RecordProperty("faults", static_cast<int>(injected));
    std::printf("[ faults   ] %s: %zu calls, %zu faults injected, slowest next write %.1f ms\n",
                writer.name.c_str(), calls.size(), injected,
                std::chrono::duration<double, std::milli>(slowest).count());
}

INSTANTIATE_TEST_SUITE_P(OfAWriter, ReliabilityTest, ::testing::ValuesIn(writers()),
                         [](const auto& writer) { return writer.param.name; });

} // namespace
