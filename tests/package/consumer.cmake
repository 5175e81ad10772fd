# Installs the build to a scratch folder, moves it, and builds and runs a foreign project against it: once
# through the CMake package, once through pkg-config. Run with cmake -P; needs BUILD, SCRATCH, CONSUMER,
# BUILD_TYPE, COMPILER and LIBDIR. The
# Python package is imported from there too, when PYTHON_DIR says where it is below the prefix, by PYTHON.
find_program(PKG_CONFIG pkg-config REQUIRED)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(prefix ${SCRATCH}/moved)
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/first)
file(RENAME ${SCRATCH}/first ${prefix})

run(${CMAKE_COMMAND} -S ${CONSUMER} -B ${SCRATCH}/cmake -G Ninja
    -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${SCRATCH}/cmake)
run(${SCRATCH}/cmake/consumer)

set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tzparser
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${COMPILER} -std=c++17 -Wall -Wextra ${CONSUMER}/main.cpp -o ${SCRATCH}/consumer ${flags}
    -Wl,-rpath,${prefix}/${LIBDIR})
run(${SCRATCH}/consumer)

# The installed program finds the library beside it.
run(${prefix}/bin/tzparse --help)

if(PYTHON_DIR)
    run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH PYTHONPATH=${prefix}/${PYTHON_DIR}
        ${PYTHON} ${CONSUMER}/consumer.py ${prefix})
endif()
