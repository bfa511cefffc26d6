# Sourced by the scripts beside it: fetches Debian source packages without touching the machine's
# list of package sources.

# fetch_source PACKAGE FOLDER: unpacks the source of PACKAGE as FOLDER/PACKAGE, unless it is there.
# The archives stay in FOLDER/archives, since whoever passes on a static build owes its sources.
fetch_source() {
  local package=$1 folder=$2
  [ -d "$folder/$package" ] && return
  local apt=$folder/apt
  mkdir -p "$apt/lists/partial" "$apt/parts" "$folder/archives"
  # The places that the machine fetches its packages from have their sources too.
  sed -n 's/^deb\( \|$\)/deb-src\1/p' /etc/apt/sources.list /etc/apt/sources.list.d/*.list \
    >"$apt/parts/sources.list" 2>/dev/null || true
  awk 'FNR == 1 { print "" } /^Types:/ { print "Types: deb-src"; next } { print }' \
    $(ls /etc/apt/sources.list.d/*.sources 2>/dev/null) </dev/null >"$apt/parts/sources.sources"
  local options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$apt/parts"
    -o "Dir::State::lists=$apt/lists" -o APT::Sandbox::User=root)
  [ -n "$(ls "$apt/lists" | grep Sources)" ] || apt-get -q "${options[@]}" update
  (cd "$folder/archives" && apt-get -q "${options[@]}" --download-only source "$package")
  rm -rf "$folder/$package.part"
  dpkg-source --no-check -x "$folder/archives/${package}"_*.dsc "$folder/$package.part"
  mv "$folder/$package.part" "$folder/$package"
}
