# Flags that every target shares, and the functions by which a floor of the house and a benchmark are declared.

add_library(veltrano_flags INTERFACE)
target_compile_options(veltrano_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Woverloaded-virtual
  -Wdouble-promotion -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # g++ 12 sees null dereferences through inlined standard containers that are not there.
  target_compile_options(veltrano_flags INTERFACE -Wnull-dereference -Wthread-safety)
endif()
target_link_libraries(veltrano_flags INTERFACE Threads::Threads)

if(VELTRANO_SANITIZE)
  add_compile_options(-fsanitize=${VELTRANO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VELTRANO_SANITIZE})
  if(VELTRANO_SANITIZE MATCHES undefined)
    # This check opens a pipe to look at an object, and takes it for a stranger where a test has used up the
    # process's descriptors.
    add_compile_options(-fno-sanitize=vptr)
  endif()
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

# veltrano_floor(NAME SOURCES files... [LINKS libraries...] [QT])
# A folder of src/ as a static library. Without QT it neither links Qt nor sees its headers.
function(veltrano_floor name)
  cmake_parse_arguments(FLOOR "QT" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${FLOOR_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PRIVATE veltrano_flags PUBLIC Threads::Threads ${FLOOR_LINKS})
  if(FLOOR_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# veltrano_bench(NAME SOURCES files... [LINKS libraries...] [QT])
# A program that measures; bench/run calls it and none is a test.
function(veltrano_bench name)
  cmake_parse_arguments(BENCH "QT" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${BENCH_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PRIVATE veltrano_flags ${BENCH_LINKS})
  if(BENCH_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()
