#include "platform/platform.h"
#include "platform/posix/system_calls.h"
#include "platform/posix/version_note.h"
#include "platform/text.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace corma::platform {

namespace {

class OpenFile : public FileBytes
{
public:
    // Not blocking: a pipe is refused and not waited for.
    explicit OpenFile(const NativePath& path)
        : m_file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }

    [[nodiscard]] bool isRegular() const
    {
        struct stat status = {};
        return m_file.isOpen() && ::fstat(m_file.get(), &status) == 0 && S_ISREG(status.st_mode);
    }

    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<char> bytes) const override
    {
        if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max() - bytes.size())) {
            return 0;
        }
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got = ::pread(m_file.get(), bytes.data() + done, bytes.size() - done,
                                        static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                break;
            }
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

private:
    Descriptor m_file;
};

} // namespace

std::optional<std::wstring> versionText(std::wstring_view moduleFile, std::string_view key)
{
    const NativePath path = locate(moduleFile);
    // Opening alone can do harm where the path is a device's, so it is looked at before.
    if (!fileStamp(path)) {
        return std::nullopt;
    }
    const OpenFile file(path);
    const auto texts = file.isRegular() ? versionNote(file) : std::nullopt;
    if (!texts) {
        return std::nullopt;
    }
    const auto text = textInNote(*texts, key);
    return text ? std::optional(fromUtf8(*text)) : std::nullopt;
}

} // namespace corma::platform
