# app_folder(NAME SOURCES…): one folder of the application as an object library, for UI.exe and for the tests.
function(app_folder name)
    add_library(app_${name} OBJECT ${ARGN})
    target_link_libraries(app_${name} PUBLIC kora_app_flags)
endfunction()
