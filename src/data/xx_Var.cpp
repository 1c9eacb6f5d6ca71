#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include <corma/xx_Var.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

constexpr const wchar_t* kVarSource = L"xx_var.cpp";

constexpr int kGrowStep = 10; // slots

// The line numbers that reports show. They are part of the messages: support staff look them up,
// so they stay as they are when the code moves.
// clang-format off
struct ReportLines
{
    int addName      = 204;
    int addType      = 210;
    int addLongName  = 223;
    int addLongType  = 228;
    int addShortName = 240; // on a record of short values
    int addShortLong = 255; // on a record of long values
    int addShortType = 260;
    int addTextName  = 272;
    int addTextType  = 277;
};

// clang-format on

constexpr ReportLines kLines;

/// Slots of the block behind a capacity. Capacities grow by ten, but a block that is full is made
/// twice as large, so that a long column is not copied again and again.
std::size_t blockSlots(int capacity)
{
    constexpr unsigned kSmallest = kGrowStep;
    const auto needed = static_cast<unsigned>(capacity);
    return needed <= kSmallest ? kSmallest : std::bit_ceil(needed);
}

/// The first free slot of a record, which is made when there is none. Null when the slots can no
/// longer be counted in 16 bits or there is no memory.
ads_u_val* makeRoom(xx_Var& record)
{
    if (record.count < record.capacity) {
        return record.values + record.count;
    }
    const int capacity = record.capacity + kGrowStep;
    if (capacity > std::numeric_limits<short>::max()) {
        return nullptr;
    }
    // Asked for each time, which costs little for a block that stays: behind a vector that another
    // module made there are no slots but those of its capacity.
    void* const grown = std::realloc(record.values, blockSlots(capacity) * sizeof(ads_u_val));
    if (grown == nullptr) {
        return nullptr;
    }
    record.values = static_cast<ads_u_val*>(grown);
    std::fill_n(record.values + record.capacity, kGrowStep, ads_u_val {});
    record.capacity = static_cast<short>(capacity);
    return record.values + record.count;
}

/// Appends the value that `fill` writes into a zero slot.
template<class Fill> void store(xx_Var& record, Fill fill)
{
    if (ads_u_val* const slot = makeRoom(record)) {
        fill(*slot);
        ++record.count;
    }
}

void storeReal(xx_Var& record, double value)
{
    store(record, [&](ads_u_val& slot) { slot.rreal = value; });
}

void storeShort(xx_Var& record, std::int32_t value)
{
    store(record, [&](ads_u_val& slot) { slot.rint = static_cast<short>(value); });
}

void storeLong(xx_Var& record, std::int32_t value)
{
    store(record, [&](ads_u_val& slot) { slot.rlong = value; });
}

void storeText(xx_Var& record, const wchar_t* value)
{
    store(record, [&](ads_u_val& slot) { slot.rstring = corma::duplicate(value); });
}

void begin(xx_Var& record, const wchar_t* name, int type)
{
    record.restype = RTSTR;
    record.resval.rstring = corma::duplicate(name);
    record.type = static_cast<unsigned short>(type);
}

/// Frees what a record owns and makes it an empty one; the cursor stays.
void release(xx_Var& record)
{
    if (record.restype == RTSTR) {
        std::free(record.resval.rstring);
    }
    if (record.type == RTSTR) {
        std::for_each_n(record.values, record.count, [](ads_u_val& v) { std::free(v.rstring); });
    }
    std::free(record.values);
    record.restype = 0;
    record.resval.rstring = nullptr;
    record.type = 0;
    record.values = nullptr;
    record.count = 0;
    record.capacity = 0;
}

/// True for the types whose slots are copied bit for bit.
bool isPlain(int type)
{
    return type == RTREAL || type == RTSHORT || type == RT3DPOINT || type == RTLONG;
}

void copyValues(const xx_Var& from, xx_Var& to)
{
    for (short i = 0; i < from.count; ++i) {
        const ads_u_val& value = from.values[i];
        if (from.type == RTSTR) {
            storeText(to, value.rstring);
        } else if (isPlain(from.type)) {
            store(to, [&](ads_u_val& slot) { slot = value; });
        }
    }
}

void checkName(const xx_Var& record, const wchar_t* name, int line)
{
    if (corma::compare(name, record.name()) != 0) {
        xx_reportError(kVarSource, line, record.name(), record.type);
    }
}

void reportClash(const xx_Var& record, int line)
{
    xx_reportErrorCode(kVarSource, line, record.type, 0);
}

} // namespace

xx_Var::xx_Var()
    : resbuf {}
{
    rbnext = nullptr; // once more: clang-tidy does not see into an aggregate base
    resval.rstring = nullptr;
}

xx_Var::xx_Var(const wchar_t* name, double value)
    : xx_Var()
{
    begin(*this, name, RTREAL);
    storeReal(*this, value);
}

xx_Var::xx_Var(const wchar_t* name, std::int32_t value)
    : xx_Var()
{
    begin(*this, name, RTLONG);
    storeLong(*this, value);
}

xx_Var::xx_Var(const wchar_t* name, const wchar_t* value)
    : xx_Var()
{
    begin(*this, name, RTSTR);
    storeText(*this, value);
}

xx_Var::xx_Var(const xx_Var& other)
    : xx_Var()
{
    *this = other;
}

xx_Var& xx_Var::operator=(const xx_Var& other)
{
    if (this == &other) {
        return *this;
    }
    release(*this);
    cursor = other.cursor;
    type = other.type;
    static_cast<resbuf&>(*this) = other;
    if (restype == RTSTR) {
        resval.rstring = corma::duplicate(other.name());
    }
    copyValues(other, *this);
    return *this;
}

xx_Var::xx_Var(xx_Var&& other) noexcept
    : xx_Var()
{
    *this = std::move(other);
}

xx_Var& xx_Var::operator=(xx_Var&& other) noexcept
{
    if (this == &other) {
        return *this;
    }
    release(*this);
    static_cast<resbuf&>(*this) = std::exchange(static_cast<resbuf&>(other), resbuf {});
    type = std::exchange(other.type, 0);
    values = std::exchange(other.values, nullptr);
    count = std::exchange(other.count, 0);
    capacity = std::exchange(other.capacity, 0);
    cursor = std::exchange(other.cursor, 0);
    return *this;
}

xx_Var::~xx_Var()
{
    release(*this);
}

// Each append makes room before anything is tested, so that a rejected value can leave ten free
// slots more (test: AClashGrowsAFullRecordAllTheSame).

void xx_Var::add(const wchar_t* name, double value)
{
    makeRoom(*this);
    if (type == RTREAL) {
        checkName(*this, name, kLines.addName);
        storeReal(*this, value);
    } else if (type == 0) {
        *this = xx_Var(name, value);
    } else {
        reportClash(*this, kLines.addType);
    }
}

void xx_Var::addLong(const wchar_t* name, std::int32_t value)
{
    makeRoom(*this);
    if (type == RTLONG) {
        checkName(*this, name, kLines.addLongName);
        storeLong(*this, value);
    } else if (type == 0) {
        *this = xx_Var(name, value);
    } else {
        reportClash(*this, kLines.addLongType);
    }
}

void xx_Var::addShort(const wchar_t* name, std::int32_t value)
{
    makeRoom(*this);
    if (type == RTSHORT) {
        checkName(*this, name, kLines.addShortName);
        storeShort(*this, value);
    } else if (type == RTLONG) {
        checkName(*this, name, kLines.addShortLong);
        storeLong(*this, value);
    } else if (type == 0) {
        // No record is born with short values, so a column of booleans becomes one of long values
        // (test: AShortOnAnEmptyRecordMakesALongOne).
        *this = xx_Var(name, value);
    } else {
        reportClash(*this, kLines.addShortType);
    }
}

void xx_Var::addText(const wchar_t* name, const wchar_t* value)
{
    makeRoom(*this);
    if (type == RTSTR) {
        checkName(*this, name, kLines.addTextName);
        storeText(*this, value);
    } else if (type == 0) {
        *this = xx_Var(name, value);
    } else {
        reportClash(*this, kLines.addTextType);
    }
}

const wchar_t* xx_Var::name() const
{
    return restype == RTSTR ? resval.rstring : nullptr;
}

const wchar_t* xx_Var::name(const xx_Var* record)
{
    return record != nullptr ? record->name() : nullptr;
}

bool xx_Var::cursorValid() const
{
    return 0 <= cursor && cursor < count;
}

const wchar_t* xx_Var::currentText() const
{
    return type == RTSTR && cursorValid() ? values[cursor].rstring : nullptr;
}
