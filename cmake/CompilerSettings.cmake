# Language, warnings, sanitizers and folders: what holds for every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Program, library and module stand side by side in the build folder: the program looks for the others
# beside itself, there as in an installed tree.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set(VELDRIN_LIB_DIR lib/veldrin)
set(VELDRIN_DATA_DIR share/veldrin)
set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/../${VELDRIN_LIB_DIR}")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1 -DNDEBUG")
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g")
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1 -fno-omit-frame-pointer")

add_compile_options(
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wextra-semi -Wformat=2)

# Results are the same on every machine only when no multiply and add are fused into one rounding.
add_compile_options(-ffp-contract=off)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A "unique" symbol keeps its library loaded for good: dlclose would leave the module's statics alive.
    add_compile_options(-fno-gnu-unique)
    # Calls inside the library may be inlined although the functions are exported; Clang does so by itself.
    add_compile_options(-fno-semantic-interposition)
    # GCC 12 reports overlapping copies in plain "text" + std::string.
    add_compile_options(-Wno-restrict)
endif()

set(VELDRIN_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")
if(VELDRIN_SANITIZE)
    add_compile_options(-fsanitize=${VELDRIN_SANITIZE} -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VELDRIN_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The checks that are compiled in confuse the flow analysis of GCC 12.
        add_compile_options(-Wno-maybe-uninitialized)
    else()
        # Clang 14 cannot mark coroutines for the check of calls through pointers.
        add_compile_options(-fno-sanitize=function)
    endif()
endif()

# What a library does not define itself it must be linked with, or a missing export shows only at run time.
# Clang keeps the sanitizers' functions in the program, where a library cannot name them.
if(NOT (VELDRIN_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang"))
    add_link_options($<$<IN_LIST:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY$<SEMICOLON>MODULE_LIBRARY>:-Wl,-z,defs>)
endif()
