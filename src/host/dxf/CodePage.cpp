#include "host/dxf/CodePage.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <unicode/ucnv.h>
#include <unicode/utf16.h>

namespace corma::host::dxf {

namespace {

struct Converter
{
    std::string_view name; // number, or the whole name in small letters without "-" and "_"
    const char* converter; // of ICU
};

// What is not "ibm-" and the number, as the code pages of DOS are. The numbers of the double-byte
// ones are the same for DOS and Windows, and Windows' form is the larger one.
constexpr std::array kConverters = {
    // clang-format off
    Converter {"874",       "windows-874-2000"},
    Converter {"932",       "ibm-943_P15A-2003"},
    Converter {"936",       "windows-936-2000"},
    Converter {"949",       "windows-949-2000"},
    Converter {"950",       "windows-950-2000"},
    Converter {"1250",      "ibm-5346_P100-1998"},
    Converter {"1251",      "ibm-5347_P100-1998"},
    Converter {"1253",      "ibm-5349_P100-1998"},
    Converter {"1254",      "ibm-5350_P100-1998"},
    Converter {"1255",      "ibm-9447_P100-2002"},
    Converter {"1256",      "ibm-9448_X100-2005"},
    Converter {"1257",      "ibm-9449_P100-2002"},
    Converter {"1258",      "ibm-5354_P100-1998"},
    Converter {"big5",      "windows-950-2000"},
    Converter {"gb2312",    "windows-936-2000"},
    Converter {"ksc5601",   "windows-949-2000"},
    Converter {"macroman",  "macos-0_2-10.2"},
    Converter {"iso88591",  "ISO-8859-1"},
    Converter {"iso88592",  "ISO-8859-2"},
    Converter {"iso88593",  "ISO-8859-3"},
    Converter {"iso88594",  "ISO-8859-4"},
    Converter {"iso88595",  "ISO-8859-5"},
    Converter {"iso88596",  "ISO-8859-6"},
    Converter {"iso88597",  "ISO-8859-7"},
    Converter {"iso88598",  "ISO-8859-8"},
    Converter {"iso88599",  "ISO-8859-9"},
    // clang-format on
};

