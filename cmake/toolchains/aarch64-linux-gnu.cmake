# Cross-build for 64-bit ARM Linux with Debian's cross compiler and the
# arm64 development packages (multiarch: dpkg --add-architecture arm64);
# programs run under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
# Multiarch keeps the arm64 libraries beside the machine's own, under
# /usr/lib/aarch64-linux-gnu; pkg-config is told the same.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# The arm64 C library is installed at the root (libc6:arm64), so the
# emulator finds the loader without a prefix.
find_program(ZELSTR_QEMU NAMES qemu-aarch64 qemu-aarch64-static)
if(ZELSTR_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZELSTR_QEMU})
endif()
