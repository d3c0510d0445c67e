# Sourced by ./pendra and ./check: finds the missing distribution packages and installs them.
# shellcheck shell=bash

# The packages of a list that are not installed, one a line.
missing_packages() {
  local package
  while read -r package; do
    [ -n "$package" ] || continue
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
  done < <(cat "$@")
}

# install_missing LIST...: installs what the lists name and the machine lacks.
# The result is remembered until a list changes or the package database does.
install_missing() {
  local stamp
  stamp=build/.packages-$(cat "$@" | cksum | cut -d' ' -f1)
  [ "$stamp" -nt /var/lib/dpkg/status ] && return 0
  local missing
  missing=$(missing_packages "$@")
  if [ -n "$missing" ]; then
    local as_root=()
    if [ "$(id -u)" != 0 ]; then
      if ! command -v sudo >/dev/null || ! sudo -v; then
        echo "Pendra needs these packages. Install them as root with" >&2
        echo "    apt-get install ${missing//$'\n'/ }" >&2
        return 1
      fi
      as_root=(sudo)
    fi
    echo "Installing ${missing//$'\n'/ }"
    # shellcheck disable=SC2086 # a package name holds no blank
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c \
      'apt-get update -q && apt-get install -q -y --no-install-recommends "$@"' sh $missing \
      >build/packages.log 2>&1 || { tail -n 20 build/packages.log >&2; return 1; }
  fi
  touch "$stamp"
}

# build_preset PRESET [TARGET...]: configures once, then builds; quiet while all is well.
build_preset() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"build/$preset.configure.log" 2>&1 || {
    cat "build/$preset.configure.log" >&2
    return 1
  }
  local targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  cmake --build --preset "$preset" "${targets[@]}"
}
