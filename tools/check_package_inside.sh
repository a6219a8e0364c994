#!/usr/bin/env bash
# The part of check_package.sh that runs inside the fresh system, as root there.
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive DISPLAY=:7
home=/home/ada
data=$home/.local/share/brindlemoor-ware/Kelvrane

step() { printf '== %s\n' "$*"; }
fail() { echo "FAILED: $*" >&2; cat /check/said >&2 2> /dev/null || true; exit 1; }
apt() { apt-get -qq -y "$@" > /check/said 2>&1 || fail "apt-get $*"; }
as_user() { su ada -c "cd; DISPLAY=$DISPLAY $*"; }
eventually() { # COMMAND: within half a minute
    for _ in {1..300}; do
        if "$@" > /dev/null 2>&1; then return 0; fi
        sleep 0.1
    done
    return 1
}
window() { xdotool search --onlyvisible --name "$1"; }
gone() { ! "$@"; }
picture() { import -window root "/check/$1.png"; }
kelvrane_runs() { pgrep -u ada -x kelvrane; }
answer() { # TITLE KEY: of the box that comes up
    eventually window "$1" || fail "no box named $1"
    picture "${1// /-}"
    xdotool windowactivate --sync "$(window "$1" | tail -1)" key "$2"
    eventually gone window "$1" || fail "the box $1 stays"
}
control_screen() { eventually window 'Kelvrane' && sleep 2; }
end_program() {
    pkill -u ada -x -TERM kelvrane
    eventually gone kelvrane_runs || fail "SIGTERM didn't end the program"
}
checksums() { # of what is the user's alone: the day is counted on, the settings get values, the help is renewed
    (cd "$data" && find . -type f ! -name 'Fileinfo*' ! -name settings.json ! -name 'Kelvrane.qc*' -print0 |
        sort -z | xargs -0 sha256sum)
}
version_in_settings() { grep -q "\"Version\": \"$1\"" "$data/settings.json"; }
version_of() { dpkg-deb -f "$1" Version; }

first=/check/new.deb
[[ ! -f /check/old.deb ]] || first=/check/old.deb

step "install $(version_of $first) with what it depends on, nothing recommended"
useradd -m ada
apt update
apt install --no-install-recommends "$first"
[[ $(as_user kelvrane --version) == "Kelvrane $(version_of $first)" ]] || fail "--version"
as_user kelvrane --nonsense > /dev/null 2>&1 && fail "an unknown argument is no error"
[[ ! -e $data ]] || fail "a question for the version made a folder"
for program in /usr/bin/kelvrane /usr/libexec/kelvrane/*; do
    [[ ! -f $program ]] || ! ldd "$program" | grep 'not found' || fail "$program lacks a library"
done

step "first start, on a display"
apt install --no-install-recommends xvfb xdotool openbox imagemagick procps desktop-file-utils \
    xdg-utils shared-mime-info libfile-mimeinfo-perl man-db appstream
Xvfb $DISPLAY -screen 0 1280x900x24 -nolisten tcp > /dev/null 2>&1 &
eventually xdotool getmouselocation || fail "no display"
openbox > /dev/null 2>&1 &
eventually xdotool get_num_desktops || fail "no window manager"
as_user kelvrane > /check/said 2>&1 &
answer 'Generate initial data' alt+y
answer 'Need more information' alt+n
eventually version_in_settings "$(version_of $first)" || fail "no Version in the settings"
control_screen || fail "no control screen"
picture control-screen
if [[ $first == */new.deb && -f /usr/share/kelvrane/Kelvrane.qch ]]; then
    xdotool windowactivate --sync "$(window 'Current Day' | tail -1)" key F1
    eventually window 'Help' || fail "F1 opens no help"
    sleep 2
    picture help
fi
end_program
[[ $(stat -c %a "$data") == 700 ]] || fail "others may read the user's folder"

if [[ -f /check/old.deb ]]; then
    step "upgrade to $(version_of /check/new.deb)"
    sed -i 's/"StopWorkTime": ".*"/"StopWorkTime": "6:30 PM"/' "$data/settings.json"
    if [[ -f $data/data/Invoice.htm ]]; then as_user "echo '<!-- mine -->' >> $data/data/Invoice.htm"; fi
    checksums > /check/before
    apt install --no-install-recommends /check/new.deb
    as_user kelvrane > /check/said 2>&1 &
    eventually version_in_settings "$(version_of /check/new.deb)" || fail "the new Version isn't written"
    control_screen || fail "no control screen after the upgrade"
    picture after-upgrade
    end_program
    grep -q '"StopWorkTime": "6:30 PM"' "$data/settings.json" || fail "a setting was lost"
    (cd "$data" && sha256sum --quiet -c /check/before) || fail "the upgrade changed a file of the user"
    [[ ! -f /usr/share/kelvrane/Kelvrane.qch ]] || cmp /usr/share/kelvrane/Kelvrane.qch "$data/Kelvrane.qch" ||
        fail "the help isn't renewed"
    echo "   kept $(wc -l < /check/before) files; new: $(checksums | diff /check/before - | sed -n 's/^> [0-9a-f]* *//p' | tr '\n' ' ')"
fi

step "desktop entry, file type, manual page"
desktop-file-validate /usr/share/applications/kelvrane.desktop \
    /usr/share/kelvrane/autostart/kelvrane.desktop || fail "desktop entry"
appstreamcli validate --no-net /usr/share/metainfo/kelvrane.metainfo.xml | grep '^E:' && fail "metainfo"
[[ -z $(find /etc/xdg/autostart -name '*kelvrane*' 2> /dev/null) ]] || fail "starts uninvited"
as_user man kelvrane | grep -q KELVRANE_HOME || fail "manual page"
sheets="$home/Ada's sheets, 2026"
as_user "mkdir -p \"$sheets/March_data\""
printf '<xml xmlns:o="urn:schemas-microsoft-com:office:office">\r\n <o:File HRef="Acme.htm"/>\r\n</xml>\r\n' \
    > "$sheets/March.col"
printf '<html><head></head><body><table><tr><td>Hours</td><td>7.5</td></tr></table></body></html>\n' \
    > "$sheets/March_data/Acme.htm"
chown -R ada: "$sheets"
[[ $(as_user "xdg-mime query filetype \"$sheets/March.col\"") == application/x-kelvrane-collection ]] ||
    fail "the type of a .col file"
[[ $(as_user xdg-mime query default application/x-kelvrane-collection) == kelvrane.desktop ]] ||
    fail "the program of a .col file"

step "a collection, opened as a file manager would"
as_user "xdg-open \"$sheets/March.col\"" > /check/said 2>&1 &
eventually window 'Collection Viewer' || fail "no viewer"
sleep 2
picture collection
xdotool windowactivate --sync "$(window 'Collection Viewer' | tail -1)" key alt+F4
eventually gone kelvrane_runs || fail "the process outlives its viewer"

step "purge"
as_user "mkdir -p .config/autostart && cp /usr/share/kelvrane/autostart/kelvrane.desktop .config/autostart/"
dpkg -L kelvrane > /check/files
checksums > /check/before
apt purge kelvrane
while IFS= read -r file; do
    [[ -d $file && $file != *kelvrane* || ! -e $file ]] || fail "$file is left"
done < /check/files
left=$(find / -xdev \( -path /check -o -path "$home" -o -path /proc -o -path /tmp \) -prune -o \
    -iname '*kelvrane*' ! -path '/var/lib/apt/*' ! -path '/var/cache/*' -print)
[[ -z $left ]] || fail "left behind: $left"
(cd "$data" && sha256sum --quiet -c /check/before) || fail "the user's data didn't survive"
[[ -f $data/settings.json ]] || fail "the settings didn't survive"
echo "== all well"
