# dravo_architecture(prefix column value): of the row of cmake/architectures in whose column (0: Debian's name, 1: the
# multi-arch folder) value stands, the first four columns, as PREFIX_arch, PREFIX_triplet, PREFIX_compiler and
# PREFIX_emulator; all empty when there is none.
set(dravo_architecture_table ${CMAKE_CURRENT_LIST_DIR}/architectures)

function(dravo_architecture prefix column value)
    file(STRINGS ${dravo_architecture_table} rows REGEX "^[a-z]")
    set(found "" "" "" "")
    foreach(row IN LISTS rows)
        string(REGEX REPLACE " +" ";" cells "${row}")
        list(GET cells ${column} cell)
        if(cell STREQUAL value)
            set(found ${cells})
        endif()
    endforeach()
    foreach(name arch triplet compiler emulator)
        list(POP_FRONT found cell)
        set(${prefix}_${name} "${cell}" PARENT_SCOPE)
    endforeach()
endfunction()
