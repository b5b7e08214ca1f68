# Writes version.h when version or commit have changed: -DSOURCE= -DOUT= -DVERSION=
execute_process(COMMAND git -C ${SOURCE} rev-parse --short=10 HEAD
  OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
if(failed OR NOT commit)
  set(commit "unknown commit")
endif()
set(text "#define QZ_VERSION \"${VERSION}\"\n#define QZ_COMMIT \"${commit}\"\n")
if(EXISTS ${OUT})
  file(READ ${OUT} former)
endif()
if(NOT text STREQUAL "${former}")
  file(WRITE ${OUT} "${text}")
endif()
