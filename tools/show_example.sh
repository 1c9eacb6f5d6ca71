#!/bin/sh
# Shows what cfgctl does with the example of examples/README.md, and fails when it is not what is
# told there. All of it happens in a copy of the example. Usage: tools/show_example.sh CFGCTL
set -eu
cfgctl=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
example=$(cd "$(dirname "$0")/../examples/plattegrond" && pwd)
make_translations=$(cd "$(dirname "$0")" && pwd)/make_translations.py
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -R "$example/." "$copy"
cd "$copy"
unset ACAD
drawing=project/woonhuis.dxf
failed=0
shown=cat

part() {
    printf '\n--- %s ---\n' "$*"
}

heading() {
    printf '\n%s\n' "$*"
}

# Prints the command line and its output, through the filter $shown, and leaves the whole output in
# $output. Arguments that a shell would split or expand are shown in quotes.
run() {
    printf '  $ cfgctl'
    for word; do
        case $word in
            *[\$!]*) printf " '%s'" "$word" ;;
            *[!A-Za-z0-9._/:=-]*) printf ' "%s"' "$word" ;;
            *) printf ' %s' "$word" ;;
        esac
    done
    printf '\n'
    status=0
    output=$("$cfgctl" "$@" 2>&1) || status=$?
    [ -z "$output" ] || printf '%s\n' "$output" | $shown | sed "s|$PWD/||g; s/^/    /"
}

# Rows of the model in columns: image, name, type, value, description.
in_columns() {
    sed 's/^\[{//; s/}\]$//; s/},{/\n/g' \
        | awk -F'"' '{ gsub(/[^0-9]/, "", $3); printf "%s  %-12s %-13s %-7s %s\n", $3, $6, $10, $14, $18 }'
}

# Levels that have the value.
of_value() {
    grep -vF '(not there)'
}

wrong() {
    echo "show_example: expected $1" >&2
    failed=1
}

# The first line of the output must be the value of the first argument.
expect() {
    value=$1
    shift
    run "$@"
    [ "$status" -eq 0 ] && [ "$(printf '%s\n' "$output" | head -n 1)" = "$value" ] || wrong "$value"
}

# A line of the output that was shown last must hold this.
has_line() {
    printf '%s\n' "$output" | grep -qF -- "$1" && [ "$status" -eq 0 ] || wrong "$1"
}

# Runs the rest of the arguments; a line of the output must hold the first one.
expect_line() {
    part=$1
    shift
    run "$@"
    has_line "$part"
}

# A command that says nothing when it succeeds.
expect_silence() {
    run "$@"
    [ "$status" -eq 0 ] && [ -z "$output" ] || wrong "silence"
}

# Shows in which lines a file differs from a former state of it; both are in the encoding of the
# third argument. The lines must be those of standard input, "-" before one that went, "+" before
# one that came.
expect_changes() {
    changes=$(diff "$1" "$2" | iconv -f "$3" -t UTF-8 | tr -d '\r' \
        | sed -n 's/^\(.\) $/\1/; s/^</-/p; s/^>/+/p')
    printf '  %s:\n' "$2"
    printf '%s\n' "$changes" | sed 's/^/    /'
    [ "$changes" = "$(cat)" ] || wrong "other changes of $2"
}

echo "The settings of Plattegrond, in a copy of examples/plattegrond"

part "Looking up"

heading "The file itself, asked last: what it includes goes first. Then its head, above the chapters"
expect 188 get plattegrond.ini "[Trappen]OptredeMax" --trace
expect "m²" get plattegrond.ini OppervlakteEenheid

heading "The office standard is included, and wins over the file"
expect 2.5 get plattegrond.ini "[Tekst]Hoogte" --trace

heading "The layers are an include of an include"
expect "21-BUITENWAND,2,CONTINUOUS,0.70" get plattegrond.ini "[Lagen]Buitenwand" --trace

heading "The project file beside the drawing"
expect 100 get plattegrond.ini "[Plot]Schaal"
expect 50 get plattegrond.ini "[Plot]Schaal" --drawing $drawing --trace

heading "The drawing itself: it goes before the project and the file, behind what is included"
expect 2600 get plattegrond.ini "[Ruimten]Hoogte"
expect 2700 get plattegrond.ini "[Ruimten]Hoogte" --drawing $drawing --trace
expect 27.5 get plattegrond.ini Noordhoek --drawing $drawing
expect 2700 get plattegrond.ini "[Bouwlaag: begane grond]Plafond" --drawing $drawing

heading "What the drawing holds, here the last lines: its settings"
shown="sed -n /^settings/,\$p"
expect_line "      NummerVorm=0.%02d" drawing --drawing $drawing
shown=cat

heading "A record of how something is drawn; layer and linetype are those of the drawing"
expect_line "layerId     21-BUITENWAND" record plattegrond.ini "[Lagen]Buitenwand" --as vis \
    --drawing $drawing

heading "A list of idents: the first that is found wins"
expect 2315 get plattegrond.ini "[Deuren]HoogteSchuif,[Deuren]Hoogte" --as int

heading "A scrambled file"
expect 630 get geheim.ini "[Formules]StapModulusMax" --scramble 7

heading "A line that is switched off is not there"
run get plattegrond.ini "[Wanden]KleurSloop" --json
[ "$status" -eq 1 ] && [ "$output" = '{"status":-5001,"value":null}' ] || wrong "no value"

heading "Every level of one ident, the one in force marked"
expect_line "* project   50 " levels plattegrond.ini "[Plot]Schaal" --drawing $drawing

heading "The tree of included files"
expect_line "norm/lagen.ini" includes plattegrond.ini

heading "What a chapter holds, by a pattern"
expect_line "[Wanden]DikteBuiten" find plattegrond.ini "[Wanden]Dikte*"

heading "The settings model: settings with their types and descriptions, in two languages"
shown=in_columns
expect_line '"type":"Yes/No","value":"Yes","description":"Number rooms."' \
    rows plattegrond.ini Ruimten --search nummeren+plinthoogte
expect_line '"type":"Ja/Nee","value":"Ja","description":"Ruimten nummeren."' \
    rows plattegrond.ini Ruimten --search nummeren+plinthoogte --language 19

heading "What the drawing (2) and the project (1) have of that category"
expect_line '{"image":2,"name":"Hoogte","type":"Integer","value":"2700",' \
    rows plattegrond.ini Ruimten --hide global --drawing $drawing

heading "A choice is stored as a word of no language; a list shows it in that of the user"
shown=cat
expect WOOD get plattegrond.ini "[Trappen]Materiaal"
shown=in_columns
expect_line '"value":"Wood"' rows plattegrond.ini Trappen --search materiaal+afwerking
expect_line '"value":"Hout"' rows plattegrond.ini Trappen --search materiaal+afwerking --language 19
shown=cat

part "Translated words"

heading "The words stand in a database. One that it lacks is shown as it is stored"
expect Bois translate plattegrond.ini WOOD --language 12
expect Madera translate plattegrond.ini WOOD --language 10
expect OAK translate plattegrond.ini OAK
expect_line "WOOD	Wood	Holz" sql woorden.db3 "SELECT Key,E,G FROM Keys" --max 3

heading "They are kept in a table, which a spreadsheet edits and a script makes the database of"
printf '  $ %s\n' "echo OAK,Oak,Chêne,Eiche,Roble,Eiken >> woorden.csv" \
    "tools/make_translations.py woorden.csv woorden.db3"
echo OAK,Oak,Chêne,Eiche,Roble,Eiken >> woorden.csv
python3 -B "$make_translations" woorden.csv woorden.db3 || wrong "a database"
expect Chêne translate plattegrond.ini OAK --language 12

part "Changing a value; of the levels those are shown that have it"
shown=of_value

heading "In the file: one line changes"
expect_silence set plattegrond.ini "[Trappen]OptredeMax" 187
expect_line "* file      187 " levels plattegrond.ini "[Trappen]OptredeMax"
expect_changes "$example/plattegrond.ini" plattegrond.ini UTF-8 <<'END'
- OptredeMax=188
+ OptredeMax=187
END

heading "In a scrambled file"
expect_silence set geheim.ini "[Formules]StapModulusMax" 640 --scramble 7
expect_line "* file  640 " levels geheim.ini "[Formules]StapModulusMax" --scramble 7

heading "In a drawing, here in a copy of it; the drawing itself stays as it is"
expect_silence set plattegrond.ini "[Ruimten]Hoogte" 2650 --drawing $drawing --save-as plan.dxf
expect_line "* drawing   2650 " levels plattegrond.ini "[Ruimten]Hoogte" --drawing plan.dxf
cmp -s "$example/$drawing" $drawing || wrong "the drawing as it was"

heading "In a project file beside the file, which is made; it counts for the drawings of this folder"
expect_silence set plattegrond.ini "[Plot]Schaal" 20 --level project
expect_line "* project   20 " levels plattegrond.ini "[Plot]Schaal" --drawing plan.dxf

part "Freezing values into a drawing"

heading "The drawing keeps what was in force when the project has another value"
expect_silence freeze plattegrond.ini "[Plot]Schaal" --drawing plan.dxf
expect_silence set plattegrond.ini "[Plot]Schaal" 200 --level project
expect_line "* drawing   20 " levels plattegrond.ini "[Plot]Schaal" --drawing plan.dxf
has_line "  project   200 "

heading "All settings that belong into drawings by their definition (level d)"
expect_silence freeze plattegrond.ini --levels --drawing plan.dxf
expect_line "* drawing   Voorlopig " levels plattegrond.ini "[Plot]StempelTekst" --drawing plan.dxf

heading "The same out of the drawing of the house into a DWG file; it has the settings of that, too"
expect_silence freeze plattegrond.ini --levels --drawing $drawing --save-as plan.dwg
expect_line "* drawing   Voorlopig " levels plattegrond.ini "[Plot]StempelTekst" --drawing plan.dwg
expect 2700 get plattegrond.ini "[Ruimten]Hoogte" --drawing plan.dwg
expect_silence set plattegrond.ini "[Ruimten]Hoogte" 2650 --drawing plan.dwg
expect 2650 get plattegrond.ini "[Ruimten]Hoogte" --drawing plan.dwg

part "Changing a setting as a dialog of the editor does"

heading "A value is checked against the type of its setting"
run apply plattegrond.ini Plot "Kopieën" veel
[ "$status" -eq 1 ] && printf '%s\n' "$output" | grep -qF '"veel" is refused' || wrong "a refusal"
expect 1 get plattegrond.ini "[Plot]Kopieën"
expect 3 apply plattegrond.ini Plot "Kopieën" 3
expect 3 get plattegrond.ini "[Plot]Kopieën"

heading "It goes to the level at which one works, here to the project of the house"
expect 25 apply plattegrond.ini Plot Schaal 25 --project project/plattegrond.ipr
expect_line "* project   25 " levels plattegrond.ini "[Plot]Schaal" --drawing $drawing

part "Removing a setting"

heading "The level below is in force again"
expect_silence remove plattegrond.ini Plot Schaal --project project/plattegrond.ipr
expect_line "* file      100 " levels plattegrond.ini "[Plot]Schaal" --drawing $drawing
expect_silence remove plattegrond.ini Ruimten Hoogte --drawing plan.dxf
expect_line "* file      2600 " levels plattegrond.ini "[Ruimten]Hoogte" --drawing plan.dxf

part "A new version of the product"

heading "Its defaults add what the user's files lack, at their places; what was there stays.
The former files are kept; the count is that of the last file"
cp plattegrond.ini former.ini
expect_line "2 added" update plattegrond.ini nieuw/plattegrond.inp
expect_changes plattegrond.ino plattegrond.ini UTF-8 <<'END'
+ ProjectArchitect=
+ Brandklasse=B
+ Zonwering=0
+ ZonweringSoort=screen
+
+ [Zonnepanelen]
+ Breedte=1134
+ Lengte=1722
+ Vermogen=430
+ Laag=61-ZONNEPANEEL,5,CONTINUOUS,0.25
END
expect_changes norm/arcering.ino norm/arcering.ini WINDOWS-1252 <<'END'
+ Leem=00-ARCERING,42,CONTINUOUS,0.09,NK_LEEM,0,40
+ LegendaNoot=Kleur volgens het materiaal, ook één op één geplot
END
cmp -s former.ini plattegrond.ino || wrong "the former file in plattegrond.ino"
expect 187 get plattegrond.ini "[Trappen]OptredeMax"

heading "The second time nothing is new"
expect "0 added" update plattegrond.ini nieuw/plattegrond.inp

heading "Its new values come in for what is there; nothing is added"
cp plattegrond.ini former.ini
cp norm/kantoor.ini norm/former.ini
expect_silence replace plattegrond.ini nieuw/plattegrond.irp
expect_changes former.ini plattegrond.ini UTF-8 <<'END'
- Versie=4.2
+ Versie=4.3
- OptredeMax=187
+ OptredeMax=185
- AantredeMin=220
+ AantredeMin=230
END
expect_changes norm/former.ini norm/kantoor.ini UTF-8 <<'END'
- NormVersie=2024-2
+ NormVersie=2025-1
- Afronding=5
+ Afronding=1
END

part "Blocks and attributes"

heading "The door of the new version, a DWG file, replaces the one in a drawing; it has an attribute more"
expect 31 block 'nieuw/deur.dwg!$PG-DEUR-ENKEL' --drawing $drawing --save-as plan.dxf
expect_line "WERING	geen" attdefs PG-DEUR-ENKEL --drawing plan.dxf

heading "The references of it are out of date; they get the attribute, and keep what the others say"
expect_line "outOfDateRefs	6D" attupdate --pattern "PG-DEUR*" --drawing plan.dxf --apply
expect_line "upToDateRefs	6D" attupdate --pattern "PG-DEUR*" --drawing plan.dxf
expect_line "NUMMER	D003" attributes 6D --drawing plan.dxf
has_line "WERING	geen"

echo
exit $failed
