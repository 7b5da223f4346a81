# Every target of this project links pictal_warnings privately; nothing of it is exported.
add_library(pictal_warnings INTERFACE)
target_compile_options(pictal_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees uninitialised and out-of-bounds reads inside std::variant, std::optional and
    # std::vector that are not there.
    target_compile_options(pictal_warnings INTERFACE
        -Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overflow -Wno-restrict)
else()
    # The stable sort of g++ 12's library calls a function that the same library calls deprecated.
    target_compile_options(pictal_warnings INTERFACE -Wno-deprecated-declarations)
endif()

# What the library itself is compiled with.
add_library(pictal_library INTERFACE)
# What the shared library shows is not for replacing at run time, so g++ may inline it.
target_compile_options(pictal_library INTERFACE -fno-semantic-interposition)
# The pixel loops need -O3 to be vectorised; g++ 12's straight-line vectoriser drops roundings to
# float, so it stays off. It vectorises selects by a comparison of floats only where nobody looks for
# exceptions.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(pictal_library INTERFACE
        -O3 -fno-tree-slp-vectorize -fno-math-errno -fno-trapping-math)
elseif(CMAKE_BUILD_TYPE STREQUAL "Sanitized")
    target_compile_options(pictal_library INTERFACE -O1 -g1)
endif()

if(PICTAL_SANITIZE)
    add_compile_options(-fsanitize=${PICTAL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-fsanitize=${PICTAL_SANITIZE})
endif()
