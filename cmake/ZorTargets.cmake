# One function for each kind of target. Each refuses an argument that it does not know.

include(CheckLinkerFlag)
include(CMakeParseArguments)
include(ZorArguments)
include(ZorHotSources)

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(ZOR_PLUGIN_DIRECTORY "${CMAKE_BINARY_DIR}/Plugins")

# What every target of ours is compiled and linked with. Floating point results are part of the product: no
# contraction, no reassociation.
add_library(zor_flags INTERFACE)
target_compile_options(zor_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -ffp-contract=off -fno-fast-math)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Qt 5's QSKIP has no argument where it takes some.
  target_compile_options(zor_flags INTERFACE -Wno-gnu-zero-variadic-macro-arguments)
endif()
if(ZOR_WERROR)
  target_compile_options(zor_flags INTERFACE -Werror)
endif()
if(ZOR_SANITIZE)
  target_compile_options(zor_flags INTERFACE
    "-fsanitize=${ZOR_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zor_flags INTERFACE "-fsanitize=${ZOR_SANITIZE}")
endif()

# zor_configure_target(NAME)
# By the arguments of the calling function.
function(zor_configure_target target)
  zor_no_more_arguments(${ARGN})
  target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}")
  set_target_properties(${target} PROPERTIES AUTOMOC ${ARG_MOC} AUTORCC ${ARG_RCC})
  target_link_libraries(${target} PRIVATE zor_flags ${ARG_OBJECTS} ${ARG_LINK})
endfunction()

# zor_object_library(NAME SOURCES ... [LINK libraries ...] [MOC] [RCC])
# A folder of the product. Linked whole, so that static initialisers stay.
function(zor_object_library target)
  set(ZOR_FLAGS MOC RCC)
  set(ZOR_SINGLES)
  set(ZOR_LISTS SOURCES LINK)
  set(ZOR_REQUIRED SOURCES)
  zor_parse_arguments(${ARGN})
  add_library(${target} OBJECT ${ARG_SOURCES})
  zor_configure_target(${target})
endfunction()

# zor_export_alone(NAME version-script)
# The target exports what the version script of the calling folder names and nothing else.
function(zor_export_alone target script)
  zor_no_more_arguments(${ARGN})
  set(script "${CMAKE_CURRENT_SOURCE_DIR}/${script}")
  target_link_options(${target} PRIVATE "-Wl,--version-script=${script}")
  set_target_properties(${target} PROPERTIES LINK_DEPENDS "${script}")
endfunction()

# zor_shared_library(NAME SOURCES ... [EXPORTS version-script] [OBJECTS object libraries ...] [LINK libraries ...]
#                    [MOC] [RCC])
function(zor_shared_library target)
  set(ZOR_FLAGS MOC RCC)
  set(ZOR_SINGLES EXPORTS)
  set(ZOR_LISTS SOURCES OBJECTS LINK)
  set(ZOR_REQUIRED SOURCES)
  zor_parse_arguments(${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES})
  zor_configure_target(${target})
  if(DEFINED ARG_EXPORTS)
    zor_export_alone(${target} ${ARG_EXPORTS})
  endif()
endfunction()

# zor_module(NAME SOURCES ... EXPORTS version-script [OBJECTS object libraries ...] [LINK libraries ...] [MOC] [RCC])
# A plug-in, NAME.so in the plug-in folder, that exports what the version script names and nothing else.
function(zor_module target)
  set(ZOR_FLAGS MOC RCC)
  set(ZOR_SINGLES EXPORTS)
  set(ZOR_LISTS SOURCES OBJECTS LINK)
  set(ZOR_REQUIRED SOURCES EXPORTS)
  zor_parse_arguments(${ARGN})
  add_library(${target} MODULE ${ARG_SOURCES})
  zor_configure_target(${target})
  zor_export_alone(${target} ${ARG_EXPORTS})
  set_target_properties(${target} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY "${ZOR_PLUGIN_DIRECTORY}")
endfunction()

# zor_program(NAME SOURCES ... [OBJECTS object libraries ...] [LINK libraries ...] [MOC] [RCC])
function(zor_program target)
  set(ZOR_FLAGS MOC RCC)
  set(ZOR_SINGLES)
  set(ZOR_LISTS SOURCES OBJECTS LINK)
  set(ZOR_REQUIRED SOURCES)
  zor_parse_arguments(${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  zor_configure_target(${target})
endfunction()

# Test sources run once and are compiled often: little optimisation, none under a sanitizer, which takes as long to
# optimise as to compile, and debug information for backtraces alone.
add_library(zor_test_flags INTERFACE)
if(ZOR_SANITIZE)
  target_compile_options(zor_test_flags INTERFACE -O0)
endif()
target_compile_options(zor_test_flags INTERFACE $<$<CONFIG:RelWithDebInfo>:-O1>)
if(CMAKE_CXX_FLAGS_RELWITHDEBINFO MATCHES "-g")
  target_compile_options(zor_test_flags INTERFACE $<$<CONFIG:RelWithDebInfo>:-g1>)
endif()
# A test program links the objects of whole folders; there are many, and LLVM's linker takes a fifth of the time.
check_linker_flag(CXX -fuse-ld=lld ZOR_HAS_LLD)
if(ZOR_HAS_LLD)
  target_link_options(zor_test_flags INTERFACE -fuse-ld=lld)
endif()

# zor_precompile_for_tests(NAME LINK libraries ... HEADERS headers ...)
# Headers that are compiled once for the test programs that link these libraries.
function(zor_precompile_for_tests target)
  set(ZOR_FLAGS)
  set(ZOR_SINGLES)
  set(ZOR_LISTS LINK HEADERS)
  set(ZOR_REQUIRED LINK HEADERS)
  zor_parse_arguments(${ARGN})
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
  file(GENERATE OUTPUT "${source}" CONTENT "// Nothing but the headers that come with it.\n")
  add_library(${target} OBJECT "${source}")
  target_link_libraries(${target} PRIVATE zor_flags zor_test_flags ${ARG_LINK})
  target_precompile_headers(${target} PRIVATE ${ARG_HEADERS})
endfunction()

# zor_test_program(NAME SOURCES ... [OBJECTS object libraries ...] [LINK libraries ...] [DEFINES NAME=VALUE ...]
#                  [DEPENDS targets ...] [WRAP symbols ...])
# A Qt Test program. The first source, NAME.cpp, holds the test class and includes NAME.moc. WRAP sends calls of the
# symbols to __wrap_SYMBOL.
function(zor_test_program target)
  set(ZOR_FLAGS)
  set(ZOR_SINGLES)
  set(ZOR_LISTS SOURCES OBJECTS LINK DEFINES DEPENDS WRAP)
  set(ZOR_REQUIRED SOURCES)
  zor_parse_arguments(${ARGN})
  # moc alone: CMake's own search for what needs it takes four times as long.
  set(ARG_MOC OFF)
  set(ARG_RCC OFF)
  # What is precompiled depends on the modules of Qt that the program links.
  set(headers zor_test_headers)
  if("Qt5::Widgets" IN_LIST ARG_LINK)
    set(headers zor_widget_test_headers)
  elseif("Qt5::Gui" IN_LIST ARG_LINK)
    set(headers zor_gui_test_headers)
  endif()
  list(APPEND ARG_LINK Qt5::Test zor_test_flags)
  set(moc_file "${CMAKE_CURRENT_BINARY_DIR}/${target}.moc")
  add_executable(${target} ${ARG_SOURCES} "${moc_file}")
  zor_configure_target(${target})
  qt5_generate_moc(${target}.cpp "${moc_file}" TARGET ${target})
  target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
  target_precompile_headers(${target} REUSE_FROM ${headers})
  target_compile_definitions(${target} PRIVATE ${ARG_DEFINES})
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  foreach(symbol IN LISTS ARG_WRAP)
    target_link_options(${target} PRIVATE "-Wl,--wrap=${symbol}")
  endforeach()
  if(ARG_DEPENDS)
    add_dependencies(${target} ${ARG_DEPENDS})
  endif()
endfunction()

# zor_test(as zor_test_program)
# CTest runs it, without a screen.
function(zor_test target)
  zor_test_program(${target} ${ARGN})
  add_test(NAME ${target} COMMAND ${target})
  zor_test_environment(${target})
endfunction()

# What every test runs under, and the programs that it starts: no screen, sanitizers that stop at the first
# finding and look for lost blocks.
function(zor_test_environment test)
  zor_no_more_arguments(${ARGN})
  set(leaks "suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0")
  set_tests_properties(${test} PROPERTIES TIMEOUT 300 ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1;ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=${leaks}")
endfunction()
