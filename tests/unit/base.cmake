# The ground of the handset, as far as it needs Windows; the rest is tested for this machine.
kora_test(test_base SOURCES base/module_edge_test.cpp LIBS kora_base)
