include(GoogleTest)
find_package(GTest REQUIRED)
find_package(Qt6 REQUIRED COMPONENTS Test)

# Qt defines the folder of each test program; nobody here asks for it, and it would keep them from sharing one
# precompiled header.
set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)

set(TESSEL_TEST_TIMEOUT 600 CACHE STRING "Seconds after which one test counts as hanging")

# tessel_add_test(<name> SOURCES … LIBS …): one test program, run case by case by CTest without a display.
function(tessel_add_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    tessel_headers(${name} PRIVATE)
    target_link_libraries(${name} PRIVATE tessel_options tessel_testing ${TEST_LIBS} GTest::gtest Qt6::Test)
    if(TESSEL_PRECOMPILE)
        target_precompile_headers(${name} REUSE_FROM tessel_tests_precompiled)
    endif()
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        NO_PRETTY_VALUES
        PROPERTIES TIMEOUT ${TESSEL_TEST_TIMEOUT}
        # One variable each: gtest_discover_tests takes a list of two apart.
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
        ENVIRONMENT_MODIFICATION "TESSEL_BUILT=set:${TESSEL_PROGRAM_FOLDER}")
endfunction()
