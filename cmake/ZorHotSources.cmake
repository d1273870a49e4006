# Sources whose loops run over the samples and rows of an image. Every optimised configuration compiles them at -O3,
# because -O2 keeps the compiler's vectoriser from loops whose length is not known.

include("${CMAKE_CURRENT_LIST_DIR}/ZorArguments.cmake")

# zor_optimised_configurations(RESULT)
# The configurations of this build that optimise, by the last -O in CMAKE_CXX_FLAGS and their own flags together. -O0
# and -Og are for looking at the program, and so is a sanitizer.
function(zor_optimised_configurations result)
  zor_no_more_arguments(${ARGN})
  set(configurations "${CMAKE_CONFIGURATION_TYPES}")
  if(NOT configurations)
    set(configurations "${CMAKE_BUILD_TYPE}")
  endif()
  set(optimised)
  foreach(configuration IN LISTS configurations)
    string(TOUPPER "${configuration}" name)
    string(REGEX MATCHALL " -O[^ ]*" levels " ${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${name}}")
    list(POP_BACK levels level)
    if(level AND NOT level MATCHES "^ -O[0g]$" AND NOT ZOR_SANITIZE)
      list(APPEND optimised "${configuration}")
    endif()
  endforeach()
  set(${result} "${optimised}" PARENT_SCOPE)
endfunction()

# zor_hot_sources(sources ...)
# Of the calling folder.
function(zor_hot_sources)
  if(ARGC EQUAL 0)
    message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: no sources")
  endif()
  foreach(source IN LISTS ARGN)
    if(NOT EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
      message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: no file ${source} in ${CMAKE_CURRENT_SOURCE_DIR}")
    endif()
  endforeach()
  zor_optimised_configurations(configurations)
  foreach(configuration IN LISTS configurations)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS "$<$<CONFIG:${configuration}>:-O3>")
  endforeach()
endfunction()
