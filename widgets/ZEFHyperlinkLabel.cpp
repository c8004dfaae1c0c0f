#include <ZEFHyperlinkLabel.h>

#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

ZEFHyperlinkLabel::ZEFHyperlinkLabel(QWidget* parent)
    : QLabel(parent)
{
    setOpenExternalLinks(false);
    setTextInteractionFlags(textInteractionFlags() | Qt::LinksAccessibleByKeyboard
                            | Qt::LinksAccessibleByMouse);
    connect(this, SIGNAL(linkActivated(QString)), this, SLOT(onLinkClick(QString)));
    // after the interaction flags, which give a label the focus
    setFocusPolicy(Qt::NoFocus);
}

ZEFHyperlinkLabel::~ZEFHyperlinkLabel() = default;

void ZEFHyperlinkLabel::onLinkClick(const QString& link)
{
    // the link may belong to what a receiver deletes together with the label
    const QString target = link;
    const QPointer<ZEFHyperlinkLabel> self(this);
    bool connected = false;
    Q_EMIT checkInternetConnection(connected);
    if (!self)
        return;
    if (connected && QDesktopServices::openUrl(QUrl(target, QUrl::TolerantMode))) {
        if (self)
            Q_EMIT openUrlSuccess();
        return;
    }
    if (self)
        Q_EMIT internetNotConnected(target);
}
