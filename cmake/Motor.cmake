# The embedded database engine: the amalgamation that the npm client brought at the pinned version.
# Always optimised and without warnings: it is not our code.

set(MOTOR_DIR ${CMAKE_SOURCE_DIR}/node_modules/better-sqlite3-multiple-ciphers/deps/sqlite3)
if(NOT EXISTS ${MOTOR_DIR}/sqlite3.c)
    message(FATAL_ERROR "Falta el motor de base de datos: ejecute ./run o ./test, que lo instalan, o 'npm ci'.")
endif()

find_package(Threads REQUIRED)

add_library(sqlite3mc STATIC ${CMAKE_SOURCE_DIR}/src/db/engine/motor.c)
target_include_directories(sqlite3mc SYSTEM PUBLIC ${MOTOR_DIR})
target_compile_options(sqlite3mc PRIVATE -w -O2)
target_compile_definitions(sqlite3mc PRIVATE
    SQLITE_DQS=0
    SQLITE_THREADSAFE=2
    SQLITE_DEFAULT_MEMSTATUS=0
    SQLITE_LIKE_DOESNT_MATCH_BLOBS
    SQLITE_MAX_EXPR_DEPTH=1000
    SQLITE_OMIT_DEPRECATED
    SQLITE_OMIT_SHARED_CACHE
    SQLITE_ENABLE_COLUMN_METADATA
    SQLITE_ENABLE_FTS5
    SQLITE_ENABLE_STAT4
    SQLITE_USE_URI=0)
set_target_properties(sqlite3mc PROPERTIES AUTOMOC OFF POSITION_INDEPENDENT_CODE ON)
target_link_libraries(sqlite3mc PUBLIC Threads::Threads ${CMAKE_DL_LIBS} m)
