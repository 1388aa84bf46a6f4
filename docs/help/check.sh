#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# check.sh CHM SOURCES CODE...: takes the help file CHM apart and holds it against the folder SOURCES: all files are in,
# pages are good HTML with one heading that is the title and stands in the contents, links, anchors, pictures and the F1
# of the dialogs lead somewhere. A message in a page must have its words in the folders and files CODE. Ends with status
# 1 after it has told all faults.
set -euo pipefail
export LC_ALL=C.UTF-8
chm=$1 sources=$2
shift 2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
pages=$work/pages
faults=0

# fault TEXT...
fault() {
    echo "$*" >&2
    faults=$((faults + 1))
}

# query PAGE XPATH: what it finds, without a message if that is nothing
query() { xmllint --html --xpath "$2" "$1" 2>/dev/null || true; }

# values ATTRIBUTE: the values of an attribute as xmllint prints them, one a line
values() { sed -n "s/^ *$1=\"\(.*\)\"$/\1/p"; }

check_files() {
    extract_chmLib "$chm" "$pages" >"$work/extract.log" 2>&1 || fault "$chm can't be taken apart"
    [ -s "$pages/REKA/reka.htm" ] || fault "$chm lacks the topic REKA/reka.htm"
    local file
    while IFS= read -r file; do
        cmp -s "$sources/$file" "$pages/$file" || fault "$file isn't in $chm, or differs"
    done < <(cd "$sources" && find REKA -type f && ls NAVO.hhc NAVO.hhk)
}

# check_page FILE: FILE is a name under REKA/
check_page() {
    local page=$sources/REKA/$1 title
    xmllint --html --noout "$page" 2>"$work/html.log" && [ ! -s "$work/html.log" ] ||
        fault "$1: $(head -n 1 "$work/html.log")"
    title=$(query "$page" 'string(//title)')
    [ -n "$title" ] || fault "$1 has no title"
    [ "$(query "$page" 'count(//h1)')" = 1 ] && [ "$(query "$page" 'string(//h1)')" = "$title" ] ||
        fault "$1 needs one heading that is its title, $title"
    grep -qxF "REKA/$1	$title" "$work/contents" || fault "$1 isn't in the contents with its title, $title"
    { query "$page" '//@href' | values href; query "$page" '//@src' | values src; } |
        while IFS= read -r target; do echo "$1	REKA/$target"; done >>"$work/targets"
    { query "$page" '//@name' | values name; query "$page" '//@id' | values id; } |
        while IFS= read -r anchor; do echo "REKA/$1#$anchor"; done >>"$work/anchors"
}

# listed FILE: target and name of each entry of a file of contents or an index
listed() { sed -n 's/.*"Name" value="\([^"]*\)".*"Local" value="\([^"]*\)".*/\2\t\1/p' "$1"; }

check_targets() {
    local from target
    while IFS=$'\t' read -r from target; do
        if [ ! -f "$pages/${target%%#*}" ]; then
            fault "$from: $target isn't there"
        elif [[ $target == *#* ]] && ! grep -qxF "$target" "$work/anchors"; then
            fault "$from: $target has no such anchor"
        fi
    done <"$work/targets"
    sort "$work/anchors" | uniq -d >"$work/twice"
    [ ! -s "$work/twice" ] || fault "defined twice: $(paste -sd ' ' "$work/twice")"
}

# sources CODE...: each source in a line, without comments, strings in a row joined
sources() {
    find "$@" -type f \( -name '*.cpp' -o -name '*.h' \) | while IFS= read -r file; do
        sed 's,\(^\|[ ;]\)//.*,,' "$file" | tr '\n' ' ' | sed 's/\([^\\]\)" *u\{0,1\}"/\1/g'
        echo
    done
}

# fragments PAGE: the parts of each message between its variable words, as a source spells them
fragments() {
    query "$1" '//td[contains(concat(" ", @class, " "), " message ")]' |
        tr '\n' ' ' | sed 's/<var>[^<]*<\/var>/\n/g; s/<[^>]*>/\n/g; s/\xc2\xa0/ /g' |
        sed 's/&nbsp;/ /g; s/&lt;/</g; s/&gt;/>/g; s/&quot;/"/g; s/&amp;/\&/g; s/^ *//; s/ *$//; s/"/\\"/g' |
        grep . || true
}

# Where the dialogs and their F1 lead.
list_topics() {
    grep -rhoE --include='*.cpp' --include='*.h' 'u"REKA/[^"]+"' "$@" | sort -u |
        sed 's/^u"\(.*\)"$/a dialog\t\1/' >"$work/topics"
    [ "$(wc -l <"$work/topics")" -ge 10 ] || fault "no topics of the dialogs found"
    cat "$work/topics" >>"$work/targets"
}

check_messages() {
    sources "$@" >"$work/sources"
    local page fragment count=0
    for page in "$sources"/REKA/*.htm; do
        while IFS= read -r fragment; do
            count=$((count + 1))
            grep -qF -e "$fragment" "$work/sources" || fault "$(basename "$page"): no source says $fragment"
        done < <(fragments "$page")
    done
    [ "$count" -ge 100 ] || fault "only $count parts of messages found"
}

check_files
listed "$sources/NAVO.hhc" >"$work/contents"
: >"$work/targets"
: >"$work/anchors"
for page in "$sources"/REKA/*.htm; do check_page "$(basename "$page")"; done
listed "$sources/NAVO.hhc" | sed 's/^\([^\t]*\)\t.*/contents\t\1/' >>"$work/targets"
listed "$sources/NAVO.hhk" | sed 's/^\([^\t]*\)\t\(.*\)/index entry \2\t\1/' >>"$work/targets"
list_topics "$@"
check_targets
check_messages "$@"

echo "$(wc -l <"$work/contents") pages, $(wc -l <"$work/targets") links, $faults faults"
[ "$faults" -eq 0 ]
