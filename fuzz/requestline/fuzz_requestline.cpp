// The form service's side of a connection: any bytes in any chunks, cut into lines, read as requests, served
// and answered.
//
// The first byte of an input chooses the chunks; the rest is what the client sends. A null byte in it stands
// for a run of letters, so that small inputs reach the limit of a line.

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>

#include <protocol/FormAnswer.h>
#include <protocol/FormRequest.h>
#include <protocol/LineSplitter.h>
#include <service/FormSession.h>
#include <service/RequestContext.h>

#include <QtCore/QEvent>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>

#include <memory>
#include <optional>

namespace {

constexpr qsizetype runLength = LineSplitter::MaximumLineLength / 2;
constexpr int mostRuns = 5;
constexpr qsizetype mostServedLines = 4;

using Lines = QList<std::optional<QByteArray>>;

QByteArray expanded(QByteArrayView bytes)
{
    static const QByteArray letters(runLength, 'a');
    QByteArray stream;
    int runs = 0;
    for (const char byte : bytes) {
        if (byte == '\0' && runs++ < mostRuns)
            stream += letters;
        else
            stream += byte;
    }
    return stream;
}

Lines fedInChunks(const QByteArray& stream, unsigned int choice)
{
    LineSplitter splitter;
    Lines lines;
    for (qsizetype start = 0; start < stream.size();) {
        choice = choice * 1103515245 + 12345;
        // Mostly short ones, and some that hold whole runs.
        const qsizetype longest = choice & 0x100 ? stream.size() : 8 + stream.size() / 100;
        const qsizetype length =
            1 + static_cast<qsizetype>((choice >> 16) % static_cast<unsigned int>(longest));
        lines += splitter.feed(stream.mid(start, length));
        start += length;
    }
    return lines;
}

void checkLines(const QByteArray& stream, const Lines& lines)
{
    const QByteArrayList pieces = stream.split('\n');
    FUZZ_REQUIRE(lines.size() == pieces.size() - 1);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray& piece = pieces.at(i);
        FUZZ_REQUIRE(lines.at(i).has_value() == (piece.size() <= LineSplitter::MaximumLineLength));
        if (lines.at(i))
            FUZZ_REQUIRE(*lines.at(i) == (piece.endsWith('\r') ? piece.chopped(1) : piece));
    }
}

bool isOneLine(const QByteArray& answer)
{
    return answer.endsWith('\n') && answer.count('\n') == 1;
}

void checkError(const QString& error)
{
    // "In one line" is for people: whatever the client's own words hold, the answer is one line.
    const QByteArray answer = FormAnswer::error(error);
    FUZZ_REQUIRE(isOneLine(answer));
    FUZZ_REQUIRE(FormAnswer::isError(answer));
    const QJsonObject object = QJsonDocument::fromJson(answer).object();
    FUZZ_REQUIRE(object.size() == 1 && object.value(QStringLiteral("error")).isString());
}

void checkRequest(const FormRequest& request)
{
    FUZZ_REQUIRE(!request.form.isEmpty());
    FUZZ_REQUIRE(!request.form.contains(u'/') && !request.form.contains(u'\\'));
    FUZZ_REQUIRE(request.locale.size() <= 64);
    for (const QString& name : request.returned)
        FUZZ_REQUIRE(name.contains(u'.'));
    for (const QString& key : request.values.keys())
        FUZZ_REQUIRE(key.contains(u'_'));
}

//! Opens the form, lets it live for a moment and closes it: the client gets exactly one answer.
void serve(const FormRequest& request)
{
    QByteArrayList answers;
    auto context =
        std::make_unique<RequestContext>([&](const QByteArray& answer) { answers.append(answer); });
    const QPointer<FormSession> session(FormSession::open(request, std::move(context), 0));
    FUZZ_REQUIRE(session.isNull() == (answers.size() == 1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    if (session)
        session->close();
    FUZZ_REQUIRE(session.isNull());
    FUZZ_REQUIRE(answers.size() == 1);
    FUZZ_REQUIRE(isOneLine(answers.constFirst()));
    FUZZ_REQUIRE(QJsonDocument::fromJson(answers.constFirst()).isObject());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray stream = expanded(QByteArrayView(data + 1, static_cast<qsizetype>(size) - 1));
    const Lines lines = fedInChunks(stream, data[0]);
    checkLines(stream, lines);

    qsizetype served = 0;
    for (const std::optional<QByteArray>& line : lines) {
        if (!line)
            continue;
        QString error;
        const FormRequest request = FormRequest::fromJson(*line, &error);
        if (!error.isEmpty()) {
            checkError(error);
            continue;
        }
        checkRequest(request);
        if (++served <= mostServedLines)
            serve(request);
    }
    FuzzApplication::takeDebugLines();
    return 0;
}
