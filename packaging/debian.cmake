# Run by CPack over the files that are to go into a package. What Debian wants otherwise than it is installed: the
# licence as "copyright" in the form that machines read, a changelog of the packaging, and pages and changelogs
# compressed.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

set(root ${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
set(docs ${root}/share/doc/helvan)

file(READ ${docs}/LICENSE licence)
string(REGEX MATCH "Copyright [^\n]*" holders "${licence}")
string(REGEX REPLACE "Copyright (\\(c\\) )?" "" holders "${holders}")
string(REGEX REPLACE "^.*\n(Permission is)" "\\1" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
file(WRITE ${docs}/copyright
  "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\nUpstream-Name: helvan\n\n"
  "Files: *\nCopyright: ${holders}\nLicense: Expat\n ${licence}\n")
file(REMOVE ${docs}/LICENSE)

file(READ ${docs}/README.md readme)
string(REPLACE "(LICENSE)" "(copyright)" readme "${readme}")
string(REPLACE "(CHANGELOG.md)" "(changelog.gz)" readme "${readme}")
file(WRITE ${docs}/README.md "${readme}")

# The date is that of SOURCE_DATE_EPOCH where it is set.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${docs}/changelog.Debian
  "helvan (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
  "  * Packaged by cpack.\n\n -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}\n")
file(RENAME ${docs}/CHANGELOG.md ${docs}/changelog)
execute_process(COMMAND gzip -9n ${docs}/changelog ${docs}/changelog.Debian ${root}/share/man/man6/helvan.6
  COMMAND_ERROR_IS_FATAL ANY)
