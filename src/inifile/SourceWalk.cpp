#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/text.h"

#include <numeric>
#include <utility>

namespace corma {

std::optional<std::wstring> projectPathFor(std::wstring_view configPath)
{
    const AcApDocument* document = acDocManagerPtr()->curDocument();
    if (document == nullptr) {
        return std::nullopt;
    }
    const bool hasDot = configPath.find(L'.') != std::wstring_view::npos;
    const auto config = platform::splitPath(std::wstring(configPath) + (hasDot ? L"" : L".ini"));
    std::wstring name = config.fileName();
    name.resize(name.size() < 2 ? 0 : name.size() - 2);
    const auto drawing = platform::splitPath(document->fileName());
    return drawing.folderPath() + name + L"pr";
}

std::wstring getChecksummedIdent(std::wstring_view ident, std::wstring_view fileName)
{
    const std::u16string units = toUtf16(fileName);
    const unsigned sum = std::accumulate(units.begin(), units.end(), 0U);
    return formatted(L"%s%C%C", std::wstring(ident).c_str(), sum & 0xFFU, (sum % 250) & 0xFFU);
}

ConfigFile* ProjectFile::at(const std::wstring& path)
{
    const bool isKnown = path == m_path;
    const bool isStillThere = isKnown && m_file && m_file->lastText().isOnDisk();
    if (!isStillThere && !(isKnown && isStillAbsent())) {
        open(path);
    }
    return m_file.get();
}

bool ProjectFile::isStillAbsent() const
{
    return !m_file && m_folderWithoutIt && platform::folderStamp(m_folder) == m_folderWithoutIt;
}

void ProjectFile::open(const std::wstring& path)
{
    m_path = path;
    m_folder = platform::toNative(platform::splitPath(path).folderPath());
    m_folderWithoutIt = platform::folderStamp(m_folder);
    const bool isFresh = m_folderWithoutIt
        && platform::couldHideAChange(*m_folderWithoutIt, platform::fileClock());
    m_file = ConfigFile::open(path, 0);
    if (m_file || isFresh) {
        m_folderWithoutIt.reset();
    }
}

SourceWalk::SourceWalk(xx_Inifile& file, const Ident& ident)
    : m_file(file)
    , m_ident(ident)
    , m_key(ident)
{
}

bool SourceWalk::applies(Source source) const
{
    switch (source) {
    case Source::cache:
        return InifileInside::bufferOf(m_file) != nullptr;
    case Source::drawing:
        return InifileInside::seesDrawing(m_file);
    case Source::project:
        return InifileInside::isIni(m_file) && acDocManagerPtr()->curDocument() != nullptr;
    case Source::included:
    case Source::file:
        break;
    }
    return true;
}

bool SourceWalk::ask(Source source)
{
    xx_IniPrivate* priv = InifileInside::privateOf(m_file);
    m_source = source;
    m_text = nullptr;
    m_found = false;
    switch (source) {
    case Source::cache:
        m_found = askCache();
        break;
    case Source::drawing:
        m_found = askDrawing();
        break;
    case Source::project:
        m_projectPath = projectPathFor(m_file.getFilename()).value_or(std::wstring());
        m_found = priv != nullptr && askText(priv->project.at(m_projectPath));
        break;
    case Source::included:
    case Source::file:
        m_found = priv != nullptr && askText(priv->file.get());
        break;
    }
    return m_found;
}

namespace {

std::wstring cacheKey(const xx_Inifile& file, const Ident& ident)
{
    const std::wstring name = platform::splitPath(file.getFilename()).fileName();
    const std::wstring text = std::wstring(ident.prefix) + std::wstring(ident.name);
    return getChecksummedIdent(text, upperCase(name));
}

} // namespace

// A value that is too long for the cache must not be found there cut.
void InifileInside::dropFromCache(const xx_Inifile& file, const Ident& ident)
{
    if (IniBuffer* const buffer = bufferOf(file)) {
        buffer->remove(cacheKey(file, ident).c_str(), acDocManagerPtr()->curDocument());
    }
}

void InifileInside::renewInCache(const xx_Inifile& file, const Ident& ident,
                                 std::wstring_view value)
{
    IniBuffer* const buffer = bufferOf(file);
    if (buffer == nullptr) {
        return;
    }
    const std::wstring key = cacheKey(file, ident);
    const void* document = acDocManagerPtr()->curDocument();
    if (value.size() >= IniBuffer::kTooLong) {
        buffer->remove(key.c_str(), document);
        return;
    }
    int slot = -1;
    buffer->update(key.c_str(), std::wstring(value).c_str(), &slot, document);
}

// The value may be longer in the cache than the buffer of the call that brought it there.
bool SourceWalk::askCache()
{
    m_cacheKey = cacheKey(m_file, m_ident);
    m_wide.resize(IniBuffer::kTooLong);
    IniBuffer* buffer = InifileInside::bufferOf(m_file);
    const void* document = acDocManagerPtr()->curDocument();
    const bool hit = buffer->lookup(m_cacheKey.c_str(), m_wide.data(), IniBuffer::kTooLong,
                                    &m_cacheSlot, document);
    m_wide.resize(hit ? length(m_wide.c_str()) : 0);
    return hit;
}

bool SourceWalk::askDrawing()
{
    const std::wstring chapter(m_ident.chapter());
    const std::wstring name(m_ident.name);
    const auto value = InifileInside::localValue(m_file, chapter.c_str(), name.c_str());
    m_wide = value.value_or(std::wstring());
    return value.has_value();
}

bool SourceWalk::askText(ConfigFile* text)
{
    const auto entry = text == nullptr ? std::nullopt : text->find(m_key);
    if (!entry) {
        return false;
    }
    m_text = text;
    m_entry = *entry;
    return true;
}

SourceAsked SourceWalk::asked() const
{
    return {m_source, fileAsked(), m_found, m_text == nullptr ? 0 : m_text->lineNumber(m_entry.at)};
}

std::wstring SourceWalk::fileAsked() const
{
    if (m_source == Source::project) {
        return m_projectPath;
    }
    const AcApDocument* document = acDocManagerPtr()->curDocument();
    return m_source == Source::drawing && document != nullptr ? document->fileName()
                                                              : m_file.getFilename();
}

void SourceWalk::copyValue(ValueBuffer out) const
{
    if (m_text != nullptr) {
        m_text->lastText().decodeInto(m_entry.value, out.text, out.capacity);
    } else {
        copyBounded(out.text, out.capacity, m_wide);
    }
}

std::wstring SourceWalk::value() const
{
    return m_text != nullptr ? m_text->lastText().decode(m_entry.value) : m_wide;
}

void SourceWalk::keepInCache() const
{
    IniBuffer* buffer = InifileInside::bufferOf(m_file);
    if (buffer != nullptr && m_source != Source::cache) {
        const void* document = acDocManagerPtr()->curDocument();
        buffer->store(m_cacheKey.c_str(), value().c_str(), m_cacheSlot, document);
    }
}

} // namespace corma
