# SPDX-License-Identifier: Apache-2.0
# OpenCV's imgproc alone, as OpenCV::imgproc: Debian's package of it brings no CMake files, and the one that does
# brings the whole of OpenCV.
find_path(OpenCVImgproc_INCLUDE_DIR opencv2/imgproc.hpp PATH_SUFFIXES opencv4)
find_library(OpenCVImgproc_LIBRARY opencv_imgproc)
find_library(OpenCVImgproc_core_LIBRARY opencv_core)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVImgproc REQUIRED_VARS
    OpenCVImgproc_LIBRARY OpenCVImgproc_core_LIBRARY OpenCVImgproc_INCLUDE_DIR)
mark_as_advanced(OpenCVImgproc_INCLUDE_DIR OpenCVImgproc_LIBRARY OpenCVImgproc_core_LIBRARY)

if(OpenCVImgproc_FOUND AND NOT TARGET OpenCV::imgproc)
    add_library(OpenCV::imgproc UNKNOWN IMPORTED)
    set_target_properties(OpenCV::imgproc PROPERTIES
        IMPORTED_LOCATION "${OpenCVImgproc_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${OpenCVImgproc_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES "${OpenCVImgproc_core_LIBRARY}")
endif()
