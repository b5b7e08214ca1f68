# qz_module_resources(target script): puts a module's resource script, with the resource.h beside it,
# into res/ next to the built modules, where the embedded host looks for it at run time.
function(qz_module_resources target script)
  get_filename_component(name ${script} NAME)
  get_filename_component(folder ${script} DIRECTORY)
  set(out ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/res)
  add_custom_command(OUTPUT ${out}/${name} ${out}/resource.h
    COMMAND ${CMAKE_COMMAND} -E make_directory ${out}
    COMMAND ${CMAKE_COMMAND} -E copy ${script} ${folder}/resource.h ${out}
    DEPENDS ${script} ${folder}/resource.h
    COMMENT "Copying ${name}")
  add_custom_target(${target}_resources DEPENDS ${out}/${name} ${out}/resource.h)
  add_dependencies(${target} ${target}_resources)
endfunction()
