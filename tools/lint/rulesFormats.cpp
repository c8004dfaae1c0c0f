#include "RuleGroups.h"
void checkFormatSyntax(const Project&, QLatin1String, Findings*) { }
void checkFormatCells(const Project&, QLatin1String, Findings*) { }
void checkFormatLiterals(const Project&, QLatin1String, Findings*) { }
void checkFormatPatterns(const Project&, QLatin1String, Findings*) { }
