# What `cmake --install` puts where: the library with its headers, the files by which CMake and
# pkg-config find it, and the command with its manual page.
#
# Components: `library` is what a program that was linked with a shared library needs to run (empty for
# a static one), `development` what it takes to build such a program, `command` is brumlin.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(brum_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/brum")

install(
  TARGETS brum
  EXPORT brumTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          COMPONENT library
          NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)

# find_package(brum): the targets, the version and the module that finds GMP again.
install(
  EXPORT brumTargets
  NAMESPACE brum::
  DESTINATION "${brum_cmake_dir}"
  COMPONENT development)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/brumConfig.cmake.in" "${PROJECT_BINARY_DIR}/install/brumConfig.cmake"
  INSTALL_DESTINATION "${brum_cmake_dir}"
  NO_SET_AND_CHECK_MACRO)
# As for the SONAME: while the version begins with 0, only the same minor version will do.
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/install/brumConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/install/brumConfig.cmake"
        "${PROJECT_BINARY_DIR}/install/brumConfigVersion.cmake"
        "${PROJECT_SOURCE_DIR}/cmake/FindGMP.cmake"
  DESTINATION "${brum_cmake_dir}"
  COMPONENT development)

# pkg-config brum. The paths are relative to the file, so the tree may be moved, as CPack does.
set(brum_pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(brum_pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH brum_pc_prefix "/prefix/${brum_pkgconfig_dir}" "/prefix")
  string(REGEX REPLACE "/$" "" brum_pc_prefix "\${pcfiledir}/${brum_pc_prefix}")
endif()
cmake_path(APPEND brum_pc_libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND brum_pc_includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/brum.pc.in" "${PROJECT_BINARY_DIR}/install/brum.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/install/brum.pc"
  DESTINATION "${brum_pkgconfig_dir}"
  COMPONENT development)

if(TARGET brumlin)
  install(TARGETS brumlin RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT command)
  # A shared library beside the command is found wherever both are put; in /usr the system finds it.
  if(NOT brum_library_type STREQUAL "STATIC_LIBRARY"
     AND NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr"
     AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    file(RELATIVE_PATH brum_rpath "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(brumlin PROPERTIES INSTALL_RPATH "\$ORIGIN/${brum_rpath}")
  endif()
  find_program(BRUM_GZIP gzip REQUIRED)
  set(brum_manual "${PROJECT_BINARY_DIR}/install/brumlin.1.gz")
  add_custom_command(
    OUTPUT "${brum_manual}"
    COMMAND "${BRUM_GZIP}" -9nc "${PROJECT_SOURCE_DIR}/docs/brumlin.1" > "${brum_manual}"
    DEPENDS "${PROJECT_SOURCE_DIR}/docs/brumlin.1"
    VERBATIM)
  add_custom_target(brum_manual ALL DEPENDS "${brum_manual}")
  install(
    FILES "${brum_manual}"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
    COMPONENT command)
  install(
    FILES "${PROJECT_SOURCE_DIR}/completions/brumlin.bash"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions"
    RENAME brumlin
    COMPONENT command)
  # Debian's zsh looks in the one of these folders for what packages bring, any zsh in the other.
  set(brum_zsh_folder site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(brum_zsh_folder vendor-completions)
  endif()
  install(
    FILES "${PROJECT_SOURCE_DIR}/completions/_brumlin"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/zsh/${brum_zsh_folder}"
    COMPONENT command)
endif()
