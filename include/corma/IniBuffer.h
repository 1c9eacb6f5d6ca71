#pragma once

#include <corma/export.h>

/// The read cache: 16 recent answers, each for one document. All objects share one table, and
/// making an object clears it. Keys compare without regard to case; a key that does not begin with
/// "[" stands for one in the chapter "Algemeen". Not for use by two threads at once.
class CORMA_EXPORT IniBuffer
{
public:
    /// Values and keys of this many characters or more are not kept.
    static constexpr int kTooLong = 256;

    IniBuffer();

    /// The object that stands ready in the library.
    static IniBuffer& shared();

    /// Copies a kept value to value, at most size - 1 characters and a terminator, and tells
    /// whether there was one. *slot receives the entry to give to store().
    bool lookup(const wchar_t* key, wchar_t* value, int size, int* slot, const void* document);

    /// Puts a new value, cut to 255 characters, in the place of a kept one; does nothing else when
    /// none is kept. *slot as for lookup().
    bool update(const wchar_t* key, const wchar_t* newValue, int* slot, const void* document);

    /// Keeps a value in the entry that lookup() named. Does nothing when key or value is too long.
    void store(const wchar_t* key, const wchar_t* value, int slot, const void* document);

    /// Forgets what is kept for that key and document.
    void remove(const wchar_t* key, const void* document);

    /// Forgets everything.
    static void clear();
};
