# 32-bit x86 panels. The compiler's baseline is i686.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(dravo_debian_arch i386)
include(${CMAKE_CURRENT_LIST_DIR}/debian_sysroot.cmake)
