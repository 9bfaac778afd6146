#!/usr/bin/env bash
# Installs the Debian packages that are missing: setup/packages.sh [run|test|qt6]
# "run" is what building and running the terminal takes, "test" adds what the tests take, "qt6" what they take over Qt 6.
set -euo pipefail

run_packages=(
  g++ cmake ninja-build ccache pkg-config
  qtbase5-dev libqt5sql5-sqlite libsqlite3-dev qttranslations5-l10n qttools5-dev-tools
  libboost-dev libboost-thread-dev liblog4cxx-dev libbson-dev liblua5.4-dev libfreexl-dev
  fonts-noto-cjk fonts-dejavu-core tzdata python3
)
test_packages=(
  clang clang-format clang-tidy libclang-rt-14-dev doxygen
  libgtest-dev libgmock-dev libbenchmark-dev qtbase5-private-dev qt6-base-dev
  xvfb xauth xdotool imagemagick jwm
  at-spi2-core dbus python3-pyatspi x11-utils
  nats-server libnats-dev
  postgresql-15 libpq-dev openssl
)

qt6_packages=(qt6-base-private-dev libqt6sql6-sqlite qt6-l10n-tools qt6-translations-l10n)

case "${1:-run}" in
  run) wanted=("${run_packages[@]}") ;;
  test) wanted=("${run_packages[@]}" "${test_packages[@]}") ;;
  qt6) wanted=("${run_packages[@]}" "${test_packages[@]}" "${qt6_packages[@]}") ;;
  *)
    echo "setup/packages.sh: unknown set '$1': give run, test or qt6" >&2
    exit 2
    ;;
esac

# One call for all of them: dpkg-query takes longer to start than to answer.
installed="$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
  sed -n 's/^installed //p' || true)"
missing=()
for package in "${wanted[@]}"; do
  if ! grep -qxF -- "$package" <<<"$installed"; then
    missing+=("$package")
  fi
done
if [ "${#missing[@]}" -eq 0 ]; then
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup/packages.sh: missing packages: ${missing[*]}; not root and no sudo: install them as root with" \
      "apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi
echo "installing ${#missing[@]} missing packages: ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get -q -o DPkg::Lock::Timeout=300 update >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 install -y \
  --no-install-recommends "${missing[@]}" >&2
