#!/usr/bin/env bash
# End-to-end: the Debian package. Packages the built tree with cpack (nothing is rebuilt),
# checks the package's fields and files, unpacks it into a scratch root with dpkg -x and
# runs the programs from there: sonamark-cli --help and check, and sonamark /h, which must
# find its shipped files under the scratch root's share folder and write a login entry
# that starts the unpacked program.
# Usage: deb_install_e2e.sh BUILD_DIR
set -u
build="$1"
source "$(dirname "$0")/e2e_lib.sh"
scratch=$(mktemp -d /tmp/sonamark-deb-XXXXXX)
cleanup_deb() { cleanup; rm -rf "$scratch"; }
trap cleanup_deb EXIT

version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")$/\1/p' "$build/CPackConfig.cmake")
[ -n "$version" ] || fail "no package version in $build/CPackConfig.cmake"
(cd "$scratch" && cpack --config "$build/CPackConfig.cmake" -G DEB -B "$scratch/out") >"$scratch/cpack.log" 2>&1 \
  || { tail -20 "$scratch/cpack.log"; fail "cpack failed"; }
deb="$scratch/out/sonamark_${version}_$(dpkg --print-architecture).deb"
[ -f "$deb" ] || { ls "$scratch/out"; fail "no $(basename "$deb")"; }
echo "ok - cpack built $(basename "$deb")"

field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = sonamark ] || fail "package name is $(field Package)"
[ "$(field Version)" = "$version" ] || fail "package version is $(field Version)"
[ "$(field Section)" = utils ] || fail "section is $(field Section)"
field Maintainer | grep -q '@' || fail "no maintainer address"
field Description | grep -q 'reads copied text aloud' || fail "no description"
depends=$(field Depends)
for dep in espeak-ng-data hunspell-en-us xclip libespeak-ng1 libhunspell libqt6widgets6 libqt6multimedia6 libx11-6 \
           libxi6 libxtst6 libmp3lame0 libsndfile1 libsoxr0; do
  grep -q "$dep" <<<"$depends" || fail "Depends lacks $dep: $depends"
done
field Recommends | grep -q antiword || fail "Recommends lacks antiword"
echo "ok - fields: Depends from shlibdeps plus voices, dictionary and xclip; Recommends antiword"

root="$scratch/root"
dpkg -x "$deb" "$root" || fail "dpkg -x failed"
for f in usr/bin/sonamark usr/bin/sonamark-cli usr/bin/sonamark-help usr/bin/sonamark-launch \
         usr/share/applications/sonamark.desktop usr/share/icons/hicolor/scalable/apps/sonamark.svg \
         usr/share/sonamark/help/XML_Tutorial.rtf usr/share/sonamark/help/01.html; do
  [ -f "$root/$f" ] || fail "the package lacks /$f"
done
for size in 16 22 24 32 48 64 128 256; do
  png="$root/usr/share/icons/hicolor/${size}x${size}/apps/sonamark.png"
  file "$png" | grep -q "PNG image data, $size x $size" || fail "no ${size}x${size} PNG icon: $(file "$png")"
done
ls "$root"/usr/share/man/man1/sonamark.1* >/dev/null 2>&1 || fail "the package lacks the sonamark(1) man page"
grep -qx 'Exec=sonamark' "$root/usr/share/applications/sonamark.desktop" || fail "the launcher does not start sonamark"
grep -qx 'Icon=sonamark' "$root/usr/share/applications/sonamark.desktop" || fail "the launcher has no themed icon"
file "$root/usr/bin/sonamark" | grep -q 'stripped' && ! file "$root/usr/bin/sonamark" | grep -q 'not stripped' \
  || fail "the packaged program keeps its debugging symbols"
find "$root" -path '*/tests/*' -o -name 'key_recorder' -o -name '*.a' | grep -q . && fail "test files in the package"
echo "ok - files: programs, launcher, icons in every size, help pages, man page"

# The programs from the scratch root. Nothing of the build tree may be reachable from there.
cli="$root/usr/bin/sonamark-cli"
"$cli" --help | grep -q '^  doctor ' || fail "the unpacked sonamark-cli --help does not list doctor"
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%K","Tiny","[IF A=1]\r\n[X=1]\r\n[ENDIF]"\r\n' > "$home/Hotkeys.txt"
out=$("$cli" check --hotkeys "$home/Hotkeys.txt" --all 2>&1) || fail "check of a tiny macro failed: $out"
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%L","Bad","[WAIT 0.01]\r\n[ELSE]"\r\n' > "$home/Bad.txt"
"$cli" check --hotkeys "$home/Bad.txt" --all >/dev/null 2>&1
[ $? -eq 1 ] || fail "check of a macro with a stray [ELSE] did not report it"
echo "ok - the unpacked sonamark-cli runs: --help, check of a clean and a broken macro"

printf '0\r\n' > "$home/ShowInstructions.flg"
export XDG_CONFIG_HOME="$scratch/config"
bin="$root/usr/bin"
start_with_main_window
# Help > XML Support: the tutorial comes from the scratch root's share folder.
menu h Down
wait_for 15 managed_window_named "XML Support" \
  || fail "Help > XML Support did not show the tutorial (shipped file not found from $bin)"
managed_window_named "File Error" >/dev/null && fail "the unpacked program could not read its tutorial"
xdotool windowactivate --sync "$(managed_window_named "XML Support")" key --clearmodifiers alt+F4
echo "ok - the unpacked program finds its shipped files under its own prefix"

# Help > Run Sonamark at Startup: the login entry starts this very program, hidden.
menu h Down Down Down Down Down
answer "Add To Startup" alt+y
entry="$XDG_CONFIG_HOME/autostart/sonamark.desktop"
wait_for 10 test -f "$entry" || fail "no login entry after Add To Startup"
grep -qx "Exec=$bin/sonamark /h" "$entry" || fail "the login entry does not start $bin/sonamark: $(grep Exec "$entry")"
echo "ok - Run Sonamark at Startup points the login entry at $bin/sonamark /h"
