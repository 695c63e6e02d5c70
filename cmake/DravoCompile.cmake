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
