# What `cmake --install` puts where, in three components: runtime (the shared library), development
# (all that building against it takes) and program. The installed tree may be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/PictalCore")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(TARGETS PictalCore EXPORT PictalCoreTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(TARGETS PictalCoreStatic EXPORT PictalCoreStaticTargets
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(TARGETS pictal RUNTIME COMPONENT program)
install(PROGRAMS script/ocr-models RENAME pictal-ocr-models
    DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program)
set_target_properties(pictal PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

configure_package_config_file(cmake/PictalCoreConfig.cmake.in PictalCoreConfig.cmake
    INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(PictalCoreConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_BINARY_DIR}/PictalCoreConfig.cmake" "${CMAKE_BINARY_DIR}/PictalCoreConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)
foreach(export PictalCoreTargets PictalCoreStaticTargets)
    install(EXPORT ${export} NAMESPACE PictalCore:: DESTINATION "${package_dir}"
        COMPONENT development)
endforeach()

file(RELATIVE_PATH pkgconfig_to_prefix "/${pkgconfig_dir}" "/")
list(JOIN PICTAL_MODULES " " pkgconfig_requires)
configure_file(cmake/pictalcore.pc.in pictalcore.pc @ONLY)
install(FILES "${CMAKE_BINARY_DIR}/pictalcore.pc"
    DESTINATION "${pkgconfig_dir}" COMPONENT development)
