# packages: for the other scripts to source; installs missing Debian packages.

# For the release build. fonts-dejavu-core is the font of the renderer's pictures; the offscreen editor uses the other two.
build_packages=(build-essential cmake ninja-build pkg-config libsndfile1-dev libcli11-dev libfmt-dev libebur128-dev
    libcairo2-dev libtag1-dev libpng-dev libfreetype-dev libfontconfig-dev fonts-dejavu-core fonts-liberation
    fonts-droid-fallback libgtest-dev libgmock-dev libbenchmark-dev)
# For the sanitizer builds and script/lint; libclang-rt-dev contains libFuzzer.
clang_packages=(clang clang-tidy libclang-rt-dev)
# For script/images; fonts-inter is the font of the images.
image_packages=(python3-cairo fonts-inter)
# For the Windows libraries and their tests; debootstrap creates the chroot for 32-bit Wine.
windows_packages=(g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest wine64 xvfb
    debootstrap)

package_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# debian_mirror: prints DEBIAN_MIRROR or, by default, the system's mirror; an empty line if there is none
debian_mirror() {
    printf '%s\n' "${DEBIAN_MIRROR:-$(grep -rhoE '(https?|file)://[^ ]+/debian/?( |$)' /etc/apt/sources.list \
        /etc/apt/sources.list.d 2>/dev/null | head -n 1 | tr -d ' ')}"
}

# install_packages NAME...: uses root or sudo, and the network only if a package is missing
install_packages() {
    local name log missing=()
    command -v dpkg-query >/dev/null || { echo "dpkg is missing; this script needs Debian 12 or a derivative" >&2; return 1; }
    for name in "$@"; do package_installed "$name" || missing+=("$name"); done
    if [ "${#missing[@]}" -eq 0 ]; then echo "all packages are installed"; return; fi
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "packages are missing; install them as root: apt-get install ${missing[*]}" >&2
        return 1
    fi
    echo "installing: ${missing[*]}"
    log=$(mktemp)
    if as_root apt-get update >"$log" 2>&1 &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
        rm -f "$log"
    else
        tail -n 15 "$log" >&2
        rm -f "$log"
        echo "apt-get failed; see above, then run this script again" >&2
        return 1
    fi
}
