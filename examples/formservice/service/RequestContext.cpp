#include "RequestContext.h"

#include <protocol/FormAnswer.h>

#include <utility>

RequestContext::RequestContext(Send send)
    : m_send(std::move(send))
{
}

RequestContext::~RequestContext()
{
    answer(FormAnswer::error(QStringLiteral("the form was closed without an answer")));
}

void RequestContext::answer(const QByteArray& answer)
{
    if (const Send send = std::exchange(m_send, {}))
        send(answer);
}
