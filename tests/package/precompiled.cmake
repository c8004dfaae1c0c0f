# Included into the library's own project when it is built once more for these tests: a precompiled header
# makes that build short.
cmake_language(DEFER CALL target_precompile_headers zefui PRIVATE <QtWidgets/QtWidgets>)
