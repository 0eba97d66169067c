kora_test(test_resources
    SOURCES
        resources/dialog_template.cpp
        resources/dialogs_test.cpp
        resources/icons_test.cpp
        resources/key_pictures_test.cpp
        resources/main_screen.cpp
        resources/menus_test.cpp
        resources/picture.cpp
        resources/pictures_test.cpp
        resources/program_test.cpp
        resources/resource_bytes.cpp
        resources/strings_test.cpp
    LIBS app_resources)
# One test looks into the program itself.
add_dependencies(test_resources UI)
