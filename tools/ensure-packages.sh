#!/bin/sh
# Installs the named Debian packages that are missing. As root it runs
# apt-get; otherwise it prints the command to run and fails.
missing=""
for p in "$@"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
done
[ -z "$missing" ] && exit 0
if [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null 2>&1; then
  echo "installing:$missing"
  apt-get update -q >/dev/null && DEBIAN_FRONTEND=noninteractive apt-get install -y -q $missing >/dev/null || exit 1
else
  echo "missing packages:$missing"
  echo "run: sudo apt-get install -y$missing"
  exit 1
fi
