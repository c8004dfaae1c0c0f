#include "RuleGroups.h"

#include <algorithm>
#include <tuple>

namespace {

bool isIntended(const Project& project, const Finding& finding)
{
    const auto isExcused = [&](const auto& file) {
        return file.path == finding.file && isSuppressed(file.suppressions, finding.rule, finding.line);
    };
    return std::any_of(project.forms.cbegin(), project.forms.cend(), isExcused)
        || std::any_of(project.styleSheets.cbegin(), project.styleSheets.cend(), isExcused)
        || std::any_of(project.delegates.cbegin(), project.delegates.cend(), isExcused);
}

} // namespace

const QList<Rule>& rules()
{
    const auto rule = [](const char* name, const char* summary, auto check) {
        return Rule{QLatin1String(name), QLatin1String(summary), check};
    };
    static const QList<Rule> table = {
        rule("unknown-class", "A class that the form loader cannot create", checkClasses),
        rule("unloadable-form", "A form that the library refuses to load", checkLoading),
        rule("window-root", "A form whose top widget is a window", checkRoots),
        rule("nameless-button", "A button box whose buttons no delegate can tell apart", checkButtonBoxes),
        rule("duplicate-name", "Two widgets of a form share an object name", checkDuplicateNames),
        rule("close-twice", "Two widgets of a form are named \"close\"", checkCloseTwice),
        rule("unaddressable-name", "An object name that delegates or property keys cannot spell",
             checkAddressableNames),
        rule("unfilled-placeholder", "A placeholder that no given dictionary fills", checkPlaceholders),
        rule("misplaced-placeholder", "A placeholder in a text that is never filled", checkPlaceholderPlaces),
        rule("unknown-property-key", "A property value that reaches no widget", checkPropertyKeys),
        rule("rich-client-text", "A label that would show a client's value as rich text", checkRichText),
        rule("untranslated-text", "A text without a translation", checkTranslations),
        rule("format-syntax", "A syntax error in a format", checkFormatSyntax),
        rule("format-empty-cell", "A cell of a format that accepts no characters", checkFormatCells),
        rule("format-lost-text", "Text at the end of a format that is dropped", checkFormatLiterals),
        rule("format-pattern", "An invalid regular expression in a format", checkFormatPatterns),
        rule("unused-style-sheet", "A style sheet file named after no widget", checkStyleSheetFiles),
        rule("unused-selector", "A selector that matches no widget", checkSelectors),
        rule("unused-delegate-method", "A delegate method that no widget calls", checkDelegateMethods),
        rule("delegate-parameter", "A delegate parameter that names no widget or property",
             checkDelegateParameters),
        rule("dead-mnemonic", "A label whose mnemonic leads nowhere", checkMnemonics),
        rule("mouse-only-label", "A link or flat button that the keyboard does not reach",
             checkLabelsForTheMouse),
        rule("mouse-only-toggle", "A toggle button without a control for the keyboard beside it",
             checkTogglesForTheMouse),
        rule("unnamed-control", "A control that a screen reader cannot name", checkControlNames),
        rule("flat-command-link", "A command link that a layout makes too flat for its texts",
             checkCommandLinkHeights),
        rule("format-direction", "A format edit that some languages reverse", checkFormatDirections),
        rule("cut-text", "A fixed height that cuts large text", checkTextHeights),
    };
    return table;
}

Findings checkProject(const Project& project, const QStringList& disabled)
{
    Findings findings;
    for (const Rule& rule : rules()) {
        if (!disabled.contains(rule.name))
            rule.check(project, rule.name, &findings);
    }
    findings.removeIf([&](const Finding& finding) { return isIntended(project, finding); });
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.file, a.line) < std::tie(b.file, b.line);
    });
    return findings;
}
