# The workbench runs from where it is installed, with its picture and its plug-in. -D BUILD=the build folder
# -D PREFIX=where to install -D PYTHON=what runs the tests that drive a program -D DRIVE=their folder.
cmake_minimum_required(VERSION 3.18)

file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}"
  OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "it cannot be installed")
endif()
foreach(file lib/ZorBench/Resources/ZoomFull.png lib/ZorBench/Plugins/ZorFFCUtility.so)
  if(NOT EXISTS "${PREFIX}/${file}")
    message(FATAL_ERROR "${file} is not installed")
  endif()
endforeach()

# Nothing of the build tree is found: what is loaded comes from the installation.
foreach(binary bin/zorbench lib/ZorBench/Plugins/ZorFFCUtility.so lib/ZorBench/libZorDisplayQt.so)
  execute_process(COMMAND ldd "${PREFIX}/${binary}" OUTPUT_VARIABLE libraries RESULT_VARIABLE result)
  if(NOT result EQUAL 0 OR libraries MATCHES "not found" OR libraries MATCHES "${BUILD}/lib/")
    message(FATAL_ERROR "${binary} does not find its libraries:\n${libraries}")
  endif()
endforeach()
execute_process(COMMAND "${PREFIX}/bin/zorbench" --version OUTPUT_VARIABLE version RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT version MATCHES "^zorbench [0-9.]+\n$")
  message(FATAL_ERROR "the installed program answers '${version}' with ${result}")
endif()
execute_process(
  COMMAND "${CMAKE_COMMAND}" -E env "ZOR_ZORBENCH=${PREFIX}/bin/zorbench" "ZOR_KEEP=${PREFIX}/.." ASAN_OPTIONS=detect_leaks=0
    ZOR_ZORFFC= ZOR_FRAMES= "${PYTHON}" -B "${DRIVE}/session.py" 240 "${PYTHON}" -B "${DRIVE}/installed.py"
  RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the installed window: ${errors}")
endif()
file(REMOVE_RECURSE "${PREFIX}")
