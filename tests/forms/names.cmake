# Each name that the library could never find is reported once, in words that say what to do.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

file(REMOVE_RECURSE ${WORK_DIR})
configure_command(configure ${SOURCE_DIR}/names ${WORK_DIR} -DZEFUI_FORMS_MODULE=${ZEFUI_FORMS_MODULE})
run(ignored output ${configure})
unwrap("${output}" output)

set(form_rule "the name of a form file must be <form>.ui or win_<form>.ui, with the suffix in lower case.")
set(sheet_rule "the name of a style sheet must be <objectName>.css or win_<objectName>.css, with the suffix in lower case.")
set(object_rule "what stands before .css must be an object name, made of letters, digits and underscores only.")
set(translation_rule "its name must be zefmain_<locale>.ts, for instance zefmain_de.ts.")
set(expected
    "the library will never find the form upper.UI: ${form_rule}"
    "the library will never find the form plain.xml: ${form_rule}"
    "the library will never find the form .ui: ${form_rule}"
    "names has two files named good.ui, but the library finds only one resource :/forms/good.ui. ${WORK_DIR}/made/other/good.ui is left out, rename it."
    "the library will never find the style sheet ok.qss: ${sheet_rule}"
    "the library will never find the style sheet .css: ${sheet_rule}"
    "no widget will ever get the style sheet ok-button.css: ${object_rule}"
    "no widget will ever get the style sheet 1st.css: ${object_rule}"
    "the library will never find the translation german.ts: ${translation_rule}"
    "the library will never find the translation zefmain_.ts: ${translation_rule}"
    "the library will never find the translation zefmain_de.ts.in: ${translation_rule}"
    "${WORK_DIR}/made/zefmain_it.ts does not exist yet. Build the target names_update_translations to create it, then configure again."
    "names has two files named good.ui, but the library finds only one resource :/forms/good.ui. ${WORK_DIR}/made/other/good.ui is left out, rename it."
    "no FORMS, STYLE_SHEETS or TRANSLATIONS for names")
foreach(text IN LISTS expected)
    expect_text("${output}" "zefui_add_forms: ${text}")
endforeach()
string(REGEX MATCHALL "zefui_add_forms: " warnings "${output}")
list(LENGTH warnings count)
list(LENGTH expected wanted)
expect_equal("${count}" "${wanted}")
