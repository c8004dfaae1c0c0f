#include "ToolRun.h"

#include <QtCore/QProcess>

ToolRun runTool(const QString& program, const QStringList& arguments, const QString& folder)
{
    constexpr int longestRun = 120000;
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    ToolRun run;
    if (process.waitForFinished(longestRun) && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    // Windows ends lines of text with both characters.
    run.output = process.readAllStandardOutput().replace("\r\n", "\n");
    run.errors = process.readAllStandardError().replace("\r\n", "\n");
    return run;
}
