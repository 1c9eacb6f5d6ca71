#pragma once

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "inifile/IdentIndex.h"

#include <memory>
#include <optional>
#include <string_view>

namespace corma {

/// One configuration file, open for reading, with the lookups in it. It follows the file on disk:
/// each lookup sees what the last finished writing left.
class ConfigFile
{
public:
    /// A scramble number other than 0 reads the file as scrambled. Null when it cannot be opened.
    static std::unique_ptr<ConfigFile> open(std::wstring_view path, int scrambleNumber);

    /// The first entry of that name in the first chapter that fits. The value is good until the
    /// next call. The first lookup in a text is a scan; later ones go through an index.
    std::optional<FoundEntry> find(const IdentKey& key);

    /// The file as it is on disk now. Good until the next call of a method.
    const TextFile& text();

    /// The text that the last call looked at.
    [[nodiscard]] const TextFile& lastText() const { return *m_text; }

    /// Line, 1 for the first, of an offset that find() gave.
    [[nodiscard]] int lineNumber(std::size_t at) const;

private:
    explicit ConfigFile(std::unique_ptr<TextFile> text);

    std::unique_ptr<TextFile> m_text;
    std::unique_ptr<IdentIndex> m_index;
    bool m_wasAsked = false; // a lookup in this text went before
};

} // namespace corma
