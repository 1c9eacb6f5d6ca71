#pragma once

// host/ - the CAD host's operations under their own names and with their own signatures. Here the
// standalone host behind them is ours; inside the CAD host the same names come from the host. Only
// what the library calls is here.

#include <corma/host.h>

#include <string>

class AcDbDatabase;

// --- text and messages ---------------------------------------------------------------------------

/// Prints formatted text on the command line. Always RTNORM.
int acutPrintf(const ACHAR* format, ...);

/// Shows a text that the user must close. Always RTNORM.
int acedAlert(const ACHAR* text);

/// Ends the host with a message.
void acdbFail(const ACHAR* text);

/// RTNORM when the text fits the wild-card pattern, heeding case; else RTERROR.
int acutWcMatch(const ACHAR* text, const ACHAR* pattern);

/// True when the text fits the wild-card pattern:
/// `#` a digit, `@` a letter, `.` neither letter nor digit, `?` any character, `*` any run of
/// characters, `[abc]` one of, `[~abc]` none of, `[a-c]` a range, a leading `~` negates a whole
/// alternative, `,` separates alternatives, a backquote takes the next character as it stands.
bool acutWcMatchEx(const ACHAR* text, const ACHAR* pattern, bool ignoreCase);

// --- variables and files -------------------------------------------------------------------------

/// Reads a system variable into *result. A text in it is a heap copy that the caller frees.
/// RTERROR for an unknown name.
int acedGetVar(const ACHAR* name, resbuf* result);

/// Sets a system variable. RTERROR for an unknown name, a read-only one, or a value of another
/// type.
int acedSetVar(const ACHAR* name, const resbuf* value);

/// Full path of a file that the host finds: the path as it stands, the current folder, the folder
/// of the current drawing, the support folders. RTERROR when nowhere; the result then stays as it
/// was. length is the capacity of result in characters, its terminator counted.
int acedFindFile(const ACHAR* name, ACHAR* result, std::size_t length);

/// The module that runs on the host's behalf, as a full path, or null.
const ACHAR* acedGetAppName();

// --- result lists: acutNewRb and acutRelRb are in <corma/host.h> ---------------------------------

// --- documents -----------------------------------------------------------------------------------

class AcApDocument
{
public:
    explicit AcApDocument(const ACHAR* fileName);

    /// Full file name of the drawing; empty for an unnamed one.
    [[nodiscard]] const ACHAR* fileName() const;

private:
    const std::wstring m_fileName;
};

class AcApDocManager
{
public:
    /// The document that the user works in, or null.
    [[nodiscard]] AcApDocument* curDocument() const;
};

AcApDocManager* acDocManagerPtr();

class AcDbHostApplicationServices
{
public:
    /// The database that drawing operations work on, or null.
    [[nodiscard]] AcDbDatabase* workingDatabase() const;

    /// Value of an environment variable such as "ACAD", the support folders separated by ";".
    /// Null when it is not set; the text lives until the next call.
    const ACHAR* getEnv(const ACHAR* name) const;
};

AcDbHostApplicationServices* acdbHostApplicationServices();
