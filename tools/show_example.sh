#!/bin/sh
# Shows what cfgctl finds in the example of examples/README.md, and fails when it is not what is
# told there. Usage: tools/show_example.sh CFGCTL
set -eu
cfgctl=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
cd "$(dirname "$0")/../examples/plattegrond"
unset ACAD
drawing=project/woonhuis.dxf
failed=0
shown=cat
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT

heading() {
    printf '\n%s\n' "$*"
}

# Prints the command line and its output, through the filter $shown, and leaves the whole output in
# $output. Arguments that a shell would split or expand are shown in quotes.
run() {
    printf '  $ cfgctl'
    for word; do
        case $word in
            *[!A-Za-z0-9._/:=-]*) printf ' "%s"' "$word" ;;
            *) printf ' %s' "$word" ;;
        esac
    done
    printf '\n'
    status=0
    output=$("$cfgctl" "$@") || status=$?
    [ -z "$output" ] || printf '%s\n' "$output" | $shown | sed "s|$PWD/||; s/^/    /"
}

# Rows of the model in columns: image, name, type, value, description.
in_columns() {
    sed 's/^\[{//; s/}\]$//; s/},{/\n/g' \
        | awk -F'"' '{ gsub(/[^0-9]/, "", $3); printf "%s  %-12s %-13s %-7s %s\n", $3, $6, $10, $14, $18 }'
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

# A line of the output must hold the first argument.
expect_line() {
    part=$1
    shift
    run "$@"
    printf '%s\n' "$output" | grep -qF -- "$part" && [ "$status" -eq 0 ] || wrong "$part"
}

echo "The settings of Plattegrond, in examples/plattegrond"

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

heading "A value goes into a copy of the drawing; the drawing stays as it is"
run set plattegrond.ini "[Ruimten]Hoogte" 2650 --drawing $drawing --save-as "$copies/woonhuis.dxf"
[ "$status" -eq 0 ] || wrong "the copy"
expect 2650 get plattegrond.ini "[Ruimten]Hoogte" --drawing "$copies/woonhuis.dxf"
expect 2700 get plattegrond.ini "[Ruimten]Hoogte" --drawing $drawing

heading "A record of how something is drawn; layer and linetype are those of the drawing"
expect_line "layerId     21-BUITENWAND" record plattegrond.ini "[Lagen]Buitenwand" --as vis \
    --drawing "$copies/woonhuis.dxf"

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
shown=cat

echo
exit $failed
