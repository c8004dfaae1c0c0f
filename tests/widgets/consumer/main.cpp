#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>

#include <QtGui/QAccessible>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {

int failures = 0;

void check(bool condition, int line)
{
    if (condition)
        return;
    std::fprintf(stderr, "main.cpp:%d does not hold\n", line);
    ++failures;
}

#define CHECK(condition) check(condition, __LINE__)

class OwnPaintedButton : public ZEFLightStdButton {
    Q_OBJECT

protected:
    void setProperties() override
    {
        ZEFLightStdButton::setProperties();
        m_textColor = Qt::red;
    }
    void drawButton(QPainter* painter, QRectF rect) override { ZEFLightStdButton::drawButton(painter, rect); }
    void paintEvent(QPaintEvent* e) override { ZEFLightStdButton::paintEvent(e); }
    void enterEvent(QEnterEvent* e) override { ZEFLightStdButton::enterEvent(e); }
    void leaveEvent(QEvent* e) override { ZEFLightStdButton::leaveEvent(e); }
    void focusInEvent(QFocusEvent* e) override { ZEFLightStdButton::focusInEvent(e); }
    void focusOutEvent(QFocusEvent* e) override { ZEFLightStdButton::focusOutEvent(e); }
    void keyPressEvent(QKeyEvent* e) override { ZEFLightStdButton::keyPressEvent(e); }
    void keyReleaseEvent(QKeyEvent* e) override { ZEFLightStdButton::keyReleaseEvent(e); }
    void mousePressEvent(QMouseEvent* e) override { ZEFLightStdButton::mousePressEvent(e); }
    void mouseReleaseEvent(QMouseEvent* e) override { ZEFLightStdButton::mouseReleaseEvent(e); }
};

class PlainPaintedButton : public ZEFLightStdButton { };

class OwnStyledButton : public ZEFLightStdSSButton {
    Q_OBJECT

public:
    QSize sizeHint() const override { return ZEFLightStdSSButton::sizeHint() + QSize(1, 1); }
};

class PlainStyledButton : public ZEFLightStdSSButton { };

class OwnCheckbox : public ZEFLightStdSSCheckbox {
    Q_OBJECT

public:
    QSize sizeHint() const override { return ZEFLightStdSSCheckbox::sizeHint() + QSize(1, 1); }
};

class PlainCheckbox : public ZEFLightStdSSCheckbox { };

class OwnLink : public ZEFCommandLinkButton {
    Q_OBJECT

protected:
    void paintEvent(QPaintEvent* e) override { ZEFCommandLinkButton::paintEvent(e); }
    void keyPressEvent(QKeyEvent* e) override { ZEFCommandLinkButton::keyPressEvent(e); }
};

class OwnHyperlink : public ZEFHyperlinkLabel {
    Q_OBJECT

public:
    void onLinkClick(const QString& link) override { ZEFHyperlinkLabel::onLinkClick(link); }
};

class OwnCalendar : public ZEFCalendarWidget {
    Q_OBJECT

protected:
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override
    {
        ZEFCalendarWidget::paintCell(painter, rect, date);
    }
};

class OwnEllipsisLabel : public ZEFEllipsisLabel {
    Q_OBJECT

protected:
    void paintEvent(QPaintEvent* e) override { ZEFEllipsisLabel::paintEvent(e); }
};

class OwnToggle : public ZEFToggleButton {
    Q_OBJECT

protected:
    void mouseReleaseEvent(QMouseEvent* e) override { ZEFToggleButton::mouseReleaseEvent(e); }
};

class OwnFlatButton : public ZEFFlatButton {
    Q_OBJECT
};

template <class Widget> void use()
{
    Widget onStack;
    onStack.resize(onStack.sizeHint().expandedTo(onStack.minimumSizeHint()).expandedTo(QSize(20, 20)));
    CHECK(!onStack.grab().isNull());
    CHECK(onStack.metaObject() == &Widget::staticMetaObject);

    QWidget parent;
    QWidget* onHeap = new Widget(onStack.isWindow() ? &parent : nullptr);
    CHECK(qobject_cast<Widget*>(onHeap) == onHeap);
    CHECK(dynamic_cast<Widget*>(onHeap) == onHeap);
    CHECK(onHeap->inherits(Widget::staticMetaObject.className()));
    delete onHeap;
}

template <class Widget> void useOwn()
{
    Widget onStack;
    onStack.resize(onStack.sizeHint().expandedTo(onStack.minimumSizeHint()).expandedTo(QSize(20, 20)));
    CHECK(!onStack.grab().isNull());
    QWidget* onHeap = new Widget;
    CHECK(dynamic_cast<Widget*>(onHeap) == onHeap);
    delete onHeap;
}

void useSignals()
{
    ZEFCommandLinkButton link;
    ZEFToggleButton toggle;
    ZEFFlatButton flat;
    ZEFHyperlinkLabel label;
    int signalled = 0;
    const auto count = [&] { ++signalled; };
    QObject::connect(&link, &ZEFCommandLinkButton::clicked, count);
    QObject::connect(&toggle, &ZEFToggleButton::on, count);
    QObject::connect(&toggle, &ZEFToggleButton::off, count);
    QObject::connect(&flat, &ZEFFlatButton::mouseClicked, count);
    QObject::connect(&flat, &ZEFFlatButton::enterKeyClicked, count);
    QObject::connect(&label, &ZEFHyperlinkLabel::checkInternetConnection, [&](bool& connected) {
        connected = false;
        ++signalled;
    });
    QObject::connect(&label, &ZEFHyperlinkLabel::internetNotConnected, count);
    QObject::connect(&label, &ZEFHyperlinkLabel::openUrlSuccess, count);
    toggle.setProperty("isOn", true);
    label.onLinkClick(QStringLiteral("nowhere:"));
    CHECK(signalled == 3);
}

void useSizeHints()
{
    ZEFLightStdButton painted;
    CHECK(painted.minimumSizeHint() == QSize(78, 28));
    CHECK(painted.sizeHint().height() == 28);
    ZEFLightStdSSButton styled;
    CHECK(styled.minimumSizeHint() == QSize(78, 28));
    CHECK(styled.sizeHint() == styled.QPushButton::sizeHint());
    ZEFLightStdSSCheckbox box;
    CHECK(box.sizeHint() == box.QCheckBox::sizeHint());
}

//! Also from a static library, in which nothing of the program refers to it.
void useAccessibility()
{
    ZEFToggleButton toggle;
    CHECK(QAccessible::queryAccessibleInterface(&toggle)->role() == QAccessible::CheckBox);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    use<ZEFCalendarWidget>();
    use<ZEFCommandLinkButton>();
    use<ZEFEllipsisLabel>();
    use<ZEFFlatButton>();
    use<ZEFHyperlinkLabel>();
    use<ZEFLightStdButton>();
    use<ZEFLightStdSSButton>();
    use<ZEFLightStdSSCheckbox>();
    use<ZEFToggleButton>();
    useOwn<OwnCalendar>();
    useOwn<OwnCheckbox>();
    useOwn<OwnEllipsisLabel>();
    useOwn<OwnFlatButton>();
    useOwn<OwnHyperlink>();
    useOwn<OwnLink>();
    useOwn<OwnPaintedButton>();
    useOwn<OwnStyledButton>();
    useOwn<OwnToggle>();
    useOwn<PlainCheckbox>();
    useOwn<PlainPaintedButton>();
    useOwn<PlainStyledButton>();
    useSignals();
    useSizeHints();
    useAccessibility();
    return failures;
}

#include "main.moc"
