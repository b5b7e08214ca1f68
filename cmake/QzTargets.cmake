# Every compiler flag of the project stands here; the folders only name their sources and neighbours.
add_library(common_flags INTERFACE)
target_compile_features(common_flags INTERFACE cxx_std_17)
target_include_directories(common_flags INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/host/include)
if(MSVC)
  target_compile_options(common_flags INTERFACE /W4 /WX /utf-8 /fp:precise)
else()
  # No fused multiply-add: a*b+c must round alike on every machine, or golden drawings drift.
  target_compile_options(common_flags INTERFACE -Wall -Wextra -Wshadow -Werror -ffp-contract=off)
endif()
if(UNIX)
  # Addresses of functions are settled before the first line runs, and then not written any more.
  target_link_options(common_flags INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
if(QZ_HARDEN)
  # For what is delivered. Needs optimising; developers' builds do without, for every flag here
  # compiles everything anew.
  target_compile_options(common_flags INTERFACE -fstack-protector-strong -fstack-clash-protection
    -fcf-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS)
endif()
if(QZ_SANITIZE)
  target_compile_options(common_flags INTERFACE -fsanitize=address,undefined
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(common_flags INTERFACE -fsanitize=address,undefined)
endif()
if(QZ_FUZZ)
  # Warnings of this compiler are for others to see.
  target_compile_options(common_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=all -fno-omit-frame-pointer -Wno-error)
  target_link_options(common_flags INTERFACE -fsanitize=address,undefined)
endif()

# Sources that are not for this system: a folder meets a need that the systems meet differently in
# one file for each. Folders may add to it.
if(WIN32)
  set(QZ_LEFT_OUT "_posix\\.cpp$")
else()
  set(QZ_LEFT_OUT "_windows\\.cpp$")
endif()

# qz_library(name [dependency ...]): one library from every source of the current folder.
function(qz_library name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "${QZ_LEFT_OUT}")
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC common_flags ${ARGN})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE common_flags ${ARGN})
  endif()
endfunction()

# The plug-in's folders see StdAfx.h, the SDK's headers and the folders below them, nothing of the
# host's own.
function(qz_plugin_library name)
  qz_library(${name} ${ARGN})
  get_target_property(kind ${name} TYPE)
  if(kind STREQUAL INTERFACE_LIBRARY)
    target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
  else()
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
endfunction()

# qz_test(name [dependency ...]): a test program from every source of the current folder, its tests
# found one by one.
function(qz_test name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "${QZ_LEFT_OUT}")
  if(sources)
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE common_flags ${ARGN} GTest::gmock GTest::gtest_main)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    if(CMAKE_CROSSCOMPILING)
      # Whole programs: each start of the emulator takes longer than most tests.
      add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
      return()
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  endif()
endfunction()
