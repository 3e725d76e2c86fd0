# What `cpack` makes: Debian packages. libbrum-dev holds the library and what it takes to build with it,
# brumlin the command. With a static library (the default) the two stand alone; a shared one comes in a
# package of its own that bears its SONAME, on which the two depend.
set(BRUM_PACKAGE_MAINTAINER "The Brumlin authors <brumlin@example.org>"
    CACHE STRING "Who answers for the Debian packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME "${PROJECT_NAME}")
set(CPACK_PACKAGE_VENDOR "The Brumlin authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${BRUM_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(brum_about "Brumlin turns formulas over Booleans, integers, reals, bit-vectors, arrays
and uninterpreted sorts into benchmarks of SMT-LIB 1.2 or scripts of
SMT-LIB 2. Shared subterms are named once, so that the text is as small as
the graph of the formula.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbrum-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libgmp-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${brum_about}\n.\nThis package holds the library for programs in C++ and C.")

if(NOT brum_library_type STREQUAL "STATIC_LIBRARY")
  list(APPEND CPACK_COMPONENTS_ALL library)
  get_target_property(brum_soversion brum SOVERSION)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME "libbrum${brum_soversion}")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
  set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
      "${brum_about}\n.\nThis package holds the shared library.")
  set(brum_library_package
      "libbrum${brum_soversion} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", ${brum_library_package}")
  set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${brum_library_package}")
endif()

if(TARGET brumlin)
  list(APPEND CPACK_COMPONENTS_ALL command)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME brumlin)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION math)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")
  set(CPACK_COMPONENT_COMMAND_DESCRIPTION
      "${brum_about}\n.\nThis package holds the command, which reads scripts and benchmarks.")
endif()

# Each package says who holds the rights and what changed, where Debian's policy wants that.
find_program(BRUM_GZIP gzip)
if(BRUM_GZIP)
  # The variable SOURCE_DATE_EPOCH, when set, is the time of both.
  string(TIMESTAMP brum_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  string(TIMESTAMP brum_year "%Y" UTC)
  file(READ "${PROJECT_SOURCE_DIR}/LICENSE" brum_licence)
  string(STRIP "${brum_licence}" brum_licence)
  string(REGEX REPLACE "^MIT License\n\nCopyright[^\n]*\n\n" "" brum_licence "${brum_licence}")
  string(REPLACE "\n\n" "\n.\n" brum_licence "${brum_licence}")
  string(REPLACE "\n" "\n " brum_licence "${brum_licence}")
  set(brum_debian "${PROJECT_SOURCE_DIR}/packaging/debian")
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    set(brum_package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
    set(brum_package_files "${PROJECT_BINARY_DIR}/install/${brum_package}")
    configure_file("${brum_debian}/copyright.in" "${brum_package_files}/copyright" @ONLY)
    configure_file("${brum_debian}/changelog.in" "${brum_package_files}/changelog.Debian" @ONLY)
    execute_process(COMMAND "${BRUM_GZIP}" -9nf "${brum_package_files}/changelog.Debian"
                    COMMAND_ERROR_IS_FATAL ANY)
    install(
      FILES "${brum_package_files}/copyright" "${brum_package_files}/changelog.Debian.gz"
      DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${brum_package}"
      COMPONENT "${component}")
  endforeach()
endif()

include(CPack)
