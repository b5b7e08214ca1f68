# The module for AutoCAD: the plug-in's folders and the plane geometry under them, against the
# ObjectARX SDK and MFC.
set(ARX_SDK "" CACHE PATH "Folder of the ObjectARX SDK, the one that holds inc, inc-x64 and lib-x64")
set(ARX_LIBRARIES rxapi acdb25 acge25 accore acad ac1st25 acui25 adui25
  CACHE STRING "Import libraries of the SDK's lib-x64 that the module links")

# The SDK's own projects may ask for a later standard than the plug-in needs.
set(QZ_AUTOCAD_STANDARD 17 CACHE STRING "C++ standard of the module for AutoCAD")

# Stops with a message that says what to set.
function(qz_check_sdk)
  if(NOT ARX_SDK)
    message(FATAL_ERROR "ARX_SDK is not set. Give the folder of the ObjectARX SDK for AutoCAD 2026, "
      "the one that holds inc and lib-x64:\n  cmake --preset autocad-2026 -DARX_SDK=C:/ObjectARX2026")
  endif()
  if(NOT EXISTS "${ARX_SDK}/inc/arxHeaders.h")
    message(FATAL_ERROR "ARX_SDK is ${ARX_SDK}, which holds no inc/arxHeaders.h: "
      "that is not the folder of an ObjectARX SDK.")
  endif()
  foreach(name IN LISTS ARX_LIBRARIES)
    if(NOT EXISTS "${ARX_SDK}/lib-x64/${name}.lib")
      file(GLOB there RELATIVE "${ARX_SDK}/lib-x64" "${ARX_SDK}/lib-x64/*.lib")
      list(JOIN there " " there)
      message(FATAL_ERROR "${ARX_SDK}/lib-x64 holds no ${name}.lib. Set ARX_LIBRARIES to the names "
        "that this SDK uses, without .lib; there are: ${there}")
    endif()
  endforeach()
endfunction()

qz_check_sdk()

# 1 static, 2 shared: the module uses the MFC that AutoCAD has loaded.
set(CMAKE_MFC_FLAG 2)
# Also when debugging, since AutoCAD is built with the release run-time library.
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)

set(plugin ${CMAKE_SOURCE_DIR}/plugin)
set(sources ${plugin}/entry/QZEncircleLine.def ${plugin}/ui/res/QZEncircleLine.rc
  ${plugin}/entry/Version.rc)
foreach(folder plane plugin/util plugin/drawn plugin/outline plugin/engine plugin/batch plugin/ui plugin/ui/GridCtrl plugin/entry)
  file(GLOB found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp
    ${CMAKE_SOURCE_DIR}/${folder}/*.h)
  list(APPEND sources ${found})
endforeach()
# Shared and not a module: other modules may link the classes that it exports.
add_library(QZEncircleLine SHARED ${sources})
set_target_properties(QZEncircleLine PROPERTIES PREFIX "" SUFFIX ".arx")
target_compile_features(QZEncircleLine PRIVATE cxx_std_${QZ_AUTOCAD_STANDARD})
# The SDK's headers may name libraries themselves.
target_link_directories(QZEncircleLine PRIVATE ${ARX_SDK}/lib-x64)
target_include_directories(QZEncircleLine PRIVATE ${CMAKE_SOURCE_DIR} ${plugin}/util ${plugin}/drawn ${plugin}/outline ${plugin}/engine
  ${plugin}/batch ${plugin}/ui ${plugin}/entry ${plugin}/ui/res)
target_include_directories(QZEncircleLine SYSTEM PRIVATE ${ARX_SDK}/inc ${ARX_SDK}/inc-x64)
# An extension module of MFC, in Unicode; _AFXDLL comes with CMAKE_MFC_FLAG. Windows 10 or later.
target_compile_definitions(QZEncircleLine PRIVATE
  UNICODE _UNICODE _AFXEXT _WINDLL WINVER=0x0A00 _WIN32_WINNT=0x0A00)
if(MSVC)
  target_compile_options(QZEncircleLine PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:/W4 /utf-8 /fp:precise /EHsc /Zc:wchar_t>)
else()
  # The cross compiler, which tries this file with a folder that stands in for the SDK.
  target_compile_options(QZEncircleLine PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wshadow;-Werror;-ffp-contract=off>
    $<$<COMPILE_LANGUAGE:RC>:--codepage=65001>)
endif()
foreach(name IN LISTS ARX_LIBRARIES)
  target_link_libraries(QZEncircleLine PRIVATE ${ARX_SDK}/lib-x64/${name}.lib)
endforeach()

# The bundle that AutoCAD loads by itself: `cmake --install --prefix` puts it into a folder, `cpack`
# into a zip.
configure_file(${CMAKE_SOURCE_DIR}/packaging/PackageContents.xml.in
  ${CMAKE_BINARY_DIR}/PackageContents.xml @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/PackageContents.xml DESTINATION QZEncircleLine.bundle)
install(FILES $<TARGET_FILE:QZEncircleLine> DESTINATION QZEncircleLine.bundle/Contents)
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME QZEncircleLine)
set(CPACK_PACKAGE_VENDOR "QZEncircleLine")
set(CPACK_PACKAGE_FILE_NAME QZEncircleLine-${PROJECT_VERSION}-bundle)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
include(CPack)
