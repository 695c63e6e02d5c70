# Where things are installed: GNUInstallDirs, with libraries in the multi-arch folder (lib/i386-linux-gnu) wherever the
# system has such folders. Installed tree and Debian packages then agree, cross-compiled ones included.
if(CMAKE_LIBRARY_ARCHITECTURE AND NOT DEFINED CMAKE_INSTALL_LIBDIR)
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Object code libraries")
endif()
include(GNUInstallDirs)
