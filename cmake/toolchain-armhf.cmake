# Cross build for the engine's target: 32-bit ARM Linux, hard-float ABI
# (arm-linux-gnueabihf), with Debian's cross compiler. Tests run under
# qemu-user, so a plain `ctest` in the build folder runs every test program
# emulated.
#
# The target's libraries (zlib, minizip, TinyXML, GoogleTest) live in a sysroot
# that scripts/armhf-sysroot.sh prepares; by default it is the folder `sysroot`
# of the build tree, or set -DTARVO_ARMHF_SYSROOT=DIR. The script also links the
# cross toolchain's own runtime (libc, libstdc++, the dynamic loader) from
# /usr/arm-linux-gnueabihf into the sysroot, so that `qemu-arm -L SYSROOT`
# finds every library a test program needs.
#
#   scripts/armhf-sysroot.sh build-armhf/sysroot
#   cmake -S . -B build-armhf -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-armhf.cmake
#   cmake --build build-armhf && ctest --test-dir build-armhf

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

# On the target long, size_t and pointers are 32 bits wide: a printf-style
# argument of the wrong width there reads the wrong bytes, so a format that does
# not match its arguments is an error in this build. Everything built with this
# file (GoogleTest in the sysroot too) uses the large-file interfaces, as the
# project does: struct stat must have one layout across all the objects.
# -Wno-psabi: GCC notes that the passing of some aggregates changed in GCC 7.1;
# everything here is built by one compiler, so the note has nothing to say.
set(CMAKE_C_FLAGS_INIT "-Werror=format -D_FILE_OFFSET_BITS=64")
set(CMAKE_CXX_FLAGS_INIT "-Werror=format -D_FILE_OFFSET_BITS=64 -Wno-psabi")

if(NOT TARVO_ARMHF_SYSROOT)
  set(TARVO_ARMHF_SYSROOT "${CMAKE_BINARY_DIR}/sysroot")
endif()
get_filename_component(TARVO_ARMHF_SYSROOT "${TARVO_ARMHF_SYSROOT}" ABSOLUTE)
set(TARVO_ARMHF_SYSROOT "${TARVO_ARMHF_SYSROOT}" CACHE PATH "armhf sysroot made by scripts/armhf-sysroot.sh")
# try_compile projects read this file again in their own binary folder.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARVO_ARMHF_SYSROOT)

set(CMAKE_SYSROOT "${TARVO_ARMHF_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH "${TARVO_ARMHF_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# pkg-config reads only the sysroot's .pc files and prefixes their paths with it.
set(ENV{PKG_CONFIG_PATH} "")
set(ENV{PKG_CONFIG_LIBDIR}
    "${TARVO_ARMHF_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig:${TARVO_ARMHF_SYSROOT}/usr/share/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${TARVO_ARMHF_SYSROOT}")

find_program(TARVO_QEMU_ARM qemu-arm REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR "${TARVO_QEMU_ARM};-L;${TARVO_ARMHF_SYSROOT}")
