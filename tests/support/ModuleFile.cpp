#include "support/ModuleFile.h"

namespace corma::testing {

namespace {

class Bytes
{
public:
    explicit Bytes(const ModuleForm& form)
        : m_form(form)
    {
    }

    [[nodiscard]] const std::string& all() const { return m_bytes; }

    void number(std::uint64_t value, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t place = m_form.bigEndian ? size - 1 - i : i;
            m_bytes.push_back(static_cast<char>(value >> (8 * place)));
        }
    }

    /// An offset or a size.
    void word(std::uint64_t value) { number(value, wordSize()); }

    void text(std::string_view text) { m_bytes += text; }

    void fillTo(std::size_t step) { m_bytes.resize((m_bytes.size() + step - 1) / step * step); }

    [[nodiscard]] std::size_t wordSize() const { return m_form.bits == 64 ? 8 : 4; }

private:
    ModuleForm m_form;
    std::string m_bytes;
};

std::string noteBytes(const std::vector<Note>& notes, const ModuleForm& form)
{
    Bytes bytes(form);
    for (const Note& note : notes) {
        bytes.number(note.owner.size(), 4);
        bytes.number(note.descriptor.size(), 4);
        bytes.number(note.type, 4);
        bytes.text(note.owner);
        bytes.fillTo(form.alignment);
        bytes.text(note.descriptor);
        bytes.fillTo(form.alignment);
    }
    return bytes.all();
}

struct Segment
{
    std::uint32_t type;
    std::size_t offset;
    std::size_t size;
    std::size_t alignment;
};

void addSegment(Bytes& bytes, const Segment& segment, int bits)
{
    constexpr std::uint32_t kReadable = 4;
    bytes.number(segment.type, 4);
    if (bits == 64) {
        bytes.number(kReadable, 4);
    }
    bytes.word(segment.offset);
    bytes.word(segment.offset); // in memory
    bytes.word(segment.offset); // in memory, physical
    bytes.word(segment.size);
    bytes.word(segment.size); // in memory
    if (bits == 32) {
        bytes.number(kReadable, 4);
    }
    bytes.word(segment.alignment);
}

} // namespace

std::string moduleFile(const std::vector<Note>& notes, const ModuleForm& form)
{
    constexpr std::uint32_t kLoad = 1;
    constexpr std::uint32_t kNote = 4;
    const std::size_t headerSize = form.bits == 64 ? 64 : 52;
    const std::size_t entrySize = form.bits == 64 ? 56 : 32;
    const std::size_t notesAt = headerSize + 2 * entrySize;
    const std::string noted = noteBytes(notes, form);

    Bytes bytes(form);
    bytes.text("\177ELF");
    bytes.number(form.bits == 64 ? 2 : 1, 1);
    bytes.number(form.bigEndian ? 2 : 1, 1);
    bytes.number(1, 1); // version of the form
    bytes.text(std::string(9, '\0'));
    bytes.number(3, 2); // a shared library
    bytes.number(0, 2); // for no machine
    bytes.number(1, 4);
    bytes.word(0); // no code to begin with
    bytes.word(headerSize); // the segments
    bytes.word(0); // no sections
    bytes.number(0, 4);
    bytes.number(headerSize, 2);
    bytes.number(entrySize, 2);
    bytes.number(2, 2); // segments
    bytes.text(std::string(6, '\0'));
    addSegment(bytes, {kLoad, 0, notesAt + noted.size(), 4096}, form.bits);
    addSegment(bytes, {kNote, notesAt, noted.size(), form.alignment}, form.bits);
    bytes.text(noted);
    return bytes.all();
}

std::string moduleWithVersion(std::string_view description, std::string_view version,
                              std::string_view copyright)
{
    std::string texts = "FileDescription=";
    texts.append(description).append("\0FileVersion="s);
    texts.append(version).append("\0LegalCopyright="s);
    texts.append(copyright).push_back('\0');
    return moduleFile({{.descriptor = texts}});
}

} // namespace corma::testing
