#include <ZEFTest.h>
#include <service/RequestContext.h>

#include <memory>

class RequestContextTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void sendsOnlyTheFirstAnswer();
    void answersWhenItGoesUnanswered();
    void mayGoWhileItAnswers();
};

void RequestContextTest::sendsOnlyTheFirstAnswer()
{
    QByteArrayList sent;
    {
        RequestContext context([&](const QByteArray& answer) { sent.append(answer); });
        context.answer("one");
        context.answer("two");
        QCOMPARE(sent, QByteArrayList{"one"});
    }
    QCOMPARE(sent, QByteArrayList{"one"});
}

void RequestContextTest::answersWhenItGoesUnanswered()
{
    QByteArrayList sent;
    {
        const RequestContext context([&](const QByteArray& answer) { sent.append(answer); });
    }
    QCOMPARE(sent, QByteArrayList{"{\"error\":\"the form was closed without an answer\"}\n"});
}

void RequestContextTest::mayGoWhileItAnswers()
{
    QByteArrayList sent;
    std::unique_ptr<RequestContext> context;
    context = std::make_unique<RequestContext>([&](const QByteArray& answer) {
        context.reset();
        sent.append(answer);
    });
    context->answer("one");
    QCOMPARE(sent, QByteArrayList{"one"});
}

ZEF_TEST_MAIN(RequestContextTest)
#include "test_requestcontext.moc"
