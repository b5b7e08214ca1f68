# qz_version(target): gives a target the header version.h, with the version of the project and the
# commit that it is built from. Looked at in every build, written when it has changed.
set(QZ_VERSION_FOLDER ${CMAKE_BINARY_DIR}/generated)
function(qz_version target)
  if(NOT TARGET version_header)
    add_custom_target(version_header
      BYPRODUCTS ${QZ_VERSION_FOLDER}/version.h
      COMMAND ${CMAKE_COMMAND} -DSOURCE=${CMAKE_SOURCE_DIR} -DOUT=${QZ_VERSION_FOLDER}/version.h
        -DVERSION=${PROJECT_VERSION} -P ${CMAKE_SOURCE_DIR}/cmake/WriteVersion.cmake)
  endif()
  add_dependencies(${target} version_header)
  target_include_directories(${target} PRIVATE ${QZ_VERSION_FOLDER})
endfunction()
