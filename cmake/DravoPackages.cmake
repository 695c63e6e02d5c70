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
set(CPACK_DEBIAN_PACKAGE_SOURCE ${PROJECT_NAME})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(package_folder ${CMAKE_CURRENT_BINARY_DIR}/package_files)

# Both changelogs: the packages' own says no more than the version. No file copyright: the licence is the owner's to choose.
string(TIMESTAMP package_date "%a, %d %b %Y %H:%M:%S +0000" UTC)  # SOURCE_DATE_EPOCH, where it is set
file(CONFIGURE OUTPUT ${package_folder}/changelog.Debian CONTENT "@PROJECT_NAME@ (@package_version@) unstable; urgency=medium

  * Version @PROJECT_VERSION@: changelog.gz says what is new.

 -- @CPACK_PACKAGE_CONTACT@  @package_date@
" @ONLY)
configure_file(CHANGELOG.md ${package_folder}/changelog COPYONLY)
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND ${GZIP} -9nfk changelog.Debian changelog WORKING_DIRECTORY ${package_folder}
    COMMAND_ERROR_IS_FATAL ANY)
function(package_changelogs component package)
    install(FILES ${package_folder}/changelog.Debian.gz ${package_folder}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

# For packages built against the library: its soname and the package that has it. A trigger has dpkg run ldconfig; CPack's
# own shlibs would bring maintainer scripts that call it.
file(WRITE ${package_folder}/shlibs "libkorvel_dravo_port 1 libkorvel-dravo-port1 (>= ${package_version})\n")
file(WRITE ${package_folder}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${package_folder}/shlibs ${package_folder}/triggers)

set(about "Merges the variables of an operator panel into few Modbus RTU requests,
keeps writes ahead of cyclic reads, retries, caches every value and reports
through callbacks.
.
This package has")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "communication driver for operator panels: library
${about} the shared library that a panel's runtime loads.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkorvel-dravo-port1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
package_changelogs(runtime libkorvel-dravo-port1)

set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "communication driver for operator panels: development files
${about} what is needed to build a panel's runtime: headers, line
engine, CMake package and pkg-config files.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkorvel-dravo-port-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
package_changelogs(development libkorvel-dravo-port-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkorvel-dravo-port1 (= ${package_version})")
if(DRAVO_QT_MAJOR STREQUAL "5")
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", qtbase5-dev (>= 5.15)")
endif()

set(host_program)
if(DRAVO_BUILD_HOST)
    list(APPEND CPACK_COMPONENTS_ALL host)
    set(CPACK_DEBIAN_HOST_DESCRIPTION "command-line host of the communication driver for operator panels
${about} the tool dravo-host. It reads, writes and watches values of
controllers, plans and simulates lines, and finds stations.")
    set(CPACK_DEBIAN_HOST_PACKAGE_NAME dravo-host)
    set(CPACK_DEBIAN_HOST_PACKAGE_SECTION comm)
    package_changelogs(host dravo-host)
    set(CPACK_DEBIAN_HOST_PACKAGE_SUGGESTS "bash-completion, mosquitto-clients")
    set(host_program "$<TARGET_FILE:dravo-host>")
endif()

# Read by cpack itself: works out the packages' dependencies from the built programs.
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_BINARY_DIR}/package_depends.cmake)
configure_file(cmake/package_depends.cmake.in package_depends.cmake.in @ONLY)
file(GENERATE OUTPUT ${CPACK_PROJECT_CONFIG_FILE} INPUT ${CMAKE_BINARY_DIR}/package_depends.cmake.in)
include(CPack)
