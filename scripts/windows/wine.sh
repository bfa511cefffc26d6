# Sourced by the scripts beside it: a wine of their own, under build/wine, and quiet.
export WINEPREFIX=${FATHOMLINE_WINEPREFIX:-$PWD/build/wine}
export WINEDEBUG=-all
# Without a language of UTF-8 wine makes no file whose name has letters beyond ASCII, and a machine of
# nothing but its base system has none set.
export LC_ALL=C.UTF-8
# Neither .NET nor a browser: both would ask to be installed.
export WINEDLLOVERRIDES="mscoree=;mshtml="
mkdir -p "$WINEPREFIX"

start_wine() {
  [ -e "$WINEPREFIX/system.reg" ] || wineboot --init >/dev/null 2>&1
  # Kept, since a server for each of many programs would take longer than most of them.
  wineserver --persistent 2>/dev/null || true
  # Starts its services, which would hold the output of whoever came first as long as they live.
  wine cmd /c exit >/dev/null 2>&1 </dev/null
  trap stop_wine EXIT
}

stop_wine() {
  wineserver --kill 2>/dev/null || true
}
