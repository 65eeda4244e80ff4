# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package (scripts/package.sh): cpack -G DEB in the build folder
# gives tav_VERSION_ARCH.deb of what `cmake --install` lays out, under /usr.
set(TAV_PACKAGE_MAINTAINER "Wendrake Tav developers <tav@wendrake.org>"
    CACHE STRING "Maintainer named in the Debian package")

set(CPACK_PACKAGE_NAME tav)
set(CPACK_PACKAGE_VENDOR Wendrake)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer and analyser of GEDCOM genealogy files")
# Lines of the package's long description, as package managers show it.
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
    "Tav opens a GEDCOM family history file and lets you browse every"
    "individual, family, source and note, follow the links between them with"
    "back and forward, find records by words, run statistical queries, have the"
    "relationship between two people put into words, count descendants, read"
    "text reports and explore a drawn tree of descendants. It never changes"
    "the file."
    "."
    "tav-cli runs the same logic from the command line, for scripts.")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://github.com/wendrake/tav")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TAV_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The Qt and system libraries the programs link, found by dpkg-shlibdeps.
# Beyond them: Qt's SVG plugins, which draw every icon and which no linker
# sees, and the metric twin of Arial, the tree's font, so that boxes measure
# the same on every machine.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, fonts-liberation2")
# The viewer opens its HTML report in the desktop's browser.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")

include(CPack)
