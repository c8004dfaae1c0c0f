#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

//! One run of a program to its end.
struct ToolRun {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

//! Runs \a program in \a folder. A program that crashes or does not end has the status -1.
ToolRun runTool(const QString& program, const QStringList& arguments, const QString& folder = QString());
