include(GoogleTest)

# tessel_add_test(<name> SOURCES … LIBS …): one test program, run case by case by CTest without a display.
function(tessel_add_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    target_link_libraries(${name} PRIVATE tessel_options tessel_testing ${TEST_LIBS} GTest::gtest Qt6::Test)
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 600
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TESSEL_BUILT=${TESSEL_PROGRAM_FOLDER}")
endfunction()
