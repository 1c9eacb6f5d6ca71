#include "foundation/wide_text.h"
#include "platform/text.h"
#include <corma/IniBuffer.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace {

struct xx_IniBufferEntry
{
    wchar_t key[257]; // empty: a free entry
    wchar_t value[259];
    const void* document;
    int age; // falls with each event on another entry; the lowest goes first
};

constexpr int kNewAge = 256;
constexpr int kOlderThanNone = 257;

using Table = std::array<xx_IniBufferEntry, 16>;

Table& table()
{
    static Table entries {};
    return entries;
}

std::wstring compositeKey(const wchar_t* key)
{
    const std::wstring_view text = corma::view(key);
    return text.starts_with(L'[') ? std::wstring(text) : L"[Algemeen]" + std::wstring(text);
}

bool isFor(const xx_IniBufferEntry& entry, const std::wstring& key, const void* document)
{
    return entry.document == document && entry.key[0] != 0
        && corma::equalIgnoringCase(entry.key, key);
}

xx_IniBufferEntry* findEntry(const wchar_t* key, const void* document)
{
    const std::wstring composite = compositeKey(key);
    for (auto& entry : table()) {
        if (isFor(entry, composite, document)) {
            return &entry;
        }
    }
    return nullptr;
}

void makeOthersOlder(const xx_IniBufferEntry* kept)
{
    for (auto& entry : table()) {
        entry.age -= &entry == kept ? 0 : 1;
    }
}

// The entry with the lowest age, after a hit.
int oldestSlot()
{
    int best = kOlderThanNone;
    int slot = -1;
    for (std::size_t i = 0; i < table().size(); ++i) {
        if (table()[i].age < best) {
            best = table()[i].age;
            slot = static_cast<int>(i);
        }
    }
    return slot;
}

// The entry to take for a new value: a free one goes before a used one that is not older.
int slotToReplace()
{
    int best = kOlderThanNone;
    int slot = -1;
    for (std::size_t i = 0; i < table().size(); ++i) {
        const auto& entry = table()[i];
        if (entry.key[0] == 0 || entry.age < best) {
            best = entry.age;
            slot = static_cast<int>(i);
        }
    }
    return slot;
}

// A kept value that is hit does not grow younger: only the others grow older.
xx_IniBufferEntry* hit(const wchar_t* key, const void* document, int* slot)
{
    xx_IniBufferEntry* entry = findEntry(key, document);
    if (entry != nullptr) {
        makeOthersOlder(entry);
    }
    *slot = entry != nullptr ? oldestSlot() : slotToReplace();
    return entry;
}

} // namespace

IniBuffer::IniBuffer()
{
    clear();
}

IniBuffer& IniBuffer::shared()
{
    static IniBuffer buffer;
    return buffer;
}

bool IniBuffer::lookup(const wchar_t* key, wchar_t* value, int size, int* slot,
                       const void* document)
{
    const xx_IniBufferEntry* entry = hit(key, document, slot);
    if (entry == nullptr) {
        return false;
    }
    corma::copyBounded(value, static_cast<std::size_t>(size < 0 ? 0 : size), entry->value);
    return true;
}

bool IniBuffer::update(const wchar_t* key, const wchar_t* newValue, int* slot, const void* document)
{
    xx_IniBufferEntry* entry = hit(key, document, slot);
    if (entry == nullptr) {
        return false;
    }
    corma::copyBounded(entry->value, kTooLong, corma::view(newValue));
    return true;
}

void IniBuffer::store(const wchar_t* key, const wchar_t* value, int slot, const void* document)
{
    const std::wstring composite = compositeKey(key);
    const bool fits = composite.size() < kTooLong && corma::length(value) < kTooLong;
    if (!fits || slot < 0 || static_cast<std::size_t>(slot) >= table().size()) {
        return;
    }
    auto& entry = table()[static_cast<std::size_t>(slot)];
    corma::copy(entry.key, composite.c_str());
    corma::copy(entry.value, value);
    entry.document = document;
    entry.age = kNewAge;
    makeOthersOlder(&entry);
}

void IniBuffer::remove(const wchar_t* key, const void* document)
{
    const std::wstring composite = compositeKey(key);
    for (auto& entry : table()) {
        if (isFor(entry, composite, document)) {
            entry = {};
        }
    }
}

void IniBuffer::clear()
{
    table() = {};
}
