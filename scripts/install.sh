# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by ./run and ./check: installs the Debian packages that are missing, for ./check with for_tests=yes.
wanted="g++ cmake ninja-build ccache qt6-base-dev qt6-svg-dev libqcustomplot-dev libasound2-dev libfftw3-dev fonts-dejavu-core libcli11-dev"

[ "${for_tests:-}" != yes ] || wanted="$wanted libgtest-dev libbenchmark-dev libmuparser-dev clang-format"

# One test reads a print back.
[ "${for_tests:-}" = yes ] && wanted="$wanted poppler-utils"

# The tests start a sound server of their own. A machine that has PipeWire keeps its sound as it is, and skips that test.
if [ "${for_tests:-}" = yes ] && ! dpkg-query -W -f='${Status}' pipewire 2>/dev/null | grep -q 'install ok installed'; then
  wanted="$wanted pulseaudio pulseaudio-utils libasound2-plugins"
fi

missing=""
for package in $wanted; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
done
if [ -n "$missing" ]; then
  echo "Installing:$missing"
  as_root=""
  [ "$(id -u)" -eq 0 ] || as_root="sudo"
  $as_root apt-get update -qq
  # shellcheck disable=SC2086
  DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
fi
