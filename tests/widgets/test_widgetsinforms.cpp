// The rows of the form loader's table: every custom widget of this room, created from a form by name.

#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

class TestWidgetsInForms : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        allowPlatformLines();
        TestLog::allow(QRegularExpression(QStringLiteral("debug: .*")));
        TestLog::allow(QRegularExpression(QStringLiteral("warning: QObject::connect: .*")));
    }

private Q_SLOTS:
    void everyRow_data();
    void everyRow();
    void properties();
    void noRow_data();
    void noRow();
    void clickReachesTheDelegate();
    void formDiesWithStyledControls();
};

void TestWidgetsInForms::everyRow_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("command link button") << QByteArray("ZEFCommandLinkButton");
    QTest::newRow("toggle button") << QByteArray("ZEFToggleButton");
    QTest::newRow("ellipsis label") << QByteArray("ZEFEllipsisLabel");
    QTest::newRow("hyperlink label") << QByteArray("ZEFHyperlinkLabel");
    QTest::newRow("flat button") << QByteArray("ZEFFlatButton");
    QTest::newRow("style-sheet button") << QByteArray("ZEFLightStdSSButton");
    QTest::newRow("style-sheet check box") << QByteArray("ZEFLightStdSSCheckbox");
    QTest::newRow("painted button") << QByteArray("ZEFLightStdButton");
}

void TestWidgetsInForms::everyRow()
{
    QFETCH(const QByteArray, className);
    ZEFUIWidget host(QStringLiteral("allwidgets"), QStringLiteral("en"), nullptr, Qt::Widget, nullptr);
    QVERIFY(host.element()->loaded());
    const QString name = QLatin1String("my") + QLatin1String(className.mid(3));
    const QList<QWidget*> widgets = host.findChildren<QWidget*>(name);
    QCOMPARE(widgets.size(), 1);
    QCOMPARE(QLatin1String(widgets.first()->metaObject()->className()), QLatin1String(className));
    const QString line = QLatin1String("log: ZEFUILoader creating custom ") + QLatin1String(className);
    QCOMPARE(TestLog::take(line).filter(line).count(line), 1);
}

void TestWidgetsInForms::properties()
{
    const ZEFUIWidget host(QStringLiteral("allwidgets"), QStringLiteral("en"), nullptr, Qt::Widget, nullptr);
    const auto* link = host.findChild<ZEFCommandLinkButton*>(QStringLiteral("myCommandLinkButton"));
    QVERIFY(link);
    QCOMPARE(link->title(), QStringLiteral("Save"));
    QCOMPARE(link->description(), QStringLiteral("Keeps it"));
    QCOMPARE(link->frameColor(), QColor(1, 2, 3));
    const auto* toggle = host.findChild<ZEFToggleButton*>(QStringLiteral("myToggleButton"));
    QVERIFY(toggle);
    QCOMPARE(toggle->offText(), QStringLiteral("no"));
    QCOMPARE(toggle->onText(), QStringLiteral("yes"));
    QVERIFY(toggle->isOn());
    QCOMPARE(toggle->imageSize(), QSize(5, 6));
    QCOMPARE(toggle->spacing(), 7);
    const auto* label = host.findChild<ZEFEllipsisLabel*>(QStringLiteral("myEllipsisLabel"));
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("text"));
}

void TestWidgetsInForms::noRow_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("base of the painted button") << QByteArray("ZEFStdButton");
    QTest::newRow("base of the style-sheet button") << QByteArray("ZEFStdSSButton");
    QTest::newRow("base of the style-sheet check box") << QByteArray("ZEFStdSSCheckbox");
    QTest::newRow("calendar") << QByteArray("ZEFCalendarWidget");
    QTest::newRow("another letter case") << QByteArray("zeftogglebutton");
    QTest::newRow("a class of Qt") << QByteArray("QPushButton");
}

void TestWidgetsInForms::noRow()
{
    QFETCH(const QByteArray, className);
    TestLog::allow(QRegularExpression(QStringLiteral("warning: \"QFormBuilder was unable to create .*")));
    TestLog::allow(QRegularExpression(QStringLiteral("warning: \"Empty widget item .*")));
    const ZEFUIWidget host(QStringLiteral("absent"), QStringLiteral("en"), nullptr, Qt::Widget, nullptr);
    for (const QWidget* widget : host.findChildren<QWidget*>()) {
        if (className != "QPushButton")
            QVERIFY(className != widget->metaObject()->className());
    }
    QVERIFY(host.findChild<QPushButton*>(QStringLiteral("plain")));
    QCOMPARE(TestLog::take(QStringLiteral("log: ZEFUILoader creating custom")), QStringList());
}

namespace {

class Delegate : public QObject {
    Q_OBJECT

public:
    int clicks = 0;

    Q_INVOKABLE void myCommandLinkButton_clicked(ZEFPipeFacilityInvocationContext*) { ++clicks; }
};

} // namespace

void TestWidgetsInForms::clickReachesTheDelegate()
{
    ZEFUIWidget host(QStringLiteral("allwidgets"), QStringLiteral("en"), nullptr, Qt::Widget, nullptr);
    Delegate delegate;
    host.element()->setDelegate(&delegate);
    auto* link = host.findChild<ZEFCommandLinkButton*>(QStringLiteral("myCommandLinkButton"));
    QVERIFY(link);
    QTest::mouseClick(link, Qt::LeftButton);
    QCOMPARE(delegate.clicks, 1);
}

void TestWidgetsInForms::formDiesWithStyledControls()
{
    auto* host =
        new ZEFUIWidget(QStringLiteral("allwidgets"), QStringLiteral("en"), nullptr, Qt::Widget, nullptr);
    const auto* button = host->findChild<ZEFLightStdSSButton*>();
    QVERIFY(button);
    QVERIFY(!button->styleSheet().isEmpty());
    host->show();
    QVERIFY(QTest::qWaitForWindowExposed(host));
    delete host;
}

ZEF_TEST_MAIN(TestWidgetsInForms)
#include "test_widgetsinforms.moc"
