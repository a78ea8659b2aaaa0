# The delivered list of operators, scrambled from its readable form.
#   pelvaro_operators_list   builds ${CMAKE_BINARY_DIR}/dist/Default.DAT
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(PELVARO_OPERATORS_CSV ${CMAKE_SOURCE_DIR}/data/operators.csv)
set(PELVARO_OPERATORS_LIST ${CMAKE_BINARY_DIR}/dist/Default.DAT)
set(scramble ${CMAKE_SOURCE_DIR}/tools/scramble_operators.py)

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/dist)
add_custom_command(OUTPUT ${PELVARO_OPERATORS_LIST}
  COMMAND ${Python3_EXECUTABLE} ${scramble} --seed 1 ${PELVARO_OPERATORS_CSV} ${PELVARO_OPERATORS_LIST}
  DEPENDS ${PELVARO_OPERATORS_CSV} ${scramble}
  COMMENT "Operator list" VERBATIM)
add_custom_target(pelvaro_operators_list ALL DEPENDS ${PELVARO_OPERATORS_LIST})

add_test(NAME make_operators_test COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_SOURCE_DIR}/tools/make_operators_test.py)
add_test(NAME scramble_operators_test
  COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_SOURCE_DIR}/tools/scramble_operators_test.py ${PELVARO_OPERATORS_LIST})
