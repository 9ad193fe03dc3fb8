# cpack: a Debian package of what is installed. Its version is the release that --version tells.
file(STRINGS ${PROJECT_SOURCE_DIR}/src/base/version.h line REGEX ReleaseText)
string(REGEX REPLACE ".*\"(.*)\".*" "\\1" version "${line}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME keldrin)
set(CPACK_PACKAGE_VENDOR "KELDRIN maintainers")
set(CPACK_PACKAGE_VERSION ${version})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "KELDRIN maintainers <maintainers@keldrin.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "1D smooth-model inversion of transient electromagnetic soundings")
if(KELDRIN_DESKTOP)
    set(programs "keldrin, the desktop program, keldrin-batch for work\nwithout a display, and rkeldrin, the inversion engine")
else()
    set(programs "keldrin-batch, the program for work without a\ndisplay, and rkeldrin, the inversion engine")
endif()
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"KELDRIN makes inversion projects of transient electromagnetic (TEM) field
data: it reads the dB/dt windows of a survey line, computes apparent
resistivities, flags bad windows, inverts the soundings of a line to smooth
layered models, and shows the observed and calculated curves of each
sounding beside its model.
.
The package holds ${programs}.")
include(CPack)
