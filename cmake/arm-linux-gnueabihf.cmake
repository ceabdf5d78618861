# The device: a 32-bit ARM Linux process. Builds with Debian's cross compiler and runs what it built under qemu-arm.
#
# TARVO_DEVICE is the target: arm-linux-gnueabihf, or arm-linux-gnueabi for devices without floating-point registers.
# TARVO_DEVICE_ROOT holds the target's libraries; scripts/device fills it with those of Debian, beside this machine's own.
set(TARVO_DEVICE arm-linux-gnueabihf CACHE STRING "Target of the cross compiler")
set(TARVO_DEVICE_ROOT ${CMAKE_CURRENT_LIST_DIR}/../build/device-root/${TARVO_DEVICE} CACHE PATH "The target's libraries")
get_filename_component(device_root ${TARVO_DEVICE_ROOT} REALPATH)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARVO_DEVICE TARVO_DEVICE_ROOT)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER ${TARVO_DEVICE}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${TARVO_DEVICE})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/${TARVO_DEVICE})

set(CMAKE_FIND_ROOT_PATH ${device_root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${device_root}/usr/lib/${TARVO_DEVICE}/pkgconfig:${device_root}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${device_root})
set(CMAKE_BUILD_RPATH ${device_root}/usr/lib/${TARVO_DEVICE})
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--disable-new-dtags)  # also for the libraries that those name
