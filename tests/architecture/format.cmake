# Every source is as clang-format writes it. -D SOURCE_ROOT=the project's folder -D CLANG_FORMAT=the program.
cmake_minimum_required(VERSION 3.18)

file(GLOB folders RELATIVE "${SOURCE_ROOT}" "${SOURCE_ROOT}/*")
list(FILTER folders EXCLUDE REGEX "^(build|out$)")
list(TRANSFORM folders PREPEND "${SOURCE_ROOT}/")
list(TRANSFORM folders APPEND "/*.cpp" OUTPUT_VARIABLE sources)
list(TRANSFORM folders APPEND "/*.h" OUTPUT_VARIABLE headers)
file(GLOB_RECURSE files ${sources} ${headers})
list(LENGTH files count)
if(count EQUAL 0)
  message(FATAL_ERROR "no sources below ${SOURCE_ROOT}")
endif()

execute_process(COMMAND "${CLANG_FORMAT}" --dry-run -Werror ${files} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "clang-format -i brings these files into shape")
endif()
message(STATUS "${count} files")
