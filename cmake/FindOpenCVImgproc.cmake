# Finds OpenCV's core and imgproc modules, without the configuration file that comes with the whole of OpenCV
# alone, and defines the target OpenCV::imgproc.

find_path(OPENCV_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4)
find_library(OPENCV_IMGPROC_LIBRARY opencv_imgproc)
find_library(OPENCV_CORE_LIBRARY opencv_core)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVImgproc
  REQUIRED_VARS OPENCV_IMGPROC_LIBRARY OPENCV_CORE_LIBRARY OPENCV_INCLUDE_DIR)

if(OpenCVImgproc_FOUND AND NOT TARGET OpenCV::imgproc)
  add_library(OpenCV::imgproc UNKNOWN IMPORTED)
  set_target_properties(OpenCV::imgproc PROPERTIES
    IMPORTED_LOCATION "${OPENCV_IMGPROC_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${OPENCV_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${OPENCV_CORE_LIBRARY}")
endif()
mark_as_advanced(OPENCV_INCLUDE_DIR OPENCV_IMGPROC_LIBRARY OPENCV_CORE_LIBRARY)
