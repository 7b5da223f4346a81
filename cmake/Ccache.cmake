# Compile through ccache where it is there. The base directory makes paths relative, so that
# checkouts in different folders share one cache. What is compiled is timed.
set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_SOURCE_DIR}/cmake/compile-time")
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "CCACHE_NOHASHDIR=1"
        "CCACHE_PREFIX=${CMAKE_SOURCE_DIR}/cmake/compile-time" "${CCACHE}")
endif()
