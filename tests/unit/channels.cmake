# The channel store on the device's real database, with lists that write down what they are sent.
kora_test(test_channels APP
    SOURCES
        channels/channels_test.cpp
        channels/frequency_edit_test.cpp
        channels/groups_test.cpp
        channels/import_test.cpp
        channels/list_colours_test.cpp
        channels/list_edges_test.cpp
        channels/list_selection_test.cpp
        channels/lists_test.cpp
        channels/lookup_test.cpp
        channels/records_test.cpp
        channels/volume_test.cpp
        ../support/stored_channels.cpp
    LIBS ${KORA_APPLICATION})
