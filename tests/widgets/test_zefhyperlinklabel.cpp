#include "widgetProbing.h"

#include <ZEFTest.h>

#include <ZEFHyperlinkLabel.h>

#include <QtGui/QDesktopServices>
#include <QtWidgets/QApplication>

namespace {

//! Takes the place of the desktop for the scheme "test" while it lives.
class Desktop : public QObject {
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(QStringLiteral("test"), this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(QStringLiteral("test")); }

    QList<QUrl> opened;
    std::function<void()> whenOpened;

public Q_SLOTS:
    void open(const QUrl& url)
    {
        opened.append(url);
        if (whenOpened)
            whenOpened();
    }
};

//! Writes down the signals of a label.
class Log : public QObject {
public:
    explicit Log(ZEFHyperlinkLabel& label)
    {
        connect(&label, &ZEFHyperlinkLabel::checkInternetConnection, this, [this](bool& connected) {
            lines.append(connected ? QStringLiteral("check, true") : QStringLiteral("check, false"));
        });
        connect(&label, &ZEFHyperlinkLabel::internetNotConnected, this,
                [this](const QString& link) { lines.append(u"not connected " + link); });
        connect(&label, &ZEFHyperlinkLabel::openUrlSuccess, this,
                [this] { lines.append(QStringLiteral("success")); });
    }

    QStringList lines;
};

void connectToInternet(ZEFHyperlinkLabel& label)
{
    QObject::connect(&label, &ZEFHyperlinkLabel::checkInternetConnection, &label,
                     [](bool& connected) { connected = true; });
}

void clickLink(ZEFHyperlinkLabel& label)
{
    QTest::mouseClick(label.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      label.mapTo(label.window(), QPoint(8, label.height() / 2)));
}

} // namespace

class TestZEFHyperlinkLabel : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override { allowPlatformLines(); }

private Q_SLOTS:
    void metaObject();
    void newLabel();
    void nobodyAnswers();
    void offline();
    void online();
    void onlineButTheDesktopFails_data();
    void onlineButTheDesktopFails();
    void everyAnswerCounts();
    void linksAreParsedTolerantly();
    void clickOnALink_data();
    void clickOnALink();
    void clickBesideTheLink();
    void keyOnALink();
    void neverTakesFocusByItself();
    void anyTextIsALink_data();
    void anyTextIsALink();
    void slotByName();
    void subclassReplacesTheHandling();
    void receiverDeletesTheLabel_data();
    void receiverDeletesTheLabel();
    void desktopDeletesTheLabel();
    void receiverDeletesTheWindow();
    void painting_data();
    void painting();
    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
};

void TestZEFHyperlinkLabel::metaObject()
{
    const QMetaObject& meta = ZEFHyperlinkLabel::staticMetaObject;
    QCOMPARE(QLatin1String(meta.superClass()->className()), QLatin1String("QLabel"));
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(ownMethods(meta),
             QStringList({QStringLiteral("signal checkInternetConnection(bool&)"),
                          QStringLiteral("signal internetNotConnected(QString)"),
                          QStringLiteral("signal openUrlSuccess()"),
                          QStringLiteral("slot onLinkClick(QString)")}));
    const int first = meta.methodOffset();
    QCOMPARE(meta.method(first).parameterNames(), QList<QByteArray>({"bIsConnected"}));
    QCOMPARE(meta.method(first + 1).parameterNames(), QList<QByteArray>({"link"}));
    QCOMPARE(meta.method(first + 3).access(), QMetaMethod::Public);
}

void TestZEFHyperlinkLabel::newLabel()
{
    const ZEFHyperlinkLabel label;
    QVERIFY(!label.openExternalLinks());
    QCOMPARE(label.textInteractionFlags(),
             QLabel().textInteractionFlags() | Qt::LinksAccessibleByKeyboard | Qt::LinksAccessibleByMouse);
    QCOMPARE(label.focusPolicy(), Qt::NoFocus);
}

void TestZEFHyperlinkLabel::nobodyAnswers()
{
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    QStringList links;
    connect(&label, &ZEFHyperlinkLabel::internetNotConnected, this,
            [&](const QString& link) { links.append(link); });
    label.onLinkClick(QStringLiteral("test:a"));
    QCOMPARE(links, QStringList({QStringLiteral("test:a")}));
    QVERIFY(desktop.opened.isEmpty());
}

void TestZEFHyperlinkLabel::offline()
{
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    const Log log(label);
    label.onLinkClick(QStringLiteral("test:a"));
    QCOMPARE(log.lines,
             QStringList({QStringLiteral("check, false"), QStringLiteral("not connected test:a")}));
    QVERIFY(desktop.opened.isEmpty());
}

void TestZEFHyperlinkLabel::online()
{
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    const Log log(label);
    connectToInternet(label);
    label.onLinkClick(QStringLiteral("test:a"));
    QCOMPARE(log.lines, QStringList({QStringLiteral("check, false"), QStringLiteral("success")}));
    QCOMPARE(desktop.opened, QList<QUrl>({QUrl(QStringLiteral("test:a"))}));
}

void TestZEFHyperlinkLabel::onlineButTheDesktopFails_data()
{
    QTest::addColumn<QString>("link");
    QTest::newRow("empty") << QString();
    QTest::newRow("invalid") << QStringLiteral("http://[");
}

void TestZEFHyperlinkLabel::onlineButTheDesktopFails()
{
    QFETCH(const QString, link);
    TestLog::allow(QRegularExpression(QStringLiteral("warning: .*")));
    ZEFHyperlinkLabel label;
    connectToInternet(label);
    const Log log(label);
    label.onLinkClick(link);
    QCOMPARE(log.lines, QStringList({QStringLiteral("check, true"), u"not connected " + link}));
}

void TestZEFHyperlinkLabel::everyAnswerCounts()
{
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    connectToInternet(label);
    connect(&label, &ZEFHyperlinkLabel::checkInternetConnection, this,
            [](bool& connected) { connected = false; });
    label.onLinkClick(QStringLiteral("test:a"));
    QVERIFY(desktop.opened.isEmpty());
    // the next link is asked for anew
    connectToInternet(label);
    label.onLinkClick(QStringLiteral("test:b"));
    QCOMPARE(desktop.opened.size(), 1);
}

void TestZEFHyperlinkLabel::linksAreParsedTolerantly()
{
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    connectToInternet(label);
    label.onLinkClick(QStringLiteral("test://host/100% sure"));
    QCOMPARE(desktop.opened, QList<QUrl>({QUrl(QStringLiteral("test://host/100%25 sure"))}));
}

void TestZEFHyperlinkLabel::clickOnALink_data()
{
    QTest::addColumn<bool>("online");
    QTest::newRow("online") << true;
    QTest::newRow("offline") << false;
}

void TestZEFHyperlinkLabel::clickOnALink()
{
    QFETCH(const bool, online);
    const Desktop desktop;
    ZEFHyperlinkLabel label;
    label.setText(QStringLiteral("<a href='test:a'>a long enough link</a>"));
    if (online)
        connectToInternet(label);
    const Log log(label);
    QVERIFY(showActive(label));
    clickLink(label);
    QCOMPARE(desktop.opened.size(), online ? 1 : 0);
    QCOMPARE(log.lines.last(), online ? QStringLiteral("success") : QStringLiteral("not connected test:a"));
    QCOMPARE(log.lines.size(), 2);
}

void TestZEFHyperlinkLabel::clickBesideTheLink()
{
    ZEFHyperlinkLabel label;
    label.setText(QStringLiteral("just a text <a href='test:a'>link</a>"));
    const Log log(label);
    QVERIFY(showActive(label));
    clickLink(label);
    QCOMPARE(log.lines, QStringList());
}

void TestZEFHyperlinkLabel::keyOnALink()
{
    const Desktop desktop;
    QWidget window;
    window.resize(200, 60);
    ZEFHyperlinkLabel label(&window);
    label.setText(QStringLiteral("<a href='test:a'>a link</a>"));
    connectToInternet(label);
    QVERIFY(showActive(window));
    label.setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(label.hasFocus());
    QTest::keyClick(&label, Qt::Key_Tab);
    QTest::keyClick(&label, Qt::Key_Return);
    QCOMPARE(desktop.opened, QList<QUrl>({QUrl(QStringLiteral("test:a"))}));
}

void TestZEFHyperlinkLabel::neverTakesFocusByItself()
{
    QWidget window;
    window.resize(200, 60);
    ZEFHyperlinkLabel label(&window);
    label.setText(QStringLiteral("<a href='test:a'>a long enough link</a>"));
    label.resize(label.sizeHint());
    QVERIFY(showActive(window));
    clickLink(label);
    QVERIFY(!label.hasFocus());
    QTest::keyClick(&window, Qt::Key_Tab);
    QVERIFY(!label.hasFocus());
}

void TestZEFHyperlinkLabel::anyTextIsALink_data()
{
    addTextRows();
}

void TestZEFHyperlinkLabel::anyTextIsALink()
{
    QFETCH(const QString, text);
    ZEFHyperlinkLabel label;
    const Log log(label);
    label.onLinkClick(text);
    QCOMPARE(log.lines, QStringList({QStringLiteral("check, false"), u"not connected " + text}));
}

void TestZEFHyperlinkLabel::slotByName()
{
    ZEFHyperlinkLabel label;
    const Log log(label);
    QVERIFY(QMetaObject::invokeMethod(&label, "onLinkClick", Q_ARG(QString, QStringLiteral("test:a"))));
    QCOMPARE(log.lines.size(), 2);
}

void TestZEFHyperlinkLabel::subclassReplacesTheHandling()
{
    class Derived : public ZEFHyperlinkLabel {
    public:
        QStringList links;
        void onLinkClick(const QString& link) override { links.append(link); }
    };
    Derived label;
    const Log log(label);
    Q_EMIT label.linkActivated(QStringLiteral("test:a"));
    QCOMPARE(label.links, QStringList({QStringLiteral("test:a")}));
    QCOMPARE(log.lines, QStringList());
}

void TestZEFHyperlinkLabel::receiverDeletesTheLabel_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("online");
    QTest::newRow("check, offline") << QStringLiteral("check") << false;
    QTest::newRow("check, online") << QStringLiteral("check") << true;
    QTest::newRow("not connected") << QStringLiteral("not connected") << false;
    QTest::newRow("success") << QStringLiteral("success") << true;
}

void TestZEFHyperlinkLabel::receiverDeletesTheLabel()
{
    QFETCH(const QString, signal);
    QFETCH(const bool, online);
    const Desktop desktop;
    QWidget window;
    window.resize(300, 60);
    const QPointer<ZEFHyperlinkLabel> label(new ZEFHyperlinkLabel(&window));
    label->setText(QStringLiteral("<a href='test:a'>a long enough link</a>"));
    label->resize(label->sizeHint());
    QVERIFY(showActive(window));
    connect(label, &ZEFHyperlinkLabel::checkInternetConnection, this, [&](bool& connected) {
        connected = online;
        if (signal == QStringLiteral("check"))
            delete label.data();
    });
    connect(label, &ZEFHyperlinkLabel::internetNotConnected, this, [&](const QString& link) {
        delete label.data();
        QCOMPARE(link, QStringLiteral("test:a"));
    });
    connect(label, &ZEFHyperlinkLabel::openUrlSuccess, this, [&] { delete label.data(); });
    clickLink(*label);
    QTRY_VERIFY(!label);
    // a link of a label that is gone is not opened
    QCOMPARE(desktop.opened.size(), signal == QStringLiteral("success") ? 1 : 0);
}

void TestZEFHyperlinkLabel::desktopDeletesTheLabel()
{
    Desktop desktop;
    QPointer<ZEFHyperlinkLabel> label(new ZEFHyperlinkLabel);
    connectToInternet(*label);
    int successes = 0;
    connect(label, &ZEFHyperlinkLabel::openUrlSuccess, this, [&] { ++successes; });
    desktop.whenOpened = [&] { delete label.data(); };
    label->onLinkClick(QStringLiteral("test:a"));
    QVERIFY(!label);
    QCOMPARE(successes, 0);
}

void TestZEFHyperlinkLabel::receiverDeletesTheWindow()
{
    const QPointer<QWidget> window(new QWidget);
    window->resize(300, 60);
    auto* label = new ZEFHyperlinkLabel(window);
    label->setText(QStringLiteral("<a href='test:a'>a long enough link</a>"));
    label->resize(label->sizeHint());
    QVERIFY(showActive(*window));
    connect(label, &ZEFHyperlinkLabel::checkInternetConnection, this, [&] { delete window.data(); });
    clickLink(*label);
    QTRY_VERIFY(!window);
}

void TestZEFHyperlinkLabel::painting_data()
{
    addRatioRows();
}

void TestZEFHyperlinkLabel::painting()
{
    QFETCH(const int, ratio);
    ZEFHyperlinkLabel label;
    QLabel plain;
    for (QLabel* each : {static_cast<QLabel*>(&label), &plain}) {
        each->setText(QStringLiteral("a <a href='test:a'>link</a>"));
        each->resize(100, 20);
    }
    QVERIFY(!isEmpty(painted(label, ratio)));
    QCOMPARE(painted(label, ratio), painted(plain, ratio));
}

void TestZEFHyperlinkLabel::texts_data()
{
    addTextRows();
}

void TestZEFHyperlinkLabel::texts()
{
    QFETCH(const QString, text);
    ZEFHyperlinkLabel label;
    label.setText(text);
    QVERIFY(paintsInSmallWindow(label, QSize(100, 60)));
}

void TestZEFHyperlinkLabel::sizes_data()
{
    addSizeRows();
}

void TestZEFHyperlinkLabel::sizes()
{
    QFETCH(const QSize, size);
    ZEFHyperlinkLabel label;
    label.setText(QStringLiteral("<a href='test:a'>link</a>"));
    QVERIFY(paintsInSmallWindow(label, size));
}

ZEF_TEST_MAIN(TestZEFHyperlinkLabel)
#include "test_zefhyperlinklabel.moc"
