#pragma once

#include "Finding.h"

#include <QtCore/QByteArray>

//! One line per finding: "file:line: rule: message".
QByteArray textReport(const Findings& findings);
//! {"findings": [{"file", "line", "rule", "message"}…]}
QByteArray jsonReport(const Findings& findings);
//! SARIF 2.1.0, for code review services.
QByteArray sarifReport(const Findings& findings);
