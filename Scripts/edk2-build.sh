#!/usr/bin/env bash
# Builds KestUi with EDK II from Debian's edk2 source (the source of Debian's
# ovmf package), everything under build/edk2/:
#   src/                      Debian's edk2 source tree, with its BaseTools built
#   packages/KestUiPkg/       this repository as the package KestUiPkg (links)
#   packages/KestUiBinary/    UserInterfaceBinary.inf with the clang-built image beside it
#   Build/KestUiPkg/{DEBUG,RELEASE}_GCC5/X64/UserInterface.efi    KestUiPkg built by EDK II's build
#   ovmf/OVMF_CODE.fd, ovmf/OVMF_VARS.fd          OVMF X64 with KestUi (source INF) in its flash
#   ovmf-binary/OVMF_CODE.fd, ovmf-binary/OVMF_VARS.fd  the same with UserInterfaceBinary.inf
#   timings.txt               how long each step took
# Steps whose inputs did not change since their last success are skipped, so
# build/edk2 is a cache for local runs. Every step runs under a time limit and
# a failure names the step.
#   edk2-build.sh                  everything
#   edk2-build.sh --package-only   KestUiPkg only (no OVMF)
# Needs the firmware tree build/efi (Scripts/build.sh) for the binary INF's image,
# and the packages of Scripts/install-deps.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
REPO=$PWD
EDK2=$REPO/build/edk2
JOBS=$(nproc)
PACKAGE_ONLY=0
[ "${1:-}" = "--package-only" ] && PACKAGE_ONLY=1

# The source that Debian's installed ovmf package was built from; the release
# this was made with when ovmf is not installed. KESTUI_EDK2_VERSION chooses
# another one.
VERSION=${KESTUI_EDK2_VERSION:-$(dpkg-query -W -f='${source:Version}' ovmf 2>/dev/null || true)}
VERSION=${VERSION:-2022.11-6+deb12u2}

mkdir -p "$EDK2/stamps" "$EDK2/logs"
rm -f "$EDK2/FAILED"
: > "$EDK2/timings.txt.new"

# A failure names its step, here and in build/edk2/FAILED (which test.sh repeats at its end).
fail() {
  echo "edk2-build: FAILED at step '$1'. $2" | tee "$EDK2/FAILED" >&2
  exit 1
}

# step NAME LIMIT_SECONDS LOG COMMAND...: runs a step with a time limit; its
# output goes to build/edk2/logs/LOG (the last lines are shown on failure).
step() {
  local name=$1 limit=$2 log=$EDK2/logs/$3 started
  shift 3
  mkdir -p "$EDK2/logs"
  echo "== edk2: $name"
  started=$(date +%s)
  if ! timeout --kill-after=10 "$limit" "$@" > "$log" 2>&1; then
    tail -n 25 "$log" >&2 || true
    fail "$name" "See $log (limit ${limit}s)."
  fi
  echo "$name: $(($(date +%s) - started)) s" | tee -a "$EDK2/timings.txt.new"
}

# A digest of a step's inputs: a step is skipped when its stamp holds it.
inputs_digest() {
  (cd "$REPO" && find "$@" -type f -not -name '*.pyc' -print0 | sort -z | xargs -0 sha256sum) | sha256sum | cut -c1-32
}
fresh() { [ -f "$EDK2/stamps/$1" ] && [ "$(cat "$EDK2/stamps/$1")" = "$2" ]; }
stamp() { echo "$2" > "$EDK2/stamps/$1"; }

#
# 1. Debian's edk2 source, through a sources file and lists of our own (the
#    machine's apt configuration stays as it is).
#
APT_OPTIONS=(-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$REPO/Scripts/edk2/apt"
             -o Dir::State::Lists="$EDK2/apt/lists" -o Dir::Cache="$EDK2/apt/cache"
             -o Acquire::Retries=2 -o Acquire::http::Timeout=30 -o APT::Sandbox::User=root)
if ! fresh source "$VERSION" || [ ! -f "$EDK2/src/edksetup.sh" ]; then
  mkdir -p "$EDK2/apt/lists/partial" "$EDK2/apt/cache/archives/partial" "$EDK2/download"
  step "fetch: apt-get update (deb-src bookworm main)" 300 fetch-update.log apt-get "${APT_OPTIONS[@]}" --error-on=any update
  step "fetch: apt-get source edk2=$VERSION" 900 fetch-source.log \
    bash -c 'cd "$1" && shift && exec "$@"' fetch "$EDK2/download" \
    apt-get "${APT_OPTIONS[@]}" source --download-only "edk2=$VERSION"
  rm -rf "$EDK2/src.new" "$EDK2/src"
  step "unpack: dpkg-source -x edk2 $VERSION" 600 unpack.log \
    dpkg-source -x "$EDK2/download/edk2_${VERSION#*:}.dsc" "$EDK2/src.new"
  mv "$EDK2/src.new" "$EDK2/src"
  rm -f "$EDK2/stamps/"*
  stamp source "$VERSION"
fi

#
# 2. BaseTools, and the workspace: Debian's tree and our packages on PACKAGES_PATH.
#
export WORKSPACE=$EDK2
export PACKAGES_PATH=$EDK2/src:$EDK2/packages
export EDK_TOOLS_PATH=$EDK2/src/BaseTools
export CONF_PATH=$EDK2/Conf
export PYTHON_COMMAND=python3
if ! fresh basetools "$VERSION"; then
  step "build BaseTools" 1200 basetools.log make -C "$EDK2/src/BaseTools" -j "$JOBS"
  stamp basetools "$VERSION"
fi
mkdir -p "$CONF_PATH" "$EDK2/packages/KestUiPkg" "$EDK2/packages/KestUiBinary"
for entry in KestUiPkg.dec KestUiPkg.dsc Drivers Library Include Platform; do
  ln -sfn "$REPO/$entry" "$EDK2/packages/KestUiPkg/$entry"
done
# edksetup.sh writes Conf/ from BaseTools' templates and puts the tools on PATH.
set +u
cd "$EDK2/src"
# shellcheck disable=SC1091
. ./edksetup.sh BaseTools > "$EDK2/logs/edksetup.log" 2>&1 || fail "edksetup.sh" "See $EDK2/logs/edksetup.log."
set -u
cd "$REPO"

#
# 3. KestUiPkg with EDK II's build, DEBUG and RELEASE.
#
SOURCES_DIGEST=$(inputs_digest KestUiPkg.dec KestUiPkg.dsc Drivers Library Include Platform)
for target in DEBUG RELEASE; do
  if ! fresh "package-$target" "$SOURCES_DIGEST" ||
     [ ! -f "$EDK2/Build/KestUiPkg/${target}_GCC5/X64/UserInterface.efi" ]; then
    step "build KestUiPkg $target" 1200 "kestuipkg-$target.log" \
      build -p KestUiPkg/KestUiPkg.dsc -a X64 -t GCC5 -b "$target" -n "$JOBS"
    stamp "package-$target" "$SOURCES_DIGEST"
  fi
done
[ "$PACKAGE_ONLY" -eq 1 ] && { mv "$EDK2/timings.txt.new" "$EDK2/timings.txt"; exit 0; }

#
# 4. OVMF X64 with KestUi in its flash: copies of OVMF's DSC and FDF with our
#    lines (Scripts/edk2/ovmf_kestui.py), built once with the UI driver's
#    source INF and once with its binary INF and the clang-built image.
#
BINARY_IMAGE=$REPO/build/efi/Drivers/UserInterface/UserInterface.efi
[ -f "$BINARY_IMAGE" ] || fail "OVMF with the binary INF" "$BINARY_IMAGE is missing: run Scripts/build.sh first."
cp "$REPO/build/efi/Drivers/UserInterface/UserInterfaceBinary.inf" "$BINARY_IMAGE" \
  "$REPO/build/efi/Drivers/UserInterface/UserInterface.depex" "$EDK2/packages/KestUiBinary/" ||
  fail "OVMF with the binary INF" "The firmware tree's Drivers/UserInterface/ is incomplete: run Scripts/build.sh."
python3 "$REPO/Scripts/edk2/ovmf_kestui.py" "$EDK2/src" || fail "write OVMF's DSC/FDF copies" ""
OVMF_DIGEST=$(echo "$SOURCES_DIGEST $(inputs_digest Scripts/edk2 Scripts/edk2-build.sh) $(sha256sum "$BINARY_IMAGE")" |
              sha256sum | cut -c1-32)
OVMF_FLAGS=(-p OvmfPkg/OvmfPkgX64KestUi.dsc -a X64 -t GCC5 -b RELEASE -n "$JOBS" -D FD_SIZE_4MB -D NETWORK_ENABLE=FALSE)
OVMF_OUT=$EDK2/Build/OvmfKestUiX64/RELEASE_GCC5/FV
for variant in source binary; do
  dir=$EDK2/ovmf; binary=FALSE
  [ "$variant" = binary ] && { dir=$EDK2/ovmf-binary; binary=TRUE; }
  if ! fresh "ovmf-$variant" "$OVMF_DIGEST" || [ ! -f "$dir/OVMF_CODE.fd" ]; then
    step "build OVMF with KestUi ($variant INF)" 2700 "ovmf-$variant.log" \
      build "${OVMF_FLAGS[@]}" -D KESTUI_UI_BINARY=$binary
    mkdir -p "$dir"
    cp "$OVMF_OUT/OVMF_CODE.fd" "$OVMF_OUT/OVMF_VARS.fd" "$dir/"
    stamp "ovmf-$variant" "$OVMF_DIGEST"
  fi
done
mv "$EDK2/timings.txt.new" "$EDK2/timings.txt"
echo "edk2: KestUiPkg in $EDK2/Build/KestUiPkg, OVMF in $EDK2/ovmf and $EDK2/ovmf-binary"
