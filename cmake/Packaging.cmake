# Debian packages, one a component: script/package, or `cpack -G DEB` in any build folder, which then
# lacks Debian's own library folders.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pictalcore)
set(CPACK_PACKAGE_VENDOR PictalCore)
set(CPACK_PACKAGE_CONTACT "The PictalCore contributors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")    # each component has its own, its first line
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

# dpkg-shlibdeps finds out what the binaries need, except our own library, which is not installed.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/PictalCore")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(library_package libpictalcore${PROJECT_VERSION_MAJOR})
set(this_library "${library_package} (= ${PROJECT_VERSION})")

# Which packages have the pkg-config files of what the library is linked with.
set(development_packages "")
find_program(DPKG_QUERY dpkg-query)
if(DPKG_QUERY)
    set(files "")
    foreach(module ${PICTAL_MODULES})
        pkg_get_variable(dir ${module} pcfiledir)
        list(APPEND files "${dir}/${module}.pc")
    endforeach()
    execute_process(COMMAND "${DPKG_QUERY}" --search ${files} OUTPUT_VARIABLE owners ERROR_QUIET)
    string(REGEX MATCHALL "[a-z0-9.+-]+-dev" development_packages "${owners}")
    list(REMOVE_DUPLICATES development_packages)
endif()
list(JOIN development_packages ", " development_depends)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "core of a screenshot application, shared library
Annotates, dresses and exports pictures.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
# Text is drawn with whatever fonts there are, and best with these.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS
    "fonts-inter | fonts-dejavu-core, fonts-noto-color-emoji, fonts-noto-cjk, fonts-noto-core")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)

set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "core of a screenshot application, development files
Headers, the static library, a CMake package and a pkg-config file.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libpictalcore-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${this_library}, ${development_depends}")

set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "annotates, dresses and exports screenshots
The command-line program over PictalCore.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME pictal)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${this_library}")

foreach(component runtime development program)
    string(TOUPPER ${component} name)
    install(FILES LICENSE RENAME copyright COMPONENT ${component}
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
endforeach()

include(CPack)
