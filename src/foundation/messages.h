#pragma once

// The routes by which a problem reaches the user. None of them fails, and none stops what goes on:
// the caller continues by its own logic.

#include <cstddef>
#include <string>

/// Reports "Error in file %s on line %d\n(%s, ec = %s)" as a user message, cut to 255 characters.
/// A null text counts as empty. Status 0 means that there is no status to tell.
void xx_reportError(const wchar_t* sourceName, int line, const wchar_t* text, int status);

/// The same with a number for the text.
void xx_reportErrorCode(const wchar_t* sourceName, int line, int code, int status);

/// Prints the text on the command line, each "%" in it turned to "$" in place. While a command runs
/// that hides the command line (the variable CMDNAMES tells), the first text goes to an alert and
/// those that follow are dropped, until a text was printed again.
void xx_showUserMessage(wchar_t* text);

/// Formats one text argument and prints it on a line of its own (mode 0) or shows it in an alert
/// (any other mode).
void xx_printMessage(const wchar_t* format, const wchar_t* argument, int mode);

/// Mode 0 prints the text on a line of its own and a blank behind it, mode 1 shows an alert; other
/// modes do nothing.
void xx_printOrAlert(const wchar_t* text, int mode);

/// Formatted print into a buffer that must be large enough. Returns the characters written.
int xx_format(wchar_t* buffer, const wchar_t* format, ...);

/// The same with at most count characters, the terminator counted.
int xx_formatN(wchar_t* buffer, std::size_t count, const wchar_t* format, ...);

namespace corma {

/// Formatted print into a text of its own.
std::wstring formatted(const wchar_t* format, ...);

/// Shows a text of ours by xx_showUserMessage().
void showUserMessage(std::wstring text);

/// The alert-given flag as it is when the process starts.
void resetAlertGiven();

} // namespace corma
