# The compile rules of every target, and the two ways a target is made.

add_library(tallyscope_rules INTERFACE)
if(MSVC)
  target_compile_options(tallyscope_rules INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus)
else()
  target_compile_options(tallyscope_rules INTERFACE
    -Wall -Wextra -Wconversion -Wshadow -Werror
    $<$<BOOL:${TALLYSCOPE_PCH}>:-fpch-preprocess>)
endif()
if(WIN32)
  target_compile_definitions(tallyscope_rules INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
target_compile_definitions(tallyscope_rules INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
option(TALLYSCOPE_FUZZ "Build the fuzz targets; needs clang" OFF)
if(TALLYSCOPE_FUZZ)
  target_compile_options(tallyscope_rules INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TALLYSCOPE_SANITIZE)
  target_compile_options(tallyscope_rules INTERFACE
    -fsanitize=${TALLYSCOPE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tallyscope_rules INTERFACE -fsanitize=${TALLYSCOPE_SANITIZE})
endif()

# Precompiled headers, one each for code over QtCore and over QtWidgets and for the tests of both. They only
# save time: the optimised presets build without, so that no source comes to rely on them.
function(tallyscope_precompiled name header)
  if(NOT TALLYSCOPE_PCH)
    return()
  endif()
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/pch/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/pch/${name}.cpp)
  target_link_libraries(${name} PRIVATE tallyscope_rules ${ARGN})
  target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch/${header})
endfunction()
tallyscope_precompiled(pch_core Core.h Qt6::Core)
tallyscope_precompiled(pch_widgets Widgets.h Qt6::Widgets)

# Lets a target use the one that suits what it links.
function(tallyscope_use_precompiled target suffix)
  if("Qt6::Widgets" IN_LIST ARGN)
    set(pch pch_widgets${suffix})
  elseif("Qt6::Core" IN_LIST ARGN)
    set(pch pch_core${suffix})
  else()
    set(pch pch_plain${suffix})
  endif()
  if(TARGET ${pch})
    target_precompile_headers(${target} REUSE_FROM ${pch})
  endif()
endfunction()

# One static library per folder of src/. LINKS names the folders and libraries that its code may
# include; headers are found as <folder>/<file>.
function(tallyscope_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE tallyscope_rules)
  tallyscope_use_precompiled(${name} "" ${ARG_LINKS})
endfunction()

function(tallyscope_executable name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} tallyscope_rules)
endfunction()

# tallyscope_linux_tests(VARIABLE REASON FILE...): puts test sources that only Linux can run into VARIABLE. On Windows
# the variable is empty, and `./test windows` prints the files with their number of tests and the reason.
set(TALLYSCOPE_LEFT_OUT ${CMAKE_BINARY_DIR}/tests_left_out.txt)
file(WRITE ${TALLYSCOPE_LEFT_OUT} "")
function(tallyscope_linux_tests variable reason)
  if(NOT WIN32)
    set(${variable} ${ARGN} PARENT_SCOPE)
    return()
  endif()
  set(${variable} "" PARENT_SCOPE)
  foreach(name ${ARGN})
    set(file ${CMAKE_CURRENT_SOURCE_DIR}/${name})
    file(STRINGS ${file} tests REGEX "^TEST(_F|_P)?\\(")
    list(LENGTH tests count)
    file(RELATIVE_PATH shown ${PROJECT_SOURCE_DIR} ${file})
    file(APPEND ${TALLYSCOPE_LEFT_OUT} "${count} ${shown}: ${reason}\n")
  endforeach()
endfunction()

# What every test program finds in its environment. TALLYSCOPE_TEST_DRIVE is put in front of this machine's paths
# where the tests run on another system that shows its files under a drive letter.
set(TALLYSCOPE_TEST_DRIVE "" CACHE STRING "Drive under which the tests find the source tree, as in Z:")
set(tallyscope_test_environment
  "QT_QPA_PLATFORM=$<IF:$<BOOL:${WIN32}>,windows,offscreen>"
  "LC_ALL=C.UTF-8"
  "TALLYSCOPE_SOURCE_DIR=${TALLYSCOPE_TEST_DRIVE}${PROJECT_SOURCE_DIR}"
  "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp halt_on_error=1"
  "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0"
)

# A GoogleTest program, one CTest test per test program. Widget tests run on the offscreen platform.
# Its main() comes from test_main (a QCoreApplication) or, with GUI, from test_main_gui, or with OWN_MAIN from its sources.
function(tallyscope_test name)
  cmake_parse_arguments(ARG "GUI;OWN_MAIN" "" "SOURCES;LINKS" ${ARGN})
  if(ARG_GUI)
    list(APPEND ARG_LINKS Qt6::Widgets Qt6::Test)
    set(main test_main_gui)
  else()
    list(APPEND ARG_LINKS Qt6::Core)
    set(main test_main)
  endif()
  if(NOT ARG_OWN_MAIN)
    list(APPEND ARG_LINKS ${main})
  endif()
  tallyscope_executable(${name} SOURCES ${ARG_SOURCES}
    LINKS ${ARG_LINKS} GTest::gtest GTest::gmock)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  tallyscope_use_precompiled(${name} _test ${ARG_LINKS})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${tallyscope_test_environment}")
  if(ARG_GUI)
    _tallyscope_lock_screen(${name})
  endif()
endfunction()

# Runs the cases of the test program that match FILTER once more, on a screen of twice the density.
function(tallyscope_dense_test name program filter)
  add_test(NAME ${name} COMMAND ${program} --gtest_filter=${filter})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${tallyscope_test_environment};QT_SCALE_FACTOR=2")
  _tallyscope_lock_screen(${name})
endfunction()

# On Windows the windows are real ones, of which one program at a time has the focus.
function(_tallyscope_lock_screen test)
  if(WIN32)
    set_tests_properties(${test} PROPERTIES RESOURCE_LOCK screen)
  endif()
endfunction()

# A GoogleTest program over code without Qt, with GoogleTest's own main().
function(tallyscope_plain_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  tallyscope_executable(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} GTest::gtest GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  tallyscope_use_precompiled(${name} _test)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${tallyscope_test_environment}")
endfunction()

# A libFuzzer program. It is built where TALLYSCOPE_FUZZ is on (see tools/fuzz), and is then a CTest test with the label
# fuzz. SEEDS is a folder of first inputs, or a program that puts them into the folder that it is given.
function(tallyscope_fuzz_target name)
  if(NOT TALLYSCOPE_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "" "SEEDS" "SOURCES;LINKS" ${ARGN})
  tallyscope_executable(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  if(NOT TARGET fuzz_targets)
    add_custom_target(fuzz_targets)
  endif()
  add_dependencies(fuzz_targets ${name})
  add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tools/fuzz --one $<TARGET_FILE:${name}> ${ARG_SEEDS})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 0)
endfunction()
