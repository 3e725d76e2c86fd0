# Finds GMP with its C++ interface.
#
# Targets: GMP::gmp (C) and GMP::gmpxx (C++, brings GMP::gmp with it).
# Cache entries that a user can set: GMP_INCLUDE_DIR, GMPXX_INCLUDE_DIR, GMP_LIBRARY, GMPXX_LIBRARY.
find_path(GMP_INCLUDE_DIR NAMES gmp.h)
find_path(GMPXX_INCLUDE_DIR NAMES gmpxx.h)
find_library(GMP_LIBRARY NAMES gmp)
find_library(GMPXX_LIBRARY NAMES gmpxx)
mark_as_advanced(GMP_INCLUDE_DIR GMPXX_INCLUDE_DIR GMP_LIBRARY GMPXX_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
  GMP
  REQUIRED_VARS GMP_LIBRARY GMPXX_LIBRARY GMP_INCLUDE_DIR GMPXX_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "install libgmp-dev")

if(GMP_FOUND AND NOT TARGET GMP::gmp)
  add_library(GMP::gmp UNKNOWN IMPORTED)
  set_target_properties(
    GMP::gmp PROPERTIES IMPORTED_LOCATION "${GMP_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES
                                                           "${GMP_INCLUDE_DIR}")
endif()
if(GMP_FOUND AND NOT TARGET GMP::gmpxx)
  add_library(GMP::gmpxx UNKNOWN IMPORTED)
  set_target_properties(
    GMP::gmpxx
    PROPERTIES IMPORTED_LOCATION "${GMPXX_LIBRARY}"
               INTERFACE_INCLUDE_DIRECTORIES "${GMPXX_INCLUDE_DIR}"
               INTERFACE_LINK_LIBRARIES GMP::gmp)
endif()
