#pragma once

#include "Delegate.h"
#include "Finding.h"
#include "Form.h"
#include "StyleSheet.h"
#include "Translation.h"
#include "tools/common/Values.h"

//! Everything that a run was given.
struct Project {
    QList<Form> forms;
    QList<StyleSheet> styleSheets;
    QList<Translation> translations;
    QList<Delegate> delegates;
    QList<Values> values;
};

struct Rule {
    QLatin1String name;
    QLatin1String summary;
    void (*check)(const Project& project, QLatin1String rule, Findings* findings);
};

//! All rules, in the order of the manual.
const QList<Rule>& rules();

//! The findings of all rules but \a disabled, suppressed ones left out, by file and line.
Findings checkProject(const Project& project, const QStringList& disabled);
