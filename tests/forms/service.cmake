# Installs the library, builds the service against it, runs it, and brings its translations up to date.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

file(REMOVE_RECURSE ${WORK_DIR})
run(ignored ignored ${CMAKE_COMMAND} --install ${ZEFUI_BINARY_DIR} --prefix ${WORK_DIR}/installed)
# lupdate writes into the sources
file(COPY ${SOURCE_DIR}/service DESTINATION ${WORK_DIR})

set(arguments -DCMAKE_PREFIX_PATH=${WORK_DIR}/installed -DWITH_LINT=${WITH_LINT})
if(CROSS)
    # Naming a system makes any build a cross build; the tools then come from the Qt of this machine.
    list(APPEND arguments -DCMAKE_SYSTEM_NAME=${CMAKE_HOST_SYSTEM_NAME} -DQT_HOST_PATH=${QT_HOST_PATH})
endif()
configure_command(configure ${WORK_DIR}/service ${WORK_DIR}/build ${arguments})
run(ignored warnings ${configure})
expect_equal("${warnings}" "")
set(build ${CMAKE_COMMAND} --build ${WORK_DIR}/build -j 2)
run(ignored ignored ${build})

run(shown ignored ${WORK_DIR}/build/service)
expect_equal("${shown}" "\
:/forms/win_login.ui | Guten Morgen, Fenster | QLabel { color: #123456; }
:/forms/win_login.ui | Good morning, windows | QLabel { color: #123456; }
:/forms/farewell.ui | Good bye | QLabel { color: #123456; }
:/forms/about.ui | À propos de ce service | QLabel { color: #123456; }
")

if(WITH_LINT)
    execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${WORK_DIR}/build --output-on-failure
        OUTPUT_VARIABLE checked ERROR_VARIABLE checked)
    expect_text("${checked}" "Test #1: clean")
    expect_text("${checked}" "33% tests passed, 2 tests failed out of 3")
    expect_text("${checked}"
        "forms/login.ui:9: untranslated-text: \"Good morning\" has no translation for the locale de.")
    expect_text("${checked}" "zefui-lint: forms/absent.ui: there is no such file")
endif()

# On request only: the build above left the sources as they were.
file(READ ${SOURCE_DIR}/service/i18n/zefmain_de.ts original)
file(READ ${WORK_DIR}/service/i18n/zefmain_de.ts built)
expect_equal("${built}" "${original}")
run(ignored ignored ${build} --target service_forms_update_translations)
file(READ ${WORK_DIR}/service/i18n/zefmain_de.ts updated)
foreach(text IN ITEMS "Good morning" "Good morning, windows" "Guten Morgen, Fenster" "Good bye" "at work")
    expect_text("${updated}" ">${text}<")
endforeach()
file(READ ${WORK_DIR}/service/i18n/zefmain_fr.ts untouched)
file(READ ${SOURCE_DIR}/service/i18n/zefmain_fr.ts original)
expect_equal("${untouched}" "${original}")

# A changed form and a changed translation reach the program by an ordinary build.
string(REPLACE "Guten Morgen, Fenster" "Moin" changed "${updated}")
file(WRITE ${WORK_DIR}/service/i18n/zefmain_de.ts "${changed}")
file(READ ${WORK_DIR}/service/forms/farewell.ui form)
string(REPLACE "Good bye" "So long" form "${form}")
file(WRITE ${WORK_DIR}/service/forms/farewell.ui "${form}")
run(ignored ignored ${build})
run(shown ignored ${WORK_DIR}/build/service)
expect_text("${shown}" ":/forms/win_login.ui | Moin |")
expect_text("${shown}" ":/forms/farewell.ui | So long |")
