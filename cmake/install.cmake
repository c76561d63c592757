# What "cmake --install" puts where, and the packages that "cpack" makes of it. scripts/package makes them all.
#
# Programs go to bin, as everywhere. Debian keeps games apart in /usr/games, so its package is made with
# CMAKE_INSTALL_BINDIR=games. The archive for Windows has everything in one folder: CMAKE_INSTALL_BINDIR=. and
# CMAKE_INSTALL_DOCDIR=. do that.
include(GNUInstallDirs)

install(TARGETS helvan RUNTIME)
if(HELVAN_NEWER_PROGRAM_FILE)
  cmake_path(SET newer NORMALIZE "${CMAKE_INSTALL_BINDIR}/${HELVAN_NEWER_PROGRAM}")
  cmake_path(GET newer PARENT_PATH folder)
  cmake_path(GET newer FILENAME name)
  if(NOT folder)
    set(folder .)
  endif()
  install(PROGRAMS ${HELVAN_NEWER_PROGRAM_FILE} DESTINATION ${folder} RENAME ${name})
endif()
install(FILES README.md CONTRIBUTING.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
if(NOT WIN32)
  install(FILES packaging/helvan.6 DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
  # Where xboard looks for engines that speak UCI; it starts them through its adapter.
  install(FILES packaging/helvan.eng DESTINATION ${CMAKE_INSTALL_DATADIR}/games/plugins/uci)
endif()

set(HELVAN_MAINTAINER "the Helvan team <helvan@helvan.invalid>" CACHE STRING "Whom the Debian package names")

set(CPACK_PACKAGE_NAME helvan)
set(CPACK_PACKAGE_VENDOR "the Helvan team")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chess engine for UCI front ends")
set(CPACK_PACKAGE_DESCRIPTION
"Helvan plays and analyses standard chess for a front end that speaks the UCI
protocol, such as scid, pychess or, through polyglot, xboard. It searches with
one thread, plays from opening books in the Polyglot format, analyses several
lines side by side, and checks its own answers in a self-test.")
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" system)
set(CPACK_PACKAGE_FILE_NAME helvan-${PROJECT_VERSION}-${system})
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${HELVAN_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION games)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()
# What a foreign program needs cannot be looked up here: whoever makes its package says it (CPACK_DEBIAN_PACKAGE_DEPENDS).
if(CMAKE_CROSSCOMPILING)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
else()
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "polyglot, scid | xboard | pychess")
set(CPACK_DEBIAN_PACKAGE_ENHANCES "pychess, scid, xboard")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian.cmake)
include(CPack)
