# The office engine's types as C++ headers, made from what is installed.
#   quorlin_uno: link it to speak to the engine.

find_program(QUORLIN_CPPUMAKER cppumaker
  PATHS /usr/lib/libreoffice/sdk/bin /usr/lib64/libreoffice/sdk/bin /opt/libreoffice/sdk/bin)
if(NOT QUORLIN_CPPUMAKER)
  message(FATAL_ERROR "cppumaker was not found: install the package libreoffice-dev.")
endif()
get_filename_component(uno_maker "${QUORLIN_CPPUMAKER}" REALPATH)
get_filename_component(uno_sdk "${uno_maker}/../.." ABSOLUTE)
get_filename_component(uno_office "${uno_sdk}/.." ABSOLUTE)

find_path(QUORLIN_UNO_INCLUDE cppuhelper/bootstrap.hxx
  PATHS "${uno_sdk}/include" /usr/include/libreoffice NO_DEFAULT_PATH)
set(uno_types "${uno_office}/program/types.rdb" "${uno_office}/program/types/offapi.rdb")
foreach(needed IN LISTS uno_types QUORLIN_UNO_INCLUDE)
  if(NOT EXISTS "${needed}")
    message(FATAL_ERROR "${needed} was not found: install the packages libreoffice-dev and "
      "libreoffice-core-nogui.")
  endif()
endforeach()

set(uno_headers "${CMAKE_CURRENT_BINARY_DIR}/uno")
set(uno_stamp "${CMAKE_CURRENT_BINARY_DIR}/uno.stamp")
add_custom_command(OUTPUT "${uno_stamp}"
  COMMAND "${QUORLIN_CPPUMAKER}" -Gc "-O${uno_headers}" ${uno_types}
  COMMAND "${CMAKE_COMMAND}" -E touch "${uno_stamp}"
  DEPENDS ${uno_types}
  COMMENT "Making headers of the office engine's types"
  VERBATIM)
add_custom_target(quorlin_uno_headers DEPENDS "${uno_stamp}")

add_library(quorlin_uno INTERFACE)
add_dependencies(quorlin_uno quorlin_uno_headers)
target_include_directories(quorlin_uno SYSTEM INTERFACE "${uno_headers}" "${QUORLIN_UNO_INCLUDE}")
target_compile_definitions(quorlin_uno INTERFACE UNX LINUX CPPU_ENV=gcc3)
foreach(name uno_sal uno_cppu uno_cppuhelpergcc3 uno_salhelpergcc3)
  find_library(QUORLIN_${name} ${name} PATHS "${uno_sdk}/lib" NO_DEFAULT_PATH)
  if(NOT QUORLIN_${name})
    message(FATAL_ERROR "lib${name} was not found: install the package libreoffice-dev.")
  endif()
  target_link_libraries(quorlin_uno INTERFACE "${QUORLIN_${name}}")
endforeach()
# Libraries that these four need in turn lie beside the engine and are found from there only.
target_link_options(quorlin_uno INTERFACE
  "LINKER:-rpath,${uno_office}/program" "LINKER:-rpath-link,${uno_office}/program")
