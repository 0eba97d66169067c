# Recording: the recorder on a graph that writes down its calls, and the control of a recording on the real skin.
kora_test(test_recording APP
    SOURCES
        coredll/handset_fixture.cpp
        recording/capture_graph_test.cpp
        recording/capture_recorder_test.cpp
        recording/fake_graph.cpp
        recording/message_boxes.cpp
        recording/opened_events.cpp
        recording/output_chain_test.cpp
        recording/pre_record_test.cpp
        recording/recording_test.cpp
        recording/start_recording_test.cpp
        recording/stop_recording_test.cpp
        recording/tick_count.cpp
        shell/asked_times.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/skin_window.cpp
    LIBS ${KORA_APPLICATION} app_resources)
target_link_options(test_recording PRIVATE
    -Wl,--wrap=__imp_GetTickCount -Wl,--wrap=__imp_MessageBoxW -Wl,--wrap=__imp_OpenEventW
    -Wl,--wrap=__imp_Sleep -Wl,--wrap=__imp_SetTimer -Wl,--wrap=__imp_CoTaskMemFree
    -Wl,--wrap=_Z12DrawSkinTextR5CSkiniPKw -Wl,--wrap=_Z12ShowSkinTextR5CSkiniPKw)
# Some of it waits for seconds of the handset's clock.
set_tests_properties(test_recording PROPERTIES ENVIRONMENT KORA_CLOCKRATE=10)
