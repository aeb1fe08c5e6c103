#!/bin/sh
# pictures.sh PROGRAM_FOLDER: takes the pictures of the user's manual anew, into docs/images. A copy of the program runs
# on a virtual display of its own and is driven by keys alone: they hang on the order of Tab, not on the layout.
set -eu
tree=$(cd "$(dirname "$0")/.." && pwd)
pictures=$tree/docs/images
if [ -z "${IN_XVFB:-}" ]; then
    . "$tree/packaging/prepare.sh"
    install_missing xvfb xauth openbox imagemagick xdotool fonts-noto-cjk
    IN_XVFB=1 exec xvfb-run -a -s "-screen 0 1366x768x24" "$0" "$@"
fi
export LANG=C.UTF-8
scratch=$(mktemp -d)
openbox >/dev/null 2>&1 &
manager=$!
trap 'kill $manager ${program:-} 2>/dev/null || true; rm -rf "$scratch"' EXIT

cp -r "$1/." "$scratch"
set -- "$scratch"/Data/*.bdb
sleep 1
XDG_CONFIG_HOME=$scratch "$scratch/tessel" "$1" &
program=$!

# keys KEY…: presses them one by one and waits for what they bring.
keys() {
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.2
    done
    sleep 1
}

# picture NAME [WINDOW]: saves the screen, or the window with that title and its frame.
picture() {
    window=root
    [ $# -eq 1 ] || window=$(xdotool search --onlyvisible --name "^$2\$") || { echo "no window $2" >&2; exit 1; }
    import ${2:+-frame} -window "$window" "$scratch/picture.png"
    convert "$scratch/picture.png" -strip +dither -colors 255 "PNG8:$pictures/$1.png"
    echo "docs/images/$1.png"
}

mkdir -p "$pictures"
sleep 4
xdotool mousemove 1366 768
keys Down Right Right Tab Tab Right Right
picture editor
keys Down Down Tab Right Tab
picture features
keys ctrl+n
xdotool type --delay 300 我的清单库
picture new-library 新建文件
keys Escape shift+Tab shift+Tab shift+Tab shift+Tab Menu Up Up Up Up Return
picture chapter-name 修改清单目录
keys Escape Tab Tab Tab Left Tab Tab Down Down Down Down F4 Down Right Right Down Right Down Down Tab
picture ration-browser 定额库浏览
keys ctrl+f
xdotool type --delay 300 pzcd
picture find-ration 定额库浏览
