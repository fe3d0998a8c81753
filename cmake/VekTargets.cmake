# How this project's own targets are made: one place for warnings, sanitizers and include paths.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

# moc of Qt 6.4 cannot read the concepts of the standard library, which coroutines bring in.
set(CMAKE_AUTOMOC_MOC_OPTIONS -D_GLIBCXX_COROUTINE)

function(vek_own_code target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 reports impossible overlaps in its own std::string when it inlines assignments of literals.
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(VEK_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VEK_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                 -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # With the checks built in, GCC loses sight of what the standard library initialises.
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    endif()
    if(VEK_FUZZ)
        # clang 14 cannot put the check of function types into coroutines.
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined
                                                 -fno-sanitize-recover=undefined -fno-sanitize=function)
        target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
endfunction()

# vek_library(name SOURCES ... LINKS ...): one folder of src/, reached as "folder/Header.h".
function(vek_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS})
    vek_own_code(${name})
    # Nothing here computes for long, and the third level makes twice the code.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O2>)
endfunction()

# vek_qt_library: the same for folders that use Qt.
function(vek_qt_library name)
    vek_library(${name} ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
    # Windows are made once and then wait for the user: what counts is how much code the start has to load.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-Os>)
endfunction()

function(vek_executable name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINKS")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS})
    vek_own_code(${name})
endfunction()

# vek_test(name SOURCES ... LINKS ...): a GoogleTest program whose cases ctest runs as one test.
# WINDOWS tests run on Qt's offscreen platform.
function(vek_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "WINDOWS" "" "SOURCES;LINKS")
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE VEK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
    if(ARG_WINDOWS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
        target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock)
    else()
        target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest_main)
    endif()
    vek_own_code(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    if(ARG_WINDOWS)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
    endif()
endfunction()
