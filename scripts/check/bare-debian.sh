# A Debian system where nothing is installed, for scripts that act as users do. A script sources this file
# after lib.sh and first calls enter_bare_debian.
#
# Needs root (for chroot), debootstrap and a Debian mirror: the one that apt uses here. The bare system is
# made once, in build/clean-root, and copied for each run.
# shellcheck shell=bash

# make_clean_root FOLDER: makes a bare system of this machine's release, with the same apt sources.
make_clean_root() {
  local mirror suite
  # shellcheck disable=SC2016
  mirror="$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | head -n 1)"
  suite="$(. /etc/os-release && printf '%s' "$VERSION_CODENAME")"
  rm -rf --one-file-system "$1"
  quietly clean-root debootstrap --variant=minbase --include=ca-certificates "$suite" "$1" "$mirror"
  rm -f "$1/etc/apt/sources.list"
  cp -a /etc/apt/. "$1/etc/apt"
  cp -a /usr/share/keyrings/. "$1/usr/share/keyrings"
  cp -a /etc/ssl/certs/. "$1/etc/ssl/certs"
  touch "$1/ready"
}

# enter_bare_debian: copies the bare system into a new folder, `root`, which is removed when the script ends.
enter_bare_debian() {
  ((EUID == 0)) || fail "this check needs root: it works in a separate system, by chroot."
  install_missing debootstrap
  local base="$PWD/build/clean-root"
  [[ -e "$base/ready" ]] || { say "Making a bare Debian in $base" && make_clean_root "$base"; }

  root="$(mktemp -d "${TMPDIR:-/var/tmp}/update-metadata-bare.XXXXXX")"
  trap 'umount -R -l "$root/proc" "$root/dev" 2>/dev/null; rm -rf --one-file-system "$root"' EXIT
  cp -a "$base/." "$root"
  cp /etc/resolv.conf /etc/hosts "$root/etc/" 2>/dev/null || true
  mount -t proc proc "$root/proc"
  mount --rbind --make-rslave /dev "$root/dev"
}

# inside COMMAND...: runs a command in the bare system. Of this environment it keeps only the network
# settings.
inside() {
  local proxies
  mapfile -t proxies < <(env | grep -i '^[a-z_]*proxy=')
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    "${proxies[@]}" chroot "$root" "$@"
}
