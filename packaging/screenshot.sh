#!/bin/sh
# screenshot.sh PROGRAM LIBRARY PICTURE: runs the program on a virtual display of its own with LIBRARY open, saves what
# the screen shows and ends it. SIZE (1366x768) and QT_SCALE_FACTOR choose the screen.
set -eu
if [ -z "${IN_XVFB:-}" ]; then
    IN_XVFB=1 exec xvfb-run -a -s "-screen 0 ${SIZE:-1366x768}x24" "$0" "$@"
fi
openbox >/dev/null 2>&1 &
manager=$!
sleep 1
"$1" "$2" &
program=$!
trap 'kill "$program" "$manager" 2>/dev/null || true' EXIT
sleep "${WAIT:-4}"
kill -0 "$program" || { echo "the program ended by itself" >&2; exit 1; }
import -window root "$3"
