# How a piece of the project is built: the same warnings everywhere, one library a folder, tests beside the code.
option(PELVARO_SANITIZE "address and undefined-behaviour sanitizers" OFF)
option(PELVARO_FUZZ "build the fuzzers" OFF)

add_library(pelvaro_flags INTERFACE)
target_compile_features(pelvaro_flags INTERFACE cxx_std_20)
target_compile_options(pelvaro_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual> -Wimplicit-fallthrough -Werror -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
# GCC 12 sees overlaps in std::string that are not there (GCC bug 105651); clang does not know the warning.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(pelvaro_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(PELVARO_SANITIZE)
  target_compile_options(pelvaro_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer -D_GLIBCXX_ASSERTIONS)
  target_link_options(pelvaro_flags INTERFACE -fsanitize=address,undefined)
endif()
if(PELVARO_FUZZ)
  add_custom_target(fuzzers)
  # Without the checks of pointers around every single access, which take more time than all else: what they would tell
  # of memory the address sanitizer tells too, and of alignment the tests, which run with them.
  target_compile_options(pelvaro_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
    -fno-sanitize=alignment,null,object-size,pointer-overflow,vptr)
  target_link_options(pelvaro_flags INTERFACE -fsanitize=address,undefined)
endif()
if(WIN32)
  target_compile_options(pelvaro_flags INTERFACE $<$<NOT:$<COMPILE_LANGUAGE:RC>>:-fstack-protector-strong>)
  target_link_options(pelvaro_flags INTERFACE -fstack-protector-strong)
  # The processor's floating point rounds to 53 bits, as the platform starts programs; mingw's own start code would set 64,
  # and a product could be rounded twice.
  target_link_options(pelvaro_flags INTERFACE ${CMAKE_FIND_ROOT_PATH}/lib/CRT_fp8.o)
  # Pages of the file are pages in memory: what is not used, as most pictures are, is not loaded.
  target_link_options(pelvaro_flags INTERFACE -Wl,--file-alignment,4096)
endif()

# pelvaro_library(NAME SOURCES ... [DEPS ...]): a static library; includes are written from the root of src/.
function(pelvaro_library name)
  cmake_parse_arguments(P "" "" "SOURCES;DEPS" ${ARGN})
  add_library(${name} STATIC ${P_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${P_DEPS} PRIVATE pelvaro_flags)
  target_compile_features(${name} PUBLIC cxx_std_20)
endfunction()

# pelvaro_fuzzer(NAME DEPS ...): NAME.cpp with libFuzzer's main, one of the target "fuzzers".
function(pelvaro_fuzzer name)
  cmake_parse_arguments(P "" "" "DEPS" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE ${P_DEPS} pelvaro_flags -fsanitize=fuzzer)
  add_dependencies(fuzzers ${name})
endfunction()

# pelvaro_test(NAME SOURCES ... DEPS ...): a GoogleTest program; run by ctest natively, and under Wine in the win32 build.
# GoogleTest's header is compiled once for all of them, and for Windows the tests themselves, not what they test, are not
# optimised: that takes most of the time.
function(pelvaro_test name)
  cmake_parse_arguments(P "" "" "SOURCES;DEPS" ${ARGN})
  if(PELVARO_FUZZ OR NOT TARGET gtest_main)
    return()
  endif()
  if(NOT TARGET pelvaro_test_header)
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/test_header.cpp CONTENT "")
    add_library(pelvaro_test_header OBJECT ${CMAKE_BINARY_DIR}/test_header.cpp)
    target_link_libraries(pelvaro_test_header PRIVATE pelvaro_flags gtest_main)
    target_compile_options(pelvaro_test_header PRIVATE $<$<BOOL:${WIN32}>:-O0>)
    target_precompile_headers(pelvaro_test_header PRIVATE <gtest/gtest.h>)
  endif()
  add_executable(${name} ${P_SOURCES})
  target_link_libraries(${name} PRIVATE ${P_DEPS} pelvaro_flags gtest_main)
  target_compile_options(${name} PRIVATE $<$<BOOL:${WIN32}>:-O0>)
  target_precompile_headers(${name} REUSE_FROM pelvaro_test_header)
  foreach(source ${P_SOURCES})  # what is no test is compiled, and looked at by clang-tidy, as everywhere else
    if(IS_ABSOLUTE ${source} OR NOT (source MATCHES "_test\\.cpp$" OR CMAKE_CURRENT_SOURCE_DIR MATCHES "/tests/"))
      set_source_files_properties(${source} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    endif()
  endforeach()
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 120)
endfunction()
