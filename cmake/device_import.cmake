# device_import(NAME FILE): an import library of a device DLL, made from its list of exports alone. The
# application is linked against nothing else, so a call that the device does not have fails to link.
function(device_import name file)
    set(library ${CMAKE_BINARY_DIR}/device-lib/lib${name}_device.a)
    set(definition ${CMAKE_BINARY_DIR}/device-lib/${name}.def)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/device-lib)
    # Only the exported names matter here (dlltool would take a forwarder for an alias), and of those not the
    # ones that are there for the other DLLs of the handset.
    add_custom_command(OUTPUT ${library}
        COMMAND sed -E -e "s/ *=.*//" -e "/^ *Handset/d" ${file} > ${definition}
        COMMAND ${CMAKE_DLLTOOL} -d ${definition} -l ${library}
        DEPENDS ${file} VERBATIM)
    add_custom_target(${name}_device_library DEPENDS ${library})
    add_dependencies(device_libraries ${name}_device_library)
    set(KORA_LIB_${name} ${library} PARENT_SCOPE)
endfunction()

add_custom_target(device_libraries)
device_import(COREDLL ${CMAKE_SOURCE_DIR}/handset/coredll/coredll.def)
device_import(AYGSHELL ${CMAKE_SOURCE_DIR}/handset/aygshell/aygshell.def)
device_import(COMMCTRL ${CMAKE_SOURCE_DIR}/handset/commctrl/commctrl.def)
device_import(COMMDLG ${CMAKE_SOURCE_DIR}/handset/commctrl/commdlg.def)
device_import(OLE32 ${CMAKE_SOURCE_DIR}/handset/include/ole32.def)
device_import(OLEAUT32 ${CMAKE_SOURCE_DIR}/handset/include/oleaut32.def)
# The C/C++ runtime starts up through a few kernel calls of its own; it gets those and no others.
device_import(KERNEL32 ${CMAKE_SOURCE_DIR}/handset/include/runtime_kernel32.def)

# In the order in which a name is looked up: the device before everything else.
set(KORA_DEVICE_LIBRARIES ${KORA_LIB_COREDLL} ${KORA_LIB_AYGSHELL} ${KORA_LIB_COMMCTRL} ${KORA_LIB_COMMDLG}
    ${KORA_LIB_OLE32} ${KORA_LIB_OLEAUT32})
