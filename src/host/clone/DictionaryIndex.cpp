#include "host/clone/DictionaryIndex.h"

namespace corma::host {

namespace {

constexpr int kEntryName = 3;
constexpr int kSoftEntry = 350;
constexpr int kHardEntry = 360;

} // namespace

const DictionaryIndex::Content& DictionaryIndex::contentOf(const AcDbStub& dictionary)
{
    const auto known = m_contents.find(&dictionary);
    if (known != m_contents.end()) {
        return known->second;
    }
    Content content;
    const Groups groups = m_store.groupsOf(dictionary);
    const std::wstring* name = nullptr;
    for (const Group& group : groups) {
        if (group.code == kEntryName) {
            name = &group.text();
        } else if (name != nullptr && (group.code == kSoftEntry || group.code == kHardEntry)) {
            AcDbStub* const object = m_store.find(group.handle());
            if (object != nullptr && !object->isErased) {
                content.objects.emplace(foldedName(*name), object);
                content.names.emplace(object, *name);
            }
            name = nullptr;
        }
    }
    return m_contents.emplace(&dictionary, std::move(content)).first->second;
}

AcDbStub* DictionaryIndex::at(const AcDbStub& dictionary, std::wstring_view name)
{
    const Content& content = contentOf(dictionary);
    const auto found = content.objects.find(foldedName(name));
    return found == content.objects.end() ? nullptr : found->second;
}

std::wstring DictionaryIndex::nameOf(const AcDbStub& dictionary, const AcDbStub& object)
{
    const Content& content = contentOf(dictionary);
    const auto found = content.names.find(&object);
    return found == content.names.end() ? std::wstring() : found->second;
}

} // namespace corma::host
