#pragma once

#include <QtWidgets/QProxyStyle>

/*!
 * The style that the style-sheet controls put on themselves, over the application's own: it fixes how
 * their text is aligned, wrapped and antialiased. The flags are bits of Qt::AlignmentFlag and Qt::TextFlag;
 * 0 leaves the caller's flags alone.
 */
class ZEFStdSSControlStyle : public QProxyStyle {
    Q_OBJECT

public:
    //! \a flagsToRemove are taken from every text request before \a flagsToAdd are added.
    ZEFStdSSControlStyle(bool drawFocusRect, int flagsToAdd, int flagsToRemove);
    ~ZEFStdSSControlStyle() override;

    /*!
     * For the destructor of a control, before it deletes its style. Under a style sheet Qt keeps bare
     * pointers to the style, in the control and in widgets inside it, and uses them while they die: the
     * widgets inside are deleted, and the style is taken off.
     */
    static void leave(QWidget* control);

    QRect itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags, bool enabled,
                       const QString& text) const override;
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole textRole = QPalette::NoRole) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;

private:
    Q_DISABLE_COPY_MOVE(ZEFStdSSControlStyle)
    int controlFlags(int flags) const;

    bool m_drawFocusRect = true;
    int m_flagsToAdd = 0;
    int m_flagsToRemove = 0;
};
