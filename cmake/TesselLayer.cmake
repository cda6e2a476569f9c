# One library per layer of the program. A layer sees only the headers of the layers it links:
# each gets an include root of its own in the build tree, holding links to its folder's headers
# alone, so an include of a header from a layer above (or beside) fails to compile.
#
#   tessel_layer(<target> <folder> [LINKS <target>...] [EXCLUDE <file>...])
#
# The sources are every .cpp of src/<folder> (not of its subfolders, which are layers of their
# own) but the ones excluded, found again when files are added.
function(tessel_layer target folder)
  cmake_parse_arguments(PARSE_ARGV 2 LAYER "" "" "LINKS;EXCLUDE")
  set(source_dir ${PROJECT_SOURCE_DIR}/src/${folder})
  set(include_root ${CMAKE_BINARY_DIR}/layers/${target})

  file(GLOB headers CONFIGURE_DEPENDS ${source_dir}/*.h)
  file(GLOB sources CONFIGURE_DEPENDS ${source_dir}/*.cpp)
  foreach(excluded IN LISTS LAYER_EXCLUDE)
    list(REMOVE_ITEM sources ${source_dir}/${excluded})
  endforeach()
  file(REMOVE_RECURSE ${include_root})
  file(MAKE_DIRECTORY ${include_root}/${folder})
  foreach(header IN LISTS headers)
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${include_root}/${folder}/${name} SYMBOLIC)
  endforeach()

  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC ${include_root})
  target_link_libraries(${target} PUBLIC ${LAYER_LINKS})
endfunction()
