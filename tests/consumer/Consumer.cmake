# SPDX-License-Identifier: Apache-2.0
# cmake -DSTEP=step -DBUILD_DIR=... -P Consumer.cmake: one step of the consumer tests, see the CMakeLists.txt beside it.

if(DEFINED ENV{TMPDIR})
    set(work "$ENV{TMPDIR}/kxapi-consumer-${ID}")
else()
    set(work "/tmp/kxapi-consumer-${ID}")
endif()
set(prefix "${work}/moved")
set(expected "width 640, bytes of an image 768000\n")
set(description "${SOURCE_DIR}/samples/descriptions/SampleCamera.xml")

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The program is to find a camera whose producer doesn't lie in the installation.
function(expect_camera)
    set(ENV{GENICAM_GENTL64_PATH} "${BUILD_DIR}/tests/KxApi_TL/producers/FakeCamera.cti")
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    if(NOT output MATCHES "Fake transport / Interface GEV / cam\n")
        message(FATAL_ERROR "the consumer printed \"${output}\"")
    endif()
endfunction()

function(expect_output)
    execute_process(COMMAND ${ARGV} "${description}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "the consumer printed \"${output}\" instead of \"${expected}\"")
    endif()
endfunction()

if(STEP STREQUAL "install")
    file(REMOVE_RECURSE "${work}")
    run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${work}/installed")
    # Each file is of a component, or packages would lack it.
    run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${work}/stray" --component Unspecified)
    file(GLOB_RECURSE stray "${work}/stray/*")
    if(stray)
        message(FATAL_ERROR "no component has ${stray}")
    endif()
    file(RENAME "${work}/installed" "${prefix}")
    file(COPY "${SOURCE_DIR}/samples/first" "${SOURCE_DIR}/tests/consumer/list" DESTINATION "${work}")

elseif(STEP STREQUAL "tool")
    # Moved as it is, with its libraries and producers.
    set(ENV{TMPDIR} "${work}")
    execute_process(COMMAND "${prefix}/bin/kx" list OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    if(NOT output MATCHES "KX-U5M_1001")
        message(FATAL_ERROR "kx found no simulated camera: ${output}")
    endif()

elseif(STEP STREQUAL "cmake-package")
    run(${CMAKE_COMMAND} -S "${work}/first" -B "${work}/by-cmake" -G Ninja
        -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
    run(${CMAKE_COMMAND} --build "${work}/by-cmake")
    expect_output("${work}/by-cmake/first")

elseif(STEP STREQUAL "list-by-cmake")
    run(${CMAKE_COMMAND} -S "${work}/list" -B "${work}/list-by-cmake" -G Ninja
        -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
    run(${CMAKE_COMMAND} --build "${work}/list-by-cmake")
    expect_camera("${work}/list-by-cmake/list")

elseif(STEP STREQUAL "list-by-pkg-config")
    set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIB_DIR}/pkgconfig")
    execute_process(COMMAND pkg-config --cflags --libs kxapi-tl
        OUTPUT_VARIABLE options OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(options UNIX_COMMAND "${options}")
    run(${CXX} -std=c++17 "${work}/list/main.cpp" -o "${work}/list-by-pkg-config" ${options})
    set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIB_DIR}")
    expect_camera("${work}/list-by-pkg-config")

elseif(STEP STREQUAL "unknown-component")
    file(WRITE "${work}/unknown/CMakeLists.txt"
        "cmake_minimum_required(VERSION 3.25)\nproject(Unknown LANGUAGES NONE)\n"
        "find_package(KxApi REQUIRED COMPONENTS GenApi Teleportation)\n")
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S "${work}/unknown" -B "${work}/unknown/build" -G Ninja -DCMAKE_PREFIX_PATH=${prefix}
        RESULT_VARIABLE result ERROR_VARIABLE errors OUTPUT_QUIET)
    if(result EQUAL 0 OR NOT errors MATCHES "KxApi has no component \"Teleportation\"; this[ \n]+installation[ \n]+has:[ \n]+GenApi")
        message(FATAL_ERROR "an unknown component ended with ${result} and said: ${errors}")
    endif()

elseif(STEP STREQUAL "pkg-config")
    set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIB_DIR}/pkgconfig")
    execute_process(COMMAND pkg-config --cflags --libs kxgenapi
        OUTPUT_VARIABLE options OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(options UNIX_COMMAND "${options}")
    run(${CXX} -std=c++17 "${work}/first/main.cpp" -o "${work}/by-pkg-config" ${options})
    set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIB_DIR}")
    expect_output("${work}/by-pkg-config")

elseif(STEP STREQUAL "other-genapi")
    # The transport library alone, built against an installed GenApi; our own installation plays the other one.
    run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${work}/other" -G Ninja -DKXAPI_GENAPI_ROOT=${prefix} -DKXAPI_TESTS=OFF
        -DKXAPI_GUI=OFF -DCMAKE_DISABLE_FIND_PACKAGE_Qt5=ON -DKXAPI_COMPILE_JOINTLY=ON
        -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0)
    run(${CMAKE_COMMAND} --build "${work}/other" --target KxApiTL)
    run(${CXX} -std=c++17 "${work}/list/main.cpp" -o "${work}/list-other" "-I${prefix}/include/kxapi"
        "${work}/other/lib/libKxApi_TL.so" -L${prefix}/${LIB_DIR} -lKxGenApi -lKxGCBase)
    set(ENV{LD_LIBRARY_PATH} "${work}/other/lib:${prefix}/${LIB_DIR}")
    expect_camera("${work}/list-other")
    set(ENV{PKG_CONFIG_PATH} "${work}/other")
    execute_process(COMMAND pkg-config --cflags --libs kxapi-tl OUTPUT_VARIABLE options COMMAND_ERROR_IS_FATAL ANY)
    if(NOT options MATCHES "-I${prefix}/[^ ]* .*${prefix}/[^ ]*GenApi[^ ]*\\.so")
        message(FATAL_ERROR "pkg-config doesn't lead to the other GenApi: ${options}")
    endif()

elseif(STEP STREQUAL "clean-up")
    file(REMOVE_RECURSE "${work}")

elseif(STEP STREQUAL "readme-program")
    # The program that the README shows is the one that the other steps build.
    file(READ "${SOURCE_DIR}/README.md" readme)
    file(READ "${SOURCE_DIR}/samples/first/main.cpp" program)
    string(FIND "${readme}" "```cpp\n${program}```" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "README.md does not show samples/first/main.cpp as it is")
    endif()

else()
    message(FATAL_ERROR "unknown step \"${STEP}\"")
endif()
