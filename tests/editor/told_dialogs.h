#pragma once

#include <array>

namespace corma::testing {

/// What the dialogs of the library beside ours are asked and answer.
struct ToldDialogs
{
    std::array<wchar_t, 300> given {}; // the value before
    int capacity = 0;
    int givenColour = 0;
    int calls = 0;
    const char* called = ""; // the dialog
    std::array<wchar_t, 300> answer {}; // the value afterwards
    int status = 0;
    int colour = 0;
};

} // namespace corma::testing
