# The manual that the program shows, one page made from its readable form.
#   pelvaro_manual   builds ${CMAKE_BINARY_DIR}/dist/manual.html
# By the system's own Python: that is the one for which its package has the Markdown library.
find_program(PELVARO_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

set(PELVARO_MANUAL ${CMAKE_BINARY_DIR}/dist/manual.html)
set(manual ${CMAKE_SOURCE_DIR}/docs/manual.md)
set(make_manual ${CMAKE_SOURCE_DIR}/tools/make_manual.py)
file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/pictures/*.png)

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/dist)
add_custom_command(OUTPUT ${PELVARO_MANUAL}
  COMMAND ${PELVARO_SYSTEM_PYTHON} ${make_manual} --version ${PROJECT_VERSION} ${manual} ${PELVARO_MANUAL}
  DEPENDS ${manual} ${pictures} ${make_manual}
  COMMENT "Manual" VERBATIM)
add_custom_target(pelvaro_manual ALL DEPENDS ${PELVARO_MANUAL})

add_test(NAME make_manual_test
  COMMAND ${PELVARO_SYSTEM_PYTHON} -B ${CMAKE_SOURCE_DIR}/tools/make_manual_test.py ${PELVARO_MANUAL})
