# qz_host_program(target): makes a program able to load modules. They link nothing of the host: the
# program holds all of it, used by itself or not, and gives its symbols away.
function(qz_host_program target)
  set(libraries host_mfc host_ed host_solid host_dxf host_db host_ge host_sys host_base)
  set(files ${libraries})
  list(TRANSFORM files REPLACE "(.+)" "$<TARGET_FILE:\\1>")
  list(JOIN files " " files)
  # Among the options, so that the archives are taken whole before the ordinary search sees them.
  target_link_options(${target} PRIVATE
    "SHELL:-Wl,--whole-archive ${files} -Wl,--no-whole-archive")
  target_link_libraries(${target} PRIVATE ${libraries})
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
  # Loaded at run time, when they are asked for.
  add_dependencies(${target} QZEncircleLine host_solid_occt)
endfunction()
