#pragma once

#include <ZEFPipeFacilityInvocationContext.h>

#include <QtCore/QByteArray>

#include <functional>

/*!
 * One pending request of a client. The form that serves it owns it; it sees to it that the client
 * gets exactly one answer, whatever becomes of the form.
 */
class RequestContext : public ZEFPipeFacilityInvocationContext {
public:
    using Send = std::function<void(const QByteArray& answer)>;

    explicit RequestContext(Send send);
    //! Answers that the form was closed without an answer, unless answer() was called before.
    ~RequestContext() override;

    //! Sends \a answer to the client; only the first one counts.
    void answer(const QByteArray& answer);

private:
    Q_DISABLE_COPY_MOVE(RequestContext)
    Send m_send;
};
