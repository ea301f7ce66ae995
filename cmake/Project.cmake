# Helpers shared by the project's CMake files.

# cal_sources(VAR DIR): every C++ source directly in DIR, re-globbed when files come or go.
function(cal_sources var dir)
    file(GLOB found CONFIGURE_DEPENDS ${dir}/*.cpp)
    set(${var} ${found} PARENT_SCOPE)
endfunction()

# cal_test(NAME DIR LIBS...): one test program from every *_test.cpp in DIR.
function(cal_test name dir)
    file(GLOB found CONFIGURE_DEPENDS ${dir}/*_test.cpp)
    if(NOT found)
        return()
    endif()
    file(GLOB helpers CONFIGURE_DEPENDS ${dir}/*_support.cpp)
    add_executable(${name} ${found} ${helpers})
    target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gtest_main Threads::Threads)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
        CAL_SOURCE_DIR="${PROJECT_SOURCE_DIR}" CAL_BINARY_DIR="${PROJECT_BINARY_DIR}")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "TZ=UTC;CAL_BINARY_DIR=${PROJECT_BINARY_DIR}")
endfunction()
