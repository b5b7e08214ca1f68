# The headers that other modules compile with to call the engine: its exported classes and nothing
# else of the plug-in. They include one another, MFC and the SDK (docs/other-modules.md).
set(QZ_ENGINE_HEADERS
  plane/box.h
  plane/curve.h
  plane/point.h
  plugin/engine/EncircleCalInfo.h
  plugin/engine/EncircleLine.h
  plugin/engine/EncircleTrace.h
  plugin/engine/LineInfo.h
  plugin/engine/RemoveLineDir.h
  plugin/engine/UnitRectInfo.h
  plugin/outline/ExactEnvelope.h
  plugin/util/QZRect.h)

# Gathered in one folder, ready to be handed on; those of the plane keep theirs, by which they are
# included.
set(QZ_ENGINE_HEADER_FOLDER ${CMAKE_BINARY_DIR}/engine-headers)
set(gathered)
foreach(header IN LISTS QZ_ENGINE_HEADERS)
  string(REGEX REPLACE "^plugin/.*/" "" name ${header})
  add_custom_command(OUTPUT ${QZ_ENGINE_HEADER_FOLDER}/${name}
    COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/${header} ${QZ_ENGINE_HEADER_FOLDER}/${name}
    DEPENDS ${CMAKE_SOURCE_DIR}/${header})
  list(APPEND gathered ${QZ_ENGINE_HEADER_FOLDER}/${name})
endforeach()
add_custom_target(engine_headers ALL DEPENDS ${gathered})
