#!/bin/sh
# Runs a Windows program under Wine, in its own prefix, with a server that stays for a while and then exits by itself. The
# server and its services start with their output closed, because a test runner waits for every open pipe.
set -eu
: "${WINEPREFIX:=${XDG_CACHE_HOME:-$HOME/.cache}/pivra-nx/wine${DISPLAY:+-gui}}"; export WINEPREFIX
export WINEDEBUG="${WINEDEBUG:--all,err+module,err+virtual}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"
export LANG=C.UTF-8
unset LC_ALL
mkdir -p "$WINEPREFIX"
# Where addresses are random, one start in 2,000 fails: the heap then lies where Wine wants its shared data. A container may
# forbid to switch that off, so such a start, which has run nothing, is also repeated.
if [ -z "${PIVRA_FIXED_ADDRESSES:-}" ] && setarch -R true 2>/dev/null; then
  PIVRA_FIXED_ADDRESSES=1 exec setarch -R "$0" "$@"
fi
exec 9>"$WINEPREFIX.lock"; flock 9
# A busy server sometimes fails to answer; starting a second one then fails, and does no harm.
if ! wineserver -k0 >/dev/null 2>&1 9>&-; then
  setsid wineserver -p20 </dev/null >/dev/null 2>&1 9>&- || true
  wine cmd /c exit 0 </dev/null >"$WINEPREFIX.boot.log" 2>&1 9>&- || true
fi
exec 9>&-
# The first program with a window starts Wine's desktop, which keeps that program's error output open as long as any window
# exists. So the output goes to a file: a reader of a pipe would wait for its end.
errors=$(mktemp)
for attempt in 1 2 3 4 5; do
  status=0
  wine "$@" 2>"$errors" || status=$?
  grep -q 'failed to map the shared user data' "$errors" || break
done
cat "$errors" >&2
rm -f "$errors"
exit $status
