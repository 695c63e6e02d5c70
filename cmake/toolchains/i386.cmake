# 32-bit x86 panels. The compiler's baseline is i686.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(dravo_debian_arch i386)
set(dravo_compiler_prefix i686-linux-gnu-)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(dravo_emulator qemu-i386)
include(${CMAKE_CURRENT_LIST_DIR}/debian_sysroot.cmake)
