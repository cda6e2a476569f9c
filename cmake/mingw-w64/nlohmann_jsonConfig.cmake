# nlohmann-json for the Windows cross build: Debian's header-only copy, through a folder of the
# build tree that links to its headers alone, so that no other header of the host is seen.
set(_tessel_json_root ${CMAKE_BINARY_DIR}/header-only)
if(NOT EXISTS ${_tessel_json_root}/nlohmann)
  file(MAKE_DIRECTORY ${_tessel_json_root})
  file(CREATE_LINK /usr/include/nlohmann ${_tessel_json_root}/nlohmann SYMBOLIC)
endif()
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  set_target_properties(nlohmann_json::nlohmann_json PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${_tessel_json_root})
endif()
