# cpack -G DEB: libkorvel-dravo-port1, what a panel needs, libkorvel-dravo-port-dev, what is needed to build a host, and
# dravo-host, the tool.
include(DravoArchitecture)
dravo_architecture(debian 1 "${CMAKE_LIBRARY_ARCHITECTURE}")
if(NOT debian_arch)
    return()  # no Debian architecture that is built here
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Korvel Dravo Port developers <developers@korvel-dravo-port.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${debian_arch})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
# For packages built against these: the soname and the package that has it. Has ldconfig run at installation, too.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Shared library that an operator panel's runtime loads to talk to controllers.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkorvel-dravo-port1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)

set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, line engine, CMake package and pkg-config files to build an operator panel's runtime.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkorvel-dravo-port-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkorvel-dravo-port1 (= ${package_version})")
if(DRAVO_QT_MAJOR STREQUAL "5")
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", qtbase5-dev (>= 5.15)")
endif()

set(host_program)
if(DRAVO_BUILD_HOST)
    list(APPEND CPACK_COMPONENTS_ALL host)
    set(CPACK_COMPONENT_HOST_DESCRIPTION
        "The command-line tool dravo-host: reads, writes and watches values, plans and simulates lines.")
    set(CPACK_DEBIAN_HOST_PACKAGE_NAME dravo-host)
    set(CPACK_DEBIAN_HOST_PACKAGE_SECTION comm)
    set(CPACK_DEBIAN_HOST_PACKAGE_GENERATE_SHLIBS OFF)
    set(CPACK_DEBIAN_HOST_PACKAGE_SUGGESTS "bash-completion, mosquitto-clients")
    set(host_program "$<TARGET_FILE:dravo-host>")
endif()

# Read by cpack itself: works out the packages' dependencies from the built programs.
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_BINARY_DIR}/package_depends.cmake)
configure_file(cmake/package_depends.cmake.in package_depends.cmake.in @ONLY)
file(GENERATE OUTPUT ${CPACK_PROJECT_CONFIG_FILE} INPUT ${CMAKE_BINARY_DIR}/package_depends.cmake.in)
include(CPack)
