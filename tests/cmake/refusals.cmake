# What the functions of cmake/ refuse, each in a project of its own.
# -D MODULES=the folder cmake/ -D FOLDER=where the project is written -D GENERATOR= -D COMPILER=
cmake_minimum_required(VERSION 3.18)

file(MAKE_DIRECTORY "${FOLDER}")
file(WRITE "${FOLDER}/A.cpp" "")
file(WRITE "${FOLDER}/A.map" "")

# configure(CALL): into `status` and `errors`.
function(configure call)
  file(WRITE "${FOLDER}/CMakeLists.txt" "cmake_minimum_required(VERSION 3.18)\nproject(Refusals LANGUAGES CXX)\n"
    "list(APPEND CMAKE_MODULE_PATH \"${MODULES}\")\nset(ZOR_HAS_LLD OFF)\ninclude(ZorTargets)\n${call}\n")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -G "${GENERATOR}" -S "${FOLDER}" -B "${FOLDER}/build" -D CMAKE_BUILD_TYPE=Release
      -D "CMAKE_CXX_COMPILER=${COMPILER}"
    OUTPUT_QUIET ERROR_VARIABLE errors RESULT_VARIABLE status)
  set(status "${status}" PARENT_SCOPE)
  # Messages come in wrapped lines.
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(accepted call)
  configure("${call}")
  if(NOT status EQUAL 0)
    message(SEND_ERROR "${call}: refused: ${errors}")
  endif()
endfunction()

function(refused call why)
  configure("${call}")
  string(FIND "${errors}" "${why}" place)
  if(status EQUAL 0 OR place EQUAL -1)
    message(SEND_ERROR "${call}: not refused by '${why}': ${errors}")
  endif()
endfunction()

accepted("zor_hot_sources(A.cpp)")
refused("zor_hot_sources()" "zor_hot_sources: no sources")
refused("zor_hot_sources(A.cpp B.cpp)" "zor_hot_sources: no file B.cpp")
refused("zor_optimised_configurations(result more)" "zor_optimised_configurations: unknown arguments: more")

accepted("zor_object_library(a SOURCES A.cpp)")
refused("zor_object_library(a)" "zor_object_library: no SOURCES")
refused("zor_object_library(a SOURCES)" "zor_object_library: without a value: SOURCES")
refused("zor_object_library(a OFF SOURCES A.cpp)" "zor_object_library: unknown arguments: OFF")
refused("zor_program(a LINK b)" "zor_program: no SOURCES")
refused("zor_test(a LINK b)" "zor_test_program: no SOURCES")

accepted("zor_shared_library(a SOURCES A.cpp)")
accepted("zor_shared_library(a SOURCES A.cpp EXPORTS A.map)")
refused("zor_shared_library(a EXPORTS A.map)" "zor_shared_library: no SOURCES")
accepted("zor_module(a SOURCES A.cpp EXPORTS A.map)")
refused("zor_module(a SOURCES A.cpp)" "zor_module: no EXPORTS")

accepted("zor_precompile_for_tests(a LINK m HEADERS <vector>)")
refused("zor_precompile_for_tests(a LINK m)" "zor_precompile_for_tests: no HEADERS")
refused("zor_precompile_for_tests(a HEADERS <vector>)" "zor_precompile_for_tests: no LINK")
refused("zor_test_environment(a b)" "zor_test_environment: unknown arguments: b")
refused("zor_configure_target(a b)" "zor_configure_target: unknown arguments: b")
