#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

class QCommandLineParser;

//! What the tools' command lines have in common.
struct ToolDescription {
    QString name;
    void (*addOptions)(QCommandLineParser* parser);
};

//! The exit status of a tool whose arguments are wrong or whose files cannot be read.
constexpr int cannotRunStatus = 2;

/*!
 * Reads the arguments; --help and --version, which the tool must have among its options, are answered
 * here. With a result, the program ends with that status.
 */
std::optional<int> readCommandLine(const ToolDescription& tool, int argc, char** argv,
                                   QCommandLineParser* parser);

//! One line on standard error: "name: text".
void writeError(const QString& name, const QString& text);

//! Writes to standard output, all of it; otherwise one line on standard error says why not.
bool writeOutput(const QString& name, const QByteArray& text);
