# dravo_compile(target standard): our own warnings, sanitizers and language standard for one target.
function(dravo_compile target standard)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD ${standard} CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(DRAVO_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(DRAVO_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${DRAVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${DRAVO_SANITIZE})
    endif()
endfunction()

# Presets whose programs only the tests see compile several sources as one (CMAKE_UNITY_BUILD): half the time goes to the
# headers of Qt, the standard library and GoogleTest.
# dravo_apart(source...): sources whose own names meet those of others then.
function(dravo_apart)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
# dravo_ships(target): what ships is compiled source by source everywhere but under sanitizers.
function(dravo_ships target)
    if(NOT DRAVO_SANITIZE)
        set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
    endif()
endfunction()

# dravo_harden(target): what Debian 12 builds its programs with (dpkg-buildflags, hardening=+all), wherever it is built.
# Not with sanitizers, which look further, nor in debug builds, where fortified calls need an optimiser.
# scripts/check-hardening compares.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
function(dravo_harden target)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wformat -Werror=format-security -Wdate-time)
    if(NOT DRAVO_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fstack-protector-strong "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
endfunction()
