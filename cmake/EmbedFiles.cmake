# Writes the files FILES (separated by ",") as constants into the header OUTPUT: page.html becomes kPageHtml. Run as a
# script: cmake -DOUTPUT=… -DNAMESPACE=… -DFILES=… -P EmbedFiles.cmake
set(text "#pragma once\n\n#include <string_view>\n\nnamespace ${NAMESPACE} {\n")
string(REPLACE "," ";" FILES "${FILES}")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME)
  string(REGEX MATCH "^(.)(.*)[.](.)(.*)$" whole ${name})
  string(TOUPPER "${CMAKE_MATCH_1}" first)
  string(TOUPPER "${CMAKE_MATCH_3}" kind)
  set(constant "k${first}${CMAKE_MATCH_2}${kind}${CMAKE_MATCH_4}")
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND text "inline constexpr char ${constant}Bytes[] = {${bytes}};\n"
                     "inline constexpr std::string_view ${constant}{${constant}Bytes, sizeof ${constant}Bytes};\n")
endforeach()
string(APPEND text "}  // namespace ${NAMESPACE}\n")
file(WRITE ${OUTPUT} "${text}")
