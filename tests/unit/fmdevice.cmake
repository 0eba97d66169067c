kora_test(test_fmdevice
    SOURCES
        fmdevice/band_reload_test.cpp
        fmdevice/class_test.cpp
        fmdevice/faults_test.cpp
        fmdevice/operations_test.cpp
        fmdevice/rds_test.cpp
        fmdevice/reception_state_test.cpp
        fmdevice/seek_test.cpp
        fmdevice/slots_test.cpp
        fmdevice/sound_tap_test.cpp
        fmdevice/sound_test.cpp
        fmdevice/threads_test.cpp
        fmdevice/tuner_log_test.cpp
        fmdevice/tuner_under_test.cpp
        fmdevice/wav_measure.cpp
        ../support/handset_here.cpp
    LIBS fmdevice kora_state kernel32 advapi32 COREDLL)
