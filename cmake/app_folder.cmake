# app_folder(NAME SOURCES…): one folder of the application as an object library, for UI.exe and for the tests.
function(app_folder name)
    add_library(app_${name} OBJECT ${ARGN})
    target_link_libraries(app_${name} PUBLIC kora_app_flags)
    if(KORA_COVERAGE)
        # Not optimised, so that a line stays a line; counted atomically, since threads share the counters.
        target_compile_options(app_${name} PRIVATE -O0 --coverage -fprofile-update=atomic)
        target_link_libraries(app_${name} INTERFACE gcov)
    endif()
endfunction()
