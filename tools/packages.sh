# Sourced by ./run and ./test: installs Debian packages that are missing, if it may.

# What the player needs to be built and to play.
build_packages=(cmake ninja-build g++ pkg-config
  libgstreamer1.0-dev gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad
  gstreamer1.0-alsa gstreamer1.0-pulseaudio libtag1-dev
  libcpp-httplib-dev libssl-dev nlohmann-json3-dev
  qt6-base-dev libqt6gui6 libxcb1-dev x11proto-dev fonts-dejavu-core fonts-dejavu-extra)
# What makes the sample tracks.
sample_packages=(gstreamer1.0-tools sox libsox-fmt-mp3)
# A display in memory, and what looks at it and points at things on it.
display_packages=(xvfb openbox xdotool x11-utils imagemagick)
# What makes the package, looks at it, and offers its options.
packing_packages=(dpkg-dev file binutils fakeroot lintian appstream man-db groff-base
  bash-completion zsh fish)
# Fonts of scripts that are high or deep, or hang together, and of pictures.
font_packages=(fonts-lohit-deva fonts-nafees fonts-noto-color-emoji fonts-tibetan-machine
  fonts-tlwg-loma-ttf fonts-wqy-microhei)
# What the tests and the checks need besides: among it a Wayland compositor with an X server; the last
# ones are a sound server and what records it.
test_packages=(libgtest-dev libbenchmark-dev python3 clang clang-format libclang-rt-dev lld llvm
  "${display_packages[@]}" "${font_packages[@]}" x11-xkb-utils x11-xserver-utils wmctrl xclip
  chromium chromium-driver python3-selenium
  weston qt6-wayland xwayland
  dbus playerctl python3-gi xdg-utils desktop-file-utils libglib2.0-bin shared-mime-info
  "${packing_packages[@]}" pulseaudio pulseaudio-utils)

# install_missing PACKAGE... : prints nothing unless something is missing.
install_missing() {
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
  local missing=() name
  for name in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] ||
      missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  local as_root=()
  if ((EUID != 0)); then
    if ! sudo -n true 2>/dev/null; then
      echo "these packages are missing, the build may fail: ${missing[*]}" >&2
      return 0
    fi
    as_root=(sudo -n)
  fi
  echo "installing ${missing[*]}" >&2
  local log
  log=$(mktemp)
  if ! { "${as_root[@]}" apt-get update -q &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -q -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
  rm -f "$log"
}
