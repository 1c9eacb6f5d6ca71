#pragma once

#include <corma/IniBuffer.h>
#include <corma/export.h>

#include <cstddef>
#include <string_view>

struct resbuf;
struct xx_IniPrivate;
struct xx_TextInfo;
struct xx_VisHatchInfo;
struct xx_VisParam;
class xx_VarArray;

namespace corma {
struct InifileInside;
}

/// A configuration file, kept open for reading, and the tree of files that it includes.
///
/// An ident is written "name" (the head of the file, above its first chapter), "[chapter]name", or
/// as a list of these separated by ",", of which the first that is found wins. Idents and chapters
/// compare without regard to case. A value is looked for in the included files, in the order of
/// `#INCLUDE` and each with the files that it includes itself; in the read cache; in the drawing;
/// in the project file beside the drawing; and in the file itself. The drawing and the project file
/// count for files with the extension ".ini" only.
///
/// Text arguments are terminated; sizes are in characters with the terminator; report asks for a
/// notice on the command line when nothing is found. Nothing throws. Values that change on disk are
/// seen changed by the next call; `#INCLUDE` is read once, when the object is made. Objects are not
/// for use by two threads at once.
class CORMA_EXPORT xx_Inifile
{
public:
    /// Opens a file that xx_findfile_arx() finds. A scramble number other than 0 asks for the
    /// scrambled form: tool.ini with number 7 is tool7.ini, or tool.ini itself where there is none.
    /// buffer may be null and is not owned. What cannot be found or opened is reported once, and
    /// the object is then one in which nothing is found.
    xx_Inifile(wchar_t* filename, int scrambled, IniBuffer* buffer);
    ~xx_Inifile();

    xx_Inifile(const xx_Inifile&) = delete;

    /// Takes over other's file, name and scramble number, and reads the included files afresh;
    /// other is then without a file. The buffer stays as it was.
    xx_Inifile& operator=(xx_Inifile& other);

    /// Full path of the file; empty when it was not found. Good for the life of the object.
    [[nodiscard]] const wchar_t* getFilename() const;
    [[nodiscard]] int getScrambled() const;

    /// Version of the interface.
    static short getIniVersion();

    /// True when an application was made for this version. If not, the user is told; and with
    /// abortOnMismatch the host is stopped.
    static bool checkIniVersion(bool abortOnMismatch, short applicationVersion);

    /// Number of names in `#INCLUDE`, also of those that were skipped.
    [[nodiscard]] int getIncludedFiles() const;

    /// Copies the path of an included file, at most length characters (a terminator only behind a
    /// shorter one); empty for a name whose file could not be found. Does nothing for an index out
    /// of range or for a name that was skipped because the tree has that file already.
    void getIncludedFileName(int index, wchar_t* name, size_t length) const;

    /// Looks up a list of idents. RTNORM when one is found, RTERROR when none is, RTCAN for an
    /// empty list. value receives at most |size| - 1 characters; it is empty after RTERROR.
    int getString(wchar_t* idents, wchar_t* value, int size, int report);

    /// Numbers, after the first 499 characters of a value. Text that is no number gives 0.
    /// An empty value is RTERROR with the output cleared; a miss clears it, too.
    int getInt(wchar_t* ident, int* value, int report);
    int getBool(wchar_t* ident, bool* value, int report);
    int getDouble(wchar_t* ident, double* value, int report);

    /// Numbers separated by ",". *count is the capacity going in and the numbers read coming out;
    /// more numbers than that are reported. An empty value is one 0.
    int getDoubleArray(wchar_t* ident, double* values, int* count, int report);
    int getIntArray(wchar_t* ident, int* values, int* count, int report);

    /// Exactly count numbers. RTCAN, with a report, when there are fewer, also for want of the
    /// ident. The first count of more are taken, with a report.
    int getDoubleArray(wchar_t* ident, double* values, int count, int report);
    int getIntArray(wchar_t* ident, int* values, int count, int report);

    /// The pieces of a value between separators as a list of texts, which the caller frees by
    /// acutRelRb(). *list is null after a miss. An empty value is one empty text.
    int getStringList(wchar_t* ident, resbuf** list, wchar_t separator, int report);

    /// Appends a pair of name and value for each entry that fits "[chapterPattern]identPattern", or
    /// "identPattern" for the head of the file, in the included files and then in this one. skip
    /// leading characters of each ident are left out of its name, and shorter idents altogether.
    /// When the text XXINIFRUBR fits identPattern, as it does for "*", a chapter is listed itself,
    /// as a pair of its header and an empty text. RTNORM when this file had an entry that fits;
    /// else 2, or 3 when it is not open.
    int getWcString(wchar_t* pattern, xx_VarArray* results, int report, int skip);

    /// The same through the settings model, which sees the values of the drawing and, where a
    /// configuration file of that name lies beside the drawing, of the project. Names have the
    /// chapter in brackets before the ident; skip characters are left out of the idents of the head
    /// of the file only, which is always searched, too. XXINIFRUBR in identPattern asks for the
    /// names of the chapters, each with an empty text, and a pattern for idents may follow it
    /// behind a ",". report has no effect. A scrambled file is not unscrambled. RTNORM when this
    /// file had anything that fits, else RTCAN.
    int getWcStringNew(wchar_t* pattern, xx_VarArray* results, int report, int skip);

    /// How something is drawn, from a value "layer,colour,linetype,lineweight". The working drawing
    /// is made ready: a layer that it lacks is made, a linetype loaded. Always RTNORM; a missing
    /// setting gives the record of empty fields, with a notice when report asks for it.
    int getVisParam(wchar_t* ident, xx_VisParam* info, int report);

    /// The same with ",style,height,widthFactor,obliqueAngle" or ",pattern,angle,scale" behind it.
    /// A missing setting is always told, once.
    int getTextInfo(wchar_t* ident, xx_TextInfo* info, int report);
    int getHatchInfo(wchar_t* ident, xx_VisHatchInfo* info, int report);

    /// Stores the value of one ident; the user is told when it cannot be stored. Level 0 is the
    /// file itself, 1 the project file beside it (its name with ".ipr"), which is made when it is
    /// not there, and 2 the working drawing, which is not saved by it; other levels do nothing. The
    /// forms with fewer arguments add an ident that is not there, and the first one stores at
    /// level 2. Without create an ident that the file does not have is not added; levels 1 and 2
    /// add it in any case.
    ///
    /// In a plain file the ident's line must begin with the ident and "=", in exactly its letters;
    /// a new ident comes before the next header, or right behind its own when that is the last one.
    /// Encoding and line ends are kept. In a scrambled file, which has levels 0 and 2 alone, an
    /// ident is told without regard to case, no ident can be added, and each line is cut at its
    /// first character below 32.
    void writeString(wchar_t* ident, wchar_t* value);
    void writeString(wchar_t* ident, wchar_t* value, int level);
    void writeString(wchar_t* ident, wchar_t* value, int level, bool create);

    /// Adds to this file what a file of defaults has and this one has not, in the order of the
    /// defaults, and keeps every value that is here. A chapter that is new counts as an item
    /// itself. Then the same for each included file that has a file of defaults, of its own path
    /// with the extension "inp"; *newItems, which may be null, is the count of the last file. When
    /// anything is added the former file is kept beside the new one, with an "o" at the end of its
    /// name, as tool.ino. Lines are cut at their first character below 32. RTNORM; or RTCAN when a
    /// file could not be read or written, and for a scrambled file, which stays as it is.
    int update(wchar_t* defaultFile, int* newItems);

    /// The same, and tells on the command line how many items are new.
    int update(wchar_t* defaultFile);

    /// Takes the values of another file for all entries that this file has; nothing is added. Then
    /// the same for each included file that has a file of new values, of its own path with the
    /// extension "irp". Of an ident that a chapter has twice, each gets the value of the first. The
    /// file is written also when no value is another. RTNORM; the status of the search when newFile
    /// is not found; or RTERROR when this file could not be read or written, and is as it was.
    int replaceNew(const wchar_t* newFile);

    /// The same.
    int replace(const wchar_t* newFile);

    /// Gives an ident the value in the working drawing that it has now in the project file or in
    /// this file, at most 511 characters of it, or an empty one when it is in neither; included
    /// files do not count. An ident that the drawing has keeps its value.
    void makeLocal(wchar_t* ident, int report);

    /// The same for each entry of the chapters that fit a pattern, in the included files and in
    /// this one.
    void makeLocalChapter(const wchar_t* chapter, int report);

    /// The same for each entry whose definition, in the file beside this one with "r" at the end of
    /// its name, has the level "d".
    void makeLocalLevelsLocal(int report);

    /// Writes a scrambled copy of the file itself to target, or for null beside it under its name
    /// with the key in it. RTERROR, with a notice, when the copy cannot be made.
    int scramble(wchar_t* target, int key);

    /// Clears the read cache if the object was given one.
    void flushIniBuffer();

    /// Joins two texts in one buffer of the process, which the next call overwrites.
    static wchar_t* Id(wchar_t* first, wchar_t* second);

private:
    friend struct corma::InifileInside;

    explicit xx_Inifile(xx_Inifile* parent);

    void allocPrivateData();
    void freePrivateData();
    void initIncludedInifiles();
    bool hasIncludedFileName(const wchar_t* path) const;
    void makePathAbsolute(wchar_t* path, size_t size) const;
    void open(const wchar_t* name);
    void includeFile(const wchar_t* path);
    int getStringOneIdent(std::wstring_view ident, wchar_t* value, int size, int report);
    int getStringOneIdentOld(const wchar_t* ident, wchar_t* value, int size, int report);
    void getOtherFileName(wchar_t* out, const wchar_t* extension) const;
    bool getLocalString(const wchar_t* chapter, const wchar_t* ident, wchar_t* value, int size);

    static constexpr size_t kFilenameSize = 264;

    bool hasBuffer = false; // a buffer was given
    bool isIni = false; // the name ends in ".ini", in any case
    IniBuffer* buffer = nullptr; // not owned
    wchar_t filename[kFilenameSize] = {}; // full path, at most 260 characters; empty: not found
    xx_IniPrivate* priv = nullptr; // owned
    int scrambled = 0; // 0: a plain text file
};

/// Looks idents up in a file for once. The result is a heap text that the caller frees by free(),
/// also when nothing was found: then it is empty. size must not exceed 3000.
CORMA_EXPORT wchar_t* getStringFromIni(wchar_t* fileName, wchar_t* ident, int size, int report);
