# What every folder's CMakeLists.txt uses: the compiler settings, and one function per kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
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

# trackdeck_library(name LINK lib... SOURCES file...)
#
# The static library of one folder. Includes are written from the top of the tree ("grid/GridCtrl.h").
function(trackdeck_library name)
  cmake_parse_arguments(ARG "MOC" "" "LINK;SOURCES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINK})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
endfunction()

# trackdeck_test(name LINK lib... SOURCES file... [LABELS label...] [WIDGETS] [SERIAL])
#
# One GoogleTest program; CTest runs each of its tests in a process of its own, so they may run in
# any order and in parallel. The label "threads" also runs under the thread sanitizer. WIDGETS gives
# the tests a QApplication on the offscreen platform; SERIAL lets nothing run beside them.
add_custom_target(thread_tests)
function(trackdeck_test name)
  cmake_parse_arguments(ARG "WIDGETS;SERIAL" "" "LINK;SOURCES;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
  if(ARG_WIDGETS)
    target_link_libraries(${name} PRIVATE ${ARG_LINK} fixtures_widgets fixtures)
  else()
    target_link_libraries(${name} PRIVATE ${ARG_LINK} fixtures_main fixtures)
  endif()
  set(properties TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  if(ARG_LABELS)
    list(APPEND properties LABELS ${ARG_LABELS})
  endif()
  if("threads" IN_LIST ARG_LABELS)
    add_dependencies(thread_tests ${name})
  endif()
  if(ARG_SERIAL)
    list(APPEND properties RUN_SERIAL ON)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST
    PROPERTIES ${properties})
endfunction()
