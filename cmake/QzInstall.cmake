# What is installed, and the packages made of it: `cmake --install`, `cpack`.
#
# The programs look for what they load beside themselves: they live in a folder of their own, and
# links to them in bin.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/qzenvelope)
set(QZ_HOME ${CMAKE_INSTALL_LIBDIR}/qzenvelope)

install(TARGETS qzenvelope qzhost RUNTIME DESTINATION ${QZ_HOME})
install(TARGETS host_solid_occt QZEncircleLine LIBRARY DESTINATION ${QZ_HOME})
install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/res DESTINATION ${QZ_HOME})
foreach(program qzenvelope qzhost)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
  file(RELATIVE_PATH target /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${QZ_HOME}/${program})
  file(CREATE_LINK ${target} ${CMAKE_BINARY_DIR}/links/${program} SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/links/${program} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()

install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/locale DESTINATION ${QZ_HOME})

install(FILES README.md README.zh-CN.md CHANGELOG.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES packaging/qzhost.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/qzhost.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/qzenvelope.bash RENAME qzenvelope
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

# Manual pages say what the programs' own help says.
find_program(QZ_HELP2MAN help2man)
if(QZ_HELP2MAN)
  set(QZ_MANUALS ${CMAKE_BINARY_DIR}/man)
  add_custom_command(OUTPUT ${QZ_MANUALS}/done
    COMMAND ${CMAKE_SOURCE_DIR}/scripts/make-manuals $<TARGET_FILE_DIR:qzenvelope> ${QZ_MANUALS}
    COMMAND ${CMAKE_COMMAND} -E touch ${QZ_MANUALS}/done
    DEPENDS qzenvelope qzhost ${CMAKE_SOURCE_DIR}/scripts/make-manuals
    COMMENT "Making the manual pages")
  add_custom_target(manuals ALL DEPENDS ${QZ_MANUALS}/done)
  install(DIRECTORY ${QZ_MANUALS}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    FILES_MATCHING PATTERN "*.1")
else()
  message(STATUS "help2man is missing: no manual pages are made")
endif()

set(CPACK_PACKAGE_NAME qzenvelope)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "QZEncircleLine")
set(CPACK_PACKAGE_CONTACT "QZEncircleLine <maintainer@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Envelopes and solids of rotating cutting tools from 2D drawings")
set(CPACK_PACKAGE_DESCRIPTION "Computes the closed line around a rotating tool from its drawing (DXF, or
DWG by a converter), and the solid of it as SAT, STEP and STL; many tools at
once with a page and a table; and a desktop that runs the plug-in's dialogs.")
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# Linked libraries are found out; these are loaded when they are needed.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libgeos-c1v5")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-wqy-microhei")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "parallel, slurm-client")
include(CPack)
