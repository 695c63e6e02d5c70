# 64-bit ARM panels. The compiler's baseline is ARMv8-A.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(dravo_debian_arch arm64)
include(${CMAKE_CURRENT_LIST_DIR}/debian_sysroot.cmake)
