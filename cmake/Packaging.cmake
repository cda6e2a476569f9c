# Installing Tessel and its Debian package (scripts/package.sh runs cpack on the Release build).
#
# The layout is the one an installed program recognises (src/datasets/tool_folder.h): the
# programs in <prefix>/bin with <prefix>/share/tessel beside them, which sends Tessel.cfg,
# Tessel.hst and the suite's tools to the user's own folder instead of /usr/bin.

# A Debian package is made on Linux only; a cross build for Windows has neither rule.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()
endif()

include(GNUInstallDirs)

set(TESSEL_PACKAGE_MAINTAINER "Tessel developers <tessel@users.noreply.github.com>"
  CACHE STRING "Maintainer field of the Debian package")
set(tessel_docdir ${CMAKE_INSTALL_DATAROOTDIR}/doc/tessel)
set(tessel_package_dir ${CMAKE_BINARY_DIR}/packaging)

# cpack installs what scripts/package.sh built; it need not build every test first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY TRUE)

if(TESSEL_BUILD_DESKTOP)
  install(TARGETS tessel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tessel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tessel.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
if(TARGET tessel-batch)
  install(TARGETS tessel-batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The sample job, to be copied to a folder of the user's before it is opened. Its presence also
# marks share/tessel, which tells an installed program from one in a folder of its own.
file(GLOB sample_job_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/samples/T12NR04E.*)
install(FILES ${sample_job_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/tessel/samples)

# The manual as pages to read; the program carries its own copy for Help.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/manual/ DESTINATION ${tessel_docdir}/manual)

# The copyright file in Debian's machine-readable form, with LICENSE's text as its licence.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE license_text)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" copyright_line "${license_text}")
set(license_holder "${CMAKE_MATCH_1}")
string(REGEX REPLACE "^MIT License\n+Copyright[^\n]*\n+" "" license_body "${license_text}")
string(STRIP "${license_body}" license_body)
string(REGEX REPLACE "\n\n" "\n.\n" license_body "${license_body}")
string(REGEX REPLACE "\n" "\n " license_body "${license_body}")
file(CONFIGURE OUTPUT ${tessel_package_dir}/copyright @ONLY CONTENT
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Tessel

Files: *
Copyright: ${license_holder}
License: Expat
 ${license_body}
")
install(FILES ${tessel_package_dir}/copyright DESTINATION ${tessel_docdir})

# The changelog and the manual pages, compressed as Debian keeps them (no name, no time stamp,
# so that two builds give the same bytes).
file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/changelog changelog_head LIMIT_COUNT 1)
if(NOT changelog_head MATCHES "^tessel \\(${PROJECT_VERSION}\\)")
  message(WARNING "packaging/changelog has no entry for version ${PROJECT_VERSION}")
endif()
set(compressed_files)
foreach(source changelog tessel.1 tessel-batch.1)
  add_custom_command(OUTPUT ${tessel_package_dir}/${source}.gz
    COMMAND sh -c "gzip -9nc '${PROJECT_SOURCE_DIR}/packaging/${source}' > '${tessel_package_dir}/${source}.gz'"
    DEPENDS ${PROJECT_SOURCE_DIR}/packaging/${source}
    VERBATIM)
  list(APPEND compressed_files ${tessel_package_dir}/${source}.gz)
endforeach()
add_custom_target(package_files ALL DEPENDS ${compressed_files})
install(FILES ${tessel_package_dir}/changelog.gz DESTINATION ${tessel_docdir})
install(FILES ${tessel_package_dir}/tessel-batch.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
if(TESSEL_BUILD_DESKTOP)
  install(FILES ${tessel_package_dir}/tessel.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessel)
set(CPACK_PACKAGE_VENDOR "Tessel developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "workstation for the measurement records of the US public land survey")
set(CPACK_PACKAGE_DESCRIPTION
"Tessel draws a township's job (one folder of fixed-column text files) on a map
canvas, edits its files through dialogs by copy and replace, starts the suite's
console programs on them, links parcels to an assessor's database, joins
townships into regions and adjusts record data by least squares.

tessel-batch runs the same operations headless, for scripts.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TESSEL_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries come from dpkg-shlibdeps; Qt's platform plugins are loaded, not linked.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(TESSEL_BUILD_DESKTOP)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
endif()
# The suite's tools are Windows programs; Wine runs them.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "wine")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
