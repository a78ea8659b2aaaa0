# The program's pictures: icons from the drawings in art/, and the film of the splash window. Tools are host programs.
#   pelvaro_art      builds every icon of PELVARO_ICONS into ${CMAKE_BINARY_DIR}/art
#   pelvaro_splash   builds ${CMAKE_BINARY_DIR}/dist/loading.avi
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(PELVARO_RSVG_CONVERT rsvg-convert REQUIRED)
find_program(PELVARO_ICOTOOL icotool REQUIRED)

set(PELVARO_ART_SOURCES ${CMAKE_CURRENT_LIST_DIR}/../art)
set(PELVARO_ART_TOOLS ${CMAKE_CURRENT_LIST_DIR}/../tools)
cmake_path(NORMAL_PATH PELVARO_ART_SOURCES)
cmake_path(NORMAL_PATH PELVARO_ART_TOOLS)
set(PELVARO_ART_DIR ${CMAKE_BINARY_DIR}/art)
set(PELVARO_SPLASH ${CMAKE_BINARY_DIR}/dist/loading.avi)
set(PELVARO_ICONS)

# pelvaro_icon(NAME [MUTED] [SIZES n ...]): NAME.ico from art/NAME.svg and art/NAME_16.svg (from the latter alone where
# there is no other), with MUTED also NAME_muted.ico for a disabled control. Both are added to PELVARO_ICONS.
function(pelvaro_icon name)
  cmake_parse_arguments(P "MUTED" "" "SIZES" ${ARGN})
  if(NOT P_SIZES)
    set(P_SIZES 16 20 24 32 48 64)
  endif()
  list(JOIN P_SIZES "," sizes)
  set(small ${PELVARO_ART_SOURCES}/${name}_16.svg)
  set(drawing ${PELVARO_ART_SOURCES}/${name}.svg)
  if(NOT EXISTS ${drawing})
    set(drawing ${small})
  endif()
  set(variants "")
  if(P_MUTED)
    set(variants _muted)
  endif()
  foreach(variant IN ITEMS "" ${variants})
    set(icon ${PELVARO_ART_DIR}/${name}${variant}.ico)
    set(option)
    if(variant)
      set(option --muted)
    endif()
    add_custom_command(OUTPUT ${icon}
      COMMAND ${Python3_EXECUTABLE} ${PELVARO_ART_TOOLS}/make_icon.py --drawing ${drawing} --small ${small}
        --sizes ${sizes} ${option} ${icon}
      DEPENDS ${drawing} ${small} ${PELVARO_ART_TOOLS}/make_icon.py
      COMMENT "Icon ${name}${variant}" VERBATIM)
    list(APPEND PELVARO_ICONS ${icon})
  endforeach()
  set(PELVARO_ICONS ${PELVARO_ICONS} PARENT_SCOPE)
endfunction()

# pelvaro_use_art(TARGET RC): the resource script names its icons without a folder; it is compiled anew
# when one of them changes. Call it in the folder that adds the target.
function(pelvaro_use_art target rc)
  set_property(SOURCE ${rc} APPEND PROPERTY OBJECT_DEPENDS ${PELVARO_ICONS})
  set_property(SOURCE ${rc} APPEND PROPERTY INCLUDE_DIRECTORIES ${PELVARO_ART_DIR})
  add_dependencies(${target} pelvaro_art)
endfunction()

# Each picture in the sizes that its places have at 100, 125, 150 and 200 %.
set(buttons SIZES 32 40 48 64)
set(heads SIZES 48 60 72 96)
set(sides SIZES 24 32 40 48)
set(marks SIZES 16 20 24 32)
pelvaro_icon(application SIZES 16 20 24 32 40 48 64 256)
pelvaro_icon(add ${buttons})
pelvaro_icon(connect MUTED ${buttons})
pelvaro_icon(hang_up ${buttons})
pelvaro_icon(limits ${buttons})
pelvaro_icon(driver ${sides})
pelvaro_icon(cable ${sides})
pelvaro_icon(sign_in ${heads})
pelvaro_icon(dialing ${heads})
pelvaro_icon(failed ${heads})
pelvaro_icon(list_entry ${marks})
pelvaro_icon(connected ${marks})
pelvaro_icon(disconnected ${marks})
add_custom_target(pelvaro_art DEPENDS ${PELVARO_ICONS})

add_custom_command(OUTPUT ${PELVARO_SPLASH}
  COMMAND ${Python3_EXECUTABLE} ${PELVARO_ART_TOOLS}/make_splash.py ${PELVARO_ART_SOURCES}/splash_still.svg
    ${PELVARO_SPLASH}
  DEPENDS ${PELVARO_ART_SOURCES}/splash_still.svg ${PELVARO_ART_TOOLS}/make_splash.py
  COMMENT "Splash film" VERBATIM)
add_custom_target(pelvaro_splash DEPENDS ${PELVARO_SPLASH})

foreach(tool IN ITEMS make_icon make_splash)
  add_test(NAME ${tool}_test COMMAND ${Python3_EXECUTABLE} -B ${PELVARO_ART_TOOLS}/${tool}_test.py)
endforeach()
