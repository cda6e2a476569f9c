# Turns the support texts under resources/ into a C++ source holding their bytes unchanged,
# so the program carries them inside itself and writes them out byte for byte.
function(tessel_embed_resources out_cpp)
  tessel_embed_resources_as(${out_cpp} EmbeddedTexts ${ARGN})
endfunction()

# The same for another table of embedded files, reached through the function `function_name`
# (declared by the caller like EmbeddedTexts in model/resources.h).
function(tessel_embed_resources_as out_cpp function_name)
  set(body "// Generated from resources/; do not edit.\n#include \"model/resources.h\"\n\nnamespace tessel {\nnamespace {\n")
  set(table "")
  set(index 0)
  foreach(name IN LISTS ARGN)
    set(path "${PROJECT_SOURCE_DIR}/resources/${name}")
    file(READ "${path}" hex HEX)
    string(LENGTH "${hex}" hexlen)
    math(EXPR size "${hexlen} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
    string(APPEND body "const char kData${index}[] = {${bytes} 0};\n")
    string(APPEND table "    {\"${name}\", std::string_view(kData${index}, ${size})},\n")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
    math(EXPR index "${index} + 1")
  endforeach()
  string(APPEND body "}  // namespace\n\nconst std::vector<EmbeddedText>& ${function_name}() {\n  static const std::vector<EmbeddedText> texts = {\n${table}  };\n  return texts;\n}\n\n}  // namespace tessel\n")
  file(WRITE "${out_cpp}.tmp" "${body}")
  file(COPY_FILE "${out_cpp}.tmp" "${out_cpp}" ONLY_IF_DIFFERENT)
endfunction()
