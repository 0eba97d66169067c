# UI.exe: the application's folders and its resources, linked against the device's import libraries and the
# C/C++ runtime, and nothing of the desktop.
add_executable(UI WIN32)
foreach(folder IN LISTS KORA_APP_FOLDERS)
    if(TARGET app_${folder})
        target_link_libraries(UI PRIVATE app_${folder})
    endif()
endforeach()
target_link_libraries(UI PRIVATE app_resources)
set_target_properties(UI PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
# strmiids and uuid hold nothing but identifiers. The device's libraries come first; the runtime's parts refer to one another, hence the group.
add_dependencies(UI device_libraries)
target_link_options(UI PRIVATE -municode -nodefaultlibs -static ${KORA_LINK_MAPPED})
target_link_libraries(UI PRIVATE -Wl,--start-group ${KORA_DEVICE_LIBRARIES}
    -lstrmiids -luuid $<$<BOOL:${KORA_COVERAGE}>:-lgcov> -lstdc++ -lmingw32 -lgcc -lgcc_eh -lmoldname -lmingwex -lmsvcrt -lpthread
    ${KORA_LIB_KERNEL32} -Wl,--end-group)
