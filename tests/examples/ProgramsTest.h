#pragma once

#include <ZEFTest.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <memory>

//! The base of tests of the two programs as a user runs them: real processes, real sockets.
class ProgramsTest : public ZEFTest {
    Q_OBJECT

protected:
    static constexpr int patience = 120'000; // milliseconds; for a loaded machine with sanitizers

    void prepare() override;
    void tidyUp() override;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    QString write(const char* name, const QByteArray& content) const;
    std::unique_ptr<QProcess> run(const char* program, const QStringList& arguments,
                                  const QString& logFile = QString()) const;
    QByteArray log() const;
    void startService(const QByteArray& script = QByteArray());
    std::unique_ptr<QProcess> startClient(const QStringList& arguments = {}) const;
    //! What the client prints for \a input, and its exit code in \a exitCode unless that is null.
    QByteArray ask(const QByteArray& input, int* exitCode = nullptr) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_service;
};
