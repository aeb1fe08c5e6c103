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
endif()

# tessel_room(<target> SOURCES … USES …): one room of the house; it links only what it may use.
function(tessel_room target)
    cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
    add_library(${target} STATIC ${ROOM_SOURCES})
    target_link_libraries(${target} PUBLIC tessel_options ${ROOM_USES})
endfunction()
