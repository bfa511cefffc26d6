# Sourced by the scripts beside it that use programs under wine and say what passes.
failures=0
pictures=$PWD/build/windows/pictures
mkdir -p "$pictures"

# check WHAT COMMAND...: does the command succeed, if need be after a while?
check() {
  local what=$1 try
  shift
  for try in $(seq 20); do
    if "$@" >/dev/null 2>&1; then
      echo "pass  $what"
      return
    fi
    sleep 1
  done
  echo "FAIL  $what"
  failures=$((failures + 1))
}

# Windows has the one, this machine the other.
dress_wine() {
  local font
  for font in "Segoe UI" "MS Shell Dlg" "MS Shell Dlg 2" "MS Sans Serif"; do
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f >/dev/null 2>&1
  done
}

not() { ! "$@"; }
shows() { xdotool search --onlyvisible --name "$1"; }
# A picture of which something can be seen.
picture() {
  import -window root "$pictures/$1.png"
  [ "$(identify -format %k "$pictures/$1.png")" -gt 50 ]
}

tell_failures() {
  echo "Failures: $failures"
  [ $failures -eq 0 ]
}
