# Every target of this project links pictal_warnings privately; nothing of it is exported.
add_library(pictal_warnings INTERFACE)
target_compile_options(pictal_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees uninitialised and out-of-bounds reads inside std::variant, std::optional and
    # std::vector that are not there.
    target_compile_options(pictal_warnings INTERFACE
        -Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overflow -Wno-restrict)
endif()
if(PICTAL_SANITIZE)
    add_compile_options(-fsanitize=${PICTAL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-fsanitize=${PICTAL_SANITIZE})
endif()
