# The Debian package: cpack -G DEB in the build folder makes sonamark_<version>_amd64.deb
# from what "cmake --install" puts under /usr. Libraries come from dpkg-shlibdeps; the
# rest is what the program finds at run time: voices, a dictionary, xclip for
# sonamark-cli's clipboard, antiword for .doc files, xdg-open for links.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sonamark)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Sonamark")
set(CPACK_PACKAGE_CONTACT "Sonamark developers <support@sonamark.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reads copied text aloud and runs hotkey macros")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "reads copied text aloud and runs hotkey macros\n"
  "Sonamark is a resident tray program for X11 desktops. It watches the clipboard and\n"
  "reads copied text aloud with espeak-ng, keeps the last text and picture clips, applies\n"
  "pronunciation exceptions, checks spelling with Hunspell, and saves speech to WAV or\n"
  "MP3 files. Global hotkeys run macros written in a small bracket statement language.\n"
  "sonamark-cli runs, checks and formats macros, converts documents to MP3 and checks\n"
  "the machine (sonamark-cli doctor) without a display.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://sonamark.org/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "espeak-ng-data, hunspell-en-us | hunspell-dictionary, xclip")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "antiword, xdg-utils")
# The build keeps its debugging symbols; the package does not need them.
set(CPACK_STRIP_FILES ON)
include(CPack)
