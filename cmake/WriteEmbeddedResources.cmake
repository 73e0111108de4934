# cmake -DROOT=<folder> -DLIST_FILE=<file> -DOUTPUT=<file.cpp> -P WriteEmbeddedResources.cmake
#
# LIST_FILE names one file below ROOT on each line. Every byte becomes a character literal of its own, so that no
# content can end or change the text around it; the zero at the end makes an array also of an empty file.

file(STRINGS "${LIST_FILE}" names)

set(arrays "")
set(entries "")
set(index 0)
foreach(name IN LISTS names)
    file(READ "${ROOT}/${name}" bytes HEX)
    string(LENGTH "${bytes}" digits)
    math(EXPR size "${digits} / 2")
    string(REGEX REPLACE "(................................)" "\\1\n    " bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND arrays "constexpr char content${index}[] = {\n    ${bytes}'\\0'};\n\n")
    string(APPEND entries "    {\"${name}\", {content${index}, ${size}}},\n")
    math(EXPR index "${index} + 1")
endforeach()

file(WRITE "${OUTPUT}" "// Generated from the files below Resources/.

#include \"Framework/Base/EmbeddedResources.h\"

#include <array>

namespace {

${arrays}constexpr std::array<EmbeddedResource, ${index}> resources{{
${entries}}};

} // namespace

std::span<const EmbeddedResource> EmbeddedResources() {
    return resources;
}
")
