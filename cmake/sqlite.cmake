# kora_sqlite: SQLite as a static library, for the handset's DLLs and for this machine alike, from the
# distribution's source package. Needs the packages dpkg-dev, tcl, make and gcc.
if(TARGET kora_sqlite)
    return()
endif()
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/sqlite_amalgamation.sh
    OUTPUT_VARIABLE KORA_SQLITE_SOURCE OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "SQLite's sources could not be made ready")
endif()
add_library(kora_sqlite STATIC ${KORA_SQLITE_SOURCE}/sqlite3.c)
target_include_directories(kora_sqlite SYSTEM PUBLIC ${KORA_SQLITE_SOURCE})
# One connection is used by one thread at a time (THREADSAFE=2); a volume's file is handled by name only.
# Left out: what a volume never needs, the loading of extensions above all.
target_compile_definitions(kora_sqlite PRIVATE
    SQLITE_THREADSAFE=2 SQLITE_DQS=0 SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_TEMP_STORE=3 SQLITE_MAX_EXPR_DEPTH=0
    SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_DEPRECATED SQLITE_OMIT_SHARED_CACHE SQLITE_OMIT_DECLTYPE
    SQLITE_LIKE_DOESNT_MATCH_BLOBS)
# Somebody else's code: its warnings are not ours to act on.
target_compile_options(kora_sqlite PRIVATE -w)
if(KORA_SANITIZE)
    target_compile_options(kora_sqlite PRIVATE -fsanitize=address -O1)
endif()
