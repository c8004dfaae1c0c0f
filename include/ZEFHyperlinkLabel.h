#pragma once

#include <ZEFUIExport.h>

#include <QtWidgets/QLabel>

/*!
 * A label with links that are opened on the desktop when the machine is online.
 *
 * A link may be text of a client, and a link of any scheme is opened, a local file or program included.
 * The label asks before it opens: the receiver of checkInternetConnection() decides, and leaves the flag
 * false when it does not trust what the form shows. It does not get the link; a subclass that overrides
 * onLinkClick() does, and can refuse schemes.
 *
 * The label never takes the keyboard focus by itself.
 *
 * \image html zefhyperlinklabel.png
 */
class ZEFUI_EXPORT ZEFHyperlinkLabel : public QLabel {
    Q_OBJECT

public:
    explicit ZEFHyperlinkLabel(QWidget* parent = nullptr);
    ~ZEFHyperlinkLabel() override;

Q_SIGNALS:
    /*!
     * A link was activated: set \a bIsConnected to let it open; it is false at first. Connect directly.
     * The receiver may delete the label; then the link is not opened.
     */
    void checkInternetConnection(bool& bIsConnected);
    //! The link was not opened: nobody set the flag, or the desktop could not open it.
    void internetNotConnected(const QString& link);
    //! The desktop has taken the link.
    void openUrlSuccess();

public Q_SLOTS:
    //! Asks, opens and reports; called for each activated link.
    virtual void onLinkClick(const QString& link);

private:
    Q_DISABLE_COPY_MOVE(ZEFHyperlinkLabel)
};
