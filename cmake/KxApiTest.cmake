# SPDX-License-Identifier: Apache-2.0
find_package(GTest REQUIRED)
include(GoogleTest)

# kxapi_add_test(NAME name SOURCES file... [LIBRARIES target...] [INCLUDES folder...])
#
# A GoogleTest program in the bin folder, each of its cases a test of ctest's. GoogleTest's own main is linked in.
# Tests of internals link KxGenApiObjects, all others the public targets.
function(kxapi_add_test)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME" "SOURCES;LIBRARIES;INCLUDES")
    if(arg_UNPARSED_ARGUMENTS OR NOT arg_NAME OR NOT arg_SOURCES)
        message(FATAL_ERROR "kxapi_add_test: NAME and SOURCES are needed; not understood: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    add_executable(${arg_NAME} ${arg_SOURCES})
    kxapi_target_warnings(${arg_NAME})
    target_include_directories(${arg_NAME} PRIVATE ${arg_INCLUDES})
    target_link_libraries(${arg_NAME} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    # Listing the cases when the tests start, and not after each link, keeps a crash at start-up a failing test.
    gtest_discover_tests(${arg_NAME}
        TEST_PREFIX "${arg_NAME}/"
        # Parameters are shown as bytes with addresses in them, which differ from run to run.
        NO_PRETTY_VALUES
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        # Far more than any takes on a machine that does other work beside. Tests look for no cameras on the network.
        PROPERTIES TIMEOUT 600 ENVIRONMENT KXAPI_ARAVIS_CARDS=none)
endfunction()
