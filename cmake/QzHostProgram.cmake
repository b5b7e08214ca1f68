# qz_host_program(target): makes a program able to load modules. They link nothing of the host: the
# program holds all of it, used by itself or not, and gives its symbols away.
function(qz_host_program target)
  set(libraries host_mfc host_ed host_solid host_dwg host_dxf host_db host_ge host_sys host_base)
  set(files ${libraries})
  list(TRANSFORM files REPLACE "(.+)" "$<TARGET_FILE:\\1>")
  list(JOIN files " " files)
  # Among the options, so that the archives are taken whole before the ordinary search sees them.
  target_link_options(${target} PRIVATE
    "SHELL:-Wl,--whole-archive ${files} -Wl,--no-whole-archive")
  target_link_libraries(${target} PRIVATE ${libraries})
  # The program may be made of the product's rooms, which stand on the plug-in's own classes. A
  # module brings those too: the program keeps its copies to itself, so that neither takes the
  # other's.
  foreach(library qzhost_core plane plugin_util plugin_drawn plugin_outline plugin_engine plugin_batch
      product_base product_detect product_check product_parts product_picture product_tool product_report)
    target_link_options(${target} PRIVATE "-Wl,--exclude-libs,lib${library}.a")
  endforeach()
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
  # Loaded at run time, when they are asked for.
  add_dependencies(${target} QZEncircleLine host_solid_occt)
endfunction()
