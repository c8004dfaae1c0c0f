#include "LifetimeRun.h"

#include "LifetimeWorld.h"
#include "ListShrinker.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>
#include <QtWidgets/QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestOutput = 8000;

QString endOf(const QByteArray& output)
{
    return QString::fromUtf8(output.size() > longestOutput ? output.last(longestOutput) : output);
}

//! What is deleted is overwritten, so that a later use of it shows, inside Qt too.
QProcessEnvironment fillingFreedMemory()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"MALLOC_PERTURB_"_s, u"165"_s);
    const QString sanitizer = environment.value(u"ASAN_OPTIONS"_s);
    environment.insert(u"ASAN_OPTIONS"_s, sanitizer + u":max_free_fill_size=100000:free_fill_byte=165");
    return environment;
}

//! Performs the lines one after the other, each in an event of its own, as things happen in a service.
class Player {
public:
    explicit Player(const QStringList& lines)
        : m_world([this] { return performNext(); })
        , m_lines(lines)
    {
    }

    void play()
    {
        while (m_next < m_lines.size()) {
            QEventLoop loop;
            QMetaObject::invokeMethod(
                &loop,
                [&] {
                    performNext();
                    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
                },
                Qt::QueuedConnection);
            loop.exec();
        }
        m_world.settle();
    }

    QStringList failures() const { return m_unreadable + m_world.failures(); }

private:
    bool performNext()
    {
        if (m_next == m_lines.size())
            return false;
        const std::optional<Operation> operation = Operation::fromLine(m_lines.at(m_next));
        ++m_next;
        std::fprintf(stdout, "%lld\n", static_cast<long long>(m_next));
        std::fflush(stdout);
        if (operation)
            m_world.perform(*operation);
        else
            m_unreadable.append(u"not an operation: " + m_lines.at(m_next - 1));
        return true;
    }

    LifetimeWorld m_world;
    QStringList m_lines;
    QStringList m_unreadable;
    qsizetype m_next = 0;
};

} // namespace

LifetimeRun::Outcome LifetimeRun::inProcess(const QStringList& lines, int patience)
{
    QProcess process;
    process.setProcessEnvironment(fillingFreedMemory());
    process.start(QCoreApplication::applicationFilePath(), {u"--replay"_s, u"-"_s});
    process.write(lines.join(u'\n').toUtf8());
    process.closeWriteChannel();
    // As long as it goes on it does not hang, however slowly.
    while (process.state() != QProcess::NotRunning && process.waitForReadyRead(patience)) { }
    const bool ended = process.state() == QProcess::NotRunning || process.waitForFinished(patience);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    const QList<QByteArray> numbers = process.readAllStandardOutput().trimmed().split('\n');
    Outcome outcome;
    outcome.begun = numbers.constLast().toLongLong();
    if (!ended)
        outcome.failure = u"it hangs"_s;
    else if (process.exitStatus() == QProcess::CrashExit)
        outcome.failure = u"it crashed with signal %1"_s.arg(process.exitCode());
    else if (process.exitCode() != 0)
        outcome.failure = u"it ended with %1"_s.arg(process.exitCode());
    if (!outcome.failure.isEmpty())
        outcome.failure += u":\n" + endOf(process.readAllStandardError());
    return outcome;
}

int LifetimeRun::here(const QStringList& lines)
{
    QLoggingCategory::setFilterRules(
        u"*.debug=false"_s); // each named slot that a form does not have, for one
    Player player(lines);
    player.play();
    const QStringList failures = player.failures();
    for (const QString& failure : failures)
        std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
    return failures.isEmpty() ? 0 : 1;
}

QStringList LifetimeRun::linesOf(const QString& path)
{
    QFile file(path);
    const bool opened = path == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    QStringList lines;
    if (!opened)
        return {u"cannot read "_s + path};
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        if (!line.startsWith(u'#'))
            lines.append(line.trimmed());
    }
    return lines;
}

QString LifetimeRun::shrunkReport(const QStringList& lines, const Outcome& outcome, int patience,
                                  QDeadlineTimer deadline, const QString& path, QStringList* shrunk)
{
    const ListShrinker shrinker(
        [patience](const QStringList& fewer) { return !inProcess(fewer, patience).failure.isEmpty(); });
    // What was not begun has no part in it, unless it only shows at the end.
    QStringList fewer = lines.first(qMin(outcome.begun, lines.size()));
    if (fewer.size() < lines.size() && inProcess(fewer, patience).failure.isEmpty())
        fewer = lines;
    fewer = shrinker.shrink(fewer, deadline);
    if (shrunk)
        *shrunk = fewer;
    QFile file(path);
    const bool saved = file.open(QIODevice::WriteOnly) && file.write(fewer.join(u'\n').toUtf8() + '\n') > 0;
    return outcome.failure + u"\nthese operations fail"
        + (saved ? u", replay them with "_s + QCoreApplication::applicationFilePath() + u" --replay " + path
                 : QString())
        + u":\n" + fewer.join(u'\n');
}
