# What every folder's CMakeLists.txt uses: the compiler settings, and one function per kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# -pthread for all, because it changes what precompiled headers are good for.
add_compile_options(-Wall -Wextra -Wpedantic -Werror -pthread)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                        QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# Semicolon-separated sanitizers, as the presets set them: address;undefined or thread.
set(TRACKDECK_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(TRACKDECK_SANITIZE)
  list(JOIN TRACKDECK_SANITIZE "," sanitizers)
  add_compile_options(-fsanitize=${sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${sanitizers})
endif()

option(TRACKDECK_FUZZ "Build the fuzz targets, with clang" OFF)
if(TRACKDECK_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

option(TRACKDECK_COVERAGE "Build for gcov" OFF)
if(TRACKDECK_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# The headers that most files include are compiled once for each kind of target. Tests don't name
# them again.
function(trackdeck_precompiled_headers name)
  cmake_parse_arguments(ARG "" "" "LINK;HEADERS;OPTIONS" ${ARGN})
  file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp "")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
endfunction()

# trackdeck_library(name [WIDGETS] [MOC] LINK lib... SOURCES file...)
#
# The static library of one folder. Includes are written from the top of the tree ("grid/GridCtrl.h").
function(trackdeck_library name)
  cmake_parse_arguments(ARG "MOC;WIDGETS" "" "LINK;SOURCES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINK})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
  if(ARG_WIDGETS)
    target_precompile_headers(${name} REUSE_FROM widget_headers)
  else()
    target_precompile_headers(${name} REUSE_FROM core_headers)
  endif()
endfunction()

# What a test measures is in the libraries: its own code is built in no time, and not to be fast.
# Its texts are plain literals.
set(TRACKDECK_TEST_OPTIONS -O0 -UQT_NO_CAST_FROM_ASCII)

# trackdeck_test(name LINK lib... SOURCES file... [LABELS label...] [WIDGETS] [SERIAL])
#
# One GoogleTest program; CTest runs each of its tests in a process of its own, so they may run in
# any order and in parallel. The label "threads" also runs under the thread sanitizer. WIDGETS gives
# the tests a QApplication on the offscreen platform; SERIAL lets nothing run beside them, where
# times are measured: without a sanitizer.
add_custom_target(thread_tests)
function(trackdeck_test name)
  cmake_parse_arguments(ARG "WIDGETS;SERIAL" "" "LINK;SOURCES;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_compile_options(${name} PRIVATE ${TRACKDECK_TEST_OPTIONS})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
  if(ARG_WIDGETS)
    target_link_libraries(${name} PRIVATE ${ARG_LINK} fixtures_widgets fixtures)
    target_precompile_headers(${name} REUSE_FROM widget_test_headers)
  else()
    target_link_libraries(${name} PRIVATE ${ARG_LINK} fixtures_main fixtures)
    target_precompile_headers(${name} REUSE_FROM core_test_headers)
  endif()
  set(properties TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  if(ARG_LABELS)
    list(APPEND properties LABELS ${ARG_LABELS})
  endif()
  if("threads" IN_LIST ARG_LABELS)
    add_dependencies(thread_tests ${name})
  endif()
  if(ARG_SERIAL AND NOT TRACKDECK_SANITIZE)
    list(APPEND properties RUN_SERIAL ON)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST
    PROPERTIES ${properties})
endfunction()
