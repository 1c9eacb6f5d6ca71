#include "inifile/ConfigFile.h"

#include "inifile/scrambling.h"

#include <algorithm>
#include <utility>

namespace corma {

std::unique_ptr<ConfigFile> ConfigFile::open(std::wstring_view path, int scrambleNumber)
{
    auto text = scrambleNumber == 0
        ? xx_openUnicode(path, OpenMode::text)
        : xx_openUnicode(path, OpenMode::binary, [scrambleNumber](platform::FileContent& content) {
              descrambleContent(content, scrambleNumber);
          });
    return text ? std::unique_ptr<ConfigFile>(new ConfigFile(std::move(text))) : nullptr;
}

ConfigFile::ConfigFile(std::unique_ptr<TextFile> text)
    : m_text(std::move(text))
{
}

const TextFile& ConfigFile::text()
{
    if (m_text->refresh()) {
        m_index.reset();
        m_wasAsked = false;
    }
    return *m_text;
}

std::optional<FoundEntry> ConfigFile::find(const IdentKey& key)
{
    const TextFile& file = text();
    if (!std::exchange(m_wasAsked, true) || !IdentIndex::isPossibleFor(file)) {
        return findByScan(file, key);
    }
    if (!m_index) {
        m_index = std::make_unique<IdentIndex>(file);
    }
    return m_index->find(file, key);
}

int ConfigFile::lineNumber(std::size_t at) const
{
    const std::string_view before = m_text->bytes().substr(0, at);
    return static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
}

} // namespace corma
