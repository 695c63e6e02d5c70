# cmake --install: library, line engine, headers, CMake package and pkg-config files. Component runtime is what a panel needs,
# development what is needed to build a host; the component host, the tool, is installed where it is built.
include(CMakePackageConfigHelpers)

set_target_properties(korvel_dravo_port PROPERTIES EXPORT_NAME dravo_port)
set_target_properties(korvel_dravo_line PROPERTIES EXPORT_NAME dravo_line)
set_target_properties(dravo_qtcore PROPERTIES EXPORT_NAME qtcore)
install(TARGETS korvel_dravo_port korvel_dravo_line dravo_qtcore EXPORT korvel-dravo-port-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES
    include/korvel_dravo_elements.h
    include/korvel_dravo_line.h
    include/korvel_dravo_port.h
    include/korvel_dravo_statistics.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/korvel-dravo-port)
install(EXPORT korvel-dravo-port-targets NAMESPACE korvel:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/korvel-dravo-port-config.cmake.in korvel-dravo-port-config.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(korvel-dravo-port-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/korvel-dravo-port-config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/korvel-dravo-port-config-version.cmake
    DESTINATION ${package_dir} COMPONENT development)
if(DRAVO_QT_MAJOR STREQUAL "4")
    install(FILES cmake/DravoQt4.cmake DESTINATION ${package_dir} COMPONENT development)
    set(qt_pkgconfig "QtCore >= 4.8")
else()
    set(qt_pkgconfig "Qt5Core >= 5.15")
endif()

# The prefix is found from the file's own place, so the installed tree can be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pkgconfig_to_prefix ${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
foreach(file korvel-dravo-port.pc korvel-dravo-line.pc)
    configure_file(cmake/${file}.in ${file} @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${file}
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

include(DravoPackages)
