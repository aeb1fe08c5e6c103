# SQLite with page encryption, one amalgamation. Only its C source and header are taken out of the package.
set(SQLITE_PACKAGE better-sqlite3-multiple-ciphers)
set(SQLITE_PACKAGE_VERSION 12.11.1)
set(SQLITE_PACKAGE_SHA512
    a46ef6fb7564522a67998c782f042aa0e5cd1b6089d479660eb96faa0afbc501e0b04f9ccf9ac064489a2479d42931da19f1a27e0800fc2d12bfda99954adfa3)

set(SQLITE_FOLDER "${TESSEL_CACHE}/sqlite-${SQLITE_PACKAGE_VERSION}")
if(NOT EXISTS "${SQLITE_FOLDER}/checked")
    find_program(NPM npm REQUIRED)
    file(MAKE_DIRECTORY "${SQLITE_FOLDER}")
    message(STATUS "Fetching SQLite: ${SQLITE_PACKAGE} ${SQLITE_PACKAGE_VERSION}")
    execute_process(
        COMMAND ${NPM} pack --silent ${SQLITE_PACKAGE}@${SQLITE_PACKAGE_VERSION}
        WORKING_DIRECTORY "${SQLITE_FOLDER}"
        COMMAND_ERROR_IS_FATAL ANY
        OUTPUT_QUIET)
    set(archive "${SQLITE_FOLDER}/${SQLITE_PACKAGE}-${SQLITE_PACKAGE_VERSION}.tgz")
    file(SHA512 "${archive}" found)
    if(NOT found STREQUAL SQLITE_PACKAGE_SHA512)
        file(REMOVE "${archive}")
        message(FATAL_ERROR "${SQLITE_PACKAGE} is not the package that was recorded: SHA-512 ${found}")
    endif()
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${SQLITE_FOLDER}" PATTERNS "package/deps/sqlite3/*")
    file(REMOVE "${archive}")
    file(TOUCH "${SQLITE_FOLDER}/checked")
endif()

add_library(tessel_sqlite STATIC ${CMAKE_SOURCE_DIR}/storage/sqlite/sqlite_with_key_derivation.c)
target_include_directories(tessel_sqlite SYSTEM PUBLIC "${SQLITE_FOLDER}/package/deps/sqlite3")
target_include_directories(tessel_sqlite PUBLIC "${CMAKE_SOURCE_DIR}/storage/sqlite")
# The header declares what records changes only then.
target_compile_definitions(tessel_sqlite PUBLIC SQLITE_ENABLE_SESSION SQLITE_ENABLE_PREUPDATE_HOOK)
target_compile_definitions(tessel_sqlite PRIVATE
    SQLITE_THREADSAFE=0
    SQLITE_OMIT_LOAD_EXTENSION
    SQLITE_OMIT_DEPRECATED
    SQLITE_DEFAULT_MEMSTATUS=0
    SQLITE_DQS=0)
target_link_libraries(tessel_sqlite PUBLIC ${CMAKE_DL_LIBS})
if(NOT MSVC)
    # Somebody else's code: its warnings are theirs. It is always optimised; a debugger is never in there.
    target_compile_options(tessel_sqlite PRIVATE -w -O2 -fno-sanitize=undefined)
endif()
