# What every target of this project has in common.

include_guard(DIRECTORY)

# Linked privately by each target, so that a project that links the engine keeps its own warnings.
add_library(gaugeline_warnings INTERFACE)
target_compile_options(gaugeline_warnings INTERFACE
    -Wall
    -Wextra
    -Wpedantic
    -Wconversion
    -Wsign-conversion
    -Wshadow
    -Wold-style-cast
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wcast-align
    -Wformat=2
    -Wnull-dereference
    -Wdouble-promotion
    $<$<BOOL:${GAUGELINE_WARNINGS_AS_ERRORS}>:-Werror>)

if(GAUGELINE_SANITIZERS)
    add_compile_options(-fsanitize=${GAUGELINE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${GAUGELINE_SANITIZERS})
endif()

# gaugeline_configure_target(<target>)
#
# The language and the warnings of this project's own code.
function(gaugeline_configure_target target)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_features(${target} PRIVATE cxx_std_20)
    target_link_libraries(${target} PRIVATE gaugeline_warnings)
endfunction()

# gaugeline_add_library(<floor>)
#
# Makes the static library gaugeline_<floor>, which others link as Gaugeline::<floor>. The folders add its sources.
function(gaugeline_add_library floor)
    set(target gaugeline_${floor})
    add_library(${target} STATIC)
    add_library(Gaugeline::${floor} ALIAS ${target})
    gaugeline_configure_target(${target})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/Source")
endfunction()

# gaugeline_group_sources(<target>)
#
# For libraries whose sources have no two names of their own alike.
function(gaugeline_group_sources target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${GAUGELINE_UNITY_BUILD})
endfunction()
