# Resource files as data inside a library, so that the programs need no folder beside them.

include_guard(DIRECTORY)

set(GAUGELINE_WRITE_RESOURCES "${CMAKE_CURRENT_LIST_DIR}/WriteEmbeddedResources.cmake")

# gaugeline_embed_resources(<target> <file below Resources/>...)
#
# Adds one generated source to the target that defines EmbeddedResources() with these files, in this order. It is
# written again when one of the files changes.
function(gaugeline_embed_resources target)
    set(root "${PROJECT_SOURCE_DIR}/Resources")
    set(output "${CMAKE_CURRENT_BINARY_DIR}/EmbeddedResourceData.cpp")
    list(TRANSFORM ARGN PREPEND "${root}/" OUTPUT_VARIABLE files)

    # The list goes through a file, because an argument that holds semicolons does not survive every shell; the file
    # changes with the list and so has the data written again.
    set(list_file "${CMAKE_CURRENT_BINARY_DIR}/EmbeddedResources.list")
    list(JOIN ARGN "\n" names)
    file(CONFIGURE OUTPUT "${list_file}" CONTENT "${names}\n" @ONLY)

    add_custom_command(
        OUTPUT "${output}"
        COMMAND "${CMAKE_COMMAND}" "-DROOT=${root}" "-DLIST_FILE=${list_file}" "-DOUTPUT=${output}"
            -P "${GAUGELINE_WRITE_RESOURCES}"
        DEPENDS ${files} "${list_file}" "${GAUGELINE_WRITE_RESOURCES}"
        COMMENT "Embedding the resources"
        VERBATIM)
    target_sources(${target} PRIVATE "${output}")
endfunction()
