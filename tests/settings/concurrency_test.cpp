// Many processes that write one file, or two in one folder, at the same time.

#include "platform/platform.h"
#include "settings/SettingsTest.h"
#include "support/Child.h"
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <list>
#include <map>

using corma::testing::Child;
using corma::testing::SettingsTest;
using corma::testing::TempFolder;
namespace fs = std::filesystem;

namespace {

constexpr int kWriters = 8;
constexpr int kWritesEach = 1000;

// On a disk a flush may take many milliseconds. What is tested here is what the processes do to
// each other, for which a folder in memory will do as well; flushing is tested with the faults.
std::string parentFolder()
{
    const std::string memory = corma::testing::memoryFolder();
    return memory.empty() ? fs::temp_directory_path().native() : memory;
}

std::string contentOf(const std::wstring& path)
{
    std::ifstream file(corma::platform::toNative(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A writer has a chapter of its own for every other ident, and shares one for those between.
std::wstring identOf(int writer, int number)
{
    const std::wstring own = std::to_wstring(writer);
    return L"[" + (number % 2 == 0 ? L"Writer" + own : std::wstring(L"Shared")) + L"]W" + own + L"_"
        + std::to_wstring(number);
}

std::string lineOf(int writer, int number)
{
    return "W" + std::to_string(writer) + "_" + std::to_string(number) + "="
        + std::to_string(number) + "\n";
}

// Each write says so when it fails; the child is then false.
bool writeAll(const std::wstring& path, int writer,
              const corma::testing::RecordingServices& services)
{
    std::wstring name = path;
    xx_Inifile file(name.data(), 0, nullptr);
    for (int number = 0; number < kWritesEach; ++number) {
        std::wstring ident = identOf(writer, number);
        std::wstring value = std::to_wstring(number);
        file.writeString(ident.data(), value.data(), 0);
        if (!services.boxes.empty()) {
            return false;
        }
    }
    return true;
}

// How many of the lines of the writers a file has exactly once, whole.
int keptIn(const std::wstring& path, const std::function<bool(int)>& isWriterOf)
{
    const std::string content = "\n" + contentOf(path) + "\n";
    std::map<std::string, int> lines;
    for (std::size_t begin = 1, end = 0; begin < content.size(); begin = end + 1) {
        end = content.find('\n', begin);
        ++lines[content.substr(begin, end + 1 - begin)];
    }
    int kept = 0;
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int number = 0; isWriterOf(writer) && number < kWritesEach; ++number) {
            const auto found = lines.find(lineOf(writer, number));
            kept += found != lines.end() && found->second == 1 ? 1 : 0;
        }
    }
    return kept;
}

// What a reader of the raw bytes knows of the file: how many values each writer has in it.
class Progress
{
public:
    // False for a content that no moment between two writes can have.
    bool sees(std::string_view content)
    {
        if (!content.starts_with("; head\n")) {
            return false;
        }
        std::map<int, Seen> writers;
        while (!content.empty()) {
            const std::size_t end = content.find('\n');
            const std::string_view line = content.substr(0, end);
            if (line.starts_with('W') && !isEntry(line, writers)) {
                return false;
            }
            content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
        }
        // A writer's values come one after the other, and none goes.
        for (int writer = 0; writer < kWriters; ++writer) {
            const Seen& seen = writers[writer];
            if (seen.count != seen.last + 1 || seen.count < m_counts[writer]) {
                return false;
            }
            m_counts[writer] = seen.count;
        }
        return true;
    }

private:
    struct Seen
    {
        int count = 0;
        int last = -1; // the highest number
    };

    // "W3_17=17", and nothing else
    static bool isEntry(std::string_view line, std::map<int, Seen>& writers)
    {
        int writer = -1;
        int number = -1;
        if (std::sscanf(std::string(line).c_str(), "W%d_%d=", &writer, &number) != 2
            || std::string(line) + "\n" != lineOf(writer, number)) {
            return false;
        }
        Seen& seen = writers[writer];
        ++seen.count;
        seen.last = std::max(seen.last, number);
        return true;
    }

    std::map<int, int> m_counts;
};

// Reads until a file says that it is over.
bool readRaw(const std::wstring& path, const std::wstring& over)
{
    Progress progress;
    bool isLast = false;
    int reads = 0;
    do {
        isLast = corma::platform::exists(over);
        if (!progress.sees(contentOf(path))) {
            return false;
        }
        ++reads;
    } while (!isLast);
    return reads > 1;
}

// The same through the library, with an object that stays: a value that was seen stays, and the
// next ones come in order.
bool readByLookups(const std::wstring& path, const std::wstring& over)
{
    std::wstring name = path;
    xx_Inifile file(name.data(), 0, nullptr);
    std::map<int, int> next;
    bool isLast = false;
    do {
        isLast = corma::platform::exists(over);
        for (int writer = 0; writer < kWriters; ++writer) {
            const int seen = next[writer];
            int value = -1;
            std::wstring ident = identOf(writer, seen);
            next[writer] += file.getInt(ident.data(), &value, 0) == 5100 ? 1 : 0;
            if (seen < next[writer] && value != seen) {
                return false;
            }
            ident = identOf(writer, seen == 0 ? 0 : seen - 1);
            if (seen > 0 && file.getInt(ident.data(), &value, 0) != 5100) {
                return false;
            }
        }
    } while (!isLast);
    return next.size() == kWriters;
}

class ConcurrencyTest : public SettingsTest
{
protected:
    // Lets the writers write, and the readers read meanwhile.
    void run(
        const std::function<std::wstring(int)>& fileOf, const std::vector<std::wstring>& read,
        const std::function<bool()>& meanwhile = [] { return true; })
    {
        const std::wstring over = there.path(L"over");
        std::list<Child> readers;
        for (const std::wstring& path : read) {
            readers.emplace_back([&] { return readRaw(path, over); });
            readers.emplace_back([&] { return readByLookups(path, over); });
        }
        const auto begin = std::chrono::steady_clock::now();
        std::list<Child> writers;
        for (int writer = 0; writer < kWriters; ++writer) {
            writers.emplace_back(
                [&, writer] { return writeAll(fileOf(writer), writer, services); });
        }
        Child other(meanwhile);
        int failed = 0;
        for (Child& writer : writers) {
            failed += writer.end().isGood() ? 0 : 1;
        }
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        EXPECT_TRUE(other.end().isGood());
        EXPECT_EQ(failed, 0) << "writers that were told of a failure";
        there.write(L"over", "");
        for (Child& reader : readers) {
            EXPECT_TRUE(reader.end().isGood()) << "a reader saw what no moment can have";
        }
        std::printf("[ writers  ] %d writes in %.1f s\n", kWriters * kWritesEach, took.count());
    }

    TempFolder there {parentFolder()};
};

TEST_F(ConcurrencyTest, EightProcessesThatWriteOneFileLoseNothing)
{
    const std::wstring path = there.write(L"tool.ini", "; head\n");
    run([&](int) { return path; }, {path});
    EXPECT_EQ(keptIn(path, [](int) { return true; }), kWriters * kWritesEach);
    EXPECT_FALSE(there.has(L"dummy.tmp"));
}

TEST_F(ConcurrencyTest, EightProcessesThatWriteTwoFilesOfOneFolderLoseNothing)
{
    const std::wstring even = there.write(L"even.ini", "; head\n");
    const std::wstring odd = there.write(L"odd.ini", "; head\n");
    const auto isEven = [](int writer) { return writer % 2 == 0; };
    run([&](int writer) { return isEven(writer) ? even : odd; }, {});
    EXPECT_EQ(keptIn(even, isEven), kWriters * kWritesEach / 2);
    EXPECT_EQ(keptIn(odd, std::not_fn(isEven)), kWriters * kWritesEach / 2);
    EXPECT_FALSE(there.has(L"dummy.tmp"));
}

// Each time with defaults that have one more ident.
bool updateAgainAndAgain(const std::wstring& path, const TempFolder& folder, int times)
{
    for (int i = 0; i < times; ++i) {
        std::wstring name = path;
        xx_Inifile file(name.data(), 0, nullptr);
        std::wstring defaults
            = folder.write(L"defaults.txt", "[Defaults]\nD" + std::to_string(i) + "=1\n");
        int added = 0;
        if (file.update(defaults.data(), &added) != 5100 || added != (i == 0 ? 2 : 1)) {
            return false;
        }
    }
    return true;
}

TEST_F(ConcurrencyTest, AnUpdateBesideWritersLosesNothing)
{
    constexpr int kUpdates = 100;
    const std::wstring path = there.write(L"tool.ini", "; head\n");
    run([&](int) { return path; }, {path},
        [&] { return updateAgainAndAgain(path, there, kUpdates); });
    EXPECT_EQ(keptIn(path, [](int) { return true; }), kWriters * kWritesEach);
    const std::string content = contentOf(path);
    for (int i = 0; i < kUpdates; ++i) {
        EXPECT_NE(content.find("\nD" + std::to_string(i) + "=1\n"), std::string::npos) << i;
    }
    EXPECT_TRUE(there.has(L"tool.ino"));
    EXPECT_FALSE(there.has(L"dummy.tmp"));
}

} // namespace
