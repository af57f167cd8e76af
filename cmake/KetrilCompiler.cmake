# What every target is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

# The tolerances of the geometry rely on plain IEEE doubles: no fused multiply-add.
add_compile_options(-Wall -Wextra -Wpedantic -Werror -ffp-contract=off)

# g++ 12 takes "text" + std::string for a copy within itself when it optimises (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-restrict)
endif()

set(KETRIL_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")
if(KETRIL_SANITIZE)
  add_compile_options(-fsanitize=${KETRIL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KETRIL_SANITIZE})
endif()

find_program(KETRIL_CCACHE ccache)
if(KETRIL_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KETRIL_CCACHE})
endif()
