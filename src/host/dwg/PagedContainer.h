#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/PagedFile.h"
#include "host/dwg/sections.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corma::host::dwg {

class PagedWriter;

/// A file from R2004 on (other than R2007): sections of compressed pages. Those that are not
/// understood stay the pages that they were.
class PagedContainer : public Container
{
public:
    /// A section of a file that is new.
    struct Made
    {
        Section section;
        std::string content;
    };

    /// Of a file that was read. What is wrong with it; status eOk when nothing is.
    ReadResult open(platform::FileContent content, const std::wstring& path);

    /// Of a new file, which begins with `head`.
    void begin(std::string head, std::vector<Made> sections);

    [[nodiscard]] const Parts& parts() const override { return m_parts; }

    [[nodiscard]] std::string_view bytes() const override { return m_content.view(); }

    [[nodiscard]] bool write(const NewParts& parts, const TakeBytes& take) const override;

private:
    struct NewContent
    {
        std::string_view section;
        std::string content;
    };

    using CopiedPages = std::unordered_map<std::uint32_t, std::uint32_t>; // former to new number

    [[nodiscard]] std::vector<NewContent> newContents(const NewParts& parts) const;
    [[nodiscard]] std::optional<std::string> contentOf(std::string_view name) const;
    [[nodiscard]] std::vector<std::size_t> orderOfFile() const;
    void copyPages(std::size_t section, PagedWriter& writer, CopiedPages& copied) const;
    void setAddresses(PagedWriter& writer, const CopiedPages& copied) const;

    platform::FileContent m_content;
    std::optional<PagedFile> m_file; // none for a new one
    std::string m_head;
    std::vector<Made> m_sections; // without content for those of a file that was read
    PartSections m_parted;
    Parts m_parts; // views of them
};

} // namespace corma::host::dwg
