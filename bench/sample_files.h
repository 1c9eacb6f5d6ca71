#pragma once

// Configuration files to measure with: they look like real ones and are the same at each run.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace corma::bench {

// Words of which names of chapters and settings are made.
inline constexpr std::array kNouns = {"Wand", "Deur",  "Raam",     "Trap", "Vloer",  "Dak",
                                      "Laag", "Tekst", "Arcering", "Maat", "Ruimte", "Symbool"};
inline constexpr std::array kParts = {"Hoogte",  "Breedte", "Dikte", "Kleur", "Schaal", "Stijl",
                                      "Afstand", "Naam",    "Hoek",  "Type",  "Marge",  "Factor"};

/// The scramble number of the scrambled samples.
inline constexpr int kScrambleNumber = 7;

/// What the value of an entry is; a file has all kinds, evenly mixed.
enum class Kind
{
    whole, // "120"
    real, // "23.75"
    three, // "0.35,0.50,0.70"
    words // "Beton Grijs"
};

struct Entry
{
    std::wstring ident; // "[Chapter]Name"
    std::wstring value;
    Kind kind;
};

/// One file, plain and scrambled, with what stands in it.
struct Sample
{
    std::wstring path; // of the plain form; the scrambled one has the number behind its name
    std::string text; // of the plain form
    std::vector<Entry> entries; // in the order of the file, those of the head left out
    std::vector<std::wstring> chapters; // with their brackets

    std::string nativePath() const;
};

/// A temporary folder with samples, which goes with the object.
class SampleFolder
{
public:
    SampleFolder();
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;
    ~SampleFolder();

    /// Writes a sample of that many entries, in both forms.
    Sample make(std::size_t entries) const;

    /// Path of a new folder in it.
    [[nodiscard]] std::string newFolder() const;

    /// Waits until files written before are so old that an open file need not be read again at
    /// each use.
    void waitUntilSettled() const;

private:
    std::string m_path;
    mutable int m_folders = 0;
};

} // namespace corma::bench
