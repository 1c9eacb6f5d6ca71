# Settings that all our targets share, and the two kinds of targets below src/ and tests/.

add_library(corma_flags INTERFACE)
target_compile_features(corma_flags INTERFACE cxx_std_20)
target_compile_options(corma_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(CMAKE_UNITY_BUILD)
  # One file may use a name of another one's anonymous namespace for something local, and may have
  # members of types that are its own.
  target_compile_options(corma_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
else()
  target_compile_options(corma_flags INTERFACE -Wshadow)
endif()
target_include_directories(corma_flags INTERFACE
  "${PROJECT_SOURCE_DIR}/src"
  "${PROJECT_SOURCE_DIR}/include"
  "${PROJECT_BINARY_DIR}/include")
if(CORMA_SANITIZE)
  target_compile_options(corma_flags INTERFACE
    -fsanitize=address,undefined -fno-omit-frame-pointer)
  target_link_options(corma_flags INTERFACE -fsanitize=address,undefined)
endif()
if(CORMA_FUZZ)
  target_compile_options(corma_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# One folder of src/ as an object library: corma_add_subsystem(inifile SOURCES ... USES ...).
# What USES names gives its usage requirements; objects are not passed on, so the libraries in
# src/CMakeLists.txt list all subsystems.
function(corma_add_subsystem name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;LIBRARIES")
  add_library(corma_${name} OBJECT ${arg_SOURCES})
  set_target_properties(corma_${name} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_definitions(corma_${name} PRIVATE corma_EXPORTS)
  list(TRANSFORM arg_USES PREPEND corma_)
  target_link_libraries(corma_${name} PUBLIC corma_flags ${arg_USES} ${arg_LIBRARIES})
  set_property(GLOBAL APPEND PROPERTY CORMA_SUBSYSTEMS corma_${name})
endfunction()

# The same for a folder with Qt in it: what Qt generates is made, and its headers are read once.
function(corma_add_dialogs name)
  corma_add_subsystem(${name} ${ARGN})
  set_target_properties(corma_${name} PROPERTIES
    AUTOMOC ON AUTOUIC ON AUTORCC ON
    AUTOGEN_ORIGIN_DEPENDS OFF) # so that the headers can be made without compiling anything
  target_compile_definitions(corma_${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
  target_precompile_headers(corma_${name} PRIVATE <QtWidgets> <string> <vector>)
endfunction()

# One folder of tests/ as a GoogleTest program over the static library. WHOLE makes it one test for
# CTest, which else runs each test in a process of its own. DIALOGS is for tests of widgets: it links
# the dialogs and Qt Test, and a main function that makes the application object first and shows
# nothing; since each process of it starts Qt, such a program is best tested whole.
function(corma_add_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "WHOLE;DIALOGS" "" "SOURCES;LIBRARIES")
  add_executable(test_${name} ${arg_SOURCES})
  set(environment "")
  if(arg_DIALOGS)
    target_link_libraries(test_${name} PRIVATE
      corma_dialog_test_main corma_dialogs corma_test_support GTest::gmock Qt6::Test
      ${arg_LIBRARIES})
    target_compile_definitions(test_${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
    target_precompile_headers(test_${name} PRIVATE <QtWidgets> <QtTest>)
    set(environment ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  else()
    target_link_libraries(test_${name} PRIVATE
      corma_core corma_test_support GTest::gmock GTest::gtest_main ${arg_LIBRARIES})
  endif()
  target_precompile_headers(test_${name} PRIVATE <gtest/gtest.h> <gmock/gmock.h> <string> <vector>)
  if(arg_WHOLE OR CORMA_SANITIZE)
    # With sanitizers the start of a process costs more than most tests. A program that is one test
    # names only those that fail.
    add_test(NAME ${name} COMMAND test_${name} --gtest_brief=1)
    if(arg_DIALOGS)
      set_tests_properties(${name} PROPERTIES ${environment})
    endif()
  else()
    gtest_discover_tests(test_${name} TEST_PREFIX "${name}." NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60
      PROPERTIES ${environment})
  endif()
endfunction()
