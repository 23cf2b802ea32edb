# What every target of the project has in common.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs and what lies beside them share one folder, as they do when installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(QUORLIN_CCACHE ccache)
if(QUORLIN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without this, nothing that uses a precompiled header would be kept.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${QUORLIN_CCACHE}")
endif()

option(QUORLIN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(QUORLIN_WERROR "Treat warnings as errors" OFF)

add_library(quorlin_options INTERFACE)
target_compile_options(quorlin_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-align
  -Woverloaded-virtual -Wnull-dereference -Wno-missing-field-initializers)
target_compile_definitions(quorlin_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
  QUORLIN_VERSION="${PROJECT_VERSION}")
option(QUORLIN_FUZZ "Build the fuzz targets with libFuzzer (needs clang)" OFF)
if(QUORLIN_FUZZ)
  target_compile_options(quorlin_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(QUORLIN_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  # Functions and lines, for the traces of crashes: more makes the many programs slow to link.
  target_compile_options(quorlin_options INTERFACE -g1)
endif()
if(QUORLIN_WERROR)
  target_compile_options(quorlin_options INTERFACE -Werror)
endif()
if(QUORLIN_SANITIZE)
  target_compile_options(quorlin_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(quorlin_options INTERFACE -fsanitize=address,undefined)
endif()

# What is installed reads what others wrote. The same as Debian's own packages have; tests are not
# compiled so, since they are not optimised.
add_library(quorlin_hardening INTERFACE)
if(NOT QUORLIN_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_compile_options(quorlin_hardening INTERFACE
    -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection)
  target_link_options(quorlin_hardening INTERFACE
    -Wl,-z,relro -Wl,-z,now -Wl,--as-needed)
endif()

# Half of the time a source takes goes into the toolkit's headers. Tests get them precompiled, and
# so does everything in the build with sanitizers; the other builds compile the sources of src/
# with just what they include, so that no include is forgotten.
#
# Tests are many and each runs for a moment: they are compiled for speed of compilation alone. The
# headers of Qt Test depend on the folder of the test and cannot be compiled ahead.
set(QUORLIN_TEST_OPTIONS "")
if(NOT QUORLIN_SANITIZE)
  set(QUORLIN_TEST_OPTIONS -O0 -g1)
endif()

# quorlin_precompile(NAME OPTIONS … LINKS … HEADERS …)
function(quorlin_precompile name)
  cmake_parse_arguments(ARG "" "" "OPTIONS;LINKS;HEADERS" ${ARGN})
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/${name}.cpp" CONTENT "")
  add_library(${name} OBJECT "${CMAKE_BINARY_DIR}/${name}.cpp")
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} quorlin_options)
  target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

function(quorlin_make_precompiled)
  if(QUORLIN_SANITIZE)
    quorlin_precompile(quorlin_precompiled LINKS Qt6::Core HEADERS <QtCore>)
  endif()
  quorlin_precompile(quorlin_precompiled_tests OPTIONS ${QUORLIN_TEST_OPTIONS}
    LINKS Qt6::Core HEADERS <QtCore>)
  quorlin_precompile(quorlin_precompiled_window_tests OPTIONS ${QUORLIN_TEST_OPTIONS}
    LINKS Qt6::Widgets HEADERS <QtWidgets>)
endfunction()

# quorlin_use_precompiled(TARGET PRECOMPILED)
function(quorlin_use_precompiled target precompiled)
  if(NOT QUORLIN_FUZZ)
    target_precompile_headers(${target} REUSE_FROM ${precompiled})
  endif()
endfunction()

# Tests are linked by the quicker linker where there is one: it takes a quarter of the time.
find_program(QUORLIN_GOLD ld.gold)

# Whether a target has to do with windows, by the libraries that it links.
function(quorlin_has_windows result)
  set(${result} FALSE PARENT_SCOPE)
  if("${ARGN}" MATCHES "quorlin_(ui|app|skin_controls|skinshow|test_pixels)|Widgets")
    set(${result} TRUE PARENT_SCOPE)
  endif()
endfunction()

# quorlin_library(NAME SOURCES … LINKS … [OWN_FLAGS]): the static library of one folder.
# Its headers are included as "folder/Header.h" relative to src/. OWN_FLAGS says that some of its
# sources are compiled in a way of their own.
function(quorlin_library name)
  cmake_parse_arguments(ARG "OWN_FLAGS" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC Qt6::Core ${ARG_LINKS}
    PRIVATE quorlin_options quorlin_hardening)
  if(QUORLIN_SANITIZE AND NOT ARG_OWN_FLAGS)
    quorlin_use_precompiled(${name} quorlin_precompiled)
  endif()
endfunction()

# quorlin_program(NAME SOURCES … LINKS …): one executable in bin/.
function(quorlin_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} quorlin_options quorlin_hardening)
endfunction()

# quorlin_moc(TARGET SOURCES …): the toolkit's compiler for exactly those sources that declare an
# object, told apart when the build is configured. AUTOMOC would look at all of them in a step of its
# own and compile one source more for each target, which is a third of what a small test costs. It
# passes over those sources from then on, in every target of the folder.
function(quorlin_moc target)
  cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/${target}_moc")
  foreach(source ${ARG_SOURCES})
    get_filename_component(stem "${source}" NAME_WE)
    file(STRINGS "${source}" objects REGEX "^ *Q_OBJECT$")
    if(objects AND source MATCHES "\\.cpp$")
      set(made "${folder}/${stem}.moc")
    elseif(objects)
      set(made "${folder}/moc_${stem}.cpp")
    else()
      continue()
    endif()
    qt_generate_moc("${source}" "${made}" TARGET ${target})
    target_sources(${target} PRIVATE "${made}")
  endforeach()
  target_include_directories(${target} PRIVATE "${folder}")
endfunction()

# quorlin_test(NAME SOURCES … LINKS … [LABELS …] [TIMEOUT seconds]): one Qt Test program.
function(quorlin_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  quorlin_moc(${name} SOURCES ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/src" "${CMAKE_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE Qt6::Test ${ARG_LINKS} quorlin_options)
  target_compile_definitions(${name} PRIVATE
    QUORLIN_BIN_DIR="${CMAKE_BINARY_DIR}/bin" QUORLIN_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_compile_options(${name} PRIVATE ${QUORLIN_TEST_OPTIONS})
  if(QUORLIN_GOLD)
    target_link_options(${name} PRIVATE -fuse-ld=gold)
  endif()
  quorlin_has_windows(has_windows ${ARG_LINKS})
  if(has_windows)
    quorlin_use_precompiled(${name} quorlin_precompiled_window_tests)
  else()
    quorlin_use_precompiled(${name} quorlin_precompiled_tests)
  endif()
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests-bin")
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT} LABELS "${ARG_LABELS}"
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# quorlin_fuzz(NAME SOURCES … LINKS …): a fuzz target. The test of the same name replays
# tests/fuzz/corpus/NAME; with QUORLIN_FUZZ it becomes a libFuzzer program instead.
function(quorlin_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  if(QUORLIN_FUZZ)
    quorlin_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    return()
  endif()
  quorlin_test(${name} SOURCES ${ARG_SOURCES} "${CMAKE_SOURCE_DIR}/tests/fuzz/Replay.cpp"
    LINKS ${ARG_LINKS} LABELS fuzz)
  target_compile_definitions(${name} PRIVATE
    QUORLIN_CORPUS="${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${name}")
endfunction()

# quorlin_adapt_qpdf(TARGET): one header of the library gives nested types that hold vectors of the
# type around them defaulted destructors, which clang 14 rejects in C++20. A destructor with a body
# is the same to everybody else.
function(quorlin_adapt_qpdf target)
  if(NOT QUORLIN_FUZZ)
    return()
  endif()
  find_file(QUORLIN_QPDF_JSON qpdf/JSON.hh HINTS ${QPDF_INCLUDE_DIRS} REQUIRED)
  file(READ "${QUORLIN_QPDF_JSON}" header)
  string(REGEX REPLACE "(~JSON_[a-z]+\\(\\)) = default;" "\\1 {}" header "${header}")
  set(folder "${CMAKE_BINARY_DIR}/include-qpdf")
  file(CONFIGURE OUTPUT "${folder}/qpdf/JSON.hh" CONTENT "${header}" @ONLY)
  target_include_directories(${target} INTERFACE "${folder}")
endfunction()

# quorlin_bench(NAME SOURCES … LINKS …): a program for the commands of bench/.
function(quorlin_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  quorlin_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench-bin")
endfunction()
