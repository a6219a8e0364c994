#!/bin/sh
# Takes the pictures of the help and of the README out of the folder of a tour, cut to what a page is
# about:
#
#     build/release/tools/tour/tour /home/nora/Kelvrane
#     tools/take_pictures.sh /home/nora/Kelvrane
#
# The tour's folder can be read in some of them, so give it a path that a user might have. A picture
# that the tour doesn't have stays as it is, or is named as wanted; a page that waits for it holds
# <!-- picture PATH "WORDS" -->, which becomes the picture once it is there. Needs ImageMagick.
set -eu

tour=${1:?usage: tools/take_pictures.sh TOUR_FOLDER}
help=$(dirname "$0")/../resources/help
colors=128

# The help's name, the tour's, and WIDTHxHEIGHT+LEFT+TOP to cut out, or "whole".
pictures='
about             about                  whole
browse-customer   browse-for-customer    whole
calendar-day      calendar-day           whole
calendar-time     calendar-new-time      whole
chart-day         chart-day              whole
chart-range       chart-range            whole
chart-setup       chart-setup            whole
chart-setup-3d    chart-setup-3d         whole
collection-location collection-location  whole
collection-print  collection-print       700x330+0+0
collection-view   collection-view        700x470+0+0
control-screen    first-size             whole
database          database-single        660x530+0+0
database-find     example-find           whole
database-list     database-list          700x300+0+0
database-manager  database-manager       whole
end-of-day        end-of-day             whole
example-chart     example-chart          whole
example-invoice   example-invoice        whole
example-projects  example-projects       whole
example-question  example-question       whole
example-timesheet example-timesheet      whole
example-week      example-week           whole
file-exists       file-exists            whole
kind-bar          chart-07               whole
kind-column       chart-00               whole
kind-pie          chart-17               whole
modify            modify                 whole
options-database  options-database       742x130+0+0
options-kelvrane  options-kelvrane       whole
options-misc      options-misc           742x150+0+0
options-spreadsheet options-spreadsheet  742x300+0+0
sheet-bars        sheet-template         700x150+0+0
sheet-database    sheet-database         whole
sheet-invoice     sheet-invoice          800x556+0+138
sheet-setup       sheet-week             272x330+808+30
sheet-template    sheet-template         800x262+0+138
sheet-week        sheet-week             800x540+0+0
tip               tip                    whole
tray-menu         tray-menu              whole
tray-recent       tray-recent-projects   whole
tray-status       tray-status            whole
tray-window       tray-window            whole
week-view         quick-and-week-view    1000x250+0+370
'
# Beside or below each other: the help's name, then the tour's, all cut alike.
rows='
states 430x46+200+42 running on-break stopped
'

taken() { # the tour's picture of this name in the light palette, "" for none
    for file in "$tour"/*-"$1"-light.png; do
        number=${file##*/}
        number=${number%"-$1-light.png"}
        case $number in *[!0-9]*) ;; *) echo "$file" && return ;; esac
    done
}

finish() { # no metadata, few colours, no wider than a page shows
    convert "$1" -strip -resize '760x>' +dither -colors $colors -define png:compression-level=9 "$2"
}

mkdir -p "$help/pictures"
echo "$pictures" | while read -r name from cut; do
    [ -n "$name" ] || continue
    file=$(taken "$from")
    if [ -z "$file" ]; then
        [ -f "$help/pictures/$name.png" ] || echo "wanted: $from"
        continue
    fi
    if [ "$cut" = whole ]; then
        finish "$file" "$help/pictures/$name.png"
    else
        convert "$file" -crop "$cut" +repage png:- | finish - "$help/pictures/$name.png"
    fi
done
echo "$rows" | while read -r name cut first others; do
    [ -n "$name" ] || continue
    set --
    for from in $first $others; do
        file=$(taken "$from")
        [ -z "$file" ] || set -- "$@" "(" "$file" -crop "$cut" +repage ")"
    done
    [ $# -eq 0 ] || convert "$@" -append png:- | finish - "$help/pictures/$name.png"
done

# The README's, whole: docs/pictures/NAME.png.
readme='
control-screen full-day
chart          chart-tree-by-date
invoice        sheet-invoice
'
echo "$readme" | while read -r name from; do
    [ -n "$name" ] || continue
    file=$(taken "$from")
    [ -n "$file" ] || { echo "wanted: $from"; continue; }
    convert "$file" -strip -define png:compression-level=9 "$help/../../docs/pictures/$name.png"
done

find "$help" -name '*.htm' | while read -r page; do
    grep -o '<!-- picture [^ ]* "[^"]*" -->' "$page" | while read -r mark; do
        source=$(echo "$mark" | cut -d' ' -f3)
        [ -f "$(dirname "$page")/$source" ] || continue
        words=$(echo "$mark" | cut -d'"' -f2)
        sed -i "s|$mark|<p><img src=\"$source\" alt=\"$words\"></p>|" "$page"
    done || true
done
