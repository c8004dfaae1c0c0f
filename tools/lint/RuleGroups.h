#pragma once

#include "Rules.h"

#include <QtCore/QSet>

// One function per rule; each writes its findings under the name of the rule.

// rulesClasses.cpp
void checkClasses(const Project& project, QLatin1String rule, Findings* findings);
void checkLoading(const Project& project, QLatin1String rule, Findings* findings);

// rulesNames.cpp
void checkDuplicateNames(const Project& project, QLatin1String rule, Findings* findings);
void checkCloseTwice(const Project& project, QLatin1String rule, Findings* findings);
void checkAddressableNames(const Project& project, QLatin1String rule, Findings* findings);

// rulesRoots.cpp
void checkRoots(const Project& project, QLatin1String rule, Findings* findings);
void checkButtonBoxes(const Project& project, QLatin1String rule, Findings* findings);

// rulesTexts.cpp
void checkPlaceholders(const Project& project, QLatin1String rule, Findings* findings);
void checkPlaceholderPlaces(const Project& project, QLatin1String rule, Findings* findings);
void checkPropertyKeys(const Project& project, QLatin1String rule, Findings* findings);
void checkRichText(const Project& project, QLatin1String rule, Findings* findings);
void checkTranslations(const Project& project, QLatin1String rule, Findings* findings);
//! The widgets and properties that values are written to, as "widget_property".
QSet<QString> filledProperties(const Project& project);

// rulesFormats.cpp
void checkFormatSyntax(const Project& project, QLatin1String rule, Findings* findings);
void checkFormatCells(const Project& project, QLatin1String rule, Findings* findings);
void checkFormatLiterals(const Project& project, QLatin1String rule, Findings* findings);
void checkFormatPatterns(const Project& project, QLatin1String rule, Findings* findings);

// rulesStyleSheets.cpp
void checkStyleSheetFiles(const Project& project, QLatin1String rule, Findings* findings);
void checkSelectors(const Project& project, QLatin1String rule, Findings* findings);

// rulesDelegates.cpp
void checkDelegateMethods(const Project& project, QLatin1String rule, Findings* findings);
void checkDelegateParameters(const Project& project, QLatin1String rule, Findings* findings);

// rulesKeyboard.cpp
void checkMnemonics(const Project& project, QLatin1String rule, Findings* findings);
void checkLabelsForTheMouse(const Project& project, QLatin1String rule, Findings* findings);
void checkTogglesForTheMouse(const Project& project, QLatin1String rule, Findings* findings);
void checkControlNames(const Project& project, QLatin1String rule, Findings* findings);

// rulesLooks.cpp
void checkCommandLinkHeights(const Project& project, QLatin1String rule, Findings* findings);
void checkFormatDirections(const Project& project, QLatin1String rule, Findings* findings);
void checkTextHeights(const Project& project, QLatin1String rule, Findings* findings);
