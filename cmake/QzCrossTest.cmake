# The test libraries for a cross compiler: GoogleTest from the sources that Debian packages
# (googletest), the JSON reader, which is headers alone, from this machine.
set(source /usr/src/googletest)
add_library(gmock STATIC EXCLUDE_FROM_ALL
  ${source}/googletest/src/gtest-all.cc ${source}/googlemock/src/gmock-all.cc)
target_compile_features(gmock PUBLIC cxx_std_17)
target_include_directories(gmock
  SYSTEM PUBLIC ${source}/googletest/include ${source}/googlemock/include
  PRIVATE ${source}/googletest ${source}/googlemock)
add_library(gmock_main STATIC EXCLUDE_FROM_ALL ${source}/googlemock/src/gmock_main.cc)
target_link_libraries(gmock_main PUBLIC gmock)
add_library(GTest::gmock ALIAS gmock)
add_library(GTest::gtest_main ALIAS gmock_main)

# The folder of the header also holds this machine's C library, which the cross compiler must not see.
set(json_folder ${CMAKE_BINARY_DIR}/json)
file(MAKE_DIRECTORY ${json_folder})
file(CREATE_LINK /usr/include/nlohmann ${json_folder}/nlohmann SYMBOLIC)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${json_folder})
