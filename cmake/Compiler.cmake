# Every target of the project is compiled with the same strictness: link tessel_options.
add_library(tessel_options INTERFACE)
target_compile_definitions(tessel_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
if(MSVC)
    target_compile_options(tessel_options INTERFACE /W4 /WX /utf-8)
else()
    target_compile_options(tessel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        -Wno-sign-conversion -Wnon-virtual-dtor -Werror)
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

# tessel_headers(<target> PUBLIC|PRIVATE): the headers among the target's sources can be included, under their paths in
# the tree, by the target and, when PUBLIC, by what links it. The tree itself is on nobody's include path: a folder of
# the target's own holds one forwarding header for each.
function(tessel_headers target scope)
    set(root "${CMAKE_BINARY_DIR}/include/${target}")
    get_target_property(sources ${target} SOURCES)
    foreach(header IN LISTS sources)
        if(header MATCHES "\\.h$")
            cmake_path(ABSOLUTE_PATH header NORMALIZE)
            cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE path)
            file(CONFIGURE OUTPUT "${root}/${path}" CONTENT "#include \"${header}\"\n" @ONLY)
        endif()
    endforeach()
    target_include_directories(${target} ${scope} "${root}")
endfunction()

# tessel_room(<target> SOURCES … USES …): one room of the house. It can link and include only what it uses; a header
# that is not among the sources can be included by nobody.
function(tessel_room target)
    cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
    add_library(${target} STATIC ${ROOM_SOURCES})
    tessel_headers(${target} PUBLIC)
    target_link_libraries(${target} PUBLIC tessel_options ${ROOM_USES})
    if(TESSEL_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM tessel_precompiled)
    endif()
endfunction()
