# What every target of ours has in common, and the three ways in which one is declared.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(RIGSTAGE_CCACHE ccache)
if(RIGSTAGE_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${RIGSTAGE_CCACHE})
endif()

add_library(rigstage_flags INTERFACE)
target_include_directories(rigstage_flags INTERFACE ${CMAKE_SOURCE_DIR})
# The same input must give the same bits on every machine that runs a take: one baseline
# instruction set, no contraction of a * b + c, no fast-math.
target_compile_options(rigstage_flags INTERFACE
  -march=x86-64-v2 -ffp-contract=off
  -Wall -Wextra -Werror -Wno-restrict # GCC 12 raises it in std::string, wrongly
  -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wconversion -Wno-sign-conversion -Wdouble-promotion)
if(RIGSTAGE_SANITIZE)
  target_compile_options(rigstage_flags INTERFACE
    -fsanitize=${RIGSTAGE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(rigstage_flags INTERFACE -fsanitize=${RIGSTAGE_SANITIZE})
endif()

# rigstage_library(NAME [SOURCES_IN dir...] [DEPENDS target...] [PRIVATE_DEPENDS target...])
# A static library of the .cpp files that stand directly in the given folders (default: this one).
function(rigstage_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES_IN;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  _rigstage_sources(sources "${ARG_SOURCES_IN}")
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE rigstage_flags ${ARG_PRIVATE_DEPENDS})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
endfunction()

# rigstage_test(NAME [SOURCES_IN dir...] DEPENDS target...)
# A GoogleTest program; each of its cases is a CTest case. LABELS go to all of them.
function(rigstage_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES_IN;DEPENDS;LABELS" ${ARGN})
  _rigstage_sources(sources "${ARG_SOURCES_IN}")
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE rigstage_flags ${ARG_DEPENDS} GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
endfunction()

function(_rigstage_sources out folders)
  if(NOT folders)
    set(folders .)
  endif()
  set(sources)
  foreach(folder IN LISTS folders)
    file(GLOB found CONFIGURE_DEPENDS ${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  set(${out} ${sources} PARENT_SCOPE)
endfunction()
