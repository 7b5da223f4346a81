# Compile through ccache where it is there. The base directory makes paths relative, so that
# checkouts in different folders share one cache.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "CCACHE_NOHASHDIR=1" "${CCACHE}")
endif()
