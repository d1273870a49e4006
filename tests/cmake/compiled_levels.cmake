# The level at which this build compiles the sources with the hot loops, by its list of commands.
# -D COMMANDS=compile_commands.json -D OPTIMISED=the configurations that optimise, if any.
cmake_minimum_required(VERSION 3.18)

file(STRINGS "${COMMANDS}" commands REGEX "\"command\":")
foreach(source
    engine/CellImage.cpp engine/ColumnPass.cpp engine/GainCode.cpp engine/Gains.cpp engine/HistogramPeak.cpp
    engine/Profiles.cpp engine/RowPass.cpp engine/TableCorrection.cpp
    engine/pix/PixArithmetic.cpp engine/pix/PixConvert.cpp engine/pix/PixHistogram.cpp engine/pix/PixMinMax.cpp
    host/quality/LaneKernels.cpp host/quality/NonUniformity.cpp
    image/unpack/PairRows.cpp image/unpack/UnpackedRows.cpp image/unpack/StreamRows.cpp
    platform/converter/DepthChange.cpp platform/converter/PanchromaticLuma.cpp
    platform/viewer/picture/NextMipLevel.cpp platform/viewer/paint/RowKernels.cpp platform/viewer/picture/Tone.cpp)
  set(command ${commands})
  list(FILTER command INCLUDE REGEX "-c [^ ]*/${source}\"")
  list(LENGTH command found)
  if(NOT found EQUAL 1)
    message(SEND_ERROR "${source}: ${found} commands")
    continue()
  endif()
  string(REGEX MATCHALL " -O[^ ]*" levels "${command}")
  list(POP_BACK levels level)
  if(OPTIMISED AND NOT level STREQUAL " -O3")
    message(SEND_ERROR "${source}: compiled at '${level}', expected -O3")
  elseif(NOT OPTIMISED AND level STREQUAL " -O3")
    message(SEND_ERROR "${source}: compiled at -O3 in a build that does not optimise")
  endif()
endforeach()
