# 32-bit ARM panels, hard-float calling convention. The compiler's baseline is ARMv7-A with VFPv3-D16.
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(dravo_debian_arch armhf)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)  # pages of notes that GCC 6 passed some iterators otherwise
include(${CMAKE_CURRENT_LIST_DIR}/debian_sysroot.cmake)
