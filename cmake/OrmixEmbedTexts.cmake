# Makes a source of text files: a script, run while the library is built.
# cmake -DOUTPUT=HtmlAssets.cpp -DHEADER=path/of/include.h -DNAMESPACE=a::b "-DTEXTS=name=path;…" -P OrmixEmbedTexts.cmake
set(source "// Made by the build of the files named below.\n#include <${HEADER}>\n\nnamespace ${NAMESPACE} {\n")
foreach(text IN LISTS TEXTS)
  string(REGEX MATCH "^([^=]+)=(.+)$" unused "${text}")
  set(name ${CMAKE_MATCH_1})
  get_filename_component(file ${CMAKE_MATCH_2} NAME)
  file(READ ${CMAKE_MATCH_2} content)
  string(APPEND source "\n// ${file}\nconst std::string_view ${name} = R\"ormix(${content})ormix\";\n")
endforeach()
file(WRITE ${OUTPUT} "${source}\n}  // namespace ${NAMESPACE}\n")
