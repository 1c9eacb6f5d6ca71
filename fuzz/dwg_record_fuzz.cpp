#include "dwg_parts.h"
#include "fuzz_support.h"
#include "host/dwg/Record.h"
#include "host/dwg/classes.h"
#include "host/dwg/extended_data.h"
#include "host/dwg/file_form.h"
#include "host/dwg/header_variables.h"
#include "host/dwg/sentinels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace corma::host;
using namespace corma::host::dwg;
using corma::fuzzing::Input;
using corma::fuzzing::require;
using enum DrawingVersion;

/// Small handles are entries of whatever table is asked for.
class ManyNames : public Names
{
public:
    [[nodiscard]] std::wstring nameOf(Handle entry) const override
    {
        const auto number = static_cast<std::uint64_t>(entry);
        if (number == 0 || number > kLastNamed) {
            return {};
        }
        return number <= kUsual.size() ? std::wstring(kUsual[number - 1]) : kPrefix + toText(entry);
    }

    [[nodiscard]] Handle find(TableKind /*table*/, std::wstring_view name) const override
    {
        for (std::size_t i = 0; i < kUsual.size(); ++i) {
            if (foldedName(name) == foldedName(kUsual[i])) {
                return Handle {i + 1};
            }
        }
        const std::wstring folded = foldedName(name);
        const bool isOther = folded.starts_with(foldedName(kPrefix));
        const Handle handle = isOther
            ? handleFrom(std::wstring_view(folded).substr(kPrefix.size())).value_or(Handle::none)
            : Handle::none;
        return foldedName(nameOf(handle)) == folded ? handle : Handle::none;
    }

private:
    static constexpr std::uint64_t kLastNamed = 0x7FFF;
    static inline const std::wstring kPrefix = L"Entry";
    static constexpr std::array<const wchar_t*, 6> kUsual
        = {L"0", L"Standard", L"ByLayer", L"ByBlock", L"Continuous", L"*Model_Space"};
};

// The number behind the name of a nameless block is the drawing's, so a new record does not have
// it.
bool areSameNames(const Group& a, const Group& b)
{
    return a.text().starts_with(L'*') && withoutNumber(a.text()) == withoutNumber(b.text());
}

bool areSame(const Group& a, const Group& b)
{
    constexpr double kNoise = 1e-9; // of degrees made of radians
    const auto* const x = std::get_if<double>(&a.value);
    const auto* const y = std::get_if<double>(&b.value);
    if (a.code != b.code || x == nullptr || y == nullptr) {
        return a.code == b.code && (a.value == b.value || areSameNames(a, b));
    }
    return *x == *y || (std::isnan(*x) && std::isnan(*y))
        || std::abs(*x - *y) <= kNoise * std::max(std::abs(*x), std::abs(*y));
}

void show(const char* title, const Groups& groups, std::size_t at)
{
    std::fprintf(stderr, "--- %s\n", title);
    for (std::size_t i = at < 2 ? 0 : at - 2; i < groups.size() && i < at + 3; ++i) {
        const Group& group = groups[i];
        std::fprintf(stderr, "%d %ls%.17g %ls %zu bytes\n", group.code, group.text().c_str(),
                     group.real(), toText(group.handle()).c_str(), group.bytes().size());
    }
}

// What is different is shown, as the process stops at it.
void requireSame(const Groups& found, const Groups& expected)
{
    const auto [first, second]
        = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end(), areSame);
    const bool isSame = first == found.end() && second == expected.end();
    if (!isSame) {
        const auto at = static_cast<std::size_t>(first - found.begin());
        show("found", found, at);
        show("expected", expected, at);
    }
    require(isSame);
}

// A group needs at least a bit, but for those that a type has anyway.
void checkSize(const Groups& groups, std::size_t bytes)
{
    constexpr std::size_t kFew = 512;
    require(groups.size() <= kFew + bytes * kByteBits);
}

// --- records -------------------------------------------------------------------------------------

Surroundings surroundingsOf(const Record& record)
{
    const Frame& frame = record.frame();
    Surroundings around;
    around.space = static_cast<Surroundings::Space>(frame.space);
    around.previous = frame.previousHandle();
    around.next = frame.nextHandle();
    if (const auto owned = record.owned()) {
        around.owned = owned->members;
        if (around.owned.empty() && (owned->first != Handle::none || owned->last != Handle::none)) {
            around.owned = {owned->first}; // the ends of a chain
            if (owned->last != owned->first) {
                around.owned.push_back(owned->last);
            }
        }
        around.begin = owned->begin;
        around.end = owned->end;
        around.references = owned->references;
        around.first = owned->firstSpecial;
        around.second = owned->secondSpecial;
    }
    return around;
}

// Nothing has the same place twice in a drawing.
bool isPossible(const Surroundings& around)
{
    std::vector<Handle> owned = around.owned;
    std::sort(owned.begin(), owned.end());
    return std::adjacent_find(owned.begin(), owned.end()) == owned.end();
}

struct Context
{
    FileForm form;
    TypeTable types;
    ManyNames names {};
};

// A new record has the groups that it was made of, or somebody says why not.
void checkNew(const Record& record, const Groups& groups, const Context& in)
{
    if (record.frame().isEntity && !groups.find(code::layer)) {
        return; // a new entity has a layer
    }
    Record made(in.form, in.types, record.type());
    if (made.fromGroups(in.names, groups, surroundingsOf(record))) {
        return;
    }
    const std::string bytes = made.bytes();
    const auto again = Record::read(bytes, in.form, in.types);
    require(again && again->depth() == Record::Depth::all && again->bytes() == bytes);
    Groups found;
    again->toGroups(in.names, found);
    requireSame(found, groups);
}

void checkRecord(std::string_view bytes, const Context& in)
{
    const auto head = readHead(bytes, in.form.version);
    auto record = Record::read(bytes, in.form, in.types);
    const auto peeked = Record::peek(bytes, in.form, in.types);
    require(record.has_value() == peeked.has_value());
    if (!record) {
        return;
    }
    require(head && head->size == bytes.size() && head->type == record->type());
    require(head->handle == record->frame().self.target);
    const bool isKnown = record->depth() != Record::Depth::nothing;
    require(!isKnown || record->bytes() == bytes);
    Groups groups;
    record->toGroups(in.names, groups);
    checkSize(groups, bytes.size());
    require(groups.ownHandle() == head->handle);
    require(!record->blockFacts() || record->owned());
    if (record->depth() == Record::Depth::all) {
        checkNew(*record, groups, in);
    }
    const Surroundings around = surroundingsOf(*record);
    const auto problem = record->fromGroups(in.names, groups, around);
    require(problem ? !problem->empty() : isKnown);
    require(problem || !isPossible(around) || record->bytes() == bytes);
}

// --- other parts ---------------------------------------------------------------------------------

void checkExtendedData(std::string_view bytes, const Context& in)
{
    Groups groups;
    extendedDataToGroups(bytes, in.form, in.names, groups);
    checkSize(groups, bytes.size());
    std::string same(bytes);
    require(extendedDataFromGroups(groups, groups.all(), in.form, in.names, same));
    require(same == bytes);
    std::string made;
    if (extendedDataFromGroups(groups, groups.all(), in.form, in.names, made)) {
        Groups again;
        extendedDataToGroups(made, in.form, in.names, again);
        requireSame(again, groups);
    }
}

void checkVariables(const std::string& section, const Context& in)
{
    auto variables = HeaderVariables::read(section, in.form);
    require(decodeRootHandles(section, in.form).has_value() == variables.has_value());
    if (!variables) {
        return;
    }
    Groups groups;
    variables->toGroups(in.names, groups);
    HeaderVariables made(in.form);
    made.setRootHandles(variables->rootHandles());
    made.fromGroups(in.names, groups);
    const auto back = HeaderVariables::read(made.bytes(), in.form);
    require(back && back->isUnderstood());
    if (variables->isUnderstood()) {
        require(variables->bytes() == section);
        variables->fromGroups(in.names, groups);
        require(variables->bytes() == section);
    }
    Groups again;
    back->toGroups(in.names, again);
    requireSame(again, groups);
}

void checkClasses(const std::string& section, const Context& in)
{
    const auto classes = decodeClasses(section, in.form);
    if (!classes) {
        return;
    }
    require(classes->size() <= section.size());
    const std::string made = encodeClasses(*classes, in.form, section);
    const auto again = decodeClasses(made, in.form);
    require(again && again->size() == classes->size());
    require(encodeClasses(*again, in.form, made) == made);
    for (std::size_t i = 0; i < classes->size(); ++i) {
        const Groups groups = classToGroups((*classes)[i], in.form.version);
        requireSame(classToGroups((*again)[i], in.form.version), groups);
        requireSame(classToGroups(classFromGroups(groups), in.form.version), groups);
    }
    const TypeTable types(in.form.version, *classes);
    for (const ClassInfo& info : *classes) {
        require(!types.find(info.number).name.empty() || info.dxfName.value.empty());
    }
}

} // namespace

/// The first byte tells what the others are, the second one the version.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    enum Kind
    {
        record,
        extendedData,
        variables,
        classes,
        kinds
    };

    constexpr std::array kVersions = {r13, r14, r2000, r2004, r2007, r2010, r2013, r2018};
    constexpr int kCodePage = 30; // of western Europe
    Input input(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::size_t kind = input.byte() % kinds;
    const DrawingVersion version = kVersions[input.byte() % kVersions.size()];
    const Context in {.form = newForm(version, kCodePage),
                      .types = TypeTable(version, corma::fuzzing::knownClasses())};
    switch (kind) {
    case record:
        checkRecord(corma::fuzzing::recordFrom(input, in.form), in);
        break;
    case extendedData:
        checkExtendedData(input.rest(), in);
        break;
    case variables:
        checkVariables(
            corma::fuzzing::sectionFrom(input, {kVariablesBegin, kVariablesEnd}, in.form), in);
        break;
    default:
        checkClasses(corma::fuzzing::sectionFrom(input, {kClassesBegin, kClassesEnd}, in.form), in);
        break;
    }
    return 0;
}
