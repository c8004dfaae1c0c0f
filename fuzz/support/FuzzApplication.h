#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QApplication>

//! The application that a target runs in: without a screen unless told otherwise, and silent however much is
//! logged.
class FuzzApplication {
public:
    FuzzApplication();
    ~FuzzApplication();

    //! How many lines are kept for the functions below; those that follow are dropped.
    static constexpr qsizetype MaximumLines = 100;

    //! Qt's debug output since the last call.
    static QStringList takeDebugLines();
    //! Qt's warnings since the last call.
    static QStringList takeWarnings();
    //! Ends the program as a finding when Qt has warned since the last call of takeWarnings().
    static void requireSilence();

private:
    Q_DISABLE_COPY_MOVE(FuzzApplication)

    int m_argc = 1;
    char m_name[5] = "fuzz";
    char* m_argv[2] = {m_name, nullptr};
    QApplication m_application;
};
