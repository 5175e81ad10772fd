# Language level, warnings as errors for our own code, sanitizers, compiler cache.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

find_program(TZ_CCACHE ccache)
if(TZ_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TZ_CCACHE})
endif()

add_library(tz_options INTERFACE)
target_compile_options(tz_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Werror
    # Clang puts more under the same names than g++ does.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
    $<$<CXX_COMPILER_ID:Clang>:-Wno-missing-field-initializers>)
# Nothing replaces functions of the library by its own, so calls within it needn't ask whether somebody
# did, and may be expanded in place. Clang does so by itself.
add_compile_options($<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-fno-semantic-interposition>)
if(TZ_SANITIZE)
    add_compile_options(-fsanitize=${TZ_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TZ_SANITIZE})
    if(TZ_SANITIZE MATCHES "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The thread checker doesn't see fences, and g++ warns of each.
        add_compile_options(-Wno-tsan)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options(-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitize-ignore.txt)
    endif()
endif()
if(TZ_BUILD_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
