#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtGui/QValidator>

class ZEFDictionaryList;
class ZEFPipeFacilityInvocationContext;
class ZEFUIDialog;

//! The close selections of the forms; a form that was closed without a choice answers 0.
enum Selection { Confirmed = 1, Cancelled = 2, Postponed = 3 };

/*!
 * The delegate of the form \a form: its methods <widget>_clicked() receive the form's clicks. Owned by
 * \a host; null for a form that needs none. \a dictionaries fill the forms that it opens and must
 * outlive it.
 */
QObject* makeFormDelegate(const QString& form, ZEFUIDialog* host, const ZEFDictionaryList& dictionaries);

//! Gives \a host the size that its form needs now, never more than the screen has room for.
void fitToForm(ZEFUIDialog* host);

//! Sign-in: closes only when a user and a password were entered.
class SignInDelegate : public QObject {
    Q_OBJECT

public:
    explicit SignInDelegate(ZEFUIDialog* host);

    Q_INVOKABLE void okButton_clicked(ZEFPipeFacilityInvocationContext* context, QVariant user_text,
                                      QVariant password_text);
    Q_INVOKABLE void cancelButton_clicked(ZEFPipeFacilityInvocationContext* context);

public Q_SLOTS:
    void on_user_textEdited(const QString& text);
    void on_password_textEdited(const QString& text);

private:
    void showError(bool visible);

    ZEFUIDialog* m_host;
};

/*!
 * Product activation: takes a key of the list under "product_keys" in the dictionaries, or any complete
 * key when there is no list, and asks back, in a form of its own, before the user goes on without one.
 */
class ActivationDelegate : public QObject {
    Q_OBJECT

public:
    ActivationDelegate(ZEFUIDialog* host, const ZEFDictionaryList& dictionaries);

    Q_INVOKABLE void okButton_clicked(ZEFPipeFacilityInvocationContext* context);
    Q_INVOKABLE void laterButton_clicked(ZEFPipeFacilityInvocationContext* context);
    Q_INVOKABLE void cancelButton_clicked(ZEFPipeFacilityInvocationContext* context);

public Q_SLOTS:
    void on_productKey_textChanged(QValidator::State validity);

private:
    void showKeyMessage(const QString& message);

    ZEFUIDialog* m_host;
    const ZEFDictionaryList& m_dictionaries;
};

//! Confirmation: yes or no.
class ConfirmationDelegate : public QObject {
    Q_OBJECT

public:
    explicit ConfirmationDelegate(ZEFUIDialog* host);

    Q_INVOKABLE void okButton_clicked(ZEFPipeFacilityInvocationContext* context);
    Q_INVOKABLE void cancelButton_clicked(ZEFPipeFacilityInvocationContext* context);

private:
    ZEFUIDialog* m_host;
};
