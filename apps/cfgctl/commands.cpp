#include "commands.h"

#include <array>

namespace cfgctl {

namespace {

// Each example stands before what it prints.
constexpr std::array kCommands = {
    CommandEntry {"get", makeGet, "The value of an ident",
                  R"(  cfgctl get plattegrond.ini "[Trappen]OptredeMax"
      188
  cfgctl get plattegrond.ini "[Plot]Schaal" --drawing project/woonhuis.dxf
      50, from the project file beside the drawing
  cfgctl get plattegrond.ini "[Deuren]HoogteSchuif,[Deuren]Hoogte" --as int
      2315, of the second ident: the first is not there
  cfgctl get plattegrond.ini "[Tekst]Hoogten" --as doubles:10
      1.8, 2.5, 3.5, 5 and 7, each on a line of its own
  cfgctl get plattegrond.ini "[Tekst]Hoogte" --trace
      2.5, and the files that were asked for it
  cfgctl get geheim.ini "[Formules]StapModulusMax" --scramble 7 --json
      {"status":5100,"value":"630"}

An ident is "name" for the head of the file, or "[chapter]name". One that begins with "-" goes
behind "--": cfgctl get tool.ini -- -name)"},
    CommandEntry {"find", makeFind, "All idents that fit a pattern, with values",
                  R"(  cfgctl find plattegrond.ini "[Plot]*"
      the chapter Plot: a line for its header, then name and value of each entry
  cfgctl find plattegrond.ini "[*]Hoogte"
      the entry Hoogte of every chapter
  cfgctl find plattegrond.ini "KleurF*,KleurH*"
      two entries of the head of the file
  cfgctl find plattegrond.ini "[Wanden]Dikte*" --skip 5
      the same without the first 5 letters of each name)"},
    CommandEntry {"levels", makeLevels, "The value of one ident at every level, strongest first",
                  R"(  cfgctl levels plattegrond.ini "[Tekst]Hoogte"
      2.5 of norm/kantoor.ini is in force, over 3.5 of plattegrond.ini
  cfgctl levels plattegrond.ini "[Plot]Schaal" --drawing project/woonhuis.dxf
      the same with the project file among the levels)"},
    CommandEntry {"includes", makeIncludes, "The tree of included files",
                  R"(  cfgctl includes plattegrond.ini
      plattegrond.ini, and below it norm/kantoor.ini, norm/lagen.ini and norm/arcering.ini)"},
    CommandEntry {"where", makeWhere, "The full path of a file that is found",
                  R"(  cfgctl where plattegrond.ini
      its path in the current folder
  ACAD="norm" cfgctl where lagen.ini
      its path in a support folder)"},
    CommandEntry {"scramble", makeScramble, "Write a scrambled copy of a file",
                  R"(  cfgctl scramble geheim.ini 7
      writes geheim7.ini beside it
  cfgctl scramble geheim.ini 7 /tmp/geheim7.ini
      writes the copy there)"},
};

} // namespace

std::span<const CommandEntry> commands()
{
    return kCommands;
}

xx_Inifile openFile(std::wstring name, const Options& options)
{
    IniBuffer* const cache = options.cache ? &IniBuffer::shared() : nullptr;
    return {name.data(), options.scramble, cache};
}

} // namespace cfgctl
