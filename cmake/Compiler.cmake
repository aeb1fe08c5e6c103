# Every target of the project is compiled with the same strictness: link tessel_options.
add_library(tessel_options INTERFACE)
target_include_directories(tessel_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(tessel_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
if(MSVC)
    target_compile_options(tessel_options INTERFACE /W4 /WX /utf-8)
else()
    target_compile_options(tessel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
endif()

if(TESSEL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        # One build serves the tests and the fuzzer, which is led by what of the project's own code it has reached.
        target_compile_options(tessel_options INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endif()

# The toolkit's headers take most of the compiler's time: read once, they serve all rooms, and all tests.
function(tessel_precompile target)
    cmake_parse_arguments(PCH "" "" "HEADERS;LIBS" ${ARGN})
    file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/${target}.cpp" CONTENT "")
    add_library(${target} OBJECT "${CMAKE_BINARY_DIR}/${target}.cpp")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${target} PRIVATE tessel_options ${PCH_LIBS})
    target_precompile_headers(${target} PRIVATE ${PCH_HEADERS})
endfunction()

if(TESSEL_PRECOMPILE)
    tessel_precompile(tessel_precompiled
        HEADERS <QAction> <QHash> <QPainter> <QStringList> <QTableView> <QTreeWidget> <QWidget> <functional> <memory> <vector>
        LIBS Qt6::Core Qt6::Widgets)
endif()

# tessel_room(<target> SOURCES … USES …): one room of the house; it links only what it may use.
function(tessel_room target)
    cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
    add_library(${target} STATIC ${ROOM_SOURCES})
    target_link_libraries(${target} PUBLIC tessel_options ${ROOM_USES})
    if(TESSEL_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM tessel_precompiled)
    endif()
endfunction()
