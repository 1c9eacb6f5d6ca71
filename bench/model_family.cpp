#include "model_family.h"

#include "platform/platform.h"
#include "sample_files.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace corma::bench {

namespace {

constexpr int kDutch = 19;

// What a setting may be: its value, and what the definitions file tells of it.
struct SettingKind
{
    const char* value;
    const char* definition;
};

constexpr std::array kKinds = {
    SettingKind {"120", "i min=0 max=5000 access=0,10 rgb=255,255,192"},
    SettingKind {"23.75", "d min=0.5 max=250 bitmap=hoogte.bmp level=d"},
    SettingKind {"1", "t access=10,20"},
    SettingKind {"links", "c choices={links,midden,rechts} level=p"},
    SettingKind {"Standaard", "q choices={Standaard,ISO 3 streep,Arial smal}"},
    SettingKind {"21-BUITENWAND,2,CONTINUOUS,0.50", "v bitmap=lijnen.bmp"},
    SettingKind {"00-ARCERING,8,CONTINUOUS,0.13,ANSI31,0,25",
                 "h bitmap=arcering.bmp rgb=192,255,192"},
    SettingKind {"norm\\kantoor.txt", "b filetypes=Tekst|*.txt||"},
    SettingKind {"Beton grijs, in het werk gestort", "s readonly=true"},
    SettingKind {"7", "k max=255 min=1"},
};

constexpr std::array kTexts = {
    "De hoogte boven het peil van de bouwlaag\xC2\xA7in millimeter op het werk",
    "Hiermee wordt bepaald waar de maatlijn begint",
    "Welke laag nieuwe onderdelen krijgen\xC2\xA7Geldt niet voor wat er al staat\xC2\xA7Zie de "
    "norm",
    "Tussenruimte op papier",
    "Naam van het patroon waarmee de doorsnede wordt gevuld",
};

class FamilyWriter
{
public:
    explicit FamilyWriter(ModelFamily& family)
        : m_family(family)
    {
    }

    void category(std::size_t number, std::size_t settings)
    {
        const std::string header = "[" + pick(kNouns) + std::to_string(number) + "]";
        m_values += "\r\n" + header + "\r\n";
        m_definitions += header + "\r\n";
        m_descriptions += header + "=Alles over dit onderdeel van de tekening\r\n";
        for (std::size_t i = 0; i < settings; ++i) {
            setting(pick(kNouns) + pick(kParts) + std::to_string(i));
        }
    }

    void writeTo(const std::string& folder)
    {
        std::filesystem::create_directories(folder + "/LanNL");
        const std::vector<std::string> paths = pathsIn(folder);
        write(paths[0], m_values);
        write(paths[1], m_definitions);
        write(paths[2], m_descriptions);
    }

private:
    void setting(const std::string& ident)
    {
        const SettingKind& kind = kKinds[m_random() % kKinds.size()];
        m_values += ident + "=" + kind.value + "\r\n";
        m_definitions += ident + "=" + kind.definition + "\r\n";
        m_descriptions += ident + "=" + pick(kTexts) + "\r\n";
        if (m_random() % 4 == 0) {
            m_descriptions += "bitmap=toelichting.bmp\r\n";
        }
    }

    template<std::size_t count> std::string pick(const std::array<const char*, count>& from)
    {
        return from[m_random() % count];
    }

    void write(const std::string& path, const std::string& bytes)
    {
        std::ofstream out(path, std::ios::binary);
        out << bytes;
        if (!out.flush()) {
            throw std::runtime_error("cannot write " + path);
        }
        m_family.bytes += bytes.size();
    }

    ModelFamily& m_family;
    std::string m_values = "Versie=2024.1\r\n";
    std::string m_definitions = "Versie=s readonly=true\r\n";
    std::string m_descriptions = "Versie=De uitgave van het product\r\n";
    std::mt19937 m_random {42};
};

} // namespace

FileNameSet namesIn(const std::string& folder)
{
    return FileNameSet::of(platform::fromNative(folder + "/"), L"tool.ini", kDutch);
}

std::vector<std::string> pathsIn(const std::string& folder)
{
    return {folder + "/tool.ini", folder + "/tool.inr", folder + "/LanNL/tool.ind"};
}

ModelFamily makeFamily(const std::string& folder, std::size_t settings, std::size_t categories)
{
    ModelFamily family;
    family.names = namesIn(folder);
    family.settings = settings;
    family.categories = categories;
    FamilyWriter writer(family);
    for (std::size_t i = 0; i < categories; ++i) {
        writer.category(i, settings * (i + 1) / categories - settings * i / categories);
    }
    writer.writeTo(folder);
    return family;
}

} // namespace corma::bench
