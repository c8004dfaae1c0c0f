#pragma once

#include <ZEFUIExport.h>

#include <QtGui/QFont>
#include <QtWidgets/QLabel>

/*!
 * A label that cuts its text with an ellipsis at the right when it does not fit, and then offers the whole
 * text as its tool tip.
 *
 * The text is captured when the label is painted for the first time with a text, and never again: fill
 * the form before it is shown, placeholders included; a later setText() is undone by the next painting
 * that has to cut or restore the text. While the text is cut, text() and toolTip() are the label's own.
 *
 * Assistive technology sees the full text, and hears nothing when it is cut or restored.
 *
 * The text is cut as it stands, markup included: set the format to plain text when it comes from a client.
 * The tool tip always shows it as plain text.
 *
 * \image html zefellipsislabel.png
 */
class ZEFUI_EXPORT ZEFEllipsisLabel : public QLabel {
    Q_OBJECT

public:
    explicit ZEFEllipsisLabel(QWidget* parent = nullptr);
    ~ZEFEllipsisLabel() override;

protected:
    //! Shows the tool tip of a cut text as plain text, which QWidget would take for markup if it looks so.
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    Q_DISABLE_COPY_MOVE(ZEFEllipsisLabel)
    friend class AccessibleEllipsisLabel;
    QString shortened(int width);
    void showWhatFits();

    QString m_fullText;
    bool m_elided = false;
    // the last cut, which most paintings repeat
    QString m_shortened;
    int m_shortenedWidth = -1;
    int m_shortenedFlags = 0;
    QFont m_shortenedFont;
};
