# Common half of the toolchain files: a Debian cross compiler, the sysroot that scripts/make-sysroot made, and qemu-user
# to run the tests. DRAVO_SYSROOT names another sysroot, for example a board's.
include(${CMAKE_CURRENT_LIST_DIR}/../DravoArchitecture.cmake)
dravo_architecture(dravo 0 ${dravo_debian_arch})
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_LIBRARY_ARCHITECTURE ${dravo_triplet})
set(CMAKE_C_COMPILER ${dravo_compiler}gcc)  # libraries built along with the tests ask for it
set(CMAKE_CXX_COMPILER ${dravo_compiler}g++)

if(NOT DRAVO_SYSROOT)
    if(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
        set(DRAVO_SYSROOT $ENV{XDG_CACHE_HOME}/korvel-dravo-port/sysroot-${dravo_debian_arch})
    else()
        set(DRAVO_SYSROOT $ENV{HOME}/.cache/korvel-dravo-port/sysroot-${dravo_debian_arch})
    endif()
endif()
if(NOT IS_DIRECTORY ${DRAVO_SYSROOT}/usr/include)
    message(FATAL_ERROR "There is no sysroot in ${DRAVO_SYSROOT}. Run scripts/make-sysroot ${dravo_debian_arch}, "
        "or name one with -DDRAVO_SYSROOT=FOLDER.")
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DRAVO_SYSROOT)
set(CMAKE_SYSROOT ${DRAVO_SYSROOT})

# Libraries, headers and packages come from the sysroot or not at all; programs that run during the build are the build
# machine's own.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# pkg-config looks in the sysroot alone and names its folders.
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${DRAVO_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR}
    ${DRAVO_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${DRAVO_SYSROOT}/usr/share/pkgconfig)

set(CMAKE_CROSSCOMPILING_EMULATOR ${dravo_emulator} -L ${DRAVO_SYSROOT})
