# What the functions of these files refuse: arguments that they do not know, and calls that leave out a required one.

# zor_parse_arguments(arguments ...)
# Into ARG_NAME, by the calling function's ZOR_FLAGS, ZOR_SINGLES and ZOR_LISTS; ZOR_REQUIRED are those of them that
# each call gives. All by presence: an argument "OFF" or "0" is as wrong as any other.
macro(zor_parse_arguments)
  cmake_parse_arguments(ARG "${ZOR_FLAGS}" "${ZOR_SINGLES}" "${ZOR_LISTS}" ${ARGN})
  if(DEFINED ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: unknown arguments: ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  if(DEFINED ARG_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: without a value: ${ARG_KEYWORDS_MISSING_VALUES}")
  endif()
  foreach(required IN LISTS ZOR_REQUIRED)
    if(NOT DEFINED ARG_${required})
      message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: no ${required}")
    endif()
  endforeach()
endmacro()

# zor_no_more_arguments(${ARGN})
# For functions that take their named arguments alone.
macro(zor_no_more_arguments)
  if("${ARGC}" GREATER 0)
    message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION}: unknown arguments: ${ARGN}")
  endif()
endmacro()
