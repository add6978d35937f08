#!/usr/bin/env bash
# Every include of a project header must point to the folder's own layer or one below it:
#   platform                       platform only
#   shell, macro                   the bottom of the logic (macro may use shell)
#   hotkeys reader audio spell search   above them, beside each other
#   engine                         on top of the logic
# ui, cli and tools may use everything. Prints each include that points upwards.
# Usage: check_layers.sh SRC_DIR
set -u
src="${1:?usage: check_layers.sh SRC_DIR}"

allowed() {
  case "$1" in
    platform) echo "platform" ;;
    shell) echo "platform shell" ;;
    macro) echo "platform shell macro" ;;
    hotkeys|reader|audio|spell|search) echo "platform shell macro hotkeys reader audio spell search" ;;
    engine) echo "platform shell macro hotkeys reader audio spell search engine" ;;
    *) echo "*" ;;
  esac
}

bad=0
checked=0
for folder in platform shell macro hotkeys reader audio spell search engine; do
  [ -d "$src/$folder" ] || continue
  ok=" $(allowed "$folder") "
  while IFS= read -r hit; do
    file="${hit%%:*}"
    target="$(sed -E 's/.*#include "([a-z_]+)\/.*/\1/' <<<"$hit")"
    checked=$((checked + 1))
    if [[ "$ok" != *" $target "* ]]; then
      echo "${file#"$src"/}: includes $target/ ($folder may use:$ok)"
      bad=$((bad + 1))
    fi
  done < <(grep -rHE '^[[:space:]]*#[[:space:]]*include "[a-z_]+/' "$src/$folder" --include='*.h' --include='*.cpp')
done

if [ "$checked" -eq 0 ]; then
  echo "no project includes found under $src"
  exit 1
fi
if [ "$bad" -gt 0 ]; then
  echo "$bad include(s) point to a layer above their folder"
  exit 1
fi
echo "$checked project includes, all downwards"
