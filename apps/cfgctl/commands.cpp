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
  cfgctl get plattegrond.ini "[Ruimten]Hoogte" --drawing project/woonhuis.dxf
      2700, from the drawing itself
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
      the same without the first 5 letters of each name
  cfgctl find plattegrond.ini "[Ruimten]Hoogte,N*" --model --drawing project/woonhuis.dxf
      through the settings model: 2700 for the height, from the drawing
  cfgctl find plattegrond.ini "[*]XXINIFRUBR" --model
      all chapters)"},
    CommandEntry {"levels", makeLevels, "The value of one ident at every level, strongest first",
                  R"(  cfgctl levels plattegrond.ini "[Tekst]Hoogte"
      2.5 of norm/kantoor.ini is in force, over 3.5 of plattegrond.ini
  cfgctl levels plattegrond.ini "[Plot]Schaal" --drawing project/woonhuis.dxf
      the same with the drawing and the project file among the levels)"},
    CommandEntry {"includes", makeIncludes, "The tree of included files",
                  R"(  cfgctl includes plattegrond.ini
      plattegrond.ini, and below it norm/kantoor.ini, norm/lagen.ini and norm/arcering.ini)"},
    CommandEntry {"where", makeWhere, "The full path of a file that is found",
                  R"(  cfgctl where plattegrond.ini
      its path in the current folder
  ACAD=norm cfgctl where lagen.ini
      its path in a support folder)"},
    CommandEntry {"record", makeRecord, "How something is drawn: the record of a value",
                  R"(  cfgctl record plattegrond.ini "[Lagen]Buitenwand" --as vis
      colour 2 and a line weight of 70; the names of layer and linetype need a drawing
  cfgctl record plattegrond.ini "[Lagen]Buitenwand" --as vis --drawing plan.dxf
      the same with the layer, which is made in the drawing when it is not there

With --drawing the drawing is made ready for what the value names, so it may be written.)"},
    CommandEntry {"model", makeModel, "All settings with types, texts and levels, as JSON",
                  R"(  cfgctl model plattegrond.ini
      the categories with their settings, as the settings editor has them
  cfgctl model plattegrond.ini --language 19
      the same with Dutch descriptions
  cfgctl model plattegrond.ini --project project/plattegrond.ipr
      the values of the project on top
  cfgctl model plattegrond.ini --drawing project/woonhuis.dxf
      the project file beside the drawing on top, and above it what the drawing holds

It prints JSON, with or without --json.)"},
    CommandEntry {"rows", makeRows, "The settings of a category as a list shows them, as JSON",
                  R"(  cfgctl rows plattegrond.ini Plot
      a row for each setting: image of its level, name, type, value, description, colour
  cfgctl rows plattegrond.ini Plot --drawing project/woonhuis.dxf --hide global
      those only that the project or the drawing has; obsolete and read-only ones stay
  cfgctl rows plattegrond.ini Wanden --search hoogte+lengte
      those with "hoogte" or "lengte" in name or description
  cfgctl rows plattegrond.ini Trappen --language 12
      in French: the material, which is stored as WOOD, is Bois
  cfgctl rows plattegrond.ini Wanden --access 10 --fills 2
      the list of a user of level 10, filled twice

It prints JSON, with or without --json. The value of an option is shown in the language, by the
database that TranslateDB of the file names; one that is not in it as it is stored.
Images: 0 global, 1 project, 2 local; copies: 3 and 4 of the global value, 5 of the project's,
6 of both; 7 obsolete, 8 read-only.)"},
    CommandEntry {"set", makeSet, "Store a value in a file, a project file or a drawing",
                  R"(  cfgctl set plattegrond.ini "[Trappen]OptredeMax" 185
      changes its line in plattegrond.ini, or adds one
  cfgctl set plattegrond.ini "[Plot]Schaal" 20 --level project
      the same in plattegrond.ipr beside it, which is made when it is not there; it counts
      for drawings of that folder
  cfgctl set plattegrond.ini "[Trappen]OptredeMax" 185 --no-create
      changes a line that is there, and adds none
  cfgctl set plattegrond.ini "[Ruimten]Hoogte" 2650 --drawing plan.dxf
      stores it in plan.dxf, where get finds it before that of the project and of the file
  cfgctl set plattegrond.ini Noordhoek 12.5 --drawing plan.dxf --save-as plan2.dwg
      writes plan2.dwg, which is a DWG file, and leaves plan.dxf alone
  cfgctl set geheim.ini "[Formules]StapModulusMax" 640 --scramble 7
      in geheim7.ini, which is scrambled; only an ident that it has can be set
  cfgctl set plattegrond.ini Noordhoek -- -12.5
      a value that begins with "-" goes behind "--"

Other lines of a file, its encoding and line ends stay. The case of an ident counts: [Plot]schaal
would be a second line. To see which value is in force then: cfgctl levels. A drawing must be
one of R13 or later, a DWG file one of R2000 or later and not of R2007.)"},
    CommandEntry {"freeze", makeFreeze, "Store present values in a drawing, where they stay",
                  R"(  cfgctl freeze plattegrond.ini "[Plot]Schaal" --drawing plan.dxf
      its value from the project file or from plattegrond.ini goes into plan.dxf
  cfgctl freeze plattegrond.ini --chapter Trappen --drawing plan.dxf
      all entries of the chapter Trappen
  cfgctl freeze plattegrond.ini --levels --drawing plan.dxf
      all settings whose definition in plattegrond.inr has the level "d"

A value that the drawing has already stays. Values of included files do not count, and an ident
without a value becomes an empty one.)"},
    CommandEntry {"apply", makeApply, "Change a setting as a dialog of the editor does",
                  R"(  cfgctl apply plattegrond.ini Trappen OptredeMax 185
      checks that 185 is a value of its type, and stores it in plattegrond.ini
  cfgctl apply plattegrond.ini Plot Schaal 20 --project project/plattegrond.ipr
      stores it in the project file
  cfgctl apply plattegrond.ini Plot Schaal 20 --project project/plattegrond.ipr --save-globally
      in both files
  cfgctl apply plattegrond.ini Ruimten Hoogte 2650 --drawing plan.dxf
      in plan.dxf

A category is a chapter, or Algemeen for the head of the file. It prints the value; for one that
is refused what is left of it without the characters that its type does not have. Exit status 1
when it is refused or could not be stored. Limits are not looked at.)"},
    CommandEntry {"remove", makeRemove, "Remove a setting",
                  R"(  cfgctl remove plattegrond.ini Trappen OptredeMax
      takes its line out of plattegrond.ini
  cfgctl remove plattegrond.ini Plot Schaal --project project/plattegrond.ipr
      out of the project file; the value of plattegrond.ini is in force again
  cfgctl remove plattegrond.ini Ruimten Hoogte --drawing plan.dxf
      out of plan.dxf

With a drawing only what the drawing itself holds can be removed. Of a file the first line of the
category goes that begins with the name, be it that of a longer one.)"},
    CommandEntry {"remove-category", makeRemoveCategory, "Remove a chapter with all its settings",
                  R"(  cfgctl remove-category plattegrond.ini Trappen
      takes the settings of the chapter Trappen and its header out of plattegrond.ini

Comments stay. With --project the settings go from the project file, and then from FILE, too.)"},
    CommandEntry {"update", makeUpdate, "Add what is new in a file of defaults",
                  R"(  cfgctl update plattegrond.ini nieuw/plattegrond.inp
      entries and chapters that plattegrond.ini lacks come in; its own values stay.
      The former file is kept as plattegrond.ino. For norm/arcering.ini, which it includes,
      the same happens with norm/arcering.inp

Each included file that has a file of its name with ".inp" beside it takes that as its defaults.
The count is that of the last file which has defaults, and 0 when nothing in it was new.)"},
    CommandEntry {"replace", makeReplace, "Take new values for what is there",
                  R"(  cfgctl replace plattegrond.ini nieuw/plattegrond.irp
      entries of plattegrond.ini that the new file has, too, get its values; nothing is added.
      For norm/kantoor.ini, which it includes, the same happens with norm/kantoor.irp

Each included file that has a file of its name with ".irp" beside it takes its values from that.
No former file is kept.)"},
    CommandEntry {"scramble", makeScramble, "Write a scrambled copy of a file",
                  R"(  cfgctl scramble geheim.ini 7
      writes geheim7.ini beside it
  cfgctl scramble geheim.ini 7 nieuw/geheim7.ini
      writes the copy there)"},
    CommandEntry {"drawing", makeDrawing, "What a drawing holds",
                  R"(  cfgctl drawing --drawing project/woonhuis.dxf
      its version, blocks, layers, linetypes, text styles, references and settings
  cfgctl drawing --drawing project/woonhuis.dxf --json
      the same for a program

A reference is told by its handle, its block, and the block that it stands in.)"},
    CommandEntry {"block", makeBlock, "Find a block, or load it from a drawing file",
                  R"(  cfgctl block PG-RAAM --drawing plan.dxf
      the handle of its record: plan.dxf has it, so no file is looked for
  cfgctl block 'blokken/deur.dwg!PG-DEUR-DUBBEL' --drawing plan.dxf
      the block comes out of blokken/deur.dwg into plan.dxf, with its layers
  cfgctl block 'nieuw/deur.dwg!$PG-DEUR-ENKEL' --drawing plan.dxf
      the same for a block that plan.dxf has: its definition is replaced, references stay
  cfgctl block 'blokken/deur.dwg!PG-RAAM' --drawing plan.dxf --json
      with the name of the block, and the text that is left behind the "!"

NAME may be a path and may end in ".dwg" or ".dwt"; the block has the last part of it as its name.
A file whose name tells no kind of drawing has ".dwg" put behind. Files are looked for as where
does. Single quotes keep a shell from "$" and "!". No drawing here has a password, so one is
refused. What a file holds, DWG or DXF, decides how it is read, whatever it is named.)"},
    CommandEntry {"attributes", makeAttributes, "The attributes of a block reference",
                  R"(  cfgctl attributes 6D --drawing project/woonhuis.dxf
      a line for each: tag, a tab, text; the constant ones of the block are among them
  cfgctl attributes 6D --drawing project/woonhuis.dxf --pseudo "BL_*SCALE" --json
      with where it stands, and how it is scaled

References are told by drawing, each behind its handle.)"},
    CommandEntry {"attdefs", makeAttributeDefinitions, "The attributes that a block prescribes",
                  R"(  cfgctl attdefs PG-DEUR-ENKEL --drawing project/woonhuis.dxf
      a line for each: tag, a tab, default text
  cfgctl attdefs PG-DEUR-ENKEL --constant --drawing project/woonhuis.dxf
      only those that are the same in every reference)"},
    CommandEntry {"attupdate", makeAttributeUpdate, "Find attributes that differ from their blocks",
                  R"(  cfgctl attupdate --drawing project/woonhuis.dxf
      the references in model space, those out of date first: what it is, a tab, its handle
  cfgctl attupdate --pattern "PG-SAN*" --drawing project/woonhuis.dxf --json
      those of some blocks, for a program
  cfgctl attupdate --drawing plan.dxf --apply
      brings all that are out of date up to date
  cfgctl attupdate --records --drawing plan.dxf
      blocks that differ from the drawing files of their names; with --apply these are loaded
      anew, and their references follow

Only which attributes there are counts, not their texts. The texts of attributes that stay are
kept.)"},
    CommandEntry {"attsync", makeAttributeSync, "Give references what their block prescribes",
                  R"(  cfgctl attsync PG-DEUR-ENKEL --drawing plan.dxf
      in all its references, missing attributes come, those without a definition go, the
      others keep their texts and take everything else from the definition)"},
    CommandEntry {"copy", makeCopy, "Copy entities",
                  R"(  cfgctl copy 6D --drawing plan.dxf
      the handle of the copy, which lies on the first
  cfgctl copy 6D 72 --drawing plan.dxf --matrix 1,0,0,500,0,1,0,0,0,0,1,0,0,0,0,1
      copies two, each 500 to the right; the newest goes first

The copies go where the user of the drawing works: into model or paper space. They are moved by the
user's coordinate system first.)"},
    CommandEntry {"erase", makeErase, "Erase objects",
                  R"(  cfgctl erase 6D --drawing plan.dxf
      takes the reference and its attributes out of plan.dxf

Those before one that cannot be erased are gone, those behind it stay.)"},
    CommandEntry {"view", makeView, "Where the user of a drawing works",
                  R"(  cfgctl view --drawing project/woonhuis.dxf
      the direction from which it is seen, the space that entities go to, and the handle of the
      viewport
  cfgctl view --drawing project/woonhuis.dxf --json
      the same for a program)"},
    CommandEntry {"sql", makeSql, "The rows of a SELECT statement on a database",
                  R"(  cfgctl sql woorden.db3 "SELECT Key,E,N FROM Keys" --max 3
      a line of names, then a line for each row: WOOD, Wood, Hout, with tabs between
  cfgctl sql woorden.db3 "SELECT Key FROM Keys WHERE N='Hout'"
      WOOD and hout, two keys with the same word
  cfgctl sql woorden.db3 "SELECT E FROM Keys WHERE Key='WOOD'" --json
      {"status":5100,"columns":[{"name":"E","type":5005,"values":["Wood"]}]}
  cfgctl sql woorden.db3 "SELECT Key FROM Keys" --max 1 --debug
      the first key, and on standard error what is run

CONNECTION is one of these:
    words.db3                    an SQLite file, read only; it is looked for as where does
    lists.mdb, lists.dbf         an Access file, or a dBase file; these and all below go
                                 through ODBC
    Provider=SQLNCLI11;...       what that provider takes: odbc_drivers.txt, or the library,
                                 knows its driver
    Driver=FreeTDS;..., DSN=...  what ODBC takes
Types of columns are 5010 for integers, 5001 for reals and 5005 for texts. The status of a
statement that fails is the code of SQLite, else -5001.)"},
    CommandEntry {"translate", makeTranslate, "A stored word in the language of the user",
                  R"(  cfgctl translate plattegrond.ini WOOD
      Wood
  cfgctl translate plattegrond.ini WOOD --language 19
      Hout, from the database that TranslateDB of plattegrond.ini names
  cfgctl translate plattegrond.ini HR++ --language 19
      HR++, since the database has no such word

There are words in English (also for every language not named here), French (12), German (7),
Spanish (10) and Dutch (19). A word that is not found is printed as it is, with exit status 0.)"},
    CommandEntry {"texts", makeTexts, "Texts of the editor in a language",
                  R"(  cfgctl texts 2972 2981 --language 19
      Algemeen and Lijntype, each behind its number and a tab
  cfgctl texts --language 25 --json
      all rows in Russian

A line end within a text is shown as \n in the plain form. A row that is not there is empty.)"},
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
