#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QKeyEvent;
class QPushButton;
class QWidget;

/*!
 * The top widget of a form in its host. Designer makes it a window of its own in forms for dialogs and main
 * windows; here it is a plain child. What the form does to end it, closing it or accepting, rejecting or
 * finishing a dialog, closes the host. Hiding it only hides it.
 */
class FormRoot : public QObject {
    Q_OBJECT

public:
    //! Takes charge of \a root, a child of its host, in the place of another one.
    void adopt(QWidget* root);
    //! The host no longer ends with the root.
    void release();

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void closeHost();

private:
    bool takeKey(QKeyEvent* key);
    void findMainDefault();
    void restoreMainDefault();

    QPointer<QWidget> m_root;
    //! Of a dialog: the button that Return presses where no other button has the focus.
    QPointer<QPushButton> m_mainDefault;
};
