#pragma once

// The scrambled form: each byte is moved by a value that depends on its place in the file and on
// the key. It keeps a file from being read by chance; it is no encryption.

#include "platform/platform.h"

#include <string>
#include <string_view>

namespace corma {

/// One byte each way. position is the byte's place in the scrambled file, 1 for the first; the key
/// is the scramble number. Sums wrap to 8 bits, so any key and position will do.
char scramble(int byte, long position, int key);
char descramble(int byte, long position, int key);

/// Turns the bytes of a scrambled file into its text in place, without the carriage returns that
/// stand for nothing.
void descrambleContent(platform::FileContent& content, int key);

/// The scrambled form of a text in Windows-1252 with line feeds; the form has CR LF at each.
std::string scrambledForm(std::string_view text, int key);

/// Path of the scrambled file that belongs to a plain one: tool.ini and 7 give tool7.ini.
std::wstring scrambledName(std::wstring_view path, int key);

} // namespace corma
