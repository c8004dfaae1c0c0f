#pragma once

#include <protocol/FormRequest.h>

#include <ZEFDictionaryList.h>

#include <QtCore/QObject>

#include <memory>

class RequestContext;
class ZEFPipeFacilityInvocationContext;
class ZEFUIDialog;

/*!
 * One request while its form is open: fills the form, shows it and answers when it closes. The form's
 * host owns the session.
 */
class FormSession : public QObject {
    Q_OBJECT

public:
    /*!
     * Opens the form that \a request asks for, on behalf of the process \a clientPID. Without such a
     * form \a context answers an error at once, and the result is null.
     */
    static FormSession* open(const FormRequest& request, std::unique_ptr<RequestContext> context,
                             qint64 clientPID);

    //! Closes the form and deletes it, and with it this session.
    void close();

private:
    FormSession(ZEFUIDialog* host, const FormRequest& request, qint64 clientPID);
    void fill();
    void setValues();
    void respond(ZEFPipeFacilityInvocationContext* context, int selection) const;

    ZEFUIDialog* m_host;
    FormRequest m_request;
    ZEFDictionary m_ownTexts;
    ZEFDictionaryList m_dictionaries;
};
