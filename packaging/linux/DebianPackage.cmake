# One package: the utility and the two programs that go with it. What it needs is read from what its
# programs link; menus, kinds of document and icons are taken in by the triggers of the packages
# that keep them, so it has no scripts of its own.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Kestrel maintainers <kestrel@holvik.com>")
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "jackd2 | pipewire-jack")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The first line of the description is the project's.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Kestrel lives in the tray. It turns the twelve user-assignable keys of the
ZENTA console into keyboard shortcuts for the workstation in front, mirrors
the console's plug-in section in a floating panel, and shows whether the
console is connected.
.
The console is reached over JACK, or over PipeWire in its place. A simulator
of the console and kestrelctl, which talks with Kestrel from the command
line, are part of the package.")
include(CPack)
