#include "data/odbc/diagnostics.h"

#include "data/odbc/sql_text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace corma::odbc {

namespace {

constexpr std::size_t kStateLength = 5;
constexpr std::size_t kClassLength = 2;
constexpr std::size_t kTextLength = 1024; // tried first; a longer text is asked for again

constexpr SQLSMALLINT kMostRecords = 100; // a driver that never says "no more" must not hang us

std::wstring_view classOf(const std::wstring& state)
{
    return std::wstring_view(state).substr(0, kClassLength);
}

/// A record by its number from 1, with room for `room` units of its text.
std::optional<DiagnosticRecord> recordAt(HandleRef handle, SQLSMALLINT number, std::size_t room)
{
    std::array<SQLWCHAR, kStateLength + 1> state {};
    Units text(room);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN done
        = SQLGetDiagRecW(handle.kind, handle.handle, number, state.data(), &native, text.data(),
                         static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(done)) {
        return std::nullopt;
    }
    if (const auto needed = static_cast<std::size_t>(length) + 1; length > 0 && needed > room) {
        return recordAt(handle, number, needed);
    }
    std::wstring words = toText(untilTerminator(text));
    words.erase(words.find_last_not_of(L" \r\n\t") + 1);
    return DiagnosticRecord {.state = toText(untilTerminator(state)), .text = std::move(words)};
}

bool isWarning(const DiagnosticRecord& record)
{
    return classOf(record.state) == L"00" || classOf(record.state) == L"01";
}

bool isLoss(const DiagnosticRecord& record)
{
    // Class 08 is about connections; 57P01 to 57P03 is a server that shuts down or starts.
    return classOf(record.state) == L"08" || record.state.starts_with(L"57P0");
}

bool isOfStatement(std::wstring_view stateClass)
{
    constexpr std::array<std::wstring_view, 4> kClasses = {L"22", L"23", L"42", L"HY"};
    return std::find(kClasses.begin(), kClasses.end(), stateClass) != kClasses.end();
}

} // namespace

Diagnosis diagnosisOf(HandleRef handle)
{
    Diagnosis records;
    for (SQLSMALLINT number = 1; number <= kMostRecords; ++number) {
        auto record = recordAt(handle, number, kTextLength);
        if (!record) {
            break;
        }
        records.push_back(*std::move(record));
    }
    return records;
}

bool tellsOfLoss(const Diagnosis& diagnosis)
{
    return std::any_of(diagnosis.begin(), diagnosis.end(), isLoss);
}

std::uint32_t codeOf(const Diagnosis& diagnosis, Step step)
{
    const auto failure = std::find_if_not(diagnosis.begin(), diagnosis.end(), isWarning);
    if (failure == diagnosis.end()) {
        return kUnspecified;
    }
    const std::wstring_view stateClass = classOf(failure->state);
    if (stateClass == L"28") {
        return kNotAuthorised;
    }
    return step == Step::running && isOfStatement(stateClass) ? kStatementFailed : kUnspecified;
}

std::wstring textOf(const Diagnosis& diagnosis)
{
    std::wstring text;
    for (const DiagnosticRecord& record : diagnosis) {
        text += (text.empty() ? L"[" : L" [") + record.state + L"] " + record.text;
    }
    return text;
}

void failToMake(HandleRef parent)
{
    if (parent.handle == SQL_NULL_HANDLE) {
        throw ComError {.code = kUnspecified,
                        .source = kSource,
                        .description = L"The driver manager of ODBC does not start."};
    }
    const Diagnosis diagnosis = diagnosisOf(parent);
    throw ComError {.code = codeOf(diagnosis, Step::running),
                    .source = kSource,
                    .description = textOf(diagnosis)};
}

} // namespace corma::odbc
