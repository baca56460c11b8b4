# The compile rules of every target, and the two ways a target is made.

add_library(tallyscope_rules INTERFACE)
target_compile_options(tallyscope_rules INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  $<$<BOOL:${TALLYSCOPE_PCH}>:-fpch-preprocess>)
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
  endif()
  if(TALLYSCOPE_PCH AND DEFINED pch)
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

# What every test program finds in its environment.
set(tallyscope_test_environment
  "QT_QPA_PLATFORM=offscreen"
  "LC_ALL=C.UTF-8"
  "TALLYSCOPE_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
  "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp halt_on_error=1"
  "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0"
)

# A GoogleTest program, one CTest test per test program. Widget tests run on the offscreen platform.
# Its main() is tests/fixtures/TestMain.cpp (a QCoreApplication) or, with GUI, TestMainGui.cpp.
function(tallyscope_test name)
  cmake_parse_arguments(ARG "GUI" "" "SOURCES;LINKS" ${ARGN})
  if(ARG_GUI)
    set(main ${PROJECT_SOURCE_DIR}/tests/fixtures/TestMainGui.cpp)
    list(APPEND ARG_LINKS Qt6::Widgets Qt6::Test)
  else()
    set(main ${PROJECT_SOURCE_DIR}/tests/fixtures/TestMain.cpp)
    list(APPEND ARG_LINKS Qt6::Core)
  endif()
  tallyscope_executable(${name} SOURCES ${ARG_SOURCES} ${main}
    LINKS ${ARG_LINKS} GTest::gtest GTest::gmock)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  tallyscope_use_precompiled(${name} _test ${ARG_LINKS})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${tallyscope_test_environment}")
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
