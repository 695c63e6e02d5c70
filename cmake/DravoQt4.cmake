# dravo_find_qt4(problem): the imported target Qt4::QtCore of a QtCore 4.8, or in the variable named by problem why
# there is none. Part of the installed CMake package too: a host needs the same target.
#
# Where it looks:
# - DRAVO_QT4_INCLUDE_DIR and DRAVO_QT4_CORE_LIBRARY, when they are given: the folder that holds QtCore/qglobal.h, and
#   libQtCore.so.4. For a board's sysroot, which has no qmake to ask.
# - Otherwise CMake's own search: the qmake named by QT_QMAKE_EXECUTABLE, or one found below CMAKE_PREFIX_PATH; when
#   cross compiling, below the prefix that the toolchain file lists in CMAKE_FIND_ROOT_PATH.
set(DRAVO_QT4_INCLUDE_DIR "" CACHE PATH
    "Folder that holds QtCore/qglobal.h of Qt 4.8; goes with DRAVO_QT4_CORE_LIBRARY")
set(DRAVO_QT4_CORE_LIBRARY "" CACHE FILEPATH
    "libQtCore.so.4 of Qt 4.8; goes with DRAVO_QT4_INCLUDE_DIR")

function(dravo_import_qt4 problem)
    set(${problem} "" PARENT_SCOPE)
    set(version_header "${DRAVO_QT4_INCLUDE_DIR}/QtCore/qglobal.h")
    if(NOT DRAVO_QT4_INCLUDE_DIR OR NOT EXISTS "${version_header}")
        set(${problem} "DRAVO_QT4_INCLUDE_DIR is '${DRAVO_QT4_INCLUDE_DIR}', which holds no QtCore/qglobal.h"
            PARENT_SCOPE)
        return()
    endif()
    if(NOT DRAVO_QT4_CORE_LIBRARY OR NOT EXISTS "${DRAVO_QT4_CORE_LIBRARY}"
            OR IS_DIRECTORY "${DRAVO_QT4_CORE_LIBRARY}")
        set(${problem} "DRAVO_QT4_CORE_LIBRARY is '${DRAVO_QT4_CORE_LIBRARY}', which is no library" PARENT_SCOPE)
        return()
    endif()
    # Qt 5 moved this define to another header, so its headers are refused as well.
    file(STRINGS "${version_header}" version REGEX "^#define QT_VERSION_STR +\"4\\.8\\.")
    if(NOT version)
        set(${problem} "${version_header} is not that of Qt 4.8" PARENT_SCOPE)
        return()
    endif()
    if(NOT TARGET Qt4::QtCore)
        add_library(Qt4::QtCore UNKNOWN IMPORTED)
        set_target_properties(Qt4::QtCore PROPERTIES
            IMPORTED_LOCATION "${DRAVO_QT4_CORE_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${DRAVO_QT4_INCLUDE_DIR}"
            INTERFACE_COMPILE_DEFINITIONS "QT_CORE_LIB;$<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG>")
    endif()
endfunction()

function(dravo_find_qt4 problem)
    set(${problem} "" PARENT_SCOPE)
    if(DRAVO_QT4_INCLUDE_DIR OR DRAVO_QT4_CORE_LIBRARY)
        dravo_import_qt4(why)
        set(${problem} "${why}" PARENT_SCOPE)
        return()
    endif()
    # The qmake of a cross-compiled Qt is a program of the build machine inside the target's prefix.
    set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM BOTH)
    find_package(Qt4 4.8 QUIET COMPONENTS QtCore)
    # The target alone proves nothing: the search can create it and fail afterwards.
    if(NOT Qt4_FOUND OR NOT TARGET Qt4::QtCore)
        set(why "qmake is '${QT_QMAKE_EXECUTABLE}', its version '${QTVERSION}'")
        if(QTVERSION VERSION_GREATER_EQUAL 4.8 AND QTVERSION VERSION_LESS 4.9)
            string(APPEND why ", but its headers, QtCore library, moc or rcc are missing")
        endif()
    elseif(NOT QTVERSION VERSION_LESS 4.9)
        set(why "'${QT_QMAKE_EXECUTABLE}' is of version ${QTVERSION}")
    else()
        return()
    endif()
    set(${problem} "${why}. Name a qmake of Qt 4.8 with -DQT_QMAKE_EXECUTABLE=FILE, or its prefix in CMAKE_PREFIX_PATH \
(cross compiling: in CMAKE_FIND_ROOT_PATH, inside the toolchain file), or header folder and library with \
-DDRAVO_QT4_INCLUDE_DIR=FOLDER -DDRAVO_QT4_CORE_LIBRARY=FILE" PARENT_SCOPE)
    unset(QT_QMAKE_EXECUTABLE CACHE)  # the next try would look no further
endfunction()
