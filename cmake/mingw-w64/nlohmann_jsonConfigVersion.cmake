include(/usr/share/cmake/nlohmann_json/nlohmann_jsonConfigVersion.cmake)
