#include "CompiledTranslation.h"

#include "tools/common/InputFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLibraryInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestRun = 30000;

//! Qt's lrelease, that of the Qt in use first.
QString findLrelease()
{
    const QString own =
        QStandardPaths::findExecutable(u"lrelease"_s, {QLibraryInfo::path(QLibraryInfo::BinariesPath)});
    return own.isEmpty() ? QStandardPaths::findExecutable(u"lrelease"_s) : own;
}

} // namespace

std::optional<QByteArray> compiledTranslation(const QString& path, QString* error)
{
    const QFileInfo source(path + u".ts");
    const QFileInfo compiled(path + u".qm");
    if (!source.exists() || (compiled.exists() && compiled.lastModified() >= source.lastModified()))
        return readInputFile(compiled.filePath(), error);

    const QString program = findLrelease();
    if (program.isEmpty()) {
        *error = source.filePath() + u": Qt's lrelease, which compiles it, is not installed";
        return std::nullopt;
    }
    const QTemporaryDir folder;
    const QString output = folder.filePath(u"translation.qm"_s);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {u"-silent"_s, source.filePath(), u"-qm"_s, output});
    if (process.waitForFinished(longestRun) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0)
        return readInputFile(output, error);
    *error = source.filePath() + u": lrelease cannot compile it: "
        + QString::fromLocal8Bit(process.readAll()).simplified();
    return std::nullopt;
}
