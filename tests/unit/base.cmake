# The ground of the handset, as far as it needs Windows; the rest is tested for this machine.
kora_test(test_base
    SOURCES
        base/module_edge_test.cpp
        base/owned_test.cpp
        base/registry_value_test.cpp
        base/registry_watch_test.cpp
    LIBS kora_base gdi32 user32)
# A COM interface has no virtual destructor.
set_source_files_properties(base/owned_test.cpp PROPERTIES COMPILE_OPTIONS -Wno-non-virtual-dtor)
