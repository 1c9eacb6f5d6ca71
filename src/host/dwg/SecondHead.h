#pragma once

#include "host/dwg/bits.h"
#include "host/model/Group.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// What a file of R13 to R2000 repeats of its head, for programs that have to recover it: where
/// the sections stand, and the handles that all else hangs on.
class SecondHead
{
public:
    struct Section
    {
        std::size_t begin = 0;
        std::size_t size = 0;
    };

    /// The one of a file; nothing when there is none that can be read. `sections` are the
    /// beginnings and sizes by number, as the head has them.

    static std::optional<SecondHead> find(std::string_view file,
                                          const std::vector<Section>& sections);

    /// That of a new file of R2000; the handles are those that its records will have.
    struct HeadNumbers
    {
        std::uint8_t maintenance = 0;
        std::uint16_t program = 0; // the one that wrote the file
        std::uint16_t codePage = 0;
    };

    static std::string made(std::size_t begin, const HeadNumbers& numbers,
                            const std::vector<Section>& sections);

    [[nodiscard]] std::size_t begin() const { return m_begin; }

    [[nodiscard]] std::size_t end() const { return m_end; }

    /// The same for a file in which it begins at `begin`.
    [[nodiscard]] std::string moved(std::size_t begin, const std::vector<Section>& sections,
                                    Handle seed) const;

private:
    struct Root
    {
        unsigned number = 0;
        std::string handle; // the highest byte first
    };

    bool read(std::string_view inner, const std::vector<Section>& sections);

    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    BitWriter m_prelude; // between the place of the head and the list of sections
    std::vector<Section> m_sections;
    std::vector<bool> m_isOwn; // what is listed here is not what the head has
    std::vector<Root> m_roots;
    std::string m_rest; // behind the checksum
};

} // namespace corma::host::dwg
