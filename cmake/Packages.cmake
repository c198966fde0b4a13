# "cpack -G DEB" in the build folder makes a Debian package of both programs.
set(CPACK_PACKAGE_NAME shotweaver)
set(CPACK_PACKAGE_VENDOR "Shotweaver")
set(CPACK_PACKAGE_CONTACT "Shotweaver <packages@shotweaver.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "First pass of a multi-camera recording for Final Cut Pro")
set(CPACK_PACKAGE_DESCRIPTION
    "Shotweaver reads a project with one multicam clip that Final Cut Pro exported as FCPXML, switches
 between its cameras by chance inside rules that you set, and writes a new project.")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://shotweaver.example/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Older ones take minutes for an attribute of many megabytes.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libexpat1 (>= 2.5.0-1+deb12u2)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-open-sans")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
include(CPack)
