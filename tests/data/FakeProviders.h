#pragma once

#include "data/ado.h"

#include <map>
#include <string>
#include <vector>

namespace corma::testing {

struct FakeField
{
    std::wstring name;
    int type = 0; // ado::Type
    int attributes = 0;
};

/// The rows that a statement gives; without fields it gives none and its record set stays closed.
struct FakeRows
{
    std::vector<FakeField> fields {};
    std::vector<std::vector<Variant>> rows {};
    int failingRow = -1; // whose first value cannot be had; -1 for none
};

/// The providers of a program that links this: ado.h runs over what a test tells while an object
/// lives. There is one at a time.
class FakeProviders
{
public:
    FakeProviders();
    FakeProviders(const FakeProviders&) = delete;
    FakeProviders& operator=(const FakeProviders&) = delete;
    ~FakeProviders();

    /// The one that lives.
    static FakeProviders& current();

    void note(const std::wstring& event) { m_log.push_back(event); }

    /// What was done since the last look, in UTF-8, a line each: "open PROVIDER: TEXT",
    /// "close TEXT", "run SQL", "chunk FIELD", "end rows".
    std::string log();

    std::map<std::wstring, FakeRows> answers; // by statement; any other fails
    bool refuses = false; // every connection
    bool isLost = false; // every connection that is open

private:
    std::vector<std::wstring> m_log;
    FakeProviders* m_former;
};

} // namespace corma::testing
