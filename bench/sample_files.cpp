#include "sample_files.h"

#include "inifile/scrambling.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <stdexcept>
#include <thread>

namespace corma::bench {

namespace {

constexpr std::size_t kEntriesInAChapter = 20; // on average

constexpr std::array kEnds = {"", "", "Min", "Max", "Std", "Binnen", "Buiten", "Nieuw"};
constexpr std::array kWords = {"Beton grijs", "CONTINUOUS",   "Standaard",     "21-BUITENWAND",
                               "Hout",        "ISO 3 streep", "ja, met label", "Arial smal"};

// Makes the text of a sample, line by line.
class SampleWriter
{
public:
    explicit SampleWriter(Sample& sample)
        : m_sample(sample)
    {
    }

    void head()
    {
        line(" Instellingen van een product, met een regel uitleg");
        line("Versie=2024.1");
        line("Eenheid=mm");
    }

    void chapters(std::size_t entries)
    {
        for (std::size_t left = entries; left != 0;) {
            const std::size_t count = std::min(left, between(1, 2 * kEntriesInAChapter - 1));
            chapter(count);
            left -= count;
        }
    }

private:
    void chapter(std::size_t count)
    {
        const std::string number = std::to_string(m_sample.chapters.size());
        const std::string header = std::string("[").append(pick(kNouns)).append(number).append("]");
        line("");
        line(header);
        m_sample.chapters.push_back(fromUtf8(header));
        std::set<std::string> names;
        while (names.size() < count) {
            std::string name = pick(kNouns) + pick(kParts) + pick(kEnds);
            if (!names.insert(name).second) {
                name += std::to_string(names.size());
                names.insert(name);
            }
            entry(header, name);
        }
    }

    void entry(const std::string& header, const std::string& name)
    {
        const auto kind = static_cast<Kind>(between(0, 3));
        const std::string value = valueOf(kind);
        line(name + "=" + value);
        m_sample.entries.push_back({fromUtf8(header + name), fromUtf8(value), kind});
    }

    std::string valueOf(Kind kind)
    {
        switch (kind) {
        case Kind::whole:
            return std::to_string(between(1, 5000));
        case Kind::real:
            return real();
        case Kind::three:
            return real() + "," + real() + "," + real();
        case Kind::words:
            break;
        }
        return pick(kWords) + " " + pick(kWords);
    }

    std::string real()
    {
        return std::to_string(between(0, 2500)) + "." + std::to_string(between(10, 99));
    }

    template<std::size_t count> std::string pick(const std::array<const char*, count>& from)
    {
        return from[between(0, count - 1)];
    }

    std::size_t between(std::size_t least, std::size_t most)
    {
        return least + m_random() % (most - least + 1);
    }

    void line(const std::string& text) { m_sample.text += text + "\r\n"; }

    Sample& m_sample;
    std::mt19937 m_random {42};
};

void write(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::string withLineFeedsOnly(std::string text)
{
    std::erase(text, '\r');
    return text;
}

} // namespace

std::string Sample::nativePath() const
{
    return platform::toNative(path);
}

SampleFolder::SampleFolder()
    : m_path((std::filesystem::temp_directory_path() / "corma_bench.XXXXXX").native())
{
    if (::mkdtemp(m_path.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary folder");
    }
}

SampleFolder::~SampleFolder()
{
    std::error_code failed;
    std::filesystem::remove_all(m_path, failed);
}

Sample SampleFolder::make(std::size_t entries) const
{
    Sample sample;
    sample.path = platform::fromNative(m_path + "/of" + std::to_string(entries) + ".ini");
    SampleWriter writer(sample);
    writer.head();
    writer.chapters(entries);
    write(sample.nativePath(), sample.text);
    write(platform::toNative(scrambledName(sample.path, kScrambleNumber)),
          scrambledForm(withLineFeedsOnly(sample.text), kScrambleNumber));
    return sample;
}

std::string SampleFolder::newFolder() const
{
    std::string path = m_path + "/folder" + std::to_string(++m_folders);
    std::filesystem::create_directory(path);
    return path;
}

void SampleFolder::waitUntilSettled() const
{
    for (const auto& file : std::filesystem::directory_iterator(m_path)) {
        const auto stamp = platform::fileStamp(file.path().native());
        while (stamp && platform::couldHideAChange(*stamp, platform::fileClock())) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
}

} // namespace corma::bench
