# Finds Aravis 0.8, the library for GenICam cameras, and defines the target Aravis::Aravis.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(ARAVIS QUIET aravis-0.8)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Aravis REQUIRED_VARS ARAVIS_LINK_LIBRARIES VERSION_VAR ARAVIS_VERSION)

# Without the compiler options of the module, which would keep precompiled headers from being used.
if(Aravis_FOUND AND NOT TARGET Aravis::Aravis)
  add_library(Aravis::Aravis INTERFACE IMPORTED)
  set_target_properties(Aravis::Aravis PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${ARAVIS_INCLUDE_DIRS}"
    INTERFACE_LINK_LIBRARIES "${ARAVIS_LINK_LIBRARIES}")
endif()
